#include "Platform/Linux/PropertyListFile.h"

#include "Platform/PlatformString.h"

#include <algorithm>
#include <vector>

// The library that parses property lists descends without a limit. This look at the markup alone
// tells how deep it would go, and how long it would be at the text. Where two readers could
// disagree about the end of a piece of markup, the text is refused: no program writes such property
// lists.

namespace Platform {

namespace {

/// The library moves the rest of a text at each entity in it. This many bytes take about a second.
constexpr std::uint64_t kMaximumEntityWork = std::uint64_t{1} << 36;

class MarkupScan {
public:
    explicit MarkupScan(std::string_view text) : m_rest(text) {}

    bool StaysWithinLimits() {
        while (PassText() && !m_rest.empty())
            if (!PassMarkup())
                return false;
        return m_entityWork <= kMaximumEntityWork;
    }

private:
    bool PassText() {
        const std::string_view text = m_rest.substr(0, m_rest.find('<'));
        const auto entities = std::count(text.begin(), text.end(), '&');
        m_entityWork += static_cast<std::uint64_t>(entities) * text.size();
        m_rest.remove_prefix(text.size());
        return m_entityWork <= kMaximumEntityWork;
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
    std::uint64_t m_entityWork = 0;
    std::vector<std::string_view> m_open;
};

} // namespace

bool IsHarmlessXml(std::string_view text) {
    return text.find('\0') == std::string_view::npos && IsValidUtf8(text) &&
           MarkupScan(text).StaysWithinLimits();
}

} // namespace Platform
