#pragma once

#include "Platform/PlatformString.h"

#include <algorithm>
#include <string_view>

// Texts that the system or its users wrote.

namespace Platform {

/// The text without the blanks at both ends.
inline std::string_view Trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos)
        return std::string_view();
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

/// Takes the part before the separator, or all of it, off the text's start, the separator too.
inline std::string_view TakeUntil(char separator, std::string_view& text) {
    const std::string_view part = text.substr(0, text.find(separator));
    text.remove_prefix(std::min(part.size() + 1, text.size()));
    return part;
}

/// Whether it is UTF-8 without control characters, which no document may hold.
inline bool IsPlainText(std::string_view text) {
    const auto isControl = [](char c) { return static_cast<unsigned char>(c) < ' '; };
    return std::none_of(text.begin(), text.end(), isControl) && IsValidUtf8(text);
}

} // namespace Platform
