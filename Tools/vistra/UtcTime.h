#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// The times of documents: UTC to the second, as in "2026-03-04T17:05:09Z".
namespace UtcTime {

/// Seconds since 1970; nothing for a text of any other form.
std::optional<std::int64_t> Seconds(std::string_view text);

/// The reverse; empty for a time before 1970 or beyond the year 9999.
std::string Text(std::int64_t seconds);

/// As a person writes it, "2026-03-04 17:05:09"; a text of any other form as it is.
std::string Readable(std::string_view text);

/// Hours, minutes and seconds, as in "00:01:23"; of a negative number with a minus sign.
std::string Span(std::int64_t seconds);

} // namespace UtcTime
