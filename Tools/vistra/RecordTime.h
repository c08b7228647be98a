#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

/// Times as records tell them: in UTC, to the second.
namespace RecordTime {

using Moment = std::chrono::sys_seconds;

/// Reads a text like "2026-03-04T17:05:09Z". Nothing for any other, and for times before 1970.
std::optional<Moment> Parse(std::string_view text);

std::string DayText(Moment moment);    ///< "2026-03-04"
std::string MinuteText(Moment moment); ///< "2026-03-04 17:05"

/// A length of time in its two largest units: "2 h 05 min", "3 d 4 h", "12 min", "40 s",
/// with spaces that do not break.
std::string LengthText(std::chrono::seconds length);

} // namespace RecordTime
