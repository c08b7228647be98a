#include "LogSession/UTLogData.h"
#include "Tests/EndToEnd/EndToEndTest.h"

#include <pthread.h>

#include <functional>
#include <map>
#include <set>

using namespace testing;

namespace {

using CallTest = EndToEndTest;

TEST_F(CallTest, IsOneWriteForARecordAProcessForTheAgentOnlyAndNoConnection) {
    if (std::system("strace -o /dev/null true 2>/dev/null") != 0)
        GTEST_SKIP() << "strace cannot run";
    m_account.SetVariable("DISPLAY", "localhost:10");
    m_host.Play(kOpen + "repeat 50 UTAddToSession s K V\n" + kClose,
                "ASAN_OPTIONS=detect_leaks=0 strace -f -y -qq -o trace -e trace=%desc,%process,"
                "%network -e signal=none");
    std::string onTheFile, programs, expected = "write "; // the marker
    for (std::size_t i = 0; i < ReadSession(Files()).size(); ++i)
        expected += "write ";
    std::map<std::string, int> opened;
    int threads = 0;
    const std::vector<std::string> trace = LinesOf(m_account.Root() + "/trace");
    const std::string host = trace[0].substr(0, trace[0].find(' ') + 1);
    for (const std::string& line : trace) {
        const std::string call = line.substr(0, line.find('('));
        EXPECT_THAT(call, Not(EndsWith(" socket"))) << line;
        EXPECT_TRUE(call != host + "openat" || line.find("O_CLOEXEC") != std::string::npos ||
                    line.find("\"/proc/self/") != std::string::npos)
            << line;
        if (line.find("VSLog.config") == std::string::npos)
            threads += line.find("CLONE_THREAD") != std::string::npos;
        else
            threads = 0; // the library begins
        const std::size_t quote = line.find('"');
        if (call.ends_with(" openat"))
            ++opened[line.substr(quote, line.rfind('"') - quote)];
        if (line.find(".tmp>") != std::string::npos)
            onTheFile += call.substr(call.rfind(' ') + 1) + " ";
        if (call.ends_with(" execve"))
            programs += line.substr(line.find('"'), line.find('[') - line.find('"'));
    }
    EXPECT_EQ(threads, 0);
    EXPECT_EQ(onTheFile.substr(onTheFile.find("write")), expected + "flock close ");
    const std::string agent = '"' + m_host.AgentBundle() + "/Contents/MacOS/LogTransport2\", ";
    for (const char* source :
         {"Host.app/Contents/Info.plist", "LogTransport2.app/Contents/Info.plist", "/proc/cpuinfo",
          "/mimeapps.list"})
        for (const auto& [path, times] : opened)
            EXPECT_TRUE(!path.ends_with(source) || times == 1) << path << " opened " << times;
    EXPECT_EQ(opened["\"/proc/cpuinfo"], 1);
    EXPECT_EQ(programs, "\"Host.app/Contents/MacOS/Host\", " + agent + agent);
}

TEST_F(CallTest, IsFinishedBeforeItsThreadIsCancelled) {
    UTInitialize("key", 0, nullptr);
    pthread_t thread;
    const auto work = [](void*) -> void* {
        ::pthread_cancel(::pthread_self());
        UTSetOptIn(1);
        ::pthread_testcancel();
        return nullptr;
    };
    ASSERT_EQ(::pthread_create(&thread, nullptr, work, nullptr), 0);
    void* result = nullptr;
    ::pthread_join(thread, &result);
    EXPECT_EQ(result, PTHREAD_CANCELED);
    EXPECT_EQ(UTGetOptIn(), 1);
}

TEST_F(CallTest, MayComeFromEightProcessesAndLosesNoFileRecordOrKey) {
    std::string command = "cd '" + m_account.Root() + "'; ", asked, expected;
    for (const std::string name : {"0", "1", "2", "3", "4", "5", "6", "7"}) {
        WriteText(m_account.Root() + "/calls" + name,
                  "UTInitialize key" + name + " 0 NULL\nUTSetOptIn 1\nUTStartSession s Own " +
                      name + "e 1 1 en\nUTOptInSet other" + name +
                      " 0\nUTSetNonDefaultDemographic p" + name + " A a" + name +
                      "\nrepeat 220 UTAddToSession s K " + std::string(500, 'x') + "\n" + kClose);
        command += "Host.app/Contents/MacOS/Host <calls" + name + " >out" + name +
                   " & pids=\"$pids $!\"; ";
        asked += "UTOptInGet key" + name + "\nUTOptInGet other" + name +
                 "\nUTGetNonDefaultDemographic p" + name + " A 3 3\n";
        expected += "1\n0\na" + name + ". 3\n";
    }
    command += "for pid in $pids; do wait $pid || exit 1; done";
    std::jthread processes([&command] { EXPECT_EQ(std::system(command.c_str()), 0); });
    for (int i = 0; i < 30; ++i)
        Prefer("own" + std::to_string(i), i);
    processes.join();
    EXPECT_EQ(m_host.Play(asked), expected);
    for (int i = 0, value = -1; i < 30; ++i, value = -1) {
        PreferenceUtil::GetPreferenceValue("own" + std::to_string(i), PreferenceKeys::kDomain,
                                           value, kCFPreferencesCurrentUser,
                                           kCFPreferencesCurrentHost);
        EXPECT_EQ(value, i);
    }
    std::set<std::string> users;
    for (int i = 0; i < 8; ++i) {
        const auto files = Files("ulog_Own_" + std::to_string(i) + "e_");
        users.insert(files[0].substr(files[0].find("e_") + 2, 36));
        EXPECT_EQ(ReadSession(files).size(), kStartRecords + 220 + 2 + kEndRecords);
    }
    EXPECT_THAT(users, SizeIs(1)) << "they have one user";
    EXPECT_EQ(Files("ulog_VistraOptin").size(), 8U);
}

TEST_F(CallTest, MayComeFromAProcessThatForksMeanwhile) {
    const std::string look = "host shell \"cd '" + m_account.LogFolder() +
                             "'; for i in *Suite*; do flock -n $i echo free || echo held; done\"\n";
    EXPECT_EQ(m_host.Play(kOpen + "UTAddToSession s K 1\nhost fork exit\nhost fork _exit\n" +
                          "UTAddToSession s K 2\nhost fork stay\nUTAddToSession s K 3\n" + look +
                          kClose + look),
              "s=open\nchild ended with 0\nchild ended with 0\nheld\ns=NULL\nfree\n");
    EXPECT_EQ(Briefs(ReadSession(Files()), kStartRecords, kEndRecords),
              "DataRec|1|K|1\nDataRec|1|K|2\nDataRec|1|K|3\n");
}

struct ThreadTest : EndToEndTest {
    ThreadTest() {
        UTInitialize("key", 1, (m_host.Folder() + "/Contents/MacOS").c_str());
        UTSetOptIn(1);
        UTStartSession(&m_shared, "Suite", "Editor", "1", nullptr, nullptr);
    }

