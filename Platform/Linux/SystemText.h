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

/// Whether it is UTF-8 without control characters, which no document may hold.
inline bool IsPlainText(std::string_view text) {
    const auto isControl = [](char c) { return static_cast<unsigned char>(c) < ' '; };
    return std::none_of(text.begin(), text.end(), isControl) && IsValidUtf8(std::string(text));
}

} // namespace Platform
