#include "Utility/src/DemographicNode.h"

#include "Utility/src/Mac/Preference.h"
#include "Utility/src/PreferenceKeys.h"

#include <algorithm>
#include <cstring>

namespace {

Preference OpenStore() {
    return Preference(PreferenceKeys::kDomain, kCFPreferencesCurrentUser,
                      kCFPreferencesCurrentHost);
}

std::string AnswersPath(const std::string& name) {
    return name + "/" + PreferenceKeys::kDemographic;
}

std::string AnswerPath(const std::string& name, const char* key) {
    return AnswersPath(name) + "/" + key;
}

} // namespace

bool DemographicNode::SetValue(const char* key, const char* value) const {
    return key && value && OpenStore().SetValue(AnswerPath(m_name, key), std::string(value));
}

bool DemographicNode::GetValue(const char* key, char* buffer, std::size_t& size,
                               bool sizeOnly) const {
    if (!key || !*key || (!buffer && !sizeOnly))
        return false;
    std::string value;
    if (!OpenStore().GetValue(AnswerPath(m_name, key), value))
        return false;
    if (!sizeOnly)
        return CopyValue(value, buffer, size);
    size = value.size() + 1;
    return true;
}

bool DemographicNode::CopyValue(const std::string& value, char* buffer, std::size_t& size) const {
    const std::size_t copied = std::min(value.size(), size - 1);
    std::memcpy(buffer, value.data(), copied);
    buffer[copied] = '\0';
    size = copied + 1;
    return true;
}

void DemographicNode::EnumKeyValues(std::vector<std::pair<std::string, std::string>>& out) const {
    OpenStore().EnumSubKeyAndVals(AnswersPath(m_name), out);
}
