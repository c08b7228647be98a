#include "Utility/src/StringUtils.h"

#include <utf8.h>

#include <array>
#include <cstring>
#include <stdexcept>

namespace {

/// How a byte is written. As long as a register, which is stored whole: a branch on whether the
/// byte needs a reference would cost a value with some markup more than all the rest.
struct Written {
    char text[7];
    unsigned char length; ///< 0 for what the table does not tell
};
static_assert(sizeof(Written) == 8);
using Table = std::array<Written, 256>;

constexpr Written Reference(char tens, char ones) {
    return {{'&', '#', tens, ones, ';'}, 5};
}

constexpr Table MakeTable(std::size_t knownBytes) {
    Table table{};
    for (std::size_t byte = 0; byte < knownBytes; ++byte)
        table[byte] = {{static_cast<char>(byte)}, 1};
    table['&'] = Reference('3', '8');
    table['<'] = Reference('6', '0');
    table['>'] = Reference('6', '2');
    table['"'] = Reference('3', '4');
    table['\''] = Reference('3', '9');
    table['\\'] = Reference('9', '2');
    return table;
}

constexpr Table kAscii = MakeTable(0x80);
constexpr Table kWellFormed = MakeTable(0x100);

/// Writes as far as the table tells; `text` is left with the rest.
char* WriteEscaped(const Table& table, char* out, std::string_view& text) {
    std::size_t done = 0;
    for (; done < text.size(); ++done) {
        const Written& written = table[static_cast<unsigned char>(text[done])];
        if (written.length == 0)
            break;
        std::memcpy(out, &written, sizeof written);
        out += written.length;
    }
    text.remove_prefix(done);
    return out;
}

/// Whether the text may stand in a document as it is, but for characters to escape.
[[gnu::flatten]] bool IsDocumentText(std::string_view text) {
    return utf8::is_valid(text.begin(), text.end()) &&
           text.find("\xEF\xBF\xBE") == std::string_view::npos &&
           text.find("\xEF\xBF\xBF") == std::string_view::npos;
}

} // namespace

std::string StringUtils::ConformXMLString(const char* text) {
    if (!text || !*text)
        return kNoValue;
    std::string out(EscapedRoom(std::strlen(text)), '\0');
    const char* end = WriteConformXMLString(out.data(), text);
    out.resize(static_cast<std::size_t>(end - out.data()));
    return out;
}

void StringUtils::ThrowTooLong() {
    throw std::length_error("text");
}

char* StringUtils::WriteConformXMLString(char* out, std::string_view text) {
    out = WriteEscaped(kAscii, out, text);
    if (text.empty())
        return out;
    std::string repaired;
    if (!IsDocumentText(text)) {
        repaired = AsDocumentText(text);
        text = repaired;
    }
    return WriteEscaped(kWellFormed, out, text);
}

void StringUtils::EscapeXML(std::string& text) {
    std::string escaped(EscapedRoom(text.size()), '\0');
    std::string_view rest = text;
    const char* end = WriteEscaped(kWellFormed, escaped.data(), rest);
    escaped.resize(static_cast<std::size_t>(end - escaped.data()));
    text.swap(escaped);
}
