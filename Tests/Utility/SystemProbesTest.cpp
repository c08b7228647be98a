#include "Platform/Bundle.h"
#include "Platform/Launch.h"
#include "Platform/Linux/KernelFiles.h"
#include "Platform/Linux/PropertyListFile.h"
#include "Platform/Process.h"
#include "Tests/Support/Sandbox.h"
#include "Utility/src/LogSessionUtils.h"
#include "Utility/src/Mac/DefaultBrowser.h"
#include "Utility/src/Mac/LogUtilsMac.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

std::string Info(const std::string& name) {
    return ReadText(TEST_DATA "/Bundles/" + name + ".plist");
}

/// What a copy of this program at that path says of its main bundle, and of itself.
std::pair<std::string, std::string> ReportOfCopy(const std::string& program,
                                                 const std::string& during = "true") {
    fs::create_directories(fs::path(program).parent_path());
    fs::copy_file(Platform::CurrentProgramPath(), program, fs::copy_options::skip_existing);
    EXPECT_EQ(Platform::RunShellCommand(
                  "TEST_REPORT='" + program + ".report' TEST_COMMAND='" + during + "' '" + program +
                  "' --gtest_also_run_disabled_tests --gtest_filter=DISABLED_Probe.* >/dev/null"),
              0);
    const std::string report = ReadText(program + ".report");
    fs::remove(program + ".report");
    return {report.substr(0, report.find('\n')), report.substr(report.find('\n') + 1)};
}

} // namespace

/// Run by the copies above only.
TEST(DISABLED_Probe, ReportsMainBundleAndProgram) {
    Platform::RunShellCommand(std::getenv("TEST_COMMAND"));
    const CFBundleRef bundle = Platform::MainBundle();
    ASSERT_TRUE(bundle);
    WriteText(std::getenv("TEST_REPORT"),
              bundle->location + "|" + bundle->identifier + "|" + Platform::CurrentProgramPath() +
                  "\n" + LogUtils::GetApplicationName() + "|" + LogUtils::GetApplicationVersion() +
                  "|" + LogUtils::GetApplicationBuild() + "|" + LogUtils::GetApplicationLanguage() +
                  "|" + LogUtils::GetVersion(Platform::kLibraryBundleIdentifier) +
                  LogUtils::GetVersion("no.such.bundle") + "|" + LogUtils::GetOSLanguage() + "|" +
                  LogUtils::GetUserLanguage());
}

TEST(Bundle, MainBundleFollowsFromTheProgramsPlace) {
    const Sandbox sandbox;
    const std::string app = sandbox.Root() + "/My App";
    WriteText(app + "/Contents/Info.plist", Info("Identity"));
    const std::string program = app + "/Contents/MacOS/program", plain = app + "/program";
    const std::string main = app + "|test.host|" + program;
    EXPECT_EQ(ReportOfCopy(program).first, main);
    EXPECT_EQ(ReportOfCopy(program, "rm \"" + program + "\"").first, main);
    EXPECT_EQ(ReportOfCopy(plain).first, app + "||" + plain) << "its Info.plist is elsewhere";
    WriteText(app + "/Info.plist", Info("Identity"));
    EXPECT_EQ(ReportOfCopy(plain).first, app + "|test.host|" + plain);
}

