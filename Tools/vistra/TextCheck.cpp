#include "Tools/vistra/TextCheck.h"

#include "Tools/vistra/Record.h"

#include <utf8.h>

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace {

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

/// Whether the text has the pattern's form: 0 stands for a digit, F for an upper-case hexadecimal
/// one, everything else for itself.
bool HasForm(std::string_view text, std::string_view pattern) {
    return std::ranges::equal(text, pattern, [](char character, char wanted) {
        if (wanted == '0')
            return IsDigit(character);
        if (wanted == 'F')
            return IsDigit(character) || (character >= 'A' && character <= 'F');
        return character == wanted;
    });
}

unsigned Digits(std::string_view text) {
    unsigned number = 0;
    for (const char digit : text)
        number = number * 10 + static_cast<unsigned>(digit - '0');
    return number;
}

bool IsForbidden(char32_t character) {
    return (character < 0x20 && character != '\t' && character != '\n' && character != '\r') ||
           character == 0xFFFE || character == 0xFFFF;
}

std::string NameOf(char32_t character) {
    char name[16];
    std::snprintf(name, sizeof name, "U+%04X", static_cast<unsigned>(character));
    return name;
}

std::optional<ForbiddenCharacter> FindWritten(std::string_view text) {
    const char* at = text.data();
    const char* const end = at + text.size();
    while (at != end) {
        const auto offset = static_cast<std::size_t>(at - text.data());
        try {
            const char32_t character = utf8::next(at, end);
            if (IsForbidden(character))
                return ForbiddenCharacter{offset, NameOf(character)};
        } catch (const utf8::exception&) {
            return ForbiddenCharacter{offset, "bytes that are not UTF-8"};
        }
    }
    return std::nullopt;
}

std::optional<ForbiddenCharacter> FindReferenced(std::string_view text) {
    for (std::size_t at = text.find("&#"); at != std::string_view::npos;
         at = text.find("&#", at + 1)) {
        std::string resolved;
        AppendResolved(resolved, text.substr(at, text.find(';', at) - at + 1));
        if (!resolved.starts_with('&'))
            if (auto found = FindWritten(resolved))
                return ForbiddenCharacter{at, "a reference to " + found->what};
    }
    return std::nullopt;
}

} // namespace

bool IsPlainAscii(std::string_view text) {
    // No early way out: so the loop becomes a few vector instructions.
    bool isPlain = true;
    for (const char character : text)
        isPlain &= character >= ' ' && character != '\x7F';
    return isPlain;
}

std::optional<ForbiddenCharacter> FindForbiddenCharacter(std::string_view text) {
    auto found = IsPlainAscii(text) ? std::nullopt : FindWritten(text);
    if (!found && text.find("&#") != std::string_view::npos)
        found = FindReferenced(text);
    return found;
}

bool IsTime(std::string_view text) {
    if (!HasForm(text, "0000-00-00T00:00:00Z"))
        return false;
    using namespace std::chrono;
    const year_month_day day(year(static_cast<int>(Digits(text.substr(0, 4)))),
                             month(Digits(text.substr(5, 2))),
                             std::chrono::day(Digits(text.substr(8, 2))));
    return day.ok() && Digits(text.substr(11, 2)) < 24 && Digits(text.substr(14, 2)) < 60 &&
           Digits(text.substr(17, 2)) <= 60;
}

bool IsGuid(std::string_view text) {
    return HasForm(text, "FFFFFFFF-FFFF-FFFF-FFFF-FFFFFFFFFFFF");
}
