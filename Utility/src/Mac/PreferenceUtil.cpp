#include "Utility/src/Mac/PreferenceUtil.h"

#include "Utility/src/Mac/CommonMacUtils.h"
#include "Utility/src/Mac/PlatformText.h"

using Platform::PropertyList;

namespace {

/// Where a top-level value is kept.
class Place {
public:
    Place(const std::string& key, const std::string& domain, CFStringRef user, CFStringRef host)
        : m_key(key), m_domain(domain), m_user(user), m_host(host),
          m_isComplete(!key.empty() && !domain.empty() && user && host) {}

    bool IsComplete() const { return m_isComplete; }

    /// Null where there is no value. False when the stored state cannot be read.
    bool Read(CFPropertyListRef& value) const {
        return Platform::CopyPreferenceValue(m_key.Get(), m_domain.Get(), m_user, m_host, value);
    }

    bool Synchronize() const {
        return Platform::SynchronizePreferences(m_domain.Get(), m_user, m_host);
    }

    /// Null when there is no value, or none can be read.
    CFPropertyListRef ReadCurrent() const {
        CFPropertyListRef value;
        if (IsComplete() && Synchronize())
            Read(value);
        return value;
    }

    /// The dictionary stored here, an empty one where nothing is stored. Null for any other value,
    /// and when the stored state cannot be read.
    CFPropertyListRef ReadForChange() const {
        CFPropertyListRef value;
        if (!IsComplete() || !Read(value))
            return nullptr;
        if (!value)
            value = std::make_shared<const PropertyList>();
        return value->AsDictionary() ? value : nullptr;
    }

    bool Write(const PropertyList& value) const {
        return Platform::SetPreferenceValue(m_key.Get(), &value, m_domain.Get(), m_user, m_host) &&
               Synchronize();
    }

private:
    const PlatformText m_key;
    const PlatformText m_domain;
    CFStringRef m_user;
    CFStringRef m_host;
    bool m_isComplete;
};

template <class Value>
bool ReadOneLevel(const Place& place, Value& out) {
    return CommonMacUtils::Convert(place.ReadCurrent().get(), out);
}

template <class Value>
bool ReadTwoLevels(const Place& place, const std::string& subKey, Value& out) {
    if (subKey.empty())
        return false;
    const CFPropertyListRef dictionary = place.ReadCurrent();
    return CommonMacUtils::Convert(dictionary ? dictionary->Find(subKey) : nullptr, out);
}

bool WriteOneLevel(const Place& place, const PropertyList& value) {
    return place.IsComplete() && place.Write(value);
}

/// Stores the value unless it is there already, or any text is and `keepText` is set.
bool WriteTwoLevels(const Place& place, const std::string& subKey, PropertyList value,
                    bool keepText = false) {
    const CFPropertyListRef dictionary = place.ReadForChange();
    if (!dictionary || subKey.empty())
        return false;
    const PropertyList* there = dictionary->Find(subKey);
    if (there && (*there == value || (keepText && there->AsString())))
        return true;
    PropertyList changed = *dictionary;
    changed.AsDictionary()->insert_or_assign(subKey, std::move(value));
    return place.Write(changed);
}

} // namespace

CFPropertyListRef PreferenceUtil::GetDictionary(const std::string& key, const std::string& domain,
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
    return WriteTwoLevels({dictKey, domain, user, host}, subKey, PropertyList(value));
}

bool PreferenceUtil::SetPreferenceValue(const std::string& dictKey, const std::string& subKey,
                                        const std::string& domain, const int& value,
                                        CFStringRef user, CFStringRef host) {
    return WriteTwoLevels({dictKey, domain, user, host}, subKey, PropertyList(value));
}

bool PreferenceUtil::SetPreferenceValue(const std::string& key, const std::string& domain,
                                        const std::string& value, CFStringRef user,
                                        CFStringRef host) {
    return WriteOneLevel({key, domain, user, host}, PropertyList(value));
}

bool PreferenceUtil::SetPreferenceValue(const std::string& key, const std::string& domain,
                                        const int& value, CFStringRef user, CFStringRef host) {
    return WriteOneLevel({key, domain, user, host}, PropertyList(value));
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
    return WriteTwoLevels({dictKey, domain, user, host}, subKey, PropertyList(value), true);
}

bool PreferenceUtil::ReadPreferenceValue(const std::string& dictKey, const std::string& subKey,
                                         const std::string& domain, int& out, CFStringRef user,
                                         CFStringRef host) {
    const Place place{dictKey, domain, user, host};
    CFPropertyListRef dictionary;
    if (!place.IsComplete() || !place.Read(dictionary))
        return false;
    CommonMacUtils::Convert(dictionary ? dictionary->Find(subKey) : nullptr, out);
    return true;
}

bool PreferenceUtil::DeletePreferenceValue(const std::string& dictKey, const std::string& subKey,
                                           const std::string& domain, CFStringRef user,
                                           CFStringRef host) {
    const Place place{dictKey, domain, user, host};
    const CFPropertyListRef dictionary = place.ReadForChange();
    if (!dictionary || subKey.empty())
        return false;
    PropertyList changed = *dictionary;
    changed.AsDictionary()->erase(subKey);
    return place.Write(changed);
}

bool PreferenceUtil::EnumerateSubKeys(const std::string& key, std::vector<std::string>& out,
                                      const std::string& domain, CFStringRef user,
                                      CFStringRef host) {
    const CFPropertyListRef value = GetDictionary(key, domain, user, host);
    if (!value || !value->AsDictionary())
        return false;
    for (const auto& entry : *value->AsDictionary())
        out.push_back(entry.first);
    return true;
}

bool PreferenceUtil::EnumerateSubKeys(const std::string& key, const std::string& domain,
                                      std::vector<std::pair<std::string, std::string>>& out,
                                      CFStringRef user, CFStringRef host) {
    return CommonMacUtils::AppendStringPairs(GetDictionary(key, domain, user, host).get(), out);
}