TEST(SystemProbes, ProgramsTellOfThemselvesWhatTheirInfoSays) {
    Sandbox sandbox;
    sandbox.SetVariable("LANGUAGE", "sv:en");
    const std::string app = sandbox.Root() + "/a.app", plain = sandbox.Root() + "/plain/program";
    const CFBundleRef library = Platform::LoadedBundle(Platform::kLibraryBundleIdentifier);
    const std::string version = *library->info.Find("CFBundleVersion")->AsString();
    const std::string unknown = "||||||", known = "||" + version + "|de_DE|sv";
    EXPECT_EQ(ReportOfCopy(app + "/Contents/MacOS/a").second, unknown);
    EXPECT_EQ(LogUtils::GetLogTransportAppVersion(app), "");
    const std::tuple<const char*, std::string, const char*> infos[] = {
        {"Identity", "||" + known, ""},
        {"Usual", "Name|1.2|short" + known, "1.2"},
        {"EmptyTexts", "Executable||4" + known, ""},
        {"WrongKinds", "Name||short" + known, ""},
        {"WrongIdentity", unknown, "1.2"},
        {"Broken", unknown, ""},
        {"Binary", "Bin\u00E4r|2.1|77" + known, "2.1"},
    };
    for (const auto& [info, ofHost, ofAgent] : infos) {
        WriteText(app + "/Contents/Info.plist", Info(info));
        EXPECT_EQ(ReportOfCopy(app + "/Contents/MacOS/a").second, ofHost) << info;
        EXPECT_EQ(LogUtils::GetLogTransportAppVersion(app), ofAgent) << info;
    }
    EXPECT_EQ(LogUtils::GetLogTransportAppVersion(app + "/Contents/Info.plist"), "");
    EXPECT_EQ(ReportOfCopy(plain).second, unknown);
    WriteText(sandbox.Root() + "/plain/Info.plist", Info("Usual"));
    EXPECT_EQ(ReportOfCopy(plain).second, "Name|1.2|short" + known);
}

TEST(SystemProbes, AgreeWithTheSystemsOwnTools) {
    const std::pair<std::string, const char*> probes[] = {
        {LogUtils::GetOSVersion(), R"(uname -r | sed -E 's/^([0-9]+(\.[0-9]+){2}).*/OS \1/')"},
        {LogUtils::GetOSType(), "test $(uname -m) = x86_64 && echo 64bit || echo 32bit"},
        {LogUtils::GetProcessorType(), "uname -m"},
        {LogUtils::GetNumProcessors(), "grep -c ^processor /proc/cpuinfo"},
        {LogUtils::GetSystemMemory(), "awk '/^MemTotal/ {print int($2 / 1024)}' /proc/meminfo"},
        {LogSessionUtils::GetProcessorName(),
         R"(grep -Em1 '^(model name|cpu|cpu model|uarch)\s*:' /proc/cpuinfo | sed 's/.*: //' )"
         "| grep . || echo NOVALUE"},
    };
    for (const auto& [told, command] : probes)
        EXPECT_EQ(Platform::RunShellCommand("test '" + told + "' = \"$(" + command + ")\""), 0)
            << told << " is not the outcome of " << command;
    EXPECT_EQ(LogSessionUtils::GetProcessorModel(), Platform::DescribeModel("").substr(0, 63));
    EXPECT_THAT(LogSessionUtils::GetProcessorSpeed(), testing::MatchesRegex("0|[1-9][0-9]*"));
}

TEST(SystemProbes, BrowserIsTheFirstProgramChosenForHttp) {
    const Sandbox sandbox;
    const std::string file = sandbox.Home() + "/.config/mimeapps.list", none = "com.apple.safari ";
    const auto browser = [] {
        std::string name = "old", version = "old";
        const bool found = LogSessionUtils::GetDefaultBrowser(name, version);
        return name + " " + version + (found ? "found" : "");
    };
    EXPECT_EQ(browser(), none) << "there is no list";
    for (const std::string list :
         {"usual", "chosen-last", "several", "comments-and-blanks", "crlf", "binary", "none-at-all",
          "none-added-only", "none-but-added", "none-for-http", "none-in-wrong-section"}) {
        WriteText(file, ReadText(TEST_DATA "/Handlers/" + list + ".list"));
        EXPECT_EQ(browser(), list.starts_with("none") ? none : "right one.desktop found") << list;
    }
    fs::remove(file);
    fs::create_directory(file);
    EXPECT_EQ(browser(), none);
}

TEST(SystemProbes, OnlyAHandlerOfTheSchemeNamesItsProgram) {
    const auto list = Platform::ParsePropertyList(ReadText(TEST_DATA "/Handlers/elements.plist"));
    std::string found;
    for (const Platform::PropertyList& element : *list->AsArray())
        found += FindDefaultApp(element, "s", "http", "r") + "|";
    EXPECT_EQ(found, "|||||||||program|");
}
