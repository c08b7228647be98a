#include "Utility/src/GUIDGen.h"

#include "Platform/Identifier.h"
#include "Utility/src/Mac/PreferenceUtil.h"
#include "Utility/src/PreferenceKeys.h"

std::string GUIDGen::GuidGen() {
    return Platform::CreateUuidText();
}

std::string GUIDGen::GetUsageUserGUID(bool readOnly) {
    using namespace PreferenceKeys;
    std::string guid;
    if (PreferenceUtil::GetPreferenceValue(kUserGuid, kDomain, guid, kCFPreferencesCurrentUser,
                                           kCFPreferencesCurrentHost) ||
        readOnly)
        return guid;
    guid = GuidGen();
    // Another program of the user may be at the same: both go on with the one that is stored.
    if (!guid.empty())
        PreferenceUtil::AddPreferenceValue(kUserGuid, kDomain, guid, kCFPreferencesCurrentUser,
                                           kCFPreferencesCurrentHost);
    return guid;
}
