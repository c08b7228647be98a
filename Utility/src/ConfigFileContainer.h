#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// The agent's INI-like configuration as a sorted table from "section/key", lower-cased, to
/// value. Comments and the order of a file's lines are not kept. For one thread at a time.
class ConfigFileContainer {
public:
    using Entry = std::pair<std::string, std::string>;

    /// What Read and Write return when the file cannot be opened.
    static constexpr std::uint32_t kFailure = 0xFFFFFFFFu;

    /// The compound key of an entry, and its halves; a key without "/" is both.
    static std::string TableKey(const std::string& section, const std::string& key);
    static std::string SectionOf(const std::string& tableKey);
    static std::string KeyOf(const std::string& tableKey);

    void Clear();

    /// Replaces the table by the file's entries. 0, or kFailure with the table emptied.
    std::uint32_t Read(const std::string& path);

    /// Writes the table as a normalised file, whole or not at all; only the modification time when
    /// that is what was read there. 0, or kFailure.
    std::uint32_t Write(const std::string& path);

    /// Merges the entries of a text; always 0.
    std::uint32_t Update(const std::string& text);

    /// Replaces the table by the entries of a text; always 0.
    std::uint32_t Replace(const std::string& text);

    /// The value, or empty when absent.
    std::string GetValue(const std::string& section, const std::string& key) const;

    /// Stores a value as given and returns it; a blank value removes the entry. Returns the empty
    /// text, with nothing changed, when the compound key holds no "/", or section or key is empty
    /// or holds one.
    std::string SetValue(const std::string& compoundKey, const std::string& value);
    std::string SetValue(const std::string& section, const std::string& key,
                         const std::string& value);

    /// Appends the (key, value) pairs of the section, named exactly as stored.
    void EnumSection(const char* section, std::vector<Entry>& entries) const;

    /// Removes a section, named exactly as stored; all of them for "" and "*". Always 0.
    std::uint32_t RemoveSection(const std::string& section);

    /// Reads one line of a file; `section` is carried from line to line.
    void ProcessConfigLine(std::string& section, const std::string& line);

    /// All entries, by their table keys.
    const std::map<std::string, std::string>& Entries() const { return m_entries; }

private:
    std::string Store(const std::string& tableKey, const std::string& value);

    std::string Text() const;

    std::map<std::string, std::string> m_entries;
    std::string m_readPath;
    std::optional<std::string> m_read; ///< the file's text, until it is written over
};
