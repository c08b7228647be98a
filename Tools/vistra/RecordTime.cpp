#include "Tools/vistra/RecordTime.h"

#include <array>
#include <cstdint>

using namespace std::chrono;

namespace {

constexpr std::string_view kForm = "0000-00-00T00:00:00Z";

bool HasTheForm(std::string_view text) {
    if (text.size() != kForm.size())
        return false;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (kForm[i] == '0' ? text[i] < '0' || text[i] > '9' : text[i] != kForm[i])
            return false;
    return true;
}

int Digits(std::string_view text, std::size_t from, std::size_t count) {
    int number = 0;
    for (const char digit : text.substr(from, count))
        number = number * 10 + (digit - '0');
    return number;
}

/// The number with at least as many digits.
std::string Padded(std::int64_t number, std::size_t digits) {
    std::string text = std::to_string(number);
    return text.insert(0, digits - std::min(digits, text.size()), '0');
}

} // namespace

std::optional<RecordTime::Moment> RecordTime::Parse(std::string_view text) {
    if (!HasTheForm(text))
        return std::nullopt;
    const year_month_day date{year(Digits(text, 0, 4)),
                              month(static_cast<unsigned>(Digits(text, 5, 2))),
                              day(static_cast<unsigned>(Digits(text, 8, 2)))};
    const int hour = Digits(text, 11, 2), minute = Digits(text, 14, 2);
    const int second = Digits(text, 17, 2);
    if (!date.ok() || hour > 23 || minute > 59 || second > 60)
        return std::nullopt;
    return sys_days(date) + hours(hour) + minutes(minute) + seconds(second);
}

std::string RecordTime::DayText(Moment moment) {
    const year_month_day date(floor<days>(moment));
    return Padded(int(date.year()), 4)
        .append("-")
        .append(Padded(unsigned(date.month()), 2))
        .append("-")
        .append(Padded(unsigned(date.day()), 2));
}

std::string RecordTime::MinuteText(Moment moment) {
    const hh_mm_ss clock(moment - floor<days>(moment));
    return DayText(moment)
        .append(" ")
        .append(Padded(clock.hours().count(), 2))
        .append(":")
        .append(Padded(clock.minutes().count(), 2));
}

std::string RecordTime::LengthText(seconds length) {
    const auto count = [](auto value) { return std::to_string(value); };
    if (length < minutes(1))
        return count(length.count()) + " s";
    if (length < hours(1))
        return count(length / minutes(1)) + " min";
    if (length < days(1))
        return count(length / hours(1)) + " h " + Padded(length % hours(1) / minutes(1), 2) +
               " min";
    return count(length / days(1)) + " d " + count(length % days(1) / hours(1)) + " h";
}
