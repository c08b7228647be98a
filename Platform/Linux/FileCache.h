#pragma once

#include "Platform/PropertyList.h"

#include <optional>
#include <string>

namespace Platform {

/// What a file says at one moment.
struct FileState {
    enum class Condition { Missing, Readable, Unparsable, Unreadable };

    Condition condition = Condition::Missing;
    /// Never null; empty unless readable. The same object for as long as the file is unchanged.
    CFPropertyListRef values;
    int reason = 0; ///< why the file is unreadable, an errno
};

/// Makes values of a file's content; nothing where it holds none.
using FileReader = std::optional<PropertyList> (*)(const std::string& bytes);

/// What the file says now; one that has not changed since costs no more than a look at its status.
/// Every call for a path names the same reader.
FileState ReadFileState(const std::string& path, FileReader reader);

/// The same for a property list, which holds values only if it is a dictionary.
FileState ReadDictionaryFile(const std::string& path);

} // namespace Platform
