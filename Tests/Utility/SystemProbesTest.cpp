#include "Platform/Launch.h"
#include "Platform/Linux/KernelFiles.h"
#include "Platform/Linux/PropertyListFile.h"
#include "Tests/Support/Sandbox.h"
#include "Utility/src/LogSessionUtils.h"
#include "Utility/src/Mac/DefaultBrowser.h"
#include "Utility/src/Mac/LogUtilsMac.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace fs = std::filesystem;

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
