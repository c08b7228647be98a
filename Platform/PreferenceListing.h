#pragma once

#include "Platform/Preferences.h"

#include <string>
#include <vector>

// A look at a whole domain, for those who show it to its user. Nothing here changes, creates or
// logs anything.

namespace Platform {

struct PreferenceFile {
    enum class Condition { Missing, Readable, Unparsable, Unreadable };

    std::string path;
    Condition condition = Condition::Missing;
    std::string keptCopy; ///< where one that could not be parsed is kept at the next write
};

/// The files of a domain in the order in which they are looked for: the first that is not missing
/// counts, and one that cannot be parsed counts as empty. None when there can be none.
std::vector<PreferenceFile> PreferenceFiles(CFStringRef domain, CFStringRef user, CFStringRef host);

/// Sets `values` to a dictionary of everything that is stored, by top-level key. Returns false,
/// with `values` unchanged, when it cannot be read.
bool CopyPreferences(CFStringRef domain, CFStringRef user, CFStringRef host,
                     CFPropertyListRef& values);

} // namespace Platform
