#include "Utility/src/Mac/NSBundleUtil.h"

#include "Utility/src/Mac/CFBundleUtil.h"

bool NSBundleUtil::ValidateMainBundle() {
    const CFBundleRef bundle = CFBundleUtil::GetMainBundle();
    return bundle && !bundle->identifier.empty();
}

CFBundleRef NSBundleUtil::GetMainBundle() {
    return ValidateMainBundle() ? CFBundleUtil::GetMainBundle() : nullptr;
}

CFBundleRef NSBundleUtil::GetBundle(const std::string& identifier) {
    return ValidateMainBundle() ? CFBundleUtil::GetBundle(identifier) : nullptr;
}

CFBundleRef NSBundleUtil::GetBundleWithPath(const std::string& path) {
    return ValidateMainBundle() ? Platform::BundleAtPath(path) : nullptr;
}

bool NSBundleUtil::GetPropertyFromBundle(const CFBundleRef& bundle, const std::string& key,
                                         std::string& out) {
    return ValidateMainBundle() && CFBundleUtil::GetPropertyFromBundle(bundle, key, out);
}

bool NSBundleUtil::GetPropertyFromBundle(const CFBundleRef& bundle, const std::string& key,
                                         int& out) {
    return ValidateMainBundle() && CFBundleUtil::GetPropertyFromBundle(bundle, key, out);
}

bool NSBundleUtil::GetPropertyFromBundle(const std::string& identifier, const std::string& key,
                                         std::string& out) {
    return GetPropertyFromBundle(GetBundle(identifier), key, out);
}

bool NSBundleUtil::GetPropertyFromBundle(const std::string& identifier, const std::string& key,
                                         int& out) {
    return GetPropertyFromBundle(GetBundle(identifier), key, out);
}

std::string NSBundleUtil::GetBundleLocation(const CFBundleRef& bundle) {
    return ValidateMainBundle() ? CFBundleUtil::GetBundleLocaton(bundle) : std::string();
}
