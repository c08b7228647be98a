#include "Tests/EndToEnd/EndToEndTest.h"

#include <regex>

using namespace testing;
namespace fs = std::filesystem;

namespace {

/// A host with crash detection, and the markers of its account.
struct CrashTest : EndToEndTest {
    std::string Markers() const {
        return m_account.Home() + "/.local/state/Logs/Norvale/Vistra/SessionInfo";
    }

    /// Leaves that many markers of other sessions: the higher its number, the younger it is.
    void LeaveMarkers(int count) const {
        for (int i = 0; i < count; ++i) {
            const std::string path = Markers() + "/" + std::to_string(10'000 + i) + ".sif";
            WriteText(path, "");
            fs::last_write_time(path, fs::file_time_type::clock::now() - std::chrono::hours(9) +
                                          std::chrono::seconds(i));
        }
    }

    const std::string m_open = "UTInitialize key 1 NULL\nUTSetOptIn 1\n" + kStart;
};

TEST_F(CrashTest, ByAKillLeavesAMarkerAndEveryAcknowledgedRecordWhole) {
    Prefer("obfuscate", 0);
    Prefer("send", 0);
    WriteText(m_account.Root() + "/calls", m_open + "count s\n");
    const std::string command =
        "cd '" + m_account.Root() +
        "'; : >acknowledged; Host.app/Contents/MacOS/Host <calls >acknowledged & echo $! >pid; "
        "while [ \"$(wc -l <acknowledged)\" -lt 1500 ]; do sleep 0.01; done; "
        "kill -9 $!; wait $!; [ $? -eq 137 ]";
    ASSERT_EQ(std::system(command.c_str()), 0);
    const std::size_t acknowledged = LinesOf(m_account.Root() + "/acknowledged").size() - 1;
    std::string text;
    for (const std::string& path : Files())
        text += ReadText(path);
    const std::regex record("<DataRec time=\"[^\"]+\" group=\"1\" name=\"Number\" data=\"(\\d+)\" "
                            "seq=\"\\d+\" />\n");
    std::size_t count = 0;
    for (std::sregex_iterator i(text.begin(), text.end(), record), end; i != end; ++i)
        ASSERT_EQ((*i)[1], std::to_string(count++));
    EXPECT_GE(count, acknowledged);
    const std::size_t id = text.find("id=\"") + 4;
    EXPECT_THAT(NamesIn(Markers()),
                ElementsAre("key_Suite_Editor_" + text.substr(id, 36) + "_" +
                            LinesOf(m_account.Root() + "/pid")[0] + "_Host.sif"));
    EXPECT_EQ(m_host.Play(m_open + kClose), "s=open\ns=NULL\n") << "the next session works";
    EXPECT_EQ(NamesIn(Markers()).size(), 1U) << "and leaves the trace of the crash";
}

TEST_F(CrashTest, ThatDidNotHappenLeavesFiftyMarkersOfOthersAtMost) {
    for (const int count : {0, 50, 53, 5'000}) {
        LeaveMarkers(count);
        WriteText(Markers() + "/folder/marker.sif", "");
        fs::create_symlink("nowhere", Markers() + "/dangling.sif");
        fs::permissions(Markers() + "/folder/marker.sif", fs::perms::none);
        m_host.Play(m_open + kClose);
        std::vector<std::string> expected{"folder"};
        if (count + 1 <= 50)
            expected.insert(expected.begin(), "dangling.sif");
        for (int i = count; i > std::max(0, count - 50); --i)
            expected.push_back(std::to_string(10'000 + i - 1) + ".sif");
        EXPECT_THAT(NamesIn(Markers()), UnorderedElementsAreArray(expected)) << count;
        fs::remove_all(Markers());
    }
}

TEST_F(CrashTest, ManyProcessesPruneAtOnceAndLeaveTheYoungest) {
    LeaveMarkers(400);
    WriteText(m_account.Root() + "/calls", m_open + kClose);
    const std::string command = "cd '" + m_account.Root() +
                                "'; for i in 1 2 3 4 5 6 7 8; do Host.app/Contents/MacOS/Host "
                                "<calls >results$i & pids=\"$pids $!\"; done; "
                                "for pid in $pids; do wait $pid || exit 1; done";
    ASSERT_EQ(std::system(command.c_str()), 0);
    const std::vector<std::string> left = NamesIn(Markers());
    EXPECT_THAT(left.size(), AllOf(Ge(43U), Le(50U))) << "open markers of the others count";
    EXPECT_EQ(left.back(), "10399.sif");
    EXPECT_EQ(left.front(), std::to_string(10'400 - left.size()) + ".sif");
}

TEST_F(CrashTest, MarkersFollowTheFlagAndTheKey) {
    m_host.Play(kOpen);
    EXPECT_THAT(NamesIn(Markers()), IsEmpty()) << "crash detection is off";
    m_host.Play(m_open + kStart + "UTInitialize other 1 NULL\n" + kClose);
    const std::vector<std::string> left = NamesIn(Markers());
    ASSERT_EQ(left.size(), 2U) << "the first start was never closed, the second under another key";
    EXPECT_EQ(fs::status(Markers() + "/" + left[0]).permissions(), fs::perms(0600));
    EXPECT_THAT(m_host.Log(), Contains("INFO CrashHandler::SetCrashHandler").Times(2));
    std::string agent;
    EXPECT_TRUE(PreferenceUtil::GetPreferenceValue("CRProcessor", "Host", PreferenceKeys::kDomain,
                                                   agent, kCFPreferencesCurrentUser,
                                                   kCFPreferencesCurrentHost));
    EXPECT_EQ(agent, m_host.AgentBundle() + "/Contents/MacOS/LogTransport2");
}

} // namespace
