#include "Platform/Linux/PropertyListFile.h"

#include "Platform/PlatformString.h"

#include <algorithm>
#include <vector>

// The library that parses property lists descends without a limit. This look at the markup alone
// tells how deep it would go. Where two readers could disagree about the end of a piece of markup,
// the text is refused: no program writes such property lists.

namespace Platform {

namespace {

class MarkupScan {
public:
    explicit MarkupScan(std::string_view text) : m_rest(text) {}

    bool StaysWithinDepth() {
        while (AdvanceToMarkup())
            if (!PassMarkup())
                return false;
        return true;
    }

private:
    bool AdvanceToMarkup() {
        const std::size_t start = m_rest.find('<');
        m_rest.remove_prefix(std::min(start, m_rest.size()));
        return !m_rest.empty();
    }

    bool PassMarkup() {
        if (m_rest.starts_with("<!--"))
            return PassSection("<!--", "-->");
        if (m_rest.starts_with("<![CDATA["))
            return PassSection("<![CDATA[", "]]>");
        if (m_rest.starts_with("<?"))
            return !HasOpenQuote(m_rest.substr(0, m_rest.find("?>"))) && PassSection("<?", "?>");
        return PassTag();
    }

    bool PassSection(std::string_view head, std::string_view end) {
        const std::size_t found = m_rest.find(end, head.size());
        if (found == std::string_view::npos || m_rest.find(end, 1) != found)
            return false;
        m_rest.remove_prefix(found + end.size());
        return true;
    }

    bool PassTag() {
        const std::size_t end = m_rest.find('>');
        if (end == std::string_view::npos)
            return false;
        const std::string_view tag = m_rest.substr(1, end - 1);
        m_rest.remove_prefix(end + 1);
        if (tag.find_first_of("<[") != std::string_view::npos || HasOpenQuote(tag))
            return false;
        return tag.starts_with('!') || (tag.starts_with('/') ? Close(tag) : Open(tag));
    }

    /// Whether a reader that knows one kind of quotes, or both, is inside them at the end.
    static bool HasOpenQuote(std::string_view tag) {
        char quote = 0;
        for (const char c : tag)
            if (quote == 0 ? c == '"' || c == '\'' : c == quote)
                quote = quote == 0 ? c : 0;
        return quote != 0 || std::count(tag.begin(), tag.end(), '"') % 2 != 0 ||
               std::count(tag.begin(), tag.end(), '\'') % 2 != 0;
    }

    bool Open(std::string_view tag) {
        m_open.push_back(tag.substr(0, tag.find_first_of(" \t\r\n/")));
        const std::size_t documentElement = 1;
        const bool fits = m_open.size() <= kMaximumPropertyListDepth + documentElement;
        if (tag.ends_with('/'))
            m_open.pop_back();
        return fits;
    }

    bool Close(std::string_view tag) {
        const std::string_view name = tag.substr(1, tag.find_first_of(" \t\r\n") - 1);
        if (m_open.empty() || m_open.back() != name)
            return false;
        m_open.pop_back();
        return true;
    }

    std::string_view m_rest;
    std::vector<std::string_view> m_open;
};

} // namespace

bool IsHarmlessXml(std::string_view text) {
    return text.find('\0') == std::string_view::npos && IsValidUtf8(std::string(text)) &&
           MarkupScan(text).StaysWithinDepth();
}

} // namespace Platform
