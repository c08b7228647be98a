#include "LogSession/UTLogData.h"
#include "Tests/EndToEnd/EndToEndTest.h"

#include <pthread.h>

#include <map>

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
    for (const std::string& line : LinesOf(m_account.Root() + "/trace")) {
        const std::string call = line.substr(0, line.find('('));
        EXPECT_THAT(call, Not(EndsWith(" socket"))) << line;
        const std::size_t quote = line.find('"');
        if (call.ends_with(" openat"))
            ++opened[line.substr(quote, line.rfind('"') - quote)];
        if (line.find(".tmp>") != std::string::npos)
            onTheFile += call.substr(call.rfind(' ') + 1) + " ";
        if (call.ends_with(" execve"))
            programs += line.substr(line.find('"'), line.find('[') - line.find('"'));
    }
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

TEST_F(CallTest, MayComeFromEightThreadsOnSessionsOfTheirOwnAndASharedOne) {
    UTInitialize("key", 0, (m_host.Folder() + "/Contents/MacOS").c_str());
    UTSetOptIn(1);
    LogSession* shared = nullptr;
    UTStartSession(&shared, "Suite", "Editor", "1", nullptr, nullptr);
    const auto work = [&](const char* name) {
        LogSession* own = nullptr;
        UTStartSession(&own, "Own", name, "1", nullptr, nullptr);
        int group = -1;
        UTNewDataGroup(shared, "Threads", nullptr, "Group", &group, nullptr, 0);
        for (int i = 0; i < 50; ++i) {
            UTAddToSession(own, "Key", "value");
            UTAddToGroup(shared, group, "Key", "value");
        }
        UTCloseSession(&own);
    };
    {
        std::vector<std::jthread> threads;
        for (const char* name : {"1", "2", "3", "4", "5", "6", "7", "8"})
            threads.emplace_back(work, name);
    }
    UTCloseSession(&shared);
    EXPECT_EQ(ReadSession(Files()).size(), kStartRecords + kEndRecords + 8 * 51);
    ASSERT_EQ(Files("ulog_Own_").size(), 8U);
    for (const std::string& path : Files("ulog_Own_"))
        EXPECT_EQ(ReadSession({path}).size(), kStartRecords + kEndRecords + 50);
}

} // namespace
