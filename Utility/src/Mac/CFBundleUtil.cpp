#include "Utility/src/Mac/CFBundleUtil.h"

CFBundleRef CFBundleUtil::GetMainBundle() {
    return Platform::MainBundle();
}

CFBundleRef CFBundleUtil::GetBundle(const std::string& identifier) {
    return identifier.empty() ? nullptr : Platform::LoadedBundle(identifier);
}

bool CFBundleUtil::GetPropertyFromBundle(const CFBundleRef& bundle, const std::string& key,
                                         std::string& out) {
    const Platform::PropertyList* value = bundle ? bundle->info.Find(key) : nullptr;
    if (!value || !value->AsString())
        return false;
    out = *value->AsString();
    return true;
}

bool CFBundleUtil::GetPropertyFromBundle(const CFBundleRef& bundle, const std::string& key,
                                         int& out) {
    const Platform::PropertyList* value = bundle ? bundle->info.Find(key) : nullptr;
    const std::optional<int> number = value ? value->AsNumber() : std::nullopt;
    out = number.value_or(out);
    return number.has_value();
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
