#include "LogSession/LogSession.h"
#include "LogSession/OptInPolicy.h"
#include "Platform/Bundle.h"
#include "Platform/Displays.h"
#include "Utility/src/Converters.h"
#include "Utility/src/DemographicNode.h"
#include "Utility/src/LogSessionUtils.h"
#include "Utility/src/Mac/LogTransUtilsMac.h"
#include "Utility/src/Mac/LogUtilsMac.h"
#include "Utility/src/RecordNames.h"

#include <initializer_list>
#include <utility>
#include <vector>

using namespace RecordNames;

namespace {

using Facts = std::initializer_list<std::pair<const char*, std::string>>;

/// Writes a standard group with a record for each fact; returns its number.
int WriteGroup(LogSession& session, const char* name, Facts facts) {
    const int group = session.NewGroupTag(kVistraCategory, nullptr, name, kNoDocument);
    for (const auto& [key, value] : facts)
        session.DataRecTag(group, key, value.c_str());
    return group;
}

// The displays are asked for once and serve two groups.

void WriteSystemInfo(LogSession& session, int monitorCount) {
    std::string browser, browserVersion;
    LogSessionUtils::GetDefaultBrowser(browser, browserVersion);
    WriteGroup(session, kSystemInfoGroup,
               {{kOS, LogUtils::GetOSVersion()},
                {kOSType, LogUtils::GetOSType()},
                {kOSLanguage, LogUtils::GetOSLanguage()},
                {kUserLanguage, LogUtils::GetUserLanguage()},
                {kProcessor, LogUtils::GetProcessorType()},
                {kProcessorName, LogSessionUtils::GetProcessorName()},
                {kProcessorModel, LogSessionUtils::GetProcessorModel()},
                {kNumProcessors, LogUtils::GetNumProcessors()},
                {kSpeed, LogSessionUtils::GetProcessorSpeed()},
                {kMemory, LogUtils::GetSystemMemory()},
                {kMonitorCount, Converters::NumberToString(monitorCount)},
                {kDefaultBrowser, browser + " " + browserVersion}});
}

void WriteScreens(LogSession& session, const std::vector<Platform::DisplaySize>& displays) {
    for (const Platform::DisplaySize& display : displays)
        session.LogSingleScreenResolution(static_cast<long>(display.width),
                                          static_cast<long>(display.height));
}

} // namespace

void LogSession::LogDefaultData() {
    if (!m_enabled)
        return;
    LogStartSessionTag();
    LogSessionInfo(m_productFamily.c_str(), m_productName.c_str(), m_productVersion.c_str(),
                   m_productBuild.c_str(), m_productLanguage.c_str());
    const std::vector<Platform::DisplaySize> displays = Platform::ActiveDisplays();
    WriteSystemInfo(*this, static_cast<int>(displays.size()));
    WriteScreens(*this, displays);
    LogDemographicInfo(OptInPolicy::GetInstance()->GetUsageKey());
    LogExeInfo();
    LogUsageVersionInfo();
}

void LogSession::LogSessionInfo(const char* family, const char* name, const char* version,
                                const char* build, const char* language) {
    m_sessionGroup = WriteGroup(*this, kSessionGroup, {});
    const std::pair<const char*, const char*> texts[] = {
        {kProductFamily, family}, {kProductName, name},         {kProductVersion, version},
        {kProductBuild, build},   {kProductLanguage, language}, {kUser, GetUserId().c_str()},
    };
    for (const auto& [key, text] : texts)
        DataRecTag(m_sessionGroup, key, text);
    const std::string userType = LogSessionUtils::GetUserType();
    if (!userType.empty())
        DataRecTag(m_sessionGroup, kUserType, userType.c_str());
}

void LogSession::LogSystemInfo() {
    WriteSystemInfo(*this, LogUtils::GetMonitorCount());
}

void LogSession::LogScreenResolution() {
    WriteScreens(*this, Platform::ActiveDisplays());
}

void LogSession::LogSingleScreenResolution(long width, long height) {
    WriteGroup(*this, kScreenGroup,
               {{kScreenWidth, Converters::NumberToString(width)},
                {kScreenHeight, Converters::NumberToString(height)}});
}

void LogSession::LogDemographicInfo(const std::string& usageKey) {
    const int group = WriteGroup(*this, kDemographicsGroup, {});
    std::vector<std::pair<std::string, std::string>> answers;
    DemographicNode(usageKey).EnumKeyValues(answers);
    for (const auto& [key, answer] : answers)
        DataRecTag(group, key.c_str(), answer.c_str());
}

void LogSession::LogExeInfo() {
    WriteGroup(*this, kExecutableInfoGroup,
               {{kExecutableName, LogUtils::GetApplicationName()},
                {kExecutableVersion, LogUtils::GetApplicationVersion()},
                {kExecutableBuild, LogUtils::GetApplicationBuild()},
                {kExecutableLanguage, LogUtils::GetApplicationLanguage()}});
}

void LogSession::LogUsageVersionInfo() {
    const std::string agent = LogTransUtils::GetAgentPath();
    WriteGroup(*this, kUsageVersionInfoGroup,
               {{kAgentVersion, LogUtils::GetLogTransportAppVersion(agent)},
                {kLibraryVersion, LogUtils::GetVersion(Platform::kLibraryBundleIdentifier)}});
}
