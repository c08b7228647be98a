#include "Utility/src/ConfigFileContainer.h"

#include "Platform/Files.h"
#include "Utility/src/StringUtils.h"

#include <optional>

namespace {

constexpr char kSeparator = '/';

std::string Normalised(const std::string& name) {
    std::string result = StringUtils::Trim(name, kBlanks);
    return toLower(result);
}

bool IsName(const std::string& name) {
    return !name.empty() && name.find(kSeparator) == std::string::npos;
}

/// The entries of a section, which stand together in a sorted table.
template <class Table>
auto EntriesOf(Table& table, const std::string& section) {
    if (section.find(kSeparator) != std::string::npos)
        return std::pair(table.end(), table.end());
    constexpr char kPastSeparator = kSeparator + 1;
    return std::pair(table.lower_bound(section + kSeparator),
                     table.lower_bound(section + kPastSeparator));
}

/// The section that a header line selects; the closing bracket may be missing.
std::string SectionOfHeader(const std::string& line) {
    return Normalised(line.substr(1, line.find(']') - 1));
}

} // namespace

std::string ConfigFileContainer::TableKey(const std::string& section, const std::string& key) {
    return section + kSeparator + key;
}

std::string ConfigFileContainer::SectionOf(const std::string& tableKey) {
    return tableKey.substr(0, tableKey.find(kSeparator));
}

std::string ConfigFileContainer::KeyOf(const std::string& tableKey) {
    return tableKey.substr(tableKey.find(kSeparator) + 1);
}

void ConfigFileContainer::Clear() {
    m_entries.clear();
}

std::uint32_t ConfigFileContainer::Read(const std::string& path) {
    Clear();
    m_read = Platform::ReadFile(path);
    m_readPath = path;
    return m_read ? Update(*m_read) : kFailure;
}

std::uint32_t ConfigFileContainer::Write(const std::string& path) {
    const std::string text = Text();
    if (m_read == text && m_readPath == path && Platform::RenewModificationTime(path))
        return 0;
    m_read.reset();
    return Platform::ReplaceFile(path, text) ? 0 : kFailure;
}

std::string ConfigFileContainer::Text() const {
    std::string text;
    std::optional<std::string> current;
    for (const auto& [tableKey, value] : m_entries) {
        const std::string section = SectionOf(tableKey);
        if (current != section)
            text += '[' + section + "]\n";
        text += KeyOf(tableKey) + '=' + value + '\n';
        current = section;
    }
    return text;
}

std::uint32_t ConfigFileContainer::Update(const std::string& text) {
    std::vector<std::string> lines;
    StringUtils::SplitStr(text, lines, "\n");
    std::string section;
    for (const std::string& line : lines)
        ProcessConfigLine(section, line);
    return 0;
}

std::uint32_t ConfigFileContainer::Replace(const std::string& text) {
    Clear();
    return Update(text);
}

std::string ConfigFileContainer::GetValue(const std::string& section,
                                          const std::string& key) const {
    const auto entry = m_entries.find(TableKey(Normalised(section), Normalised(key)));
    return entry == m_entries.end() ? std::string() : entry->second;
}

std::string ConfigFileContainer::SetValue(const std::string& compoundKey,
                                          const std::string& value) {
    const std::string tableKey = Normalised(compoundKey);
    return tableKey.find(kSeparator) == std::string::npos ? std::string() : Store(tableKey, value);
}

std::string ConfigFileContainer::SetValue(const std::string& section, const std::string& key,
                                          const std::string& value) {
    const std::string sectionName = Normalised(section);
    const std::string keyName = Normalised(key);
    if (!IsName(sectionName) || !IsName(keyName))
        return {};
    return Store(TableKey(sectionName, keyName), value);
}

std::string ConfigFileContainer::Store(const std::string& tableKey, const std::string& value) {
    if (StringUtils::Trim(value, kBlanks).empty()) {
        m_entries.erase(tableKey);
        return {};
    }
    return m_entries.insert_or_assign(tableKey, value).first->second;
}

void ConfigFileContainer::EnumSection(const char* section, std::vector<Entry>& entries) const {
    if (!section)
        return;
    const auto [first, last] = EntriesOf(m_entries, section);
    for (auto entry = first; entry != last; ++entry)
        entries.emplace_back(KeyOf(entry->first), entry->second);
}

std::uint32_t ConfigFileContainer::RemoveSection(const std::string& section) {
    if (section.empty() || section == "*") {
        Clear();
        return 0;
    }
    const auto [first, last] = EntriesOf(m_entries, section);
    m_entries.erase(first, last);
    return 0;
}

void ConfigFileContainer::ProcessConfigLine(std::string& section, const std::string& line) {
    const std::string text = StringUtils::Trim(line, kBlanks);
    if (text.empty() || text.front() == '#' || text.front() == ';')
        return;
    if (text.front() == '[') {
        section = SectionOfHeader(text);
        return;
    }
    // Without "=" the whole line is both key and value: npos + 1 is the line's start.
    const std::size_t separator = text.find('=');
    m_entries.insert_or_assign(TableKey(section, Normalised(text.substr(0, separator))),
                               StringUtils::Trim(text.substr(separator + 1), kBlanks));
}
