#include "Platform/Preferences.h"

#include "Platform/Linux/FileCache.h"
#include "Platform/Linux/PreferencePaths.h"
#include "Tests/Support/Sandbox.h"

#include <gtest/gtest.h>

#include <chrono>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <thread>
#include <unistd.h>

namespace fs = std::filesystem;
using Platform::PropertyList;

namespace {

class Preferences : public testing::Test {
protected:
    std::optional<PropertyList> Get(const std::string& key) const {
        const Platform::String name{key};
        CFPropertyListRef value;
        Platform::CopyPreferenceValue(&name, &m_domain, m_user, m_host, value);
        return value ? std::optional(*value) : std::nullopt;
    }
    bool Set(const std::string& key, const PropertyList& value) const {
        const Platform::String name{key};
        return Platform::SetPreferenceValue(&name, &value, &m_domain, m_user, m_host);
    }
    bool Remove(const std::string& key) const {
        const Platform::String name{key};
        return Platform::SetPreferenceValue(&name, nullptr, &m_domain, m_user, m_host);
    }
    bool Synchronize() const { return Platform::SynchronizePreferences(&m_domain, m_user, m_host); }
    std::string Folder() const { return m_sandbox.Home() + "/.config/preferences"; }
    std::string File() const { return Folder() + "/test.domain.plist"; }

    Sandbox m_sandbox;
    Platform::String m_domain{"test.domain"};
    CFStringRef m_user = kCFPreferencesCurrentUser;
    CFStringRef m_host = kCFPreferencesAnyHost;
};

std::string FileWith(const std::string& key, const std::string& value) {
    return "<plist version=\"1.0\"><dict><key>" + key + "</key>" + value + "</dict></plist>";
}

} // namespace

TEST_F(Preferences, ValuesAreSetReplacedAndRemoved) {
    EXPECT_TRUE(Synchronize() && Remove("a"));
    EXPECT_EQ(NamesIn(m_sandbox.Home()), std::vector<std::string>()) << "nothing to remove";
    EXPECT_TRUE(Set("a", PropertyList(1)) && Set("b", PropertyList(std::string("x"))));
    EXPECT_TRUE(Set("a", PropertyList(2)));
    EXPECT_EQ(Get("a"), PropertyList(2));
    EXPECT_TRUE(Remove("a"));
    EXPECT_FALSE(Get("a"));
    EXPECT_EQ(Get("b"), PropertyList(std::string("x")));
    const std::string date = "<date>2020-01-02T03:04:05Z</date>";
    WriteText(File(), FileWith("when", date));
    EXPECT_TRUE(Set("a", PropertyList(1)));
    EXPECT_NE(ReadText(File()).find(date), std::string::npos) << "what others stored survives";
}

TEST_F(Preferences, HostScopeAndUserScopeNameTheFile) {
    m_host = kCFPreferencesCurrentHost;
    EXPECT_TRUE(Set("a", PropertyList(1)));
    const std::string name = "test.domain." + Platform::MachineName("/etc/machine-id") + ".plist";
    EXPECT_TRUE(fs::exists(Folder() + "/ByHost/" + name));
    m_sandbox.SetVariable("XDG_CONFIG_HOME", m_sandbox.Root() + "/config/");
    EXPECT_FALSE(Get("a"));
    m_sandbox.SetVariable("XDG_CONFIG_HOME", "not/absolute");
    EXPECT_EQ(Get("a"), PropertyList(1));

    const std::string idFile = m_sandbox.Root() + "/machine-id";
    const std::string hostName = Platform::MachineName(m_sandbox.Root() + "/missing");
    EXPECT_FALSE(hostName.empty());
    for (const char* none : {"", "\n", "uninitialized\n"}) {
        WriteText(idFile, none);
        EXPECT_EQ(Platform::MachineName(idFile), hostName);
    }
    WriteText(idFile, "0123abcd\n");
    EXPECT_EQ(Platform::MachineName(idFile), "0123abcd");
}

TEST_F(Preferences, SharedValuesComeFromTheFirstFolderThatHasThem) {
    const std::string first = m_sandbox.Root() + "/first", second = m_sandbox.Root() + "/second";
    const std::string name = "/preferences/test.domain.plist";
    m_sandbox.SetVariable("XDG_CONFIG_DIRS", "relative:" + first + ":" + second);
    m_user = kCFPreferencesAnyUser;
    WriteText(second + name, FileWith("a", "<integer>2</integer>"));
    EXPECT_EQ(Get("a"), PropertyList(2));
    EXPECT_TRUE(Set("b", PropertyList(3)));
    EXPECT_EQ(fs::status(first + name).permissions(), fs::perms(0644)) << "for all to read";
    EXPECT_EQ(Get("a"), PropertyList(2)) << "still there when the first folder has a file";
    EXPECT_EQ(ReadText(second + name), FileWith("a", "<integer>2</integer>"));
    m_host = kCFPreferencesCurrentHost;
    EXPECT_EQ(Get("b"), PropertyList(3));
}

