#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// Composing of a page. Markup is only what stands in this program; whatever comes from a file, a
/// name or an environment becomes text.
namespace Html {

/// Markup out of this program's own text: made of a literal while compiling, or not at all.
class Markup {
public:
    template <std::size_t N>
    consteval Markup(const char (&literal)[N]) : m_text(literal, N - 1) {}
    std::string_view Text() const { return m_text; }

private:
    std::string_view m_text;
};

/// The text, fit to stand between tags and between quotes. Characters that nobody would see, or
/// that turn the direction of writing, and bytes that are no UTF-8 are written as on a terminal.
std::string Escape(std::string_view text);

/// The text, or its first characters with an ellipsis.
std::string Shortened(std::string_view text, std::size_t characters);

/// The number with a comma between thousands.
std::string Grouped(std::uint64_t number);

/// Collects a page.
class Writer {
public:
    Writer& Add(Markup markup);
    Writer& Text(std::string_view text);
    Writer& Count(std::uint64_t number);
    /// A coordinate, with two digits behind the point.
    Writer& Coordinate(double number);

    const std::string& Page() const { return m_page; }

private:
    std::string m_page;
};

} // namespace Html
