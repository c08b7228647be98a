#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// A character that no XML document may hold, with where in the text it stands.
struct ForbiddenCharacter {
    std::size_t at = 0;
    std::string what; ///< such as "U+0001" or "bytes that are not UTF-8"
};

/// The first one of the text, written as itself or as a reference.
std::optional<ForbiddenCharacter> FindForbiddenCharacter(std::string_view text);

/// Whether the text is made of visible ASCII characters and blanks alone, as texts nearly always
/// are.
bool IsPlainAscii(std::string_view text);

/// Whether the text is a time as records bear it: "%Y-%m-%dT%H:%M:%SZ", of a day that exists.
bool IsTime(std::string_view text);

/// Whether the text is an identifier in the upper-case 8-4-4-4-12 form.
bool IsGuid(std::string_view text);
