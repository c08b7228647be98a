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

bool LogSession::IsReady() {
    if (m_enabled && m_step != Step::Record)
        ContinueSplit();
    if (m_enabled && !m_hasEnded)
        HasFile(); // the record of one that cannot be opened is lost, and its number with it
    return m_enabled;
}

void LogSession::SplitLog() {
    if (!m_enabled)
        return;
    m_step = Step::EndFile;
    ContinueSplit();
}

void LogSession::ContinueSplit() {
    if (m_step == Step::EndFile)
        EndFile();
    if (m_enabled && m_step == Step::HandOver) {
        const bool hasUpload = HandOver();
        m_step = Step::BeginNextFile;
        if (hasUpload)
            Upload();
    }
    if (m_enabled && m_step == Step::BeginNextFile)
        BeginNextFile();
}

void LogSession::EndFile() {
    Compose([this](RecordBuffer& record) {
        UsageRecord::AppendSplitSession(record, m_sessionId, m_clock.Now(), m_sequence);
        UsageRecord::AppendRootEnd(record);
    });
    m_step = Step::HandOver;
    WriteComposed(); // a failed write hands the file off, and disables the session
    CloseFile();
}

void LogSession::BeginNextFile() {
    HasFile();
    if (!m_enabled)
        return;
    Compose([this](RecordBuffer& record) {
        UsageRecord::AppendHead(record);
        UsageRecord::AppendResumeSession(record,
                                         {m_sessionId, m_productFamily, m_productName,
                                          m_productVersion, m_productBuild, m_productLanguage,
                                          m_startTime, GetUserId()},
                                         m_clock.Now(), m_sequence);
    });
    m_step = Step::Record;
    WriteComposed();
}

void LogSession::TransferFile() {
    if (HandOver())
        Upload();
}

bool LogSession::HandOver() {
    const bool agentExists = LogDataValidator::VerifyTransAgentExist() == kAccepted;
    if (!agentExists || !OptInPolicy::GetInstance()->AllowsRecording()) {
        FileSystemUtils::DeleteFiles(m_logFolder, kEveryDocument, false);
        return false;
    }
    const std::string inProgress = GetInProgressLogFileName();
    const bool hasFolder =
        !m_logFolder.empty() && (FileSystemUtils::RenameFile(inProgress, GetTransLogFileName()) ||
                                 FileSystemUtils::IsDirectory(m_logFolder));
    if (!hasFolder)
        m_currentPath.clear();
    ++m_fileIndex;
    m_bytesInFile = 0;
    return hasFolder;
}

void LogSession::Upload() {
    if (LogSessionUtils::UsageSendFlag())
        LogTransUtils::UploadLog(m_currentPath);
}

void LogSession::EndSession() {
    if (!IsReady())
        return;
    if (!m_hasEnded)
        LogEndSessionTag();
    ContinueSplit();
    if (!m_enabled) // a failed write has handed the file off
        return;
    CloseFile();
    const bool hasUpload = HandOver();
    m_enabled = false; // nothing is left for a second call
    if (hasUpload)
        Upload();
}
