#include "Tools/vistra/Html.h"

#include "Tools/vistra/Console.h"

#include <array>
#include <charconv>

namespace {

bool BeginsACharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) != 0x80;
}

void AppendEscaped(std::string& out, char character) {
    switch (character) {
    case '&':
        out += "&amp;";
        return;
    case '<':
        out += "&lt;";
        return;
    case '>':
        out += "&gt;";
        return;
    case '"':
        out += "&quot;";
        return;
    case '\'':
        out += "&#39;";
        return;
    default:
        out += character;
    }
}

} // namespace

std::string Html::Escape(std::string_view text) {
    std::string escaped;
    for (const char character : Console::Printable(text))
        AppendEscaped(escaped, character);
    return escaped;
}

std::string Html::Shortened(std::string_view text, std::size_t characters) {
    constexpr std::size_t kLongestCharacter = 4;
    std::size_t count = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        count += BeginsACharacter(text[i]);
        if (count > characters || i >= characters * kLongestCharacter)
            return std::string(text.substr(0, i)) + "…";
    }
    return std::string(text);
}

std::string Html::Grouped(std::uint64_t number) {
    std::string digits = std::to_string(number);
    for (std::size_t i = digits.size(); i > 3; i -= 3)
        digits.insert(i - 3, 1, ',');
    return digits;
}

Html::Writer& Html::Writer::Add(Markup markup) {
    m_page += markup.Text();
    return *this;
}

Html::Writer& Html::Writer::Text(std::string_view text) {
    m_page += Escape(text);
    return *this;
}

Html::Writer& Html::Writer::Count(std::uint64_t number) {
    m_page += Grouped(number);
    return *this;
}

Html::Writer& Html::Writer::Coordinate(double number) {
    std::array<char, 64> digits;
    const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), number,
                                            std::chars_format::fixed, 2);
    m_page.append(digits.data(), error == std::errc() ? end : digits.data());
    return *this;
}
