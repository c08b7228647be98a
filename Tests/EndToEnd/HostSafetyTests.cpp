#include "LogSession/UTLogData.h"
#include "Tests/EndToEnd/EndToEndTest.h"

#include <set>
#include <sstream>

using namespace testing;
namespace fs = std::filesystem;

namespace {

const std::string kFill = "repeat 210 UTAddToSession s Key " + std::string(500, 'x') + "\n";
const std::string kEvent = "UTLogEvent s C S E abc 3\n";

/// Calls of all kinds: an opt-in document, a split, and `meanwhile` before the close.
std::string FullUse(const std::string& meanwhile = "") {
    return "UTInitialize key 1 NULL\nUTSetOptIn 1\nUTSetSerializationState 1\n"
           "UTSetDemographic Age 42\nUTGetNonDefaultDemographic p A 9 9\nUTOptInSet other 0\n" +
           kStart + kEvent + "UTNewDataGroup s C S G g abc 3\nUTAddToGroup s g K V\n" + kFill +
           meanwhile + kClose;
}

struct HostTest : EndToEndTest {
    /// What is another in the state of a host afterwards.
    std::vector<std::string> Changes(const std::string& calls) const {
        const std::string results = m_host.Play(calls + "host state changed\n");
        WriteText(m_account.Root() + "/changes", results.substr(results.find("changes:\n") + 9));
        return LinesOf(m_account.Root() + "/changes");
    }

    void ClearAccount() const {
        fs::remove_all(m_account.Home() + "/.config");
        fs::remove_all(m_account.Home() + "/.local");
    }

