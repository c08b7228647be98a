#pragma once

#include "Tools/vistra/Record.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>

/// The names of the groups that a session has declared so far, for the records that name groups by
/// their numbers. Of more than a host would ever declare the oldest are forgotten.
class GroupNames {
public:
    struct Group {
        std::string name; ///< of its subject
        bool isRejectedData = false;
    };

    /// Takes the group that a NewGroup record declares.
    void Declare(const Record& record);
    /// Null for a group that was not declared, or has been forgotten.
    const Group* Find(std::uint32_t number) const;
    void Clear() { m_groups.clear(); }

private:
    static constexpr std::size_t kMost = 4096;

    std::map<std::uint32_t, Group> m_groups;
};

/// What a record is about, on one printable line: "Category / Subcategory / Name", with `none` for
/// what is not given. The groups that every session has are known by their names alone.
std::string SubjectOf(const Record& record, std::string_view none = "-");

/// Whether a NewGroup record declares a group of what the library refused or cut.
bool IsRejectedData(const Record& record);
