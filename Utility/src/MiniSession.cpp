#include "Utility/src/MiniSession.h"

#include "Utility/src/Converters.h"
#include "Utility/src/Encryption.h"
#include "Utility/src/Logger.h"
#include "Utility/src/Mac/FileSystemUtils.h"
#include "Utility/src/RecordNames.h"
#include "Utility/src/StringUtils.h"
#include "Utility/src/TimeUtils.h"
#include "Utility/src/UsageFileNames.h"
#include "Utility/src/UsageRecord.h"

#include <exception>

using namespace RecordNames;

namespace {

Logger* const logger = NULLLogger::Static();

constexpr char kSourceUnit[] = "Utility/src/MiniSession";
constexpr char kNoCount[] = "0";
const char* const kSerializationStates[] = {"PreRelease", "Trial", "Serialized", "SharedComponent"};

} // namespace

MiniSession::MiniSession(const std::string& productFamily, const std::string& productName,
                         const std::string& sessionId, const std::string& userId, bool obfuscate,
                         const std::string& folder)
    : m_path(folder), m_productFamily(productFamily), m_productName(productName),
      m_sessionId(sessionId), m_userId(userId), m_obfuscate(obfuscate) {}

MiniSession::~MiniSession() {
    m_file.Close();
}

int MiniSession::Write(const char* text) {
    if (!text)
        return -1;
    m_record.Clear();
    m_record.Append(text);
    return WriteRecord();
}

int MiniSession::WriteRecord() {
    if (!m_file.IsExist()) {
        GenerateFilePath();
        logger->NoteDebug({"MiniSession::Write: ", m_path}, kSourceUnit, __LINE__);
        if (!m_file.Open(m_path)) {
            logger->LogError("MiniSession::Write", kSourceUnit, __LINE__);
            return -2;
        }
        WriteHeader();
    }
    if (m_obfuscate)
        m_record.Obfuscate();
    if (m_file.Write(m_record.View()))
        return 0;
    logger->LogError("MiniSession::Write", kSourceUnit, __LINE__);
    return -3;
}

int MiniSession::WriteHeader() {
    if (m_obfuscate)
        m_file.Write(kObfuscationMarker);
    return 0;
}

void MiniSession::GenerateFilePath() {
    if (m_isNamed || m_path.empty()) // the root must not take the place of a missing folder
        return;
    const std::string name =
        UsageFileNames::CommonName(m_productFamily, m_productName, m_userId, m_sessionId);
    m_path = FileSystemUtils::AppendPathElement(m_path) + name +
             UsageFileNames::FinishedExtension(m_obfuscate);
    m_isNamed = true;
}

template <class Records>
void MiniSession::WriteWhole(Records records) {
    try {
        records();
    } catch (const std::exception&) {
        m_file.Close();
        if (m_isNamed)
            FileSystemUtils::DeleteLocalFile(m_path);
        throw;
    }
}

int MiniSession::LogStartTag() {
    m_record.Clear();
    UsageRecord::AppendHead(m_record);
    UsageRecord::AppendStartSession(m_record, m_sessionId, TimeUtils::CalcTime(),
                                    static_cast<std::uint32_t>(++m_sequence));
    return WriteRecord();
}

int MiniSession::NewGroup(const std::string& category, const std::string& subcategory,
                          const std::string& name, const std::string& doc) {
    m_record.Clear();
    UsageRecord::AppendNewGroup(m_record, {category, subcategory, name, doc}, TimeUtils::CalcTime(),
                                ++m_group, static_cast<std::uint32_t>(++m_sequence));
    WriteRecord();
    return m_group;
}

int MiniSession::LogData(int group, const std::string& name, const std::string& data) {
    m_record.Clear();
    UsageRecord::AppendDataRec(m_record, TimeUtils::CalcTime(), group, name, data,
                               static_cast<std::uint32_t>(++m_sequence));
    return WriteRecord();
}

int MiniSession::LogEndTag() {
    m_record.Clear();
    UsageRecord::AppendEndSession(m_record, m_sessionId, TimeUtils::CalcTime(),
                                  static_cast<std::uint32_t>(++m_sequence));
    UsageRecord::AppendRootEnd(m_record);
    return WriteRecord();
}

void MiniSession::IntegterToString(const int& value, std::string& out,
                                   const std::string& fallback) {
    try {
        out = Converters::NumberToString(value);
    } catch (const std::exception&) {
        out = fallback;
    }
}

void MiniSession::SerilizationStatusToString(const int& state, std::string& out,
                                             const std::string& fallback) {
    const bool known = state >= 0 && state < static_cast<int>(std::size(kSerializationStates));
    out = known ? kSerializationStates[state] : fallback;
}

int MiniSession::CreateOptInRateFile(const std::string& optInKey, const int& baseCount,
                                     const int& optInCount, const int& serializationState,
                                     const std::string& optInProductFamily,
                                     const std::string& optInProductName,
                                     const std::string& optInProductVersion, std::string& outPath) {
    std::string state, base, optIns;
    SerilizationStatusToString(serializationState, state, kNoValue);
    IntegterToString(baseCount, base, kNoCount);
    IntegterToString(optInCount, optIns, kNoCount);

    WriteWhole([&] {
        LogStartTag();
        outPath = m_path;
        const int session = NewGroup(kVistraCategory, kOptInRateSubcategory, kSessionGroup, "");
        LogData(session, kProductFamily, kOptInRateFamily);
        LogData(session, kProductName, kOptInRateProduct);
        const int product = NewGroup(kOptInProductInfo, kOptInProductInfo, kOptInProductInfo, "");
        LogData(product, kOptInProductFamily, optInProductFamily);
        LogData(product, kOptInProductName, optInProductName);
        LogData(product, kOptInProductVersion, optInProductVersion);
        LogData(product, kOptInProductState, state);
        LogData(product, kOptInUsageKey, optInKey);
        const int counts = NewGroup(kOptInInfo, kOptInInfo, kOptInInfo, "");
        LogData(counts, kBaseCount, base);
        LogData(counts, kOptInCount, optIns);
        LogEndTag();
    });
    return 0;
}

int MiniSession::CreateCrashFile() {
    WriteWhole([this] {
        LogStartTag();
        const int session = NewGroup(kVistraCategory, kCrash, kSessionGroup, "");
        LogData(session, kProductFamily, kVistraCategory);
        LogData(session, kProductName, kAppCrash);
        const int exit = NewGroup(kAppExit, kCrash, kExitInfo, "");
        LogData(exit, kExitType, kCrash);
        LogData(exit, kCrashProductName, m_productName);
        LogData(exit, kCrashProductFamily, m_productFamily);
        LogData(exit, kCrashUser, m_userId);
        LogEndTag();
    });
    return 0;
}