    void ExpectPrivateFiles() const {
        std::set<std::string> kinds;
        for (const auto& entry : fs::recursive_directory_iterator(m_account.Home())) {
            if (entry.path().filename() == "launches")
                continue;
            EXPECT_EQ(entry.status().permissions(), fs::perms(entry.is_directory() ? 0750 : 0600))
                << entry;
            kinds.insert(entry.path().extension());
        }
        EXPECT_THAT(kinds,
                    IsSupersetOf({".cfg", ".lock", ".plist", ".rdy", ".sif", ".tmp", ".txt"}));
    }
};

TEST_F(HostTest, KeepsItsProcessAsItWasAndGetsPrivateFiles) {
    const std::string added = "descriptor ([3-9]|[1-9][0-9]+) closed on exec .*";
    for (const std::string preparation : {"umask 0", "umask 777", "streams closed", "locale other",
                                          "children ignored", "children counted"}) {
        SCOPED_TRACE(preparation);
        ClearAccount();
        fs::permissions(m_account.Home(), fs::perms(0750));
        const std::string begin = "host " + preparation + "\nhost state noted\n";
        EXPECT_THAT(Changes(begin + FullUse()), Each(MatchesRegex(added + "\\.plist\"")));
        EXPECT_EQ(Files().size(), 2U);
        EXPECT_THAT(
            Changes(begin + FullUse(kStart + kEvent)),
            AllOf(Each(MatchesRegex(added + "\\.(plist|tmp)\"")), Contains(EndsWith("_1.tmp\""))));
        ExpectPrivateFiles();
    }
}

TEST_F(HostTest, GivesNoMemoryForARecordOfShortTexts) {
    fs::remove(m_host.Folder() + "/VSLog.config");
    std::string calls = "allocations\n", words[4]; // session, group, and allocations twice
    for (const std::string call : {"UTLogEvent s File Open Image NULL 0\n",
                                   "UTAddToSession s Theme dark\n", "UTAddToGroup s g Width 9\n"})
        calls = call + calls + "repeat 99 " + call;
    std::istringstream results(
        m_host.Play(kOpen + "UTNewDataGroup s C S G g NULL 0\n" + calls + "allocations\n"));
    results >> words[0] >> words[1] >> words[2] >> words[3];
    EXPECT_EQ(words[3], words[2]);
    EXPECT_THAT(words[2], MatchesRegex("[1-9][0-9]*"));
}

TEST_F(HostTest, SharesNoDescriptorWithAnyOtherProgram) {
    const std::string agent = m_host.AgentBundle() + "/Contents/MacOS/LogTransport2",
                      seen = m_account.Home() + "/agent";
    WriteText(agent, "#!/bin/sh\nreadlink /proc/$$/fd/* >>\"$HOME/agent\"\n"
                     "echo x >>\"$HOME/launches\"\n");
    const std::string look =
        "host shell \"readlink /proc/self/fd/* | grep -c -e Norvale -e norvale\"\n";
    EXPECT_THAT(m_host.Play(FullUse(look), "exec 9<calls;"), HasSubstr("\n0\n"));
    EXPECT_THAT(LinesOf(seen), AllOf(Contains("/dev/null"), Each(AnyOf("/dev/null", agent, seen))));
}

TEST_F(HostTest, MayCallUntilItsVeryEnd) {
    for (const std::string moment : {"handler", "destructor", "last"}) {
        m_host.Play(kOpen + kEvent + kFill + "host end " + moment + "\n" + kEvent + kFill + kClose +
                    "UTSetDemographic Age 42\nUTStartSession s Late Editor 1 1 en\n" + kClose);
        std::vector<std::string> documents;
        for (const DocumentRecord& record : ReadSession(Files()))
            if (record.kind == "EventRec")
                documents.push_back(record["doc"]);
        EXPECT_THAT(documents, ElementsAre(MatchesRegex("[0-9]{7}"), documents[0]));
        EXPECT_EQ(Files().size(), 3U) << moment;
        EXPECT_EQ(ReadSession(Files("ulog_Late_")).size(), kStartRecords + kEndRecords);
        ClearFolder();
    }
}

TEST_F(HostTest, FindsNoLinkFollowed) {
    m_host.Play(FullUse());
    const std::string preferences = m_account.UserPreferences(),
                      victim = m_account.Root() + "/victim";
    for (const std::string& path :
         {m_account.DiagnosticLog(), preferences, preferences + ".lock", preferences + ".new",
          preferences + ".corrupt", m_account.UserConfigFile()})
        for (const std::string text : {"", "not ours"}) {
            ClearAccount();
            if (path.ends_with(".corrupt"))
                WriteText(preferences, "torn");
            if (!text.empty())
                WriteText(victim, text);
            fs::create_directories(fs::path(path).parent_path());
            fs::create_symlink(victim, path);
            m_host.Play(FullUse());
            EXPECT_EQ(fs::exists(victim) ? ReadText(victim) : "", text) << path;
            EXPECT_EQ(fs::exists(victim), !text.empty()) << path;
            fs::remove(victim);
        }
}

TEST_F(HostTest, HasNoTextRunByTheShell) {
    const std::string text = "$(cd;touch a)'`cd;touch b`",
                      folder = m_account.Root() + "/x'\";cd;touch c\n cd; touch d\n&|'" + text;
    const std::string agent = folder + "/LogTransport2.app/Contents/MacOS/LogTransport2";
    WriteText(agent, "echo x >>\"$HOME/launches\"\n"); // only a shell understands this
    for (const fs::perms permissions : {fs::perms(0600), fs::perms(0700)}) {
        fs::permissions(agent, permissions);
        UTInitialize(text.c_str(), 1, folder.c_str());
        UTSetOptIn(1);
        LogSession* session = nullptr;
        UTStartSession(&session, text.c_str(), text.c_str(), "1", nullptr, nullptr);
        EXPECT_NE(session, nullptr);
        UTCloseSession(&session);
    }
    for (int i = 0; m_host.Launches() < 1 && i < 1000; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    EXPECT_THAT(NamesIn(m_account.Home()), ElementsAre(".config", ".local", "launches"));
}

} // namespace
