#include "Utility/src/Mac/PreferenceUtil.h"

#include "Utility/src/Mac/CommonMacUtils.h"
#include "Utility/src/Mac/PlatformText.h"

using Platform::PropertyList;

namespace {

/// Where a top-level value is kept.
struct Place {
    const std::string& key;
    const std::string& domain;
    CFStringRef user;
    CFStringRef host;

    bool IsComplete() const { return !key.empty() && !domain.empty() && user && host; }

    /// False when the stored state cannot be read.
    bool Read(std::optional<PropertyList>& value) const {
        const PlatformText keyText(key), domainText(domain);
        return Platform::CopyPreferenceValue(keyText.Get(), domainText.Get(), user, host, value);
    }

    bool Synchronize() const {
        return Platform::SynchronizePreferences(PlatformText(domain).Get(), user, host);
    }

    /// Nothing when there is no value, or none can be read.
    std::optional<PropertyList> ReadCurrent() const {
        std::optional<PropertyList> value;
        if (IsComplete() && Synchronize())
            Read(value);
        return value;
    }

    /// The dictionary stored here, an empty one where nothing is stored. Nothing for any other
    /// value, and when the stored state cannot be read.
    std::optional<PropertyList> ReadForChange() const {
        std::optional<PropertyList> value;
        if (!IsComplete() || !Read(value))
            return std::nullopt;
        if (!value)
            value = PropertyList();
        return value->AsDictionary() ? value : std::nullopt;
    }

    bool Write(const PropertyList& value) const {
        const PlatformText keyText(key), domainText(domain);
        return Platform::SetPreferenceValue(keyText.Get(), &value, domainText.Get(), user, host) &&
               Synchronize();
    }
};

template <class Value>
bool ReadOneLevel(const Place& place, Value& out) {
    const std::optional<PropertyList> value = place.ReadCurrent();
    return CommonMacUtils::Convert(value ? &*value : nullptr, out);
}

template <class Value>
bool ReadTwoLevels(const Place& place, const std::string& subKey, Value& out) {
    if (subKey.empty())
        return false;
    const std::optional<PropertyList> dictionary = place.ReadCurrent();
    return CommonMacUtils::Convert(dictionary ? dictionary->Find(subKey) : nullptr, out);
}

template <class Value>
bool WriteOneLevel(const Place& place, const Value& value) {
    return place.IsComplete() && place.Write(PropertyList(value));
}

template <class Value>
bool WriteTwoLevels(const Place& place, const std::string& subKey, const Value& value) {
    std::optional<PropertyList> dictionary = place.ReadForChange();
    if (!dictionary || subKey.empty())
        return false;
    dictionary->AsDictionary()->insert_or_assign(subKey, PropertyList(value));
    return place.Write(*dictionary);
}

} // namespace

std::optional<PropertyList> PreferenceUtil::GetDictionary(const std::string& key,
                                                          const std::string& domain,
                                                          CFStringRef user, CFStringRef host) {
    return Place{key, domain, user, host}.ReadCurrent();
}

bool PreferenceUtil::GetPreferenceValue(const std::string& dictKey, const std::string& subKey,
                                        const std::string& domain, std::string& out,
                                        CFStringRef user, CFStringRef host) {
    return ReadTwoLevels({dictKey, domain, user, host}, subKey, out);
}

bool PreferenceUtil::GetPreferenceValue(const std::string& dictKey, const std::string& subKey,
                                        const std::string& domain, int& out, CFStringRef user,
                                        CFStringRef host) {
    return ReadTwoLevels({dictKey, domain, user, host}, subKey, out);
}

bool PreferenceUtil::GetPreferenceValue(const std::string& key, const std::string& domain,
                                        std::string& out, CFStringRef user, CFStringRef host) {
    return ReadOneLevel({key, domain, user, host}, out);
}

bool PreferenceUtil::GetPreferenceValue(const std::string& key, const std::string& domain, int& out,
                                        CFStringRef user, CFStringRef host) {
    return ReadOneLevel({key, domain, user, host}, out);
}

