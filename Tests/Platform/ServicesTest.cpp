#include "Platform/Bundle.h"
#include "Platform/Identifier.h"
#include "Platform/PlatformString.h"
#include "Platform/UserDefaults.h"
#include "Platform/UserFolders.h"
#include "Tests/Support/Sandbox.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>

namespace fs = std::filesystem;

namespace {

constexpr char kInfo[] = "<plist><dict><key>CFBundleIdentifier</key><string>test.host</string>"
                         "</dict></plist>";

} // namespace

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

TEST(UserDefaults, SpeakTheLanguageOfTheLocaleVariables) {
    constexpr const char* kVariables[] = {"LC_ALL", "LC_MESSAGES", "LANG", "LANGUAGE"};
    constexpr const char* kCases[][5] = {
        {"", "", "", "", ","},
        {"", "", "de_DE.UTF-8@euro", "", "de_DE@euro,de_DE@euro"},
        {"fr_FR.UTF-8", "sv_SE", "de_DE", "", "fr_FR,fr_FR"},
        {"", "sv_SE.ISO-8859-1", "de_DE", "", "sv_SE,sv_SE"},
        {"", "", "de_DE", "C::sv.UTF-8@x:en", "de_DE,sv@x"},
        {"", "", "de_DE", "C:POSIX", "de_DE,de_DE"},
        {"C", "sv_SE", "de_DE", "", ","},
        {"", "", "C.UTF-8", "de", ",de"},
        {"", "POSIX", "de_DE", ":", ","},
        {"", "", "\xFF", "", ","},
    };
    Sandbox sandbox;
    for (const auto& row : kCases) {
        for (int i = 0; i < 4; ++i)
            sandbox.SetVariable(kVariables[i], row[i]);
        const auto locale = Platform::UserDefault(Platform::kLocaleDefault);
        const auto languages = Platform::UserDefault(Platform::kLanguagesDefault);
        EXPECT_EQ((locale ? *locale->AsString() : "") + "," +
                      (languages ? *languages->AsArray()->at(0).AsString() : ""),
                  row[4]);
    }
    EXPECT_FALSE(Platform::UserDefault("LANG"));
}

TEST(PlatformServices, IdentifiersAreRandomUpperCaseUuids) {
    const std::string uuid = Platform::CreateUuidText();
    EXPECT_THAT(uuid, testing::MatchesRegex("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]"
                                            "{3}-[0-9A-F]{12}"));
    EXPECT_NE(uuid, Platform::CreateUuidText());
}
