#include "Tools/vistra/Console.h"

#include "Platform/Terminal.h"

#include <array>
#include <cstdlib>
#include <iostream>
#include <utf8.h>

namespace {

using Platform::IsTerminal;
using Platform::StandardStream;

constexpr char kHexDigits[] = "0123456789ABCDEF";

bool TurnsDirection(char32_t character) {
    return character == 0x061C || (character >= 0x200E && character <= 0x200F) ||
           (character >= 0x202A && character <= 0x202E) ||
           (character >= 0x2066 && character <= 0x2069);
}

bool IsControl(char32_t character) {
    return character < 0x20 || (character >= 0x7F && character < 0xA0) || character == 0x2028 ||
           character == 0x2029 || character == 0xFEFF;
}

void AppendByte(std::string& out, unsigned char byte) {
    out += {'\\', 'x', kHexDigits[byte >> 4], kHexDigits[byte & 15]};
}

void AppendNumbered(std::string& out, char32_t character) {
    std::string digits;
    for (; character != 0; character >>= 4)
        digits.insert(digits.begin(), kHexDigits[character & 15]);
    out.append("\\u{").append(digits).append("}");
}

void AppendEscaped(std::string& out, char32_t character) {
    if (character == '\n')
        out += "\\n";
    else if (character == '\t')
        out += "\\t";
    else if (character < 0x80)
        AppendByte(out, static_cast<unsigned char>(character));
    else
        AppendNumbered(out, character);
}

bool ShowsColours() {
    const char* const terminal = std::getenv("TERM");
    return IsTerminal(StandardStream::Output) && !std::getenv("NO_COLOR") && terminal &&
           std::string_view(terminal) != "dumb";
}

} // namespace

std::string Console::Printable(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (auto at = text.begin(); at != text.end();) {
        const auto start = at;
        char32_t character = 0;
        try {
            character = utf8::next(at, text.end());
        } catch (const utf8::exception&) {
            AppendByte(out, static_cast<unsigned char>(*start));
            at = start + 1;
            continue;
        }
        if (IsControl(character) || TurnsDirection(character))
            AppendEscaped(out, character);
        else
            out.append(start, at);
    }
    return out;
}

std::string Console::Styled(Style style, std::string_view text) {
    static const bool shows = ShowsColours();
    if (!shows)
        return std::string(text);
    constexpr std::array kCodes{"\033[1m", "\033[32m", "\033[31m", "\033[2m"};
    return kCodes[static_cast<std::size_t>(style)] + std::string(text) + "\033[0m";
}

void Console::Complain(std::string_view where, std::string_view what) {
    ShowProgress("");
    std::cout.flush();
    std::cerr << "vistra: " + Printable(where) + ": " + Printable(what) + "\n";
}

Console::ReadingProgress::~ReadingProgress() {
    ShowProgress("");
}

void Console::ReadingProgress::Show(std::uint64_t line) const {
    ShowProgress(std::string(m_path).append(": line ") + std::to_string(line));
}

void Console::ShowProgress(std::string_view text) {
    static const bool shows = IsTerminal(StandardStream::Error);
    static bool shown = false;
    if (!shows || (text.empty() && !shown))
        return;
    std::cerr << "\r\033[K" << Printable(text) << std::flush;
    shown = !text.empty();
}
