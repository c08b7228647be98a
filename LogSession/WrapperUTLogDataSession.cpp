#include "LogSession/CrashHandler.h"
#include "LogSession/LogDataValidator.h"
#include "LogSession/LogSession.h"
#include "LogSession/LogSessionManager.h"
#include "LogSession/OptInPolicy.h"
#include "LogSession/WrapperUTLogDataLog.h"
#include "Utility/src/ConfigVocabulary.h"
#include "Utility/src/LogSessionUtils.h"
#include "Utility/src/Mac/LogTransUtilsMac.h"
#include "Utility/src/RecordNames.h"

#include <exception>
#include <memory>
#include <new>
#include <utility>

namespace WRAPPERLAYER {

namespace {

/// Loading the library has nobody to tell that memory has run out.
Mutex* CreateApiMutex() noexcept {
    alignas(Mutex) static unsigned char storage[sizeof(Mutex)];
    try {
        return GarbageCollection::CreateGlobalObj<Mutex>();
    } catch (const std::exception&) {
        return new (storage) Mutex();
    }
}

} // namespace

Mutex* const gApiMutex = CreateApiMutex();
Logger* const logger = Logger::GetLogger(kLoggerName);

namespace {

struct ProductTexts {
    std::string family, name, version, build, language;
};

bool VerifyProduct(ProductTexts& product, const char* pcAppFamily, const char* pcAppName,
                   const char* pcAppversion, const char* pcAppbuild, const char* pcApplanguage) {
    const DataLogger nowhere(nullptr);
    constexpr int kRequired = kValueKind;
    constexpr int kOptionalValue = kValueKind | kOptional;
    return VerifyArgument(nowhere, "pcAppFamily", pcAppFamily, product.family, kRequired,
                          __LINE__) &&
           VerifyArgument(nowhere, "pcAppName", pcAppName, product.name, kRequired, __LINE__) &&
           VerifyArgument(nowhere, "pcAppversion", pcAppversion, product.version, kRequired,
                          __LINE__) &&
           VerifyArgument(nowhere, "pcAppbuild", pcAppbuild, product.build, kOptionalValue,
                          __LINE__) &&
           VerifyArgument(nowhere, "pcApplanguage", pcApplanguage, product.language, kOptionalValue,
                          __LINE__);
}

/// Every gate but consent; the first that refuses is logged.
bool PassesGates(const char* pcAppFamily, const char* pcAppName) {
    if (LogDataValidator::VerifyConfigStatus(ConfigVocabulary::kUlogSection, pcAppFamily,
                                             pcAppName) != kAccepted) {
        LogDebug("VerifyConfigStatus failure", __LINE__);
        return false;
    }
    const std::string usageKey = OptInPolicy::GetInstance()->GetUsageKey();
    int optIn = kOptInUnknown;
    if (!OptInGet(usageKey.c_str(), optIn)) {
        LogDebug("gsPrefx: ", __LINE__, usageKey);
        return false;
    }
    LogSession::GetUserId();
    if (LogDataValidator::VerifyTransAgentExist() != kAccepted) {
        LogDebug("VerifyTransAgentExist failure", __LINE__);
        return false;
    }
    if (LogDataValidator::VerifyGroupPolicy() != kAccepted) {
        LogDebug("VerifyGroupPolicy failure", __LINE__);
        return false;
    }
    return true;
}

/// Writes a change of the product's opt-in and hands it to the agent.
void RefreshOptInDocument(const ProductTexts& product) {
    std::string path;
    if (LogSession::GenerateOptInfoLogFile(product.family, product.name, product.version, path) &&
        LogSessionUtils::UsageSendFlag())
        LogTransUtils::UploadLog(path);
}

/// Ends the life of a session, whatever became of its document. It bears the registry, because to
/// make that one may run out of memory.
struct SessionEnd {
    LogSessionManager* sessions;