bool PreferenceUtil::SetPreferenceValue(const std::string& dictKey, const std::string& subKey,
                                        const std::string& domain, const std::string& value,
                                        CFStringRef user, CFStringRef host) {
    return WriteTwoLevels({dictKey, domain, user, host}, subKey, value);
}

bool PreferenceUtil::SetPreferenceValue(const std::string& dictKey, const std::string& subKey,
                                        const std::string& domain, const int& value,
                                        CFStringRef user, CFStringRef host) {
    return WriteTwoLevels({dictKey, domain, user, host}, subKey, value);
}

bool PreferenceUtil::SetPreferenceValue(const std::string& key, const std::string& domain,
                                        const std::string& value, CFStringRef user,
                                        CFStringRef host) {
    return WriteOneLevel({key, domain, user, host}, value);
}

bool PreferenceUtil::SetPreferenceValue(const std::string& key, const std::string& domain,
                                        const int& value, CFStringRef user, CFStringRef host) {
    return WriteOneLevel({key, domain, user, host}, value);
}

bool PreferenceUtil::AddPreferenceValue(const std::string& key, const std::string& domain,
                                        std::string& value, CFStringRef user, CFStringRef host) {
    PropertyList stored(value);
    const PlatformText keyText(key), domainText(domain);
    return Platform::AddPreferenceValue(keyText.Get(), stored, domainText.Get(), user, host) &&
           (CommonMacUtils::Convert(&stored, value) ||
            SetPreferenceValue(key, domain, value, user, host));
}

bool PreferenceUtil::AddPreferenceValue(const std::string& dictKey, const std::string& subKey,
                                        const std::string& domain, const std::string& value,
                                        CFStringRef user, CFStringRef host) {
    const Place place{dictKey, domain, user, host};
    std::optional<PropertyList> dictionary = place.ReadForChange();
    if (!dictionary || subKey.empty())
        return false;
    std::string there;
    if (CommonMacUtils::Convert(dictionary->Find(subKey), there))
        return true;
    dictionary->AsDictionary()->insert_or_assign(subKey, PropertyList(value));
    return place.Write(*dictionary);
}

bool PreferenceUtil::ReadPreferenceValue(const std::string& dictKey, const std::string& subKey,
                                         const std::string& domain, int& out, CFStringRef user,
                                         CFStringRef host) {
    const Place place{dictKey, domain, user, host};
    std::optional<PropertyList> dictionary;
    if (!place.IsComplete() || !place.Read(dictionary))
        return false;
    CommonMacUtils::Convert(dictionary ? dictionary->Find(subKey) : nullptr, out);
    return true;
}

bool PreferenceUtil::DeletePreferenceValue(const std::string& dictKey, const std::string& subKey,
                                           const std::string& domain, CFStringRef user,
                                           CFStringRef host) {
    const Place place{dictKey, domain, user, host};
    std::optional<PropertyList> dictionary = place.ReadForChange();
    if (!dictionary || subKey.empty())
        return false;
    dictionary->AsDictionary()->erase(subKey);
    return place.Write(*dictionary);
}

bool PreferenceUtil::EnumerateSubKeys(const std::string& key, std::vector<std::string>& out,
                                      const std::string& domain, CFStringRef user,
                                      CFStringRef host) {
    const std::optional<PropertyList> value = GetDictionary(key, domain, user, host);
    if (!value || !value->AsDictionary())
        return false;
    for (const auto& entry : *value->AsDictionary())
        out.push_back(entry.first);
    return true;
}

bool PreferenceUtil::EnumerateSubKeys(const std::string& key, const std::string& domain,
                                      std::vector<std::pair<std::string, std::string>>& out,
                                      CFStringRef user, CFStringRef host) {
    const std::optional<PropertyList> value = GetDictionary(key, domain, user, host);
    return CommonMacUtils::AppendStringPairs(value ? &*value : nullptr, out);
}
