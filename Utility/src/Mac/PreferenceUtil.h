#pragma once

#include "Platform/Preferences.h"

#include <string>
#include <utility>
#include <vector>

/// Preference values directly under a top-level key, or one level down in a dictionary stored
/// there. Every operation fails, without logging, for an empty key or domain, a null scope, and
/// text that is not valid UTF-8. Out values are written only on success.
class PreferenceUtil {
public:
    /// The value stored under a top-level key; null where there is none.
    static CFPropertyListRef GetDictionary(const std::string& key, const std::string& domain,
                                           CFStringRef user, CFStringRef host);

    // Two-level access: false when the value is missing or of another kind.

    static bool GetPreferenceValue(const std::string& dictKey, const std::string& subKey,
                                   const std::string& domain, std::string& out, CFStringRef user,
                                   CFStringRef host);
    static bool GetPreferenceValue(const std::string& dictKey, const std::string& subKey,
                                   const std::string& domain, int& out, CFStringRef user,
                                   CFStringRef host);
    /// Leaves `out` as it is when there is no number. False when what is stored cannot be read.
    static bool ReadPreferenceValue(const std::string& dictKey, const std::string& subKey,
                                    const std::string& domain, int& out, CFStringRef user,
                                    CFStringRef host);
    /// Stores the text unless one is there. False when neither could be made sure of.
    static bool AddPreferenceValue(const std::string& dictKey, const std::string& subKey,
                                   const std::string& domain, const std::string& value,
                                   CFStringRef user, CFStringRef host);
    /// False, with nothing changed, when something other than a dictionary is under `dictKey`.
    static bool SetPreferenceValue(const std::string& dictKey, const std::string& subKey,
                                   const std::string& domain, const std::string& value,
                                   CFStringRef user, CFStringRef host);
    static bool SetPreferenceValue(const std::string& dictKey, const std::string& subKey,
                                   const std::string& domain, const int& value, CFStringRef user,
                                   CFStringRef host);
    /// False when something other than a dictionary is under `dictKey`.
    static bool DeletePreferenceValue(const std::string& dictKey, const std::string& subKey,
                                      const std::string& domain, CFStringRef user,
                                      CFStringRef host);

    // One-level access.

    static bool GetPreferenceValue(const std::string& key, const std::string& domain,
                                   std::string& out, CFStringRef user, CFStringRef host);
    static bool GetPreferenceValue(const std::string& key, const std::string& domain, int& out,
                                   CFStringRef user, CFStringRef host);
    static bool SetPreferenceValue(const std::string& key, const std::string& domain,
                                   const std::string& value, CFStringRef user, CFStringRef host);
    static bool SetPreferenceValue(const std::string& key, const std::string& domain,
                                   const int& value, CFStringRef user, CFStringRef host);
    /// Stores the text unless one is there; `value` becomes the one that is. False when what is
    /// stored cannot be read or changed.
    static bool AddPreferenceValue(const std::string& key, const std::string& domain,
                                   std::string& value, CFStringRef user, CFStringRef host);

    // Listing; false when there is no dictionary under `key`. The vector is not cleared.

    static bool EnumerateSubKeys(const std::string& key, std::vector<std::string>& out,
                                 const std::string& domain, CFStringRef user, CFStringRef host);
    /// Only the pairs whose value is a string.
    static bool EnumerateSubKeys(const std::string& key, const std::string& domain,
                                 std::vector<std::pair<std::string, std::string>>& out,
                                 CFStringRef user, CFStringRef host);
};
