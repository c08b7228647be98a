#include "Platform/Preferences.h"

#include "Platform/Linux/EnvironmentFolders.h"
#include "Platform/Linux/FileCache.h"
#include "Platform/Linux/PreferenceFile.h"
#include "Platform/Linux/PreferencePaths.h"

#include <filesystem>

namespace Platform {

namespace {

using Condition = FileState::Condition;

FileState ReadFirst(const PreferencePaths& paths) {
    FileState state;
    for (const std::string& path : paths.search) {
        state = ReadDictionaryFile(path);
        if (state.condition != Condition::Missing)
            break;
    }
    return state;
}

bool CreateFolderOf(const PreferencePaths& paths) {
    return CreateFolderWithParents(std::filesystem::path(paths.target).parent_path().string());
}

bool Holds(const FileState& state, const std::string& key, const PropertyList* value) {
    const PropertyList* found = state.values->Find(key);
    return value && found ? *found == *value : !value && !found;
}

PropertyList Changed(const PropertyList& values, const std::string& key,
                     const PropertyList* value) {
    PropertyList changed = values;
    if (value)
        changed.AsDictionary()->insert_or_assign(key, *value);
    else
        changed.AsDictionary()->erase(key);
    return changed;
}

/// The caller holds the lock, so what is read here is what the change is made to. A file that
/// everybody shares may be found elsewhere than it is written: its other values come along.
bool Change(const PreferencePaths& paths, const std::string& key, const PropertyList* value) {
    const FileState state = ReadFirst(paths);
    if (state.condition == Condition::Unreadable)
        return false;
    if (Holds(state, key, value))
        return true;
    const bool keepOld = ReadDictionaryFile(paths.target).condition == Condition::Unparsable;
    return WritePreferenceFile(paths.target, Changed(*state.values, key, value), keepOld,
                               paths.permissions);
}

} // namespace

bool CopyPreferenceValue(CFStringRef key, CFStringRef domain, CFStringRef user, CFStringRef host,
                         CFPropertyListRef& value) {
    const std::optional<PreferencePaths> paths = FindPreferences(domain, user, host);
    if (!key || !paths)
        return false;
    const FileState state = ReadFirst(*paths);
    if (state.condition == Condition::Unreadable)
        return false;
    const PropertyList* found = state.values->Find(key->utf8);
    value = found ? CFPropertyListRef(state.values, found) : nullptr; // keeps all values alive
    return true;
}

bool SetPreferenceValue(CFStringRef key, const PropertyList* value, CFStringRef domain,
                        CFStringRef user, CFStringRef host) {
    const std::optional<PreferencePaths> paths = FindPreferences(domain, user, host);
    if (!key || !paths)
        return false;
    const FileState state = ReadFirst(*paths);
    if (state.condition == Condition::Unreadable)
        return false;
    if (Holds(state, key->utf8, value))
        return true;
    if (!CreateFolderOf(*paths))
        return false;
    const PreferenceLock lock(paths->target);
    return lock.IsHeld() && Change(*paths, key->utf8, value);
}

bool AddPreferenceValue(CFStringRef key, PropertyList& value, CFStringRef domain, CFStringRef user,
                        CFStringRef host) {
    const std::optional<PreferencePaths> paths = FindPreferences(domain, user, host);
    if (!key || !paths || !CreateFolderOf(*paths))
        return false;
    const PreferenceLock lock(paths->target);
    CFPropertyListRef stored;
    if (!lock.IsHeld() || !CopyPreferenceValue(key, domain, user, host, stored))
        return false;
    if (!stored)
        return Change(*paths, key->utf8, &value);
    value = *stored;
    return true;
}

bool SynchronizePreferences(CFStringRef domain, CFStringRef user, CFStringRef host) {
    // Every read looks at the files of the moment, and every write has put its file in place.
    return CanNamePreferences(domain, user, host);
}

} // namespace Platform
