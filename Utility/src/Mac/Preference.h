#pragma once

#include "Platform/Preferences.h"
#include "Utility/src/Mac/PlatformText.h"

#include <string>
#include <utility>
#include <vector>

/// The preferences of one domain and scope as a tree, addressed by key paths whose components are
/// separated by "/"; empty components vanish. Nothing here logs. Everything fails on an object
/// without a domain or a scope, and for a path without a component.
class Preference {
public:
    Preference(const std::string& domain, CFStringRef user, CFStringRef host);

    /// False, with `out` unchanged, when the node is missing or of another kind.
    bool GetValue(const std::string& path, int& out) const;
    bool GetValue(const std::string& path, std::string& out) const;

    /// Creates missing dictionaries, also in place of anything else. False when the value could
    /// not be stored.
    bool SetValue(const std::string& path, int value) const;
    bool SetValue(const std::string& path, const std::string& value) const;

    /// Removes a leaf below a top-level key.
    void DeleteValue(const std::string& path) const;

    /// Appends the pairs of the dictionary at the path whose values are strings, by key. False
    /// when there is no dictionary.
    bool EnumSubKeyAndVals(const std::string& path,
                           std::vector<std::pair<std::string, std::string>>& out) const;

private:
    CFPropertyListRef CopyNode(const std::string& path) const;
    bool SetValueHelper(const std::string& path, const Platform::PropertyList* value) const;
    void DeleteValueHelper(const std::string& path) const;
    bool EnumSubKeyAndValsHelper(const std::string& path,
                                 std::vector<std::pair<std::string, std::string>>& out) const;

    bool IsUsable() const { return m_domain.Get() && m_user && m_host; }
    /// Null where there is no value. False when the stored state cannot be read.
    bool ReadTopLevel(CFStringRef key, CFPropertyListRef& value) const;
    bool WriteTopLevel(CFStringRef key, const Platform::PropertyList* value) const;

    PlatformText m_domain;
    CFStringRef m_user;
    CFStringRef m_host;
};
