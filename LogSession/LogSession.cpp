#include "LogSession/LogSession.h"

#include "LogSession/OptInPolicy.h"
#include "Utility/src/Converters.h"
#include "Utility/src/Encryption.h"
#include "Utility/src/GUIDGen.h"
#include "Utility/src/LogSessionUtils.h"
#include "Utility/src/Mac/FileSystemUtils.h"
#include "Utility/src/Mac/LogTransUtilsMac.h"
#include "Utility/src/Mac/LogUtilsMac.h"
#include "Utility/src/MiniSession.h"
#include "Utility/src/PreferenceKeys.h"
#include "Utility/src/RecordNames.h"
#include "Utility/src/UsageFileNames.h"
#include "Utility/src/UsageFolders.h"

namespace {

constexpr std::uint32_t kSplitThresholdBytes = 102'400;
constexpr char kNilGuid[] = "00000000-0000-0000-0000-000000000000";

bool HasEnoughSpace(const std::string& folder) {
    std::uint64_t freeBytes = 0;
    FileSystemUtils::GetDiscFreeSpace(folder, freeBytes);
    return freeBytes > UsageFolders::kMinimumFreeBytes;
}

/// How a changed opt-in counts: one in, one that was never in, or one lost.
int CountOf(int oldValue, int newValue) {
    if (newValue == kOptedIn)
        return 1;
    return oldValue == kOptInUnknown ? 0 : -1;
}

} // namespace

LogSession::LogSession(const ProductTexts& product)
    : m_productFamily(product.family), m_productName(product.name),
      m_productVersion(product.version), m_productBuild(product.build),
      m_productLanguage(product.language) {}

LogSession::LogSession(const char* family, const char* name, const char* version, const char* build,
                       const char* language)
    : LogSession(ProductTexts{family, name, version, build, language}) {
    try {
        Begin();
    } catch (const std::exception&) {
        Discard();
        throw;
    }
}

void LogSession::Begin() {
    InitLogFolder();
    m_enabled = HasEnoughSpace(m_logFolder);
    GetUserId();
    m_obfuscate = LogSessionUtils::UsageObfuscateFlag();
    m_startDay = TimeUtils::GetDayOfMonth();
    m_sessionId = GUIDGen::GuidGen();
    m_processName = LogUtils::GetProcessName();
    LogDefaultData();
    const OptInPolicy* policy = OptInPolicy::GetInstance();
    LogSessionUtils::SetSerializationState(
        policy->GetUsageKey().c_str(), (m_productName + PreferenceKeys::kSerialStateSuffix).c_str(),
        policy->GetSerializationState());
}

LogSession::~LogSession() {
    CloseFile();
}

void LogSession::InitLogFolder() {
    const std::string folder = LogTransUtils::GetUserLogFullPath();
    // Without a folder there is nothing to write to, and the root is not ours to clear.
    m_logFolder = folder.empty() ? folder : FileSystemUtils::AppendPathElement(folder);
}

const std::string& LogSession::GetUserId() {
    static const std::string* userId = nullptr;
    if (!userId)
        userId = GarbageCollection::CreateGlobalStr(GUIDGen::GetUsageUserGUID(false));
    return *userId;
}

std::string LogSession::GetCommonLogFileName() const {
    return m_logFolder +
           UsageFileNames::CommonName(m_productFamily, m_productName, GetUserId(), m_sessionId) +
           "_" + Converters::NumberToString(m_fileIndex);
}

const std::string& LogSession::SetCurrentPath(const char* extension) {
    m_currentPath = GetCommonLogFileName() + extension;
    return m_currentPath;
}

const std::string& LogSession::GetInProgressLogFileName() {
    return SetCurrentPath(UsageFileNames::kInProgressExtension);
}

const std::string& LogSession::GetTransNormalLogFileName() {
    return SetCurrentPath(UsageFileNames::kPlainExtension);
}