    /// Sixteen threads record in the shared session and each in two of its own, one after another,
    /// and do something else after each record.
    void RecordInThreads(const std::function<void(int)>& somethingElse) {
        std::vector<std::jthread> threads;
        for (int thread = 0; thread < 16; ++thread)
            threads.emplace_back([this, thread, somethingElse] {
                LogSession* own = nullptr;
                int group = -1;
                UTNewDataGroup(m_shared, "Threads", nullptr, "Group", &group, nullptr, 0);
                for (int i = 0; i < 40; ++i) {
                    if (i % 20 == 0)
                        UTStartSession(&own, "Own", "Editor", "1", nullptr, nullptr);
                    const auto value = std::to_string(thread * 40 + i) + std::string(400, 'x');
                    UTAddToSession(own, "Record", value.c_str());
                    UTAddToGroup(m_shared, group, "Record", value.c_str());
                    somethingElse(i);
                    if (i % 20 == 19)
                        UTCloseSession(&own);
                }
            });
    }

    LogSession* m_shared = nullptr;
};

TEST_F(ThreadTest, EachOfSixteenHasAllItsRecordsInItsOwnAndTheSharedSession) {
    RecordInThreads([](int) {});
    UTCloseSession(&m_shared);
    std::set<std::string> values;
    for (const DocumentRecord& record : ReadSession(Files()))
        if (record.brief.find("|Record|") != std::string::npos)
            values.insert(record["data"]);
    EXPECT_EQ(values.size(), 16U * 40);
    EXPECT_GT(Files().size(), 2U);
    EXPECT_EQ(Files("ulog_Own_").size(), 32U);
    for (const std::string& path : Files("ulog_Own_"))
        EXPECT_EQ(ReadSession({path}).size(), kStartRecords + 20 + kEndRecords);
}

TEST_F(ThreadTest, LeavesWholeDocumentsHoweverOptInAndSessionsChange) {
    RecordInThreads([](int i) {
        UTSetOptIn(i % 20 / 4 != 1);
        if (i % 10 == 0)
            UTInitialize("key", UTGetOptIn() == i % 20 / 10, nullptr);
    });
    UTSetOptIn(1);
    UTCloseSession(&m_shared);
    UTStartSession(&m_shared, "Last", "Editor", "1", nullptr, nullptr);
    UTCloseSession(&m_shared);
    EXPECT_EQ(ReadSession(Files("ulog_Last_")).size(), kStartRecords + kEndRecords);
    for (const std::string& path : Files("ulog_"))
        EXPECT_THAT(ClearText(path), AllOf(StartsWith("<?xml"), EndsWith("</UsageDoc>\n")));
}

} // namespace
