#include "LogSession/LogDataValidator.h"
#include "LogSession/LogSession.h"
#include "LogSession/OptInPolicy.h"
#include "Platform/PlatformException.h"
#include "Utility/src/LogSessionUtils.h"
#include "Utility/src/Mac/FileSystemUtils.h"
#include "Utility/src/Mac/LogTransUtilsMac.h"
#include "Utility/src/UsageRecord.h"

#include <utility>

namespace {

constexpr char kEveryDocument[] = "*.*";

} // namespace

void LogSession::SplitLog() {
    if (!m_enabled)
        return;
    Compose([this](std::string& record) {
        UsageRecord::AppendSplitSession(record, m_sessionId, m_clock.Now(), m_sequence);
        UsageRecord::AppendRootEnd(record);
    });
    WriteText(m_record);
    if (!m_enabled) // the failed write has handed the file off
        return;
    // Once the file is complete, running out of memory must not leave it open to further records,
    // nor begin the next one without a head.
    m_enabled = false;
    CloseFile();
    TransferFile();
    BeginNextFile();
}

void LogSession::BeginNextFile() {
    Compose([this](std::string& record) {
        UsageRecord::AppendHead(record);
        UsageRecord::AppendResumeSession(record,
                                         {m_sessionId, m_productFamily, m_productName,
                                          m_productVersion, m_productBuild, m_productLanguage,
                                          m_startTime, GetUserId()},
                                         m_clock.Now(), m_sequence);
    });
    m_enabled = true; // for a failed open leaves the session as it is, and a failed write does not
    try {
        WriteText(m_record);
    } catch (const Platform::Exception&) {
        m_enabled = false;
        throw;
    }
}

void LogSession::TransferFile() {
    const bool agentExists = LogDataValidator::VerifyTransAgentExist() == kAccepted;
    if (!agentExists || !OptInPolicy::GetInstance()->AllowsRecording()) {
        FileSystemUtils::DeleteFiles(m_logFolder, kEveryDocument, false);
        return;
    }
    const std::string inProgress = std::exchange(m_currentPath, std::string());
    const bool hasFolder = FileSystemUtils::IsDirectory(m_logFolder);
    if (hasFolder)
        FileSystemUtils::RenameFile(inProgress, GetTransLogFileName());
    ++m_fileIndex;
    m_bytesInFile = 0;
    if (hasFolder && LogSessionUtils::UsageSendFlag())
        LogTransUtils::UploadLog(m_currentPath);
}

void LogSession::EndSession() {
    if (!m_enabled)
        return;
    LogEndSessionTag();
    CloseFile();
    TransferFile();
}
