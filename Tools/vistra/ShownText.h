#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// What is shown in place of a text that is not given.
std::string FaintDash();

/// A text of a document as a person is shown it: printable, and `none` where it is not given.
std::string ShownText(std::string_view text, std::string_view none = FaintDash());

/// Number and noun, "1 file" or "3 files".
std::string Counted(std::uint64_t count, std::string_view noun);

/// The text, which is printable, with blanks behind it up to a width; two in any case.
std::string Padded(std::string_view text, std::size_t width);
