#include "LogSession/LogDataValidator.h"
#include "LogSession/LogSession.h"
#include "LogSession/LogSessionManager.h"
#include "LogSession/WrapperUTLogDataLog.h"
#include "Utility/src/Converters.h"
#include "Utility/src/RecordNames.h"
#include "Utility/src/StringUtils.h"

#include <algorithm>

namespace WRAPPERLAYER {

namespace {

/// Whether the handle is a live session; logs the entry of a data call.
bool EnterDataCall(const LogSession* session, const char* call, long line) {
    LogInfo(call, line);
    if (!LogSessionManager::GetInstance()->ValidateSession(session))
        return false;
    LogDebug(call, line, " has valid session");
    return true;
}

bool VerifyDocument(unsigned char* docId, int& length) {
    if (VerifyDocIdBuffer(docId, length))
        return true;
    LogDebug("VerifyDocIdBuffer: ", __LINE__);
    return false;
}

bool VerifyPair(LogSession* session, const char* pcKey, const char* pcValue, CheckedText& key,
                CheckedText& value) {
    const DataLogger document(session);
    return VerifyArgument(document, "pcKey", pcKey, key, kDataKeyKind, __LINE__) &&
           VerifyArgument(document, "pcValue", pcValue, value, kValueKind | kOptional, __LINE__);
}

} // namespace

int WRAPPERUTAddToSession(LogSession* session, const char* pcKey, const char* pcValue) {
    const MutexProxy lock(gApiMutex);
    CheckedText key, value;
    if (!EnterDataCall(session, "UTAddToSession", __LINE__) ||
        !VerifyPair(session, pcKey, pcValue, key, value))
        return 1;
    session->AddDataToSessionGroup(key, value);
    return 0;
}

int WRAPPERUTLogEvent(LogSession* session, const char* pcCategory, const char* pcSubCategory,
                      const char* pcEventName, unsigned char* docId, int docIdLength) {
    const MutexProxy lock(gApiMutex);
    if (!EnterDataCall(session, "UTLogEvent", __LINE__) || !VerifyDocument(docId, docIdLength))
        return 1;
    const DataLogger document(session);
    CheckedText category, subCategory, eventName;
    if (!VerifyArgument(document, "pcCategory", pcCategory, category,
                        kEventCategoryKind | kOptional, __LINE__) ||
        !VerifyArgument(document, "pcSubCategory", pcSubCategory, subCategory,
                        kSubCategoryKind | kOptional, __LINE__) ||
        !VerifyArgument(document, "pcEventName", pcEventName, eventName, kEventNameKind | kOptional,
                        __LINE__))
        return 1;
    const std::string hash = docId ? DocIdToHash(docId, docIdLength) : std::string();
    session->EventRecTag(category, subCategory, eventName,
                         docId ? std::string_view(hash) : RecordNames::kNoDocument);
    return 0;
}

int WRAPPERUTNewDataGroup(LogSession* session, const char* pcCategory, const char* pcSubCategory,
                          const char* pcGroupName, int* groupId, unsigned char* docId,
                          int docIdLength) {
    const MutexProxy lock(gApiMutex);
    if (groupId)
        *groupId = -1;
    if (!EnterDataCall(session, "UTNewDataGroup", __LINE__))
        return 1;
    if (!groupId) {
        LogDebug("UTNewDataGroup groupId: NULL", __LINE__);
        return 1;
    }
    if (!VerifyDocument(docId, docIdLength))
        return 1;
    const DataLogger document(session);
    std::string category, subCategory, groupName;
    if (!VerifyArgument(document, "pcCategory", pcCategory, category, kGroupCategoryKind,
                        __LINE__) ||
        !VerifyArgument(document, "pcSubCategory", pcSubCategory, subCategory,
                        kSubCategoryKind | kOptional, __LINE__) ||
        !VerifyArgument(document, "pcGroupName", pcGroupName, groupName, kGroupNameKind, __LINE__))
        return 1;
    NewDataGroup(session, category.c_str(), subCategory.c_str(), groupName.c_str(), *groupId, docId,
                 docIdLength);
    return 0;
}

int WRAPPERUTAddToGroup(LogSession* session, int groupId, const char* pcKey, const char* pcValue) {
    const MutexProxy lock(gApiMutex);
    CheckedText key, value;
    if (!EnterDataCall(session, "UTAddToGroup", __LINE__) ||
        !VerifyPair(session, pcKey, pcValue, key, value))
        return 1;
    return AddToGroup(session, groupId, key, value) ? 0 : 1;
}

bool VerifyString(const DataLogger& dataLogger, const char* input, CheckedText& out, int kind) {
    if (input) {
        const std::string_view text = input;
        if (LogDataValidator::StandsAsItIs(text, kind)) {
            out.Refer(text);
            return true;
        }
    }
    std::string treated;
    const bool isUsable = VerifyString(dataLogger, input, treated, kind);
    out.Keep(std::move(treated));
    return isUsable;
}

void NewDataGroup(LogSession* session, const char* category, const char* subCategory,
                  const char* groupName, int& groupId, unsigned char* docId, int docIdLength) {
    groupId = session->NewGroupTag(category, subCategory, groupName,
                                   DocIdToHash(docId, docIdLength).c_str());
}

bool AddToGroup(LogSession* session, int groupId, const char* key, const char* value) {
    if (!session || !key || !value) {
        LogDebug("AddToGroup: one of LogSession pcKey pcValue is NULL", __LINE__);
        return false;
    }
    return AddToGroup(session, groupId, std::string_view(key), std::string_view(value));
}

bool AddToGroup(LogSession* session, int groupId, std::string_view key, std::string_view value) {
    if (session->VerifyGroupId(groupId)) {
        session->DataRecTag(groupId, key, value);
        return true;
    }
    LogDebug("AddToGroup VerifyGroupId: ", __LINE__, Converters::NumberToString(groupId));
    // The report names an empty group opened for it, not the caller's id.
    const std::string reported = Converters::NumberToString(session->GenerateInvalidGroup());
    DataLogger(session).LogInvalidData(kInvalidGroupId, reported.c_str());
    return false;
}

bool VerifyDocIdBuffer(unsigned char* docId, int& length) {
    if (!docId)
        length = 0;
    if (length < 0)
        return false;
    // The host vouches for `length` bytes and no more.
    length = static_cast<int>(std::find(docId, docId + length, '\0') - docId);
    return true;
}

std::string DocIdToHash(unsigned char* docId, int length) {
    if (!docId)
        return RecordNames::kNoDocument;
    const std::string& user = LogSession::GetUserId();
    return StringUtils::Hash(docId, static_cast<unsigned long>(length), user.data(),
                             static_cast<unsigned long>(user.size()));
}

} // namespace WRAPPERLAYER
