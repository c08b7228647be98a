#include "Platform/Bundle.h"
#include "Platform/Identifier.h"
#include "Platform/Launch.h"
#include "Platform/PlatformString.h"
#include "Platform/Process.h"
#include "Platform/RegularExpression.h"
#include "Platform/UserFolders.h"
#include "Tests/Support/Sandbox.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <sys/stat.h>

namespace fs = std::filesystem;

namespace {

constexpr char kInfo[] = "<plist><dict><key>CFBundleIdentifier</key><string>test.host</string>"
                         "</dict></plist>";

/// What a copy of this program at that path says of itself and its main bundle.
std::string MainBundleOfCopy(const std::string& program, const std::string& during = "true") {
    fs::create_directories(fs::path(program).parent_path());
    fs::copy_file(Platform::CurrentProgramPath(), program, fs::copy_options::overwrite_existing);
    const std::string report = program + ".report";
    EXPECT_EQ(Platform::RunShellCommand(
                  "TEST_REPORT='" + report + "' TEST_COMMAND='" + during + "' '" + program +
                  "' --gtest_also_run_disabled_tests --gtest_filter=DISABLED_Probe.* >/dev/null"),
              0);
    return ReadText(report);
}

} // namespace

/// Run by the copies above only.
TEST(DISABLED_Probe, ReportsMainBundle) {
    Platform::RunShellCommand(std::getenv("TEST_COMMAND"));
    const CFBundleRef bundle = Platform::MainBundle();
    ASSERT_TRUE(bundle);
    WriteText(std::getenv("TEST_REPORT"),
              bundle->location + "|" + bundle->identifier + "|" + Platform::CurrentProgramPath());
}

TEST(Bundle, MainBundleFollowsFromTheProgramsPlace) {
    const Sandbox sandbox;
    const std::string app = sandbox.Root() + "/My App";
    WriteText(app + "/Contents/Info.plist", kInfo);
    const std::string program = app + "/Contents/MacOS/program";
    EXPECT_EQ(MainBundleOfCopy(program), app + "|test.host|" + program);
    EXPECT_EQ(MainBundleOfCopy(program, "rm \"" + program + "\""), app + "|test.host|" + program);
    const std::string plain = app + "/program";
    EXPECT_EQ(MainBundleOfCopy(plain), app + "||" + plain) << "its Info.plist is elsewhere";
    WriteText(app + "/Info.plist", kInfo);
    EXPECT_EQ(MainBundleOfCopy(plain), app + "|test.host|" + plain);
}

TEST(Bundle, BundleAtPathReadsItsInfo) {
    const Sandbox sandbox;
    const std::string app = sandbox.Root() + "/a.app";
    EXPECT_EQ(Platform::BundleAtPath(app), nullptr);
    EXPECT_EQ(Platform::BundleAtPath(""), nullptr);
    fs::create_directories(app);
    EXPECT_EQ(Platform::BundleAtPath(app + "//")->location, app);
    EXPECT_EQ(Platform::BundleAtPath(app)->info, Platform::PropertyList());
    WriteText(app + "/Info.plist", kInfo);
    EXPECT_EQ(Platform::BundleAtPath(app)->identifier, "test.host");
    WriteText(app + "/Contents/Info.plist", "garbage");
    EXPECT_EQ(Platform::BundleAtPath(app)->identifier, "");
    fs::remove(app + "/Contents/Info.plist");
    ASSERT_EQ(::mkfifo((app + "/Contents/Info.plist").c_str(), 0600), 0);
    EXPECT_EQ(Platform::BundleAtPath(app)->info, Platform::PropertyList());
}

TEST(Bundle, LibraryIsALoadedBundle) {
    const CFBundleRef library = Platform::LoadedBundle(Platform::kLibraryBundleIdentifier);
    ASSERT_TRUE(library);
    EXPECT_EQ(library->identifier, Platform::kLibraryBundleIdentifier);
    EXPECT_THAT(*library->info.Find("CFBundleVersion")->AsString(),
                testing::MatchesRegex("[0-9]+\\.[0-9]+\\.[0-9]+"));
    EXPECT_TRUE(fs::is_directory(library->location)) << library->location;
    EXPECT_EQ(Platform::LoadedBundle(""), nullptr);
    EXPECT_EQ(Platform::LoadedBundle("no.such.bundle"), nullptr);
}

TEST(UserFolders, FollowTheEnvironmentAndAreCreatedOnDemand) {
    Sandbox sandbox;
    FSRef folder;
    EXPECT_FALSE(Platform::FindFolder(kUserDomain, kDomainLibraryFolderType, false, folder));
    EXPECT_FALSE(Platform::FindFolder(kUserDomain, 0x6e6f6e65, true, folder));
    EXPECT_FALSE(Platform::FindFolder(0, kDomainLibraryFolderType, true, folder));
    EXPECT_TRUE(Platform::FindFolder(kUserDomain, kDomainLibraryFolderType, true, folder));
    EXPECT_EQ(folder.path, sandbox.Home() + "/.local/state");
    EXPECT_TRUE(fs::is_directory(folder.path));
    sandbox.SetVariable("XDG_DATA_HOME", "relative");
    EXPECT_TRUE(Platform::FindFolder(kUserDomain, kApplicationSupportFolderType, true, folder));
    EXPECT_EQ(folder.path, sandbox.Home() + "/.local/share");
    sandbox.SetVariable("XDG_DATA_HOME", sandbox.Root() + "/deep/data/");
    EXPECT_TRUE(Platform::FindFolder(kUserDomain, kApplicationSupportFolderType, true, folder));
    EXPECT_EQ(folder.path, sandbox.Root() + "/deep/data");
    WriteText(sandbox.Root() + "/file", "");
    sandbox.SetVariable("XDG_DATA_HOME", sandbox.Root() + "/file");
    EXPECT_FALSE(Platform::FindFolder(kUserDomain, kApplicationSupportFolderType, true, folder));
}

TEST(PlatformServices, IdentifiersAreRandomUpperCaseUuids) {
    const std::string uuid = Platform::CreateUuidText();
    EXPECT_THAT(uuid, testing::MatchesRegex("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]"
                                            "{3}-[0-9A-F]{12}"));
    EXPECT_NE(uuid, Platform::CreateUuidText());
}

TEST(PlatformServices, RegularExpressionsMatchAnywhere) {
    EXPECT_TRUE(Platform::RegularExpression(".*\\.xml").Matches("a.xml.bak"));
    EXPECT_FALSE(Platform::RegularExpression("xml").Matches("XML"));
    EXPECT_FALSE(Platform::RegularExpression("(").Matches("("));
}
