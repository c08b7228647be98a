#include "Utility/src/LogSessionUtils.h"

#include "Utility/src/Mac/PreferenceUtil.h"
#include "Utility/src/PreferenceKeys.h"
#include "Utility/src/TimeUtils.h"

namespace {

std::string Text(const char* text) {
    return text ? text : "";
}

template <class Value>
bool Read(const char* productKey, const char* subKey, Value& out) {
    return PreferenceUtil::GetPreferenceValue(Text(productKey), Text(subKey),
                                              PreferenceKeys::kDomain, out,
                                              kCFPreferencesCurrentUser, kCFPreferencesCurrentHost);
}

template <class Value>
bool Store(const char* productKey, const char* subKey, const Value& value) {
    return PreferenceUtil::SetPreferenceValue(Text(productKey), Text(subKey),
                                              PreferenceKeys::kDomain, value,
                                              kCFPreferencesCurrentUser, kCFPreferencesCurrentHost);
}

void Remove(const char* productKey, const char* subKey) {
    PreferenceUtil::DeletePreferenceValue(Text(productKey), subKey, PreferenceKeys::kDomain,
                                          kCFPreferencesCurrentUser, kCFPreferencesCurrentHost);
}

/// A switch that is on unless a zero is stored.
bool ReadSwitch(const char* key, const char* domain, CFStringRef user) {
    int value = -1;
    PreferenceUtil::GetPreferenceValue(key, domain, value, user, kCFPreferencesCurrentHost);
    return value != 0;
}

} // namespace

bool LogSessionUtils::IsVistraEnabled() {
    return ReadSwitch(PreferenceKeys::kEnabled, PreferenceKeys::kEnablementDomain,
                      kCFPreferencesAnyUser);
}

bool LogSessionUtils::UsageCompressFlag() {
    return true;
}

bool LogSessionUtils::UsageObfuscateFlag() {
    return ReadSwitch(PreferenceKeys::kObfuscate, PreferenceKeys::kDomain,
                      kCFPreferencesCurrentUser);
}

bool LogSessionUtils::UsageSendFlag() {
    return ReadSwitch(PreferenceKeys::kSend, PreferenceKeys::kDomain, kCFPreferencesCurrentUser);
}

int LogSessionUtils::GetOptIn(const char* productKey) {
    int value = kOptInUnknown;
    Read(productKey, PreferenceKeys::kOptIn, value);
    return value;
}

bool LogSessionUtils::SetOptIn(const char* productKey, int value) {
    if (value == kOptedIn || value == kOptedOut) {
        Store(productKey, PreferenceKeys::kOptIn, value);
    } else if (value == kOptInUnknown) {
        Remove(productKey, PreferenceKeys::kOptIn);
        Remove(productKey, PreferenceKeys::kDemographic);
    }
    return true;
}

bool LogSessionUtils::ReadOptIn(const char* productKey, int& value) {
    int stored = kOptInUnknown;
    if (!PreferenceUtil::ReadPreferenceValue(Text(productKey), PreferenceKeys::kOptIn,
                                             PreferenceKeys::kDomain, stored,
                                             kCFPreferencesCurrentUser, kCFPreferencesCurrentHost))
        return false;
    value = stored;
    return true;
}

void LogSessionUtils::RestoreOptIn(const char* productKey, int value) {
    if (value == kOptInUnknown)
        Remove(productKey, PreferenceKeys::kOptIn);
    else
        SetOptIn(productKey, value);
}

bool LogSessionUtils::SetOptIn(const char* productKey, const char* subKey, const char* value) {
    return value && Store(productKey, subKey, std::string(value));
}

bool LogSessionUtils::CheckOptInExist(const char* productKey, const char* subKey) {
    std::string ignored;
    return GetOptIn(productKey, subKey, ignored);
}

bool LogSessionUtils::GetOptIn(const char* productKey, const char* subKey, std::string& out) {
    return Read(productKey, subKey, out);
}

std::string LogSessionUtils::GenerateOptInDateKey(const std::string&) {
    return PreferenceKeys::kDate;
}

int LogSessionUtils::CheckOptDate(const std::string& productKey) {
    if (productKey.empty())
        return -1;
    PreferenceUtil::AddPreferenceValue(productKey, GenerateOptInDateKey(productKey),
                                       PreferenceKeys::kDomain, TimeUtils::CalcTime(),
                                       kCFPreferencesCurrentUser, kCFPreferencesCurrentHost);
    return 0;
}

bool LogSessionUtils::GetSerializationState(const char* productKey, const char* subKey, int& out) {
    return Read(productKey, subKey, out);
}

bool LogSessionUtils::SetSerializationState(const char* productKey, const char* subKey, int value) {
    return Store(productKey, subKey, value);
}

std::string LogSessionUtils::GetUserType() {
    std::string type;
    PreferenceUtil::GetPreferenceValue(PreferenceKeys::kUserType, PreferenceKeys::kDomain, type,
                                       kCFPreferencesCurrentUser, kCFPreferencesCurrentHost);
    return type;
}