    void operator()(LogSession* session) const {
        sessions->Remove(session);
        delete session;
    }
};
using OwnedSession = std::unique_ptr<LogSession, SessionEnd>;

/// Makes and registers the session, and marks it as open.
LogSession* OpenSession(const ProductTexts& product) {
    LogSessionManager* const sessions = LogSessionManager::GetInstance();
    OwnedSession session(new LogSession(product.family.c_str(), product.name.c_str(),
                                        product.version.c_str(), product.build.c_str(),
                                        product.language.c_str()),
                         SessionEnd{sessions});
    try {
        LogSessionUtils::CheckOptDate(product.family);
        sessions->Add(session.get());
        if (OptInPolicy::GetInstance()->GetCrashDetection())
            CrashHandler::SetCrashHandler(session.get(), product.family);
    } catch (const std::exception&) {
        session->Discard();
        throw;
    }
    return session.release();
}

const char* OptInText(int optIn) {
    switch (optIn) {
    case kOptInUnknown:
        return "UNKNOWN";
    case kOptedOut:
        return "FALSE";
    case kOptedIn:
        return "TRUE";
    default:
        return "";
    }
}

/// Records the user's consent at the end of a session's document.
void RecordOptIn(LogSession* session) {
    using namespace RecordNames;
    const std::string key = OptInPolicy::GetInstance()->GetUsageKey();
    const int optIn = LogSessionUtils::GetOptIn(key.c_str());
    int group = -1;
    NewDataGroup(session, kVistraCategory, nullptr, kOptInInfoGroup, group, nullptr, 0);
    AddToGroup(session, group, kOptInKey, key.c_str());
    AddToGroup(session, group, kOptInAnswer, OptInText(optIn));
    const std::string dateKey = LogSessionUtils::GenerateOptInDateKey(key);
    std::string date;
    if (LogSessionUtils::GetOptIn(key.c_str(), dateKey.c_str(), date))
        AddToGroup(session, group, kOptInDate, date.c_str());
}

/// The steps of a close. What one of them fails by is kept for the end: the next are to be done,
/// too.
class CloseSteps {
public:
    template <class Step>
    bool Try(Step step) {
        try {
            step();
            return true;
        } catch (const std::exception&) {
            m_failure = std::current_exception();
            return false;
        }
    }

    /// For a step that goes on where it stopped: memory that ran out may be there again.
    template <class Step>
    void TryTwice(Step step) {
        if (!Try(step))
            Try(step);
    }

    void RethrowFailure() const {
        if (m_failure)
            std::rethrow_exception(m_failure);
    }

private:
    std::exception_ptr m_failure;
};

void CloseDocument(LogSession* session) {
    CloseSteps steps;
    LogDebug("UTCloseSession has valid session", __LINE__);
    steps.Try([session] { RecordOptIn(session); });
    LogDebug("UTCloseSession Before EndSession: ", __LINE__);
    if (OptInPolicy::GetInstance()->GetCrashDetection())
        steps.TryTwice([session] { CrashHandler::RemoveSessionInfo(session); });
    steps.TryTwice([session] { session->EndSession(); });
    steps.RethrowFailure();
}

} // namespace

bool UTInitialize_Called() {
    return !OptInPolicy::GetInstance()->GetUsageKey().empty();
}

bool VerifyString(const DataLogger& dataLogger, const char* input, std::string& out, int kind) {
    const int code = LogDataValidator::VerifyString(input, out, kind);
    if (code == kAccepted)
        return true;
    dataLogger.LogInvalidData(kInvalidString, input);
    return code == kShortened;
}

int WRAPPERUTInitialize(const char* pcUsagekey, bool crashDetection, const char* agentFolder) {
    const MutexProxy lock(gApiMutex);
    LogInfo("UTInitialize", __LINE__);
    std::string key;
    if (!VerifyString(DataLogger(nullptr), pcUsagekey, key, kUsageKeyKind)) {
        LogDebug("pcUsagekey: ", __LINE__, key);
        return 1;
    }
    // What can run out of memory comes first: an initialisation counts whole or not at all.
    OptInPolicy* policy = OptInPolicy::GetInstance();
    LogTransUtils::SetLogTransportInputPath(agentFolder);
    policy->SetUsageKey(std::move(key));
    policy->SetCrashDetection(crashDetection);
    return 0;
}

int WRAPPERUTStartSession(LogSession** out, const char* pcAppFamily, const char* pcAppName,
                          const char* pcAppversion, const char* pcAppbuild,
                          const char* pcApplanguage) {
    const MutexProxy lock(gApiMutex);
    if (out)
        *out = nullptr;
    LogInfo("UTStartSession", __LINE__);
    if (!out) {
        LogDebug("UTStartSession session: NULL", __LINE__);
        return 1;
    }
    ProductTexts product;
    if (!VerifyProduct(product, pcAppFamily, pcAppName, pcAppversion, pcAppbuild, pcApplanguage) ||
        !PassesGates(pcAppFamily, pcAppName))
        return 1;
    const bool consent = OptInPolicy::GetInstance()->AllowsRecording();
    if (consent) {
        *out = OpenSession(product);
        LogDebug("UTStartSession Success: ", __LINE__);
    }
    RefreshOptInDocument(product);
    if (!consent)
        LogDebug("OptInPolicy: 0", __LINE__);
    return consent ? 0 : 1;
}

int WRAPPERUTCloseSession(LogSession** session) {
    const MutexProxy lock(gApiMutex);
    LogInfo("UTCloseSession", __LINE__);
    // Read once: the host's variable may change under another of its threads.
    LogSession* const open = session ? *session : nullptr;
    LogSessionManager* const sessions = LogSessionManager::GetInstance();
    if (!sessions->ValidateSession(open))
        return 1;
    {
        const OwnedSession owned(open, SessionEnd{sessions});
        *session = nullptr;
        CloseDocument(open);
    }
    LogDebug("UTCloseSession Success: ", __LINE__);
    return 0;
}

} // namespace WRAPPERLAYER
