#include "Tools/vistra/UtcTime.h"

#include "Tools/vistra/TextCheck.h"

#include <charconv>
#include <chrono>

namespace {

int NumberAt(std::string_view text, std::size_t at, std::size_t digits) {
    int number = 0;
    std::from_chars(text.data() + at, text.data() + at + digits, number);
    return number;
}

std::string TwoDigits(std::int64_t number) {
    std::string text = std::to_string(number);
    return text.size() < 2 ? text.insert(0, 1, '0') : text;
}

} // namespace

std::optional<std::int64_t> UtcTime::Seconds(std::string_view text) {
    using namespace std::chrono;
    if (!IsTime(text))
        return std::nullopt;
    const year_month_day date{year(NumberAt(text, 0, 4)),
                              month(static_cast<unsigned>(NumberAt(text, 5, 2))),
                              day(static_cast<unsigned>(NumberAt(text, 8, 2)))};
    const int minutes = NumberAt(text, 11, 2) * 60 + NumberAt(text, 14, 2);
    return std::int64_t{sys_days(date).time_since_epoch().count()} * 86'400 + minutes * 60 +
           NumberAt(text, 17, 2);
}

std::string UtcTime::Text(std::int64_t seconds) {
    using namespace std::chrono;
    constexpr std::int64_t kYear10000 = 253'402'300'800, kDay = 86'400;
    if (seconds < 0 || seconds >= kYear10000)
        return std::string();
    const year_month_day date{sys_days(days(seconds / kDay))};
    std::string text = std::to_string(static_cast<int>(date.year()));
    text.append("-").append(TwoDigits(static_cast<unsigned>(date.month())));
    text.append("-").append(TwoDigits(static_cast<unsigned>(date.day())));
    return text.append("T").append(Span(seconds % kDay)).append("Z");
}

std::string UtcTime::Readable(std::string_view text) {
    std::string readable(text);
    if (Seconds(text)) {
        readable[10] = ' ';
        readable.pop_back();
    }
    return readable;
}

std::string UtcTime::Span(std::int64_t seconds) {
    if (seconds < 0)
        return "-" + Span(-seconds);
    std::string text = TwoDigits(seconds / 3'600);
    text.append(":").append(TwoDigits(seconds / 60 % 60));
    return text.append(":").append(TwoDigits(seconds % 60));
}
