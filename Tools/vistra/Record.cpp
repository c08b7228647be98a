#include "Tools/vistra/Record.h"

#include <utf8.h>

#include <algorithm>
#include <charconv>
#include <iterator>

namespace {

constexpr std::size_t kNowhere = std::string_view::npos;

constexpr std::array<std::string_view, 8> kTags{"StartSession",  "EndSession", "SplitSession",
                                                "ResumeSession", "DataRec",    "EventRec",
                                                "NewGroup",      "NewDoc"};

RecordType TypeOf(std::string_view tag) {
    return static_cast<RecordType>(std::ranges::find(kTags, tag) - kTags.begin());
}

std::string_view WithoutBlanks(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    return text;
}

char32_t NamedCharacter(std::string_view name) {
    constexpr std::pair<std::string_view, char> kNames[] = {
        {"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}};
    for (const auto& [known, character] : kNames)
        if (name == known)
            return static_cast<char32_t>(character);
    return 0;
}

/// The character of a reference without its "&" and ";"; 0 when it is none.
char32_t ReferencedCharacter(std::string_view reference) {
    if (!reference.starts_with('#'))
        return NamedCharacter(reference);
    reference.remove_prefix(1);
    const bool isHexadecimal = reference.starts_with('x');
    reference.remove_prefix(isHexadecimal ? 1 : 0);
    std::uint32_t number = 0;
    const char* const end = reference.data() + reference.size();
    const auto [stop, error] =
        std::from_chars(reference.data(), end, number, isHexadecimal ? 16 : 10);
    const bool isCharacter = number <= 0x10FFFF && (number < 0xD800 || number > 0xDFFF);
    return error == std::errc() && stop == end && isCharacter ? number : 0;
}

} // namespace

Record::Record(std::string_view text) : m_text(text) {
    std::string_view rest = text.substr(text.starts_with('<') ? 1 : 0);
    m_tag = rest.substr(0, rest.find_first_of(" \t\r\n/>"));
    m_type = TypeOf(m_tag);
    rest.remove_prefix(m_tag.size());
    while (ParseAttribute(rest))
        continue;
    m_isWhole = rest.starts_with("/>") || rest.starts_with('>');
}

/// Takes the next attribute off the text. False, with the rest left, where there is none.
bool Record::ParseAttribute(std::string_view& rest) {
    rest = WithoutBlanks(rest);
    const std::size_t equals = rest.find_first_of("=/> \t\r\n");
    if (equals == kNowhere || !rest.substr(equals).starts_with("=\"") ||
        m_count == m_attributes.size())
        return false;
    const std::string_view name = rest.substr(0, equals);
    const std::string_view value = rest.substr(equals + 2);
    const std::size_t end = EndOfValue(value);
    if (end == kNowhere)
        return false;
    m_attributes[m_count++] = {name, value.substr(0, end)};
    rest = value.substr(end + 1);
    return true;
}

/// Where the quote stands that ends the value. The texts of a resumed session may hold quotes
/// themselves: theirs ends where the next attribute begins.
std::size_t Record::EndOfValue(std::string_view rest) const {
    const auto& names = AttributeName::kResumptionAttributes;
    if (m_type == RecordType::ResumeSession && m_count + 1 < names.size()) {
        const std::string next = std::string("\" ").append(names[m_count + 1]) + "=\"";
        if (const std::size_t end = rest.find(next); end != kNowhere)
            return end;
    }
    return rest.find('"');
}

std::string_view Record::Written(std::string_view name) const {
    for (const Attribute& attribute : Attributes())
        if (attribute.name == name)
            return attribute.written;
    return std::string_view();
}

std::string Record::Value(std::string_view name) const {
    std::string room;
    return std::string(Value(name, room));
}

std::string_view Record::Value(std::string_view name, std::string& room) const {
    const std::string_view written = Written(name);
    if (m_type == RecordType::ResumeSession || written.find('&') == kNowhere)
        return written;
    room.clear();
    AppendResolved(room, written);
    return room;
}

std::optional<std::uint32_t> Record::Number(std::string_view name) const {
    const std::string_view text = Written(name);
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isPadded = text.size() > 1 && text.front() == '0';
    if (error != std::errc() || end != text.data() + text.size() || isPadded)
        return std::nullopt;
    return number;
}

void AppendResolved(std::string& out, std::string_view written) {
    constexpr std::size_t kLongestReference = 10;
    for (;;) {
        const std::size_t start = written.find('&');
        out += written.substr(0, start);
        if (start == kNowhere)
            return;
        written.remove_prefix(start);
        const std::size_t end = written.substr(0, kLongestReference).find(';');
        const char32_t character =
            end == kNowhere ? 0 : ReferencedCharacter(written.substr(1, end - 1));
        if (character != 0)
            utf8::append(character, std::back_inserter(out));
        else
            out += '&';
        written.remove_prefix(character != 0 ? end + 1 : 1);
    }
}
