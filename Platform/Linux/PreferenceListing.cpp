#include "Platform/PreferenceListing.h"

#include "Platform/Linux/FileCache.h"
#include "Platform/Linux/PreferenceFile.h"
#include "Platform/Linux/PreferencePaths.h"

namespace Platform {

namespace {

PreferenceFile::Condition ConditionOf(const FileState& state) {
    switch (state.condition) {
    case FileState::Condition::Readable:
        return PreferenceFile::Condition::Readable;
    case FileState::Condition::Unparsable:
        return PreferenceFile::Condition::Unparsable;
    case FileState::Condition::Unreadable:
        return PreferenceFile::Condition::Unreadable;
    default:
        return PreferenceFile::Condition::Missing;
    }
}

} // namespace

std::vector<PreferenceFile> PreferenceFiles(CFStringRef domain, CFStringRef user,
                                            CFStringRef host) {
    std::vector<PreferenceFile> files;
    if (const std::optional<PreferencePaths> paths = FindPreferences(domain, user, host))
        for (const std::string& path : paths->search)
            files.push_back(
                {path, ConditionOf(ReadDictionaryFile(path)), path + kKeptCopyExtension});
    return files;
}

bool CopyPreferences(CFStringRef domain, CFStringRef user, CFStringRef host,
                     CFPropertyListRef& values) {
    const std::optional<PreferencePaths> paths = FindPreferences(domain, user, host);
    if (!paths)
        return false;
    FileState state;
    for (const std::string& path : paths->search) {
        state = ReadDictionaryFile(path);
        if (state.condition != FileState::Condition::Missing)
            break;
    }
    if (state.condition == FileState::Condition::Unreadable)
        return false;
    values = state.values;
    return true;
}

} // namespace Platform
