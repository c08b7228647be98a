#include "LogSession/LogDataValidator.h"
#include "Utility/src/LogSessionUtils.h"
#include "Utility/src/Mac/LogTransUtilsMac.h"
#include "Utility/src/TransConfigUtils.h"

int LogDataValidator::VerifyConfigStatus(const std::string& prefix, const std::string& family,
                                         const std::string& name) {
    VS_CONFIG_STATE state = VS_CONFIG_DISABLED;
    TransConfigUtils::GetStatus(family, name, LogTransUtils::GetUserCfgFullPath(), prefix, &state,
                                nullptr);
    return state == VS_CONFIG_ACTIVE ? kAccepted : kConfigNotActive;
}

int LogDataValidator::VerifyTransAgentExist() {
    return LogTransUtils::AgentExists() ? kAccepted : kAgentMissing;
}

int LogDataValidator::VerifyGroupPolicy() {
    return LogSessionUtils::IsVistraEnabled() ? kAccepted : kRecordingDisabled;
}

int LogDataValidator::VerifyOptinValue(int value, int a, int b, int c) {
    return value == a || value == b || value == c ? kAccepted : kBadOptInValue;
}
