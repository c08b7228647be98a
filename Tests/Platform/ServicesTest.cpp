#include "Platform/UserDefaults.h"
#include "Platform/UserFolders.h"
#include "Tests/Support/Sandbox.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace fs = std::filesystem;

TEST(UserFolders, FollowTheEnvironmentAndAreCreatedOnDemand) {
    Sandbox sandbox;
    FSRef folder;
    EXPECT_FALSE(Platform::FindFolder(kUserDomain, kDomainLibraryFolderType, false, folder));
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
