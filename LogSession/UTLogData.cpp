#include "LogSession/UTLogData.h"

#include "LogSession/WrapperUTLogData.h"
#include "Platform/PlatformException.h"

using namespace WRAPPERLAYER;

namespace {

constexpr char kSourceUnit[] = "LogSession/UTLogData";

/// Runs a call. An exception of the platform ends it and is logged; any other object passes.
template <class Call>
void Guard(const char* message, long line, Call call) {
    try {
        call();
    } catch (const Platform::Exception&) {
        WRAPPERLAYER::logger->NoteDebug({message}, kSourceUnit, line);
    }
}

} // namespace

void UTInitialize(const char* pcUsagekey, unsigned char crashDetection, const char* pcAgentFolder) {
    Guard("Exception occurs for WRAPPERUTInitialize()", __LINE__,
          [=] { WRAPPERUTInitialize(pcUsagekey, (crashDetection & 1) != 0, pcAgentFolder); });
}

void UTStartSession(LogSession** session, const char* pcAppFamily, const char* pcAppName,
                    const char* pcAppversion, const char* pcAppbuild, const char* pcApplanguage) {
    Guard("Exception occurs for WRAPPERUTStartSession()", __LINE__, [=] {
        WRAPPERUTStartSession(session, pcAppFamily, pcAppName, pcAppversion, pcAppbuild,
                              pcApplanguage);
    });
}

void UTAddToSession(LogSession* session, const char* pcKey, const char* pcValue) {
    Guard("Exception occurs for WRAPPERUTAddToSession()", __LINE__,
          [=] { WRAPPERUTAddToSession(session, pcKey, pcValue); });
}

void UTLogEvent(LogSession* session, const char* pcCategory, const char* pcSubCategory,
                const char* pcEventName, unsigned char* documentId, int documentIdLength) {
    Guard("Exception occurs for WRAPPERUTLogEvent()", __LINE__, [=] {
        WRAPPERUTLogEvent(session, pcCategory, pcSubCategory, pcEventName, documentId,
                          documentIdLength);
    });
}

void UTNewDataGroup(LogSession* session, const char* pcCategory, const char* pcSubCategory,
                    const char* pcGroupName, int* groupId, unsigned char* documentId,
                    int documentIdLength) {
    Guard("Exception occurs for WRAPPERUTNewDataGroup()", __LINE__, [=] {
        WRAPPERUTNewDataGroup(session, pcCategory, pcSubCategory, pcGroupName, groupId, documentId,
                              documentIdLength);
    });
}

void UTAddToGroup(LogSession* session, int groupId, const char* pcKey, const char* pcValue) {
    Guard("Exception occurs for UTAddToGroup()", __LINE__,
          [=] { WRAPPERUTAddToGroup(session, groupId, pcKey, pcValue); });
}

void UTCloseSession(LogSession** session) {
    Guard("Exception occurs for WRAPPERUTCloseSession()", __LINE__,
          [=] { WRAPPERUTCloseSession(session); });
}

int UTGetOptIn() {
    int value = -1;
    Guard("Exception occurs for WRAPPERUTGetOptIn()", __LINE__, [&] { WRAPPERUTGetOptIn(&value); });
    return value;
}

void UTSetOptIn(int optIn) {
    Guard("Exception occurs for WRAPPERUTSetOptIn()", __LINE__, [=] { WRAPPERUTSetOptIn(optIn); });
}

int UTOptInGet(const char* pcUsagekey) {
    int value = -1;
    Guard("Exception occurs for WRAPPERUTOptInGet()", __LINE__,
          [&] { WRAPPERUTOptInGet(pcUsagekey, &value); });
    return value;
}

void UTOptInSet(const char* pcUsagekey, int optIn) {
    Guard("Exception occurs for WRAPPERUTOptInSet()", __LINE__,
          [=] { WRAPPERUTOptInSet(pcUsagekey, optIn); });
}

void UTGetDemographic(const char* pcKey, char* buffer, unsigned long* length) {
    Guard("Exception occurs for WRAPPERUTGetDemographic()", __LINE__,
          [=] { WRAPPERUTGetDemographic(pcKey, buffer, length); });
}

void UTSetDemographic(const char* pcKey, const char* pcValue) {
    Guard("Exception occurs for WRAPPERUTSetDemographic()", __LINE__,
          [=] { WRAPPERUTSetDemographic(pcKey, pcValue); });
}

void UTGetNonDefaultDemographic(const char* productKey, const char* pcKey, char* buffer,
                                unsigned long* length) {
    Guard("Exception occurs for WRAPPERUTGetNonDefaultDemographic()", __LINE__,
          [=] { WRAPPERUTGetNonDefaultDemographic(productKey, pcKey, buffer, length); });
}

void UTSetNonDefaultDemographic(const char* productKey, const char* pcKey, const char* pcValue) {
    Guard("Exception occurs for WRAPPERUTSetNonDefaultDemographic()", __LINE__,
          [=] { WRAPPERUTSetNonDefaultDemographic(productKey, pcKey, pcValue); });
}

int UTSetSerializationState(int serializationState) {
    int result = 0;
    Guard("Exception occurs for WRAPPERUTSetSerializationState()", __LINE__,
          [&] { result = WRAPPERUTSetSerializationState(serializationState); });
    return result;
}