TEST_F(Preferences, SystemFolderIsSearchedLastUnlessListed) {
    const auto folders = [&](const char* variable) {
        m_sandbox.SetVariable("XDG_CONFIG_DIRS", variable);
        return *Platform::FindPreferences(&m_domain, kCFPreferencesAnyUser, m_host);
    };
    const std::string name = "/preferences/test.domain.plist";
    using List = std::vector<std::string>;
    EXPECT_EQ(folders("/one/:x").search, (List{"/one" + name, "/etc/xdg" + name}));
    EXPECT_EQ(folders("/etc/xdg:/one").search, (List{"/etc/xdg" + name, "/one" + name}));
    EXPECT_EQ(folders("/one:/two").target, "/one" + name);
}

TEST_F(Preferences, UnchangedFileIsNeitherWrittenNorParsedAgainAndAChangedOneIs) {
    WriteText(File(), FileWith("a", "<integer>1</integer>"));
    // The file's next change is sure to show in its time stamps then.
    std::this_thread::sleep_for(std::chrono::milliseconds(80));
    const CFPropertyListRef values = Platform::ReadDictionaryFile(File()).values;
    EXPECT_TRUE(Set("a", PropertyList(1)) && Remove("b"));
    EXPECT_EQ(Platform::ReadDictionaryFile(File()).values, values) << "it is as it was";
    WriteText(File(), FileWith("a", "<integer>2</integer>"));
    EXPECT_EQ(Get("a"), PropertyList(2)) << "changed in place, to the same size";
    WriteText(File(), FileWith("a", "<integer>3</integer>"));
    EXPECT_EQ(Get("a"), PropertyList(3)) << "changed twice within a tick of the clock";
    fs::remove(File());
    EXPECT_FALSE(Get("a"));
}

TEST_F(Preferences, FileThatCannotBeParsedCountsAsEmptyAndIsKept) {
    for (const std::string& content :
         {std::string("garbage"), std::string("<plist><array/></plist>"),
          std::string(17 << 20, ' ')}) {
        WriteText(File(), content);
        EXPECT_FALSE(Get("a"));
        EXPECT_TRUE(Synchronize());
        EXPECT_FALSE(fs::exists(File() + ".corrupt")) << "only a write keeps it";
        EXPECT_TRUE(Set("a", PropertyList(1)));
        EXPECT_EQ(Get("a"), PropertyList(1));
        EXPECT_TRUE(ReadText(File() + ".corrupt") == content);
        fs::remove(File() + ".corrupt");
    }
}

TEST_F(Preferences, WhatCannotBeWrittenLeavesTheOldFileAndNothingElse) {
    EXPECT_TRUE(Set("a", PropertyList(1)));
    const std::string before = ReadText(File());
    EXPECT_FALSE(Set("b", PropertyList(std::string("\xFF"))));
    EXPECT_EQ(ReadText(File()), before);
    WriteText(File() + ".new", "left by a killed writer");
    EXPECT_TRUE(Set("b", PropertyList(2)));
    EXPECT_EQ(Get("a"), PropertyList(1));
    EXPECT_FALSE(fs::exists(File() + ".new"));
    m_domain = {"../outside"};
    EXPECT_FALSE(Set("a", PropertyList(1)) || Synchronize());
    m_domain = {"unreadable"};
    fs::create_directories(Folder() + "/unreadable.plist");
    EXPECT_FALSE(Set("a", PropertyList(1)) || Get("a"));
}

TEST_F(Preferences, WaitingForAnotherWriterEnds) {
    EXPECT_TRUE(Set("a", PropertyList(1)));
    const int lock = ::open((File() + ".lock").c_str(), O_RDWR | O_CLOEXEC);
    ASSERT_EQ(::flock(lock, LOCK_EX), 0);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(Set("a", PropertyList(2)));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
    EXPECT_EQ(Get("a"), PropertyList(1)) << "readers do not wait";
    ::close(lock);
    EXPECT_TRUE(Set("a", PropertyList(2)));
}
