#pragma once

#include <string>
#include <string_view>

/// What a person sees. Nothing that comes from a file or a name reaches the terminal unchecked.
namespace Console {

/// The text on one line, fit for a terminal: control characters, those that turn the direction of
/// writing, and bytes that are no UTF-8 are written as \n, \t, \xHH or \u{HEX}.
std::string Printable(std::string_view text);

enum class Style { Heading, Good, Bad, Faint };

/// The text in the style, where standard output is a terminal that shows colours.
std::string Styled(Style style, std::string_view text);

/// One line "vistra: WHERE: WHAT" on standard error, made printable. `where` names a file, with the
/// place in it if there is one ("FILE:LINE").
void Complain(std::string_view where, std::string_view what);

/// Shows a line of progress on standard error, in place of the last one, when that is a terminal;
/// an empty text takes it away.
void ShowProgress(std::string_view text);

} // namespace Console
