#include "Tests/EndToEnd/EndToEndTest.h"
#include "Utility/src/DemographicNode.h"

#include <random>
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

    double SecondsOfASession() const {
        const auto start = std::chrono::steady_clock::now();
        m_host.Play(m_open + kClose);
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    }

    /// Records numbers until the kill; returns how many were acknowledged.
    int CountUntilKilled(double seconds) const {
        WriteText(m_account.Root() + "/calls", m_open + "count s\n");
        const std::string command =
            "cd '" + m_account.Root() +
            "'; exec 2>/dev/null; { Host.app/Contents/MacOS/Host <calls "
            "& echo $! >pid; sleep " +
            std::to_string(seconds) +
            "; kill -9 $!; wait $!; "
            "echo $? >status; } | cat >acknowledged; [ $(cat status) -eq 137 ]";
        EXPECT_EQ(std::system(command.c_str()), 0);
        const auto lines = LinesOf(m_account.Root() + "/acknowledged");
        return std::max(0, static_cast<int>(lines.size()) - 1); // the first is "s=open"
    }

    /// How many numbers the session's files hold, which have to be whole and in order.
    int RecordedNumbers() const {
        std::string text;
        for (const std::string& path : Files())
            text += ClearText(path);
        const std::regex record("<DataRec time=\"[^\"]+\" group=\"1\" name=\"Number\" "
                                "data=\"(\\d+)\" seq=\"\\d+\" />\n");
        int count = 0;
        for (std::sregex_iterator i(text.begin(), text.end(), record), end; i != end; ++i)
            EXPECT_EQ((*i)[1], std::to_string(count++));
        return count;
    }

    /// The answer "Count" that the preferences hold; -1 for none.
    static int Answer() {
        char answer[16] = "-1";
        std::size_t size = sizeof answer;
        DemographicNode(nullptr).GetValue("Count", answer, size, false);
        return std::atoi(answer);
    }

    void ExpectMarker() const {
        const std::string name = fs::path(Files().front()).filename();
        const std::string session = name.substr(name.rfind('_') - 36, 36);
        EXPECT_THAT(NamesIn(Markers()),
                    ElementsAre("key_Suite_Editor_" + session + "_" +
                                LinesOf(m_account.Root() + "/pid")[0] + "_Host.sif"));
    }

    const std::string m_open = "UTInitialize key 1 NULL\nUTSetOptIn 1\n" + kStart;
};

TEST_F(CrashTest, ByAKillLosesNothingThatWasAcknowledged) {
    fs::remove(m_host.Folder() + "/VSLog.config"); // which would be the slowest of all
    const int kills = std::getenv("VISTRA_THOROUGH") ? 5'000 : 50;
    std::mt19937 random(std::random_device{}());
    std::uniform_real_distribution delay(0.0, 3 * SecondsOfASession());
    int records = 0;
    for (int i = 0; i < kills; ++i) {
        SCOPED_TRACE("kill " + std::to_string(i));
        for (const char* folder : {"/.config", "/.local"})
            fs::remove_all(m_account.Home() + folder);
        Prefer("send", 0);
        Prefer("obfuscate", i % 2);
        const int acknowledged = CountUntilKilled(delay(random));
        const int recorded = RecordedNumbers();
        ASSERT_GE(recorded, acknowledged);
        EXPECT_THAT(Answer(),
                    AllOf(Ge(acknowledged ? (acknowledged - 1) / 10 * 10 : -1), Le(recorded)));
        records += acknowledged;
        if (acknowledged > 0)
            ExpectMarker();
        ClearFolder();
        ASSERT_EQ(m_host.Play(m_open + kClose), "s=open\ns=NULL\n") << "the next session works";
        EXPECT_EQ(ReadSession(Files()).size(), kStartRecords + kEndRecords);
    }
    EXPECT_GT(records, kills);
    RecordProperty("acknowledged", records);
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
    EXPECT_THAT(m_host.Log(), Contains("INFO CrashHandler::SetCrashHandler").Times(2));
    std::string agent;
    EXPECT_TRUE(PreferenceUtil::GetPreferenceValue("CRProcessor", "Host", PreferenceKeys::kDomain,
                                                   agent, kCFPreferencesCurrentUser,
                                                   kCFPreferencesCurrentHost));
    EXPECT_EQ(agent, m_host.AgentBundle() + "/Contents/MacOS/LogTransport2");
}

} // namespace
