#include "Platform/Launch.h"
#include "Platform/Process.h"
#include "Tests/Support/Sandbox.h"
#include "Utility/src/Logger.h"
#include "Utility/src/LoggerUtil.h"
#include "Utility/src/Mac/LogTransUtilsMac.h"

#include <gmock/gmock.h>

#include <chrono>
#include <filesystem>
#include <sstream>

namespace fs = std::filesystem;
using Utils = LogTransUtils;

static constexpr char kAgent[] = "/LogTransport2.app/Contents/MacOS/LogTransport2";

/// An account whose host names no agent once the test is over.
struct Agent : public testing::Test {
    ~Agent() override { Utils::gwsLogTransportPath->clear(); }
    Sandbox m_sandbox;
    const std::string& m_root = m_sandbox.Root();
};

static void SetHoursFromNow(const std::string& path, int hours) {
    fs::last_write_time(path, fs::file_time_type::clock::now() + std::chrono::hours(hours));
}

TEST_F(Agent, IsWhereTheHostSaysOrBesideTheHostsExecutable) {
    Utils::SetLogTransportInputPath((m_root + "/Contents/Frameworks").c_str());
    Utils::SetLogTransportInputPath(nullptr);
    EXPECT_EQ(Utils::GetAgentPath(), "");
    EXPECT_FALSE(Utils::UploadLog(""));
    WriteText(m_root + "/Contents/MacOS" + kAgent, "");
    EXPECT_EQ(Utils::GetTransporterExeFullPath(), m_root + "/Contents/MacOS" + kAgent);
    WriteText(m_root + "/Contents/Frameworks" + kAgent, "");
    EXPECT_EQ(Utils::GetAgentPath(), m_root + "/Contents/Frameworks/LogTransport2.app");
}

TEST_F(Agent, FilesFollowTheHostsBundle) {
    const std::string folder = fs::path(Platform::CurrentProgramPath()).parent_path();
    if (!folder.ends_with("/Contents/MacOS")) { // run again as a host in a bundle
        const std::string host = m_root + "/Contents/MacOS/host";
        fs::create_directories(m_root + "/Contents/MacOS");
        fs::copy_file(Platform::CurrentProgramPath(), host);
        EXPECT_EQ(Platform::RunShellCommand(host + " --gtest_filter=Agent.FilesFollow*"), 0);
        return;
    }
    const std::string defaults = folder + "/LogTransport2.app/Contents/Resources/LogTransport2.cfg";
    WriteText(defaults, "[ulog]\nstatus=Disabled\n");
    EXPECT_EQ(ReadText(Utils::GetUserCfgFullPath()), "[ulog]\nstatus=Disabled\n") << "copied";
    SetHoursFromNow(defaults, 1);
    EXPECT_EQ(ReadText(Utils::GetUserCfgFullPath()), "[ulog]\nstatus=Active\n") << "replaced";
    WriteText(m_sandbox.UserConfigFile(), "[ulog]\nstatus=Hibernate\n");
    SetHoursFromNow(m_sandbox.UserConfigFile(), 2);
    EXPECT_EQ(ReadText(Utils::GetUserCfgFullPath()), "[ulog]\nstatus=Hibernate\n") << "kept";
    WriteText(folder + kAgent, "");
    EXPECT_EQ(Utils::GetAgentPath(), folder + "/LogTransport2.app");
}

TEST(Log, LineNamesLevelProcessTimeMessageAndDetail) {
    std::ostringstream out;
    Logger logger(out);
    logger.LogWarning("m", "f", 7);
    logger.LogFatal("m", "d");
    const std::string rest = "\\] \\| PID:" + std::to_string(Platform::CurrentProcessId()) +
                             " \\| TIME:....-..-..T..:..:..Z \\| VALUE:m \\| DETAIL:";
    EXPECT_THAT(out.str(), testing::MatchesRegex("\\[WARNING" + rest + "File:f LINE:7\n\\[FATAL" +
                                                 rest + "d\n"));
    EXPECT_EQ(Logger::GetLogger("other"), Logger::GetLogger(kLoggerName));
}

TEST(Log, ConfigurationIsReadLineByLine) {
    const Sandbox sandbox;
    const std::string path = sandbox.Root() + "/VSLog.config", off = "append=0\n";
    const std::pair<std::string, bool> kCases[] = {
        {"append=1", true},          {" =append;,1 0\n", true},
        {"append=yes", false},       {off + std::string(511, ' ') + "\nappend=1", true},
        {"append=1\n" + off, false}, {off + std::string(512, ' ') + "\nappend=1", false}};
    for (const auto& [text, append] : kCases) {
        WriteText(path, text);
        EXPECT_EQ(LoggerUtil::GetAppendTag(path), append) << text;
    }
}