const std::string& LogSession::GetTransObfuscateLogFileName() {
    return SetCurrentPath(UsageFileNames::kObfuscatedExtension);
}

const std::string& LogSession::GetTransLogFileName() {
    return m_obfuscate ? GetTransObfuscateLogFileName() : GetTransNormalLogFileName();
}

void LogSession::WriteFile(const char* data) {
    if (!data)
        return;
    ForgetLastRecord();
    m_record.Append(data);
    WriteComposed();
}

bool LogSession::OpenCurrentFile() {
    if (m_logFolder.empty() || !Open(GetInProgressLogFileName()))
        return false;
    if (!m_obfuscate || Write(kObfuscationMarker))
        return true;
    HandleLogWrittingFailure();
    return false;
}

void LogSession::WriteComposed() {
    if (!HasFile())
        return;
    if (m_obfuscate)
        m_record.Obfuscate();
    if (!Write(m_record.View()))
        HandleLogWrittingFailure();
}

void LogSession::AddDataToFile(const char* data, unsigned long length) {
    WriteFile(data);
    CountBytes(length);
}

void LogSession::AddRecord() {
    WriteComposed();
    CountBytes(static_cast<unsigned long>(m_record.View().size()));
}

void LogSession::CountBytes(unsigned long length) {
    m_bytesInFile += static_cast<std::uint32_t>(length);
    if (m_bytesInFile < kSplitThresholdBytes)
        return;
    try {
        SplitLog();
    } catch (const std::exception&) {
        return; // the record is written, and the next one goes on with the split
    }
}

void LogSession::ForgetLastRecord() {
    if (m_record.Capacity() > kSplitThresholdBytes)
        m_record = RecordBuffer();
    m_record.Clear();
}

void LogSession::CloseFile() {
    Close();
}

void LogSession::Discard() {
    // Another file that is not open was handed off, or never was.
    if (!IsExist() && m_step != Step::HandOver)
        return;
    CloseFile();
    FileSystemUtils::DeleteLocalFile(m_currentPath);
}

int LogSession::HandleLogWrittingFailure() {
    CloseFile();
    m_enabled = false;
    if (FileSystemUtils::DeleteLocalFile(m_currentPath)) // half a document is not handed off
        TransferFile();
    return 0;
}

void LogSession::getProductIndividualOptinKey(const std::string& family, const std::string& name,
                                              const std::string& version, std::string& key) {
    key = OptInPolicy::GetInstance()->GetUsageKey() + "_" + family + "_" + name + "_" + version;
}

bool LogSession::GenerateOptInfoLogFile(const std::string& family, const std::string& name,
                                        const std::string& version, std::string& path) {
    const OptInPolicy* policy = OptInPolicy::GetInstance();
    const int newValue = policy->GetOptIn();
    if (newValue == kOptInUnknown)
        return false;
    std::string key;
    getProductIndividualOptinKey(family, name, version, key);
    int oldValue = kOptInUnknown;
    if (!LogSessionUtils::ReadOptIn(key.c_str(), oldValue) || newValue == oldValue ||
        !LogSessionUtils::SetOptIn(key.c_str(), newValue))
        return false;
    if (newValue != kOptedIn && newValue != kOptedOut)
        return false;
    try {
        MiniSession document(RecordNames::kOptInRateFamily, RecordNames::kOptInRateProduct,
                             GUIDGen::GuidGen(), kNilGuid, LogSessionUtils::UsageObfuscateFlag(),
                             LogTransUtils::GetUserLogFullPath());
        document.CreateOptInRateFile(policy->GetUsageKey(), oldValue == kOptInUnknown ? 1 : 0,
                                     CountOf(oldValue, newValue), policy->GetSerializationState(),
                                     family, name, version, path);
    } catch (const std::exception&) {
        LogSessionUtils::RestoreOptIn(key.c_str(), oldValue); // the next start tells of the change
        throw;
    }
    return true;
}
