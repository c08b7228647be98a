#include "Utility/src/TimeUtils.h"

#include <chrono>

namespace {

constexpr std::size_t kTimeTextBytes = 256;

// Calendar arithmetic instead of gmtime: that takes a lock and looks for time-zone files.
std::tm BreakDown(std::time_t time) {
    using namespace std::chrono;
    const sys_seconds seconds = floor<std::chrono::seconds>(system_clock::from_time_t(time));
    const sys_days day = floor<days>(seconds);
    const year_month_day date(day);
    const hh_mm_ss clock(seconds - day);
    std::tm parts{};
    parts.tm_year = static_cast<int>(date.year()) - 1900;
    parts.tm_mon = static_cast<int>(static_cast<unsigned>(date.month())) - 1;
    parts.tm_mday = static_cast<int>(static_cast<unsigned>(date.day()));
    parts.tm_hour = static_cast<int>(clock.hours().count());
    parts.tm_min = static_cast<int>(clock.minutes().count());
    parts.tm_sec = static_cast<int>(clock.seconds().count());
    parts.tm_wday = static_cast<int>(weekday(day).c_encoding());
    parts.tm_yday = static_cast<int>((day - sys_days(date.year() / January / 1)).count());
    return parts;
}

std::string TimeText(const std::tm& time) {
    char text[kTimeTextBytes];
    return std::string(text, std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &time));
}

} // namespace

bool TimeUtils::GetCurrentTimeStruct(std::tm& time) {
    time = BreakDown(std::time(nullptr));
    return true;
}

std::string TimeUtils::CalcTime() {
    std::tm now;
    GetCurrentTimeStruct(now);
    return TimeText(now);
}

int TimeUtils::GetDayOfMonth() {
    std::tm now;
    GetCurrentTimeStruct(now);
    return now.tm_mday;
}

const std::string& UtcClock::Now() {
    const std::time_t second = std::time(nullptr);
    if (second != m_second) {
        m_text = TimeText(BreakDown(second));
        m_second = second;
    }
    return m_text;
}
