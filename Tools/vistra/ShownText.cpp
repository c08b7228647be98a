#include "Tools/vistra/ShownText.h"

#include "Tools/vistra/Console.h"
#include "Utility/src/StringUtils.h"

#include <algorithm>

std::string FaintDash() {
    return Console::Styled(Console::Style::Faint, "-");
}

std::string ShownText(std::string_view text, std::string_view none) {
    const bool isGiven = !text.empty() && text != kNoValue;
    return isGiven ? Console::Printable(text) : std::string(none);
}

std::string Counted(std::uint64_t count, std::string_view noun) {
    return std::to_string(count).append(" ").append(noun).append(count == 1 ? "" : "s");
}

std::string Padded(std::string_view text, std::size_t width) {
    const auto begins = [](char byte) { return (byte & 0xC0) != 0x80; };
    const auto columns = static_cast<std::size_t>(std::ranges::count_if(text, begins));
    return std::string(text).append(columns + 2 < width ? width - columns : 2, ' ');
}
