#pragma once

#include "Platform/Bundle.h"

#include <string>

/// The bundle functions for programs that have an identity: each gives nothing, without logging,
/// while ValidateMainBundle is false.
class NSBundleUtil {
public:
    /// Whether there is a main bundle with an identifier.
    static bool ValidateMainBundle();

    static CFBundleRef GetMainBundle();
    static CFBundleRef GetBundle(const std::string& identifier);
    /// The bundle at a folder, read anew; null when there is none.
    static CFBundleRef GetBundleWithPath(const std::string& path);

    static bool GetPropertyFromBundle(const CFBundleRef& bundle, const std::string& key,
                                      std::string& out);
    static bool GetPropertyFromBundle(const CFBundleRef& bundle, const std::string& key, int& out);
    static bool GetPropertyFromBundle(const std::string& identifier, const std::string& key,
                                      std::string& out);
    static bool GetPropertyFromBundle(const std::string& identifier, const std::string& key,
                                      int& out);

    static std::string GetBundleLocation(const CFBundleRef& bundle);
};
