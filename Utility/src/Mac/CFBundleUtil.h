#pragma once

#include "Platform/Bundle.h"

#include <string>

/// Information of bundles. Nothing here logs; out values are written only on success.
class CFBundleUtil {
public:
    static CFBundleRef GetMainBundle();

    /// The loaded bundle with that identifier; null for an empty or unknown one.
    static CFBundleRef GetBundle(const std::string& identifier);

    /// The information value for the key. False when it is absent or of another kind.
    static bool GetPropertyFromBundle(const CFBundleRef& bundle, const std::string& key,
                                      std::string& out);
    static bool GetPropertyFromBundle(const CFBundleRef& bundle, const std::string& key, int& out);
    static bool GetPropertyFromBundle(const std::string& identifier, const std::string& key,
                                      std::string& out);
    static bool GetPropertyFromBundle(const std::string& identifier, const std::string& key,
                                      int& out);

    /// The bundle's path; empty for a null bundle.
    static std::string GetBundleLocaton(const CFBundleRef& bundle);

    /// False when the bundle has no identifier.
    static bool GetBundleIdentifier(const CFBundleRef& bundle, std::string& identifier);
};
