#pragma once

#include "LogSession/DataLogger.h"
#include "Platform/ThreadAnnotations.h"
#include "Utility/src/Logger.h"
#include "Utility/src/Mutex.h"

#include <string>
#include <string_view>
#include <utility>

class LogSession;

/// A host's string after its check. Most need no treatment, and thus no copy.
class CheckedText {
public:
    CheckedText() = default;
    CheckedText(const CheckedText&) = delete;
    CheckedText& operator=(const CheckedText&) = delete;

    void Refer(std::string_view text) { m_text = text; }
    /// For a text, or a marker, that is not the host's own.
    void Keep(std::string text) {
        m_kept = std::move(text);
        m_text = m_kept;
    }
    operator std::string_view() const { return m_text; }

private:
    std::string_view m_text;
    std::string m_kept;
};

/// What the exported functions do. Every WRAPPERUT function holds the API lock for its whole
/// duration, logs its entry, checks the caller's strings in argument order, and returns 0 for
/// success and 1 for failure. The other functions expect the lock to be held.
namespace WRAPPERLAYER {

extern Mutex* const gApiMutex;
extern Logger* const logger;

// Sessions.

int WRAPPERUTInitialize(const char* pcUsagekey, bool crashDetection, const char* agentFolder);
int WRAPPERUTStartSession(LogSession** out, const char* pcAppFamily, const char* pcAppName,
                          const char* pcAppversion, const char* pcAppbuild,
                          const char* pcApplanguage);
int WRAPPERUTCloseSession(LogSession** session);

// Data.

int WRAPPERUTAddToSession(LogSession* session, const char* pcKey, const char* pcValue);
int WRAPPERUTLogEvent(LogSession* session, const char* pcCategory, const char* pcSubCategory,
                      const char* pcEventName, unsigned char* docId, int docIdLength);
int WRAPPERUTNewDataGroup(LogSession* session, const char* pcCategory, const char* pcSubCategory,
                          const char* pcGroupName, int* groupId, unsigned char* docId,
                          int docIdLength);
int WRAPPERUTAddToGroup(LogSession* session, int groupId, const char* pcKey, const char* pcValue);

// Opt-in, demographic answers, serialization state.

int WRAPPERUTGetOptIn(int* value);
int WRAPPERUTSetOptIn(int value);
int WRAPPERUTOptInGet(const char* pcUsagekey, int* value);
int WRAPPERUTOptInSet(const char* pcUsagekey, int value);
int WRAPPERUTGetDemographic(const char* pcKey, char* buffer, unsigned long* length);
int WRAPPERUTSetDemographic(const char* pcKey, const char* pcValue);
int WRAPPERUTGetNonDefaultDemographic(const char* productKey, const char* pcKey, char* buffer,
                                      unsigned long* length);
int WRAPPERUTSetNonDefaultDemographic(const char* productKey, const char* pcKey,
                                      const char* pcValue);
int WRAPPERUTSetSerializationState(int state);

/// Whether an initialisation has been accepted.
bool UTInitialize_Called() VISTRA_REQUIRES(gApiMutex);

/// Checks one string. `out` receives the usable text or a marker; what was refused or cut goes
/// into the document of `dataLogger`. False when it was refused; does not log.
bool VerifyString(const DataLogger& dataLogger, const char* input, std::string& out, int kind);

/// The same for what hosts record: their own bytes where they may stand as they are.
bool VerifyString(const DataLogger& dataLogger, const char* input, CheckedText& out, int kind);

/// Reads the stored opt-in of a key. False, with `value` untouched, for a refused key, logged, and
/// when what is stored cannot be read.
bool OptInGet(const char* usageKey, int& value);
/// Stores an opt-in. False, logged, for a refused value or key.
bool OptInSet(const char* usageKey, int value);

/// Declares a group; its id goes to `groupId`.
void NewDataGroup(LogSession* session, const char* category, const char* subCategory,
                  const char* groupName, int& groupId, unsigned char* docId, int docIdLength);
/// Records a value of a group. False, logged, for a null argument and for an unknown group, which
/// is reported in the document.
bool AddToGroup(LogSession* session, int groupId, const char* key, const char* value);
bool AddToGroup(LogSession* session, int groupId, std::string_view key, std::string_view value);

/// Limits the length to the buffer's content; false for a negative one.
bool VerifyDocIdBuffer(unsigned char* docId, int& length);
/// The salted hash that stands for a document; "0" for none.
std::string DocIdToHash(unsigned char* docId, int length);

/// 0 on success, 1, logged, on failure; see the calls of the public header.
int GetDemographicHelper(const char* productKey, const char* key, char* buffer,
                         unsigned long& length);
int SetDemographicHelper(const char* productKey, const char* key, const char* value);

} // namespace WRAPPERLAYER
