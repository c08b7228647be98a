#include "Utility/src/Mac/Preference.h"

#include "Utility/src/Mac/CommonMacUtils.h"
#include "Utility/src/Mac/PropertyListTreeOpt.h"
#include "Utility/src/StringUtils.h"

#include <algorithm>

using Platform::PropertyList;

namespace {

constexpr char kPathSeparator[] = "/";

/// The components of a key path as platform strings: the top-level key, and those below it.
class KeyPath {
public:
    /// Delegates, so that the keys are released also when memory runs out half-way.
    explicit KeyPath(const std::string& path) : KeyPath() {
        std::vector<std::string> parts;
        StringUtils::SplitStr(path, parts, kPathSeparator);
        StringUtils::ConvertStdStrVecToCFStrVec(parts, m_keys);
        if (IsValid())
            below.assign(m_keys.begin() + 1, m_keys.end());
    }
    ~KeyPath() { StringUtils::ReleaseCFStrVec(m_keys); }
    KeyPath(const KeyPath&) = delete;
    KeyPath& operator=(const KeyPath&) = delete;

    /// False when no value so deep can be stored. Building the dictionaries on the way to it could
    /// take more of the caller's stack than there is.
    bool CanBeStored() const { return below.size() + 1 < Platform::kMaximumPropertyListDepth; }

    bool IsValid() const {
        return !m_keys.empty() && std::find(m_keys.begin(), m_keys.end(), nullptr) == m_keys.end();
    }
    CFStringRef Top() const { return m_keys.front(); }

    PropertyListTreeOpt::Keys below;

private:
    KeyPath() = default;

    std::vector<CFStringRef> m_keys;
};

} // namespace

Preference::Preference(const std::string& domain, CFStringRef user, CFStringRef host)
    : m_domain(domain), m_user(user), m_host(host) {}

bool Preference::ReadTopLevel(CFStringRef key, CFPropertyListRef& value) const {
    return Platform::SynchronizePreferences(m_domain.Get(), m_user, m_host) &&
           Platform::CopyPreferenceValue(key, m_domain.Get(), m_user, m_host, value);
}

bool Preference::WriteTopLevel(CFStringRef key, const PropertyList* value) const {
    return Platform::SetPreferenceValue(key, value, m_domain.Get(), m_user, m_host) &&
           Platform::SynchronizePreferences(m_domain.Get(), m_user, m_host);
}

CFPropertyListRef Preference::CopyNode(const std::string& path) const {
    const KeyPath keys(path);
    if (!IsUsable() || !keys.IsValid())
        return nullptr;
    CFPropertyListRef root;
    if (!ReadTopLevel(keys.Top(), root))
        return nullptr;
    const PropertyList* node = PropertyListTreeOpt::GetNode(root.get(), keys.below);
    return node ? CFPropertyListRef(root, node) : nullptr;
}

bool Preference::GetValue(const std::string& path, int& out) const {
    return CommonMacUtils::Convert(CopyNode(path).get(), out);
}

bool Preference::GetValue(const std::string& path, std::string& out) const {
    return CommonMacUtils::Convert(CopyNode(path).get(), out);
}

bool Preference::SetValue(const std::string& path, int value) const {
    const PropertyList number(value);
    return SetValueHelper(path, &number);
}

bool Preference::SetValue(const std::string& path, const std::string& value) const {
    const PropertyList text(value);
    return SetValueHelper(path, &text);
}

bool Preference::SetValueHelper(const std::string& path, const PropertyList* value) const {
    const KeyPath keys(path);
    if (!IsUsable() || !keys.IsValid() || !keys.CanBeStored() || !value)
        return false;
    if (keys.below.empty())
        return WriteTopLevel(keys.Top(), value);
    CFPropertyListRef root;
    if (!ReadTopLevel(keys.Top(), root))
        return false;
    if (!root || !root->AsDictionary())
        root = std::make_shared<PropertyList>();
    PropertyListTreeOpt::SetNode(root, keys.below, value);
    return WriteTopLevel(keys.Top(), root.get());
}

void Preference::DeleteValue(const std::string& path) const {
    DeleteValueHelper(path);
}

void Preference::DeleteValueHelper(const std::string& path) const {
    KeyPath keys(path);
    if (!IsUsable() || !keys.IsValid() || keys.below.empty())
        return;
    CFPropertyListRef root;
    if (ReadTopLevel(keys.Top(), root) && PropertyListTreeOpt::RemoveNode(root, keys.below))
        WriteTopLevel(keys.Top(), root.get());
}

bool Preference::EnumSubKeyAndVals(const std::string& path,
                                   std::vector<std::pair<std::string, std::string>>& out) const {
    return EnumSubKeyAndValsHelper(path, out);
}

bool Preference::EnumSubKeyAndValsHelper(
    const std::string& path, std::vector<std::pair<std::string, std::string>>& out) const {
    return CommonMacUtils::AppendStringPairs(CopyNode(path).get(), out);
}
