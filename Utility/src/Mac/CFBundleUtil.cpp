#include "Utility/src/Mac/CFBundleUtil.h"

#include "Utility/src/Mac/CommonMacUtils.h"

CFBundleRef CFBundleUtil::GetMainBundle() {
    return Platform::MainBundle();
}

CFBundleRef CFBundleUtil::GetBundle(const std::string& identifier) {
    return identifier.empty() ? nullptr : Platform::LoadedBundle(identifier);
}

bool CFBundleUtil::GetPropertyFromBundle(const CFBundleRef& bundle, const std::string& key,
                                         std::string& out) {
    return CommonMacUtils::Convert(bundle ? bundle->info->Find(key) : nullptr, out);
}

bool CFBundleUtil::GetPropertyFromBundle(const CFBundleRef& bundle, const std::string& key,
                                         int& out) {
    return CommonMacUtils::Convert(bundle ? bundle->info->Find(key) : nullptr, out);
}

bool CFBundleUtil::GetPropertyFromBundle(const std::string& identifier, const std::string& key,
                                         std::string& out) {
    return GetPropertyFromBundle(GetBundle(identifier), key, out);
}

bool CFBundleUtil::GetPropertyFromBundle(const std::string& identifier, const std::string& key,
                                         int& out) {
    return GetPropertyFromBundle(GetBundle(identifier), key, out);
}

std::string CFBundleUtil::GetBundleLocaton(const CFBundleRef& bundle) {
    return bundle ? bundle->location : std::string();
}

bool CFBundleUtil::GetBundleIdentifier(const CFBundleRef& bundle, std::string& identifier) {
    if (!bundle || bundle->identifier.empty())
        return false;
    identifier = bundle->identifier;
    return true;
}
