#pragma once

#include <ctime>
#include <string>

class TimeUtils {
public:
    /// Fills in the broken-down current UTC time; always true.
    static bool GetCurrentTimeStruct(std::tm& time);

    /// Current UTC time as "%Y-%m-%dT%H:%M:%SZ".
    static std::string CalcTime();

    /// Day of the month, 1 to 31, of the current UTC time.
    static int GetDayOfMonth();
};

/// Tells the current UTC time as text, formatting it once a second. For one thread at a time.
class UtcClock {
public:
    const std::string& Now();

private:
    std::time_t m_second = -1;
    std::string m_text;
};
