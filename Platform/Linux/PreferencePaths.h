#pragma once

#include "Platform/PlatformString.h"

#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace Platform {

/// Files of one domain and scope.
struct PreferencePaths {
    std::vector<std::string> search; ///< the first that is there has the values
    std::string target;              ///< written to
    mode_t permissions = 0600;       ///< of a new target
};

/// False for a null argument, an unknown scope, and a domain that cannot name a file.
bool CanNamePreferences(CFStringRef domain, CFStringRef user, CFStringRef host);

/// Nothing for what can name no preferences, and when the user has no home folder.
std::optional<PreferencePaths> FindPreferences(CFStringRef domain, CFStringRef user,
                                               CFStringRef host);

/// The machine id in that file, or the host name where there is none.
std::string MachineName(const std::string& machineIdFile);

} // namespace Platform
