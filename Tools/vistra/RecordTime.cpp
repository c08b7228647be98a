#include "Tools/vistra/RecordTime.h"

#include "Tools/vistra/UtcTime.h"

using namespace std::chrono;

std::optional<RecordTime::Moment> RecordTime::Parse(std::string_view text) {
    const std::optional<std::int64_t> time = UtcTime::Seconds(text);
    if (!time || *time < 0)
        return std::nullopt;
    return Moment(seconds(*time));
}

std::string RecordTime::DayText(Moment moment) {
    return UtcTime::Text(moment.time_since_epoch().count()).substr(0, 10);
}

std::string RecordTime::MinuteText(Moment moment) {
    return UtcTime::Readable(UtcTime::Text(moment.time_since_epoch().count())).substr(0, 16);
}

std::string RecordTime::LengthText(seconds length) {
    const auto count = [](auto value) { return std::to_string(value); };
    if (length < minutes(1))
        return count(length.count()) + " s";
    if (length < hours(1))
        return count(length / minutes(1)) + " min";
    const std::string rest = count(length % hours(1) / minutes(1));
    if (length < days(1))
        return count(length / hours(1)) + " h " + (rest.size() < 2 ? "0" : "") + rest + " min";
    return count(length / days(1)) + " d " + count(length % days(1) / hours(1)) + " h";
}
