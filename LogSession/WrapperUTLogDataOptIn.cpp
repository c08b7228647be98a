#include "LogSession/LogDataValidator.h"
#include "LogSession/OptInPolicy.h"
#include "LogSession/WrapperUTLogDataLog.h"
#include "Utility/src/Converters.h"
#include "Utility/src/DemographicNode.h"
#include "Utility/src/LogSessionUtils.h"

namespace WRAPPERLAYER {

namespace {

constexpr unsigned kLastSerializationState = 3;

/// Keeps the cached value of the host's own key up to date.
void CacheOptIn(const std::string& key, int value) {
    OptInPolicy* policy = OptInPolicy::GetInstance();
    if (key == policy->GetUsageKey())
        policy->SetOptIn(value);
}

void LogOptIn(const char* operation, const std::string& key, int value) noexcept {
    LogInfo(operation, __LINE__, key, "value: ", Converters::NumberToString(value));
}

bool VerifyUsageKey(const char* refusal, const char* usageKey, std::string& key) {
    if (VerifyString(DataLogger(nullptr), usageKey, key, kUsageKeyKind))
        return true;
    LogDebug(refusal, __LINE__, key);
    return false;
}

int GetDemographic(const char* productKey, const char* pcKey, char* buffer, unsigned long* length,
                   const char* failure) {
    if (length && GetDemographicHelper(productKey, pcKey, buffer, *length) == 0)
        return 0;
    LogDebug(failure, __LINE__);
    return 1;
}

int SetDemographic(const char* productKey, const char* pcKey, const char* pcValue,
                   const char* failure) {
    if (SetDemographicHelper(productKey, pcKey, pcValue) == 0)
        return 0;
    LogDebug(failure, __LINE__);
    return 1;
}

} // namespace

bool OptInGet(const char* usageKey, int& value) {
    std::string key;
    if (!VerifyUsageKey("OptInGet VerifyString pcUsagekey: ", usageKey, key))
        return false;
    // What cannot be read is no answer: one that is known goes on to hold.
    if (!LogSessionUtils::ReadOptIn(key.c_str(), value))
        return false;
    CacheOptIn(key, value);
    LogOptIn("OptInGet: ", key, value);
    return true;
}

bool OptInSet(const char* usageKey, int value) {
    if (LogDataValidator::VerifyOptinValue(value, kOptedIn, kOptedOut, kOptInUnknown) !=
        kAccepted) {
        LogDebug("OptInSet VerifyOptinValue: ", __LINE__, Converters::NumberToString(value));
        return false;
    }
    std::string key;
    if (!VerifyUsageKey("OptInSet VerifyString pcUsagekey: ", usageKey, key))
        return false;
    CacheOptIn(key, value); // the user's word holds in this process, whatever becomes of the store
    LogSessionUtils::SetOptIn(key.c_str(), value);
    LogSessionUtils::CheckOptDate(key);
    LogOptIn("OptInSet: ", key, value);
    return true;
}

int WRAPPERUTGetOptIn(int* value) {
    const MutexProxy lock(gApiMutex);
    LogInfo("UTGetOptIn", __LINE__);
    const std::string key = OptInPolicy::GetInstance()->GetUsageKey();
    return value && OptInGet(key.c_str(), *value) ? 0 : 1;
}

int WRAPPERUTSetOptIn(int value) {
    const MutexProxy lock(gApiMutex);
    LogInfo("UTSetOptIn", __LINE__);
    const std::string key = OptInPolicy::GetInstance()->GetUsageKey();
    return OptInSet(key.c_str(), value) ? 0 : 1;
}

int WRAPPERUTOptInGet(const char* pcUsagekey, int* value) {
    const MutexProxy lock(gApiMutex);
    LogInfo("UTOptInGet", __LINE__);
    return value && OptInGet(pcUsagekey, *value) ? 0 : 1;
}

int WRAPPERUTOptInSet(const char* pcUsagekey, int value) {
    const MutexProxy lock(gApiMutex);
    LogInfo("UTOptInSet", __LINE__);
    return OptInSet(pcUsagekey, value) ? 0 : 1;
}

int GetDemographicHelper(const char* productKey, const char* key, char* buffer,
                         unsigned long& length) {
    LogInfo("GetDemographicHelper", __LINE__);
    std::string answerKey;
    if (!VerifyArgument(DataLogger(nullptr), "pcKey", key, answerKey, kDemographicKeyKind,
                        __LINE__))
        return 1;
    if (buffer && length == 0) {
        *buffer = '\0';
        return 0;
    }
    std::size_t size = length;
    if (!DemographicNode(productKey).GetValue(answerKey.c_str(), buffer, size, !buffer)) {
        LogDebug("GetDemographicHelper failed ", __LINE__);
        return 1;
    }
    length = static_cast<unsigned long>(size);
    return 0;
}

int SetDemographicHelper(const char* productKey, const char* key, const char* value) {
    LogInfo("SetDemographicHelper", __LINE__);
    const DataLogger nowhere(nullptr);
    std::string answerKey, answer;
    if (!VerifyArgument(nowhere, "pcKey", key, answerKey, kDemographicKeyKind, __LINE__) ||
        !VerifyArgument(nowhere, "pcValue", value, answer, kDemographicValueKind | kOptional,
                        __LINE__))
        return 1;
    if (DemographicNode(productKey).SetValue(answerKey.c_str(), answer.c_str()))
        return 0;
    LogDebug("SetDemographicHelper failed ", __LINE__);
    return 1;
}

int WRAPPERUTGetDemographic(const char* pcKey, char* buffer, unsigned long* length) {
    const MutexProxy lock(gApiMutex);
    LogInfo("UTGetDemographic", __LINE__);
    return GetDemographic(nullptr, pcKey, buffer, length, "UTGetDemographic failed ");
}

int WRAPPERUTSetDemographic(const char* pcKey, const char* pcValue) {
    const MutexProxy lock(gApiMutex);
    LogInfo("UTSetDemographic", __LINE__);
    return SetDemographic(nullptr, pcKey, pcValue, "UTSetDemographic failed ");
}

int WRAPPERUTGetNonDefaultDemographic(const char* productKey, const char* pcKey, char* buffer,
                                      unsigned long* length) {
    const MutexProxy lock(gApiMutex);
    LogInfo("GetNonDefaultDemographic", __LINE__);
    return GetDemographic(productKey, pcKey, buffer, length, "GetNonDefaultDemographic failed ");
}

int WRAPPERUTSetNonDefaultDemographic(const char* productKey, const char* pcKey,
                                      const char* pcValue) {
    const MutexProxy lock(gApiMutex);
    LogInfo("SetNonDefaultDemographic", __LINE__);
    return SetDemographic(productKey, pcKey, pcValue, "SetNonDefaultDemographic failed ");
}

int WRAPPERUTSetSerializationState(int state) {
    const MutexProxy lock(gApiMutex);
    if (static_cast<unsigned>(state) <= kLastSerializationState)
        OptInPolicy::GetInstance()->SetSerializationState(state);
    LogInfo("SetSerializationState: ", __LINE__, Converters::NumberToString(state));
    return 0;
}

} // namespace WRAPPERLAYER
