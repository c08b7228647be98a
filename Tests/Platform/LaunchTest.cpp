#include "Platform/Launch.h"

#include "Tests/Support/Sandbox.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace fs = std::filesystem;
using Platform::LaunchItem;
using Platform::RunShellCommand;

namespace {

class Launch : public testing::Test {
protected:
    /// A program that writes what it finds about itself.
    std::string Reporter() const {
        const std::string path = m_sandbox.Root() + "/it's a reporter";
        WriteText(path,
                  "#!/bin/sh\ncd '" + m_sandbox.Root() +
                      "'\n(ls -l /proc/$$/fd; cat /proc/$$/status; echo \"Arguments: $#\";"
                      " sed 's/.*) //' /proc/$$/stat | cut -d' ' -f4) > found\nmv found report\n");
        ::chmod(path.c_str(), 0700);
        return path;
    }

    std::string Report() const {
        const std::string path = m_sandbox.Root() + "/report";
        for (int wait = 0; wait < 500 && !fs::exists(path); ++wait)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        return ReadText(path);
    }

    Sandbox m_sandbox;
};

} // namespace

TEST_F(Launch, NeitherProgramNorShellHasAnythingOfTheHost) {
    const auto previousHandler = std::signal(SIGPIPE, SIG_IGN);
    sigset_t blocked, previous, after;
    ::sigemptyset(&blocked);
    ::sigaddset(&blocked, SIGTERM);
    ::pthread_sigmask(SIG_BLOCK, &blocked, &previous);
    WriteText(m_sandbox.Root() + "/secret", "");
    const int inheritable = ::open((m_sandbox.Root() + "/secret").c_str(), O_RDONLY);
    EXPECT_TRUE(LaunchItem(Reporter()));
    std::string reports[] = {Report(), ""};
    fs::remove(m_sandbox.Root() + "/report");
    EXPECT_EQ(RunShellCommand(". \"" + Reporter() + "\""), 0);
    reports[1] = Report();
    ::close(inheritable);
    std::signal(SIGPIPE, previousHandler);
    ::pthread_sigmask(SIG_SETMASK, &previous, &after);
    EXPECT_TRUE(::sigismember(&after, SIGTERM)) << "the host's own mask is as it was";
    EXPECT_FALSE(::sigismember(&after, SIGINT));
    for (const std::string& report : reports) {
        EXPECT_EQ(report.find("secret"), std::string::npos) << report;
        for (const char* part :
             {"0 -> /dev/null", "1 -> /dev/null", "2 -> /dev/null", "Arguments: 0",
              "SigBlk:\t0000000000000000", "SigIgn:\t0000000000000000"})
            EXPECT_NE(report.find(part), std::string::npos) << part << "\n" << report;
        EXPECT_NE(std::stoi(report.substr(report.find("Arguments: 0") + 13)), ::getsid(0));
    }
}

TEST_F(Launch, ShellStatusIsReturned) {
    EXPECT_FALSE(LaunchItem(m_sandbox.Root() + "/missing")) << "no program, no shell";
    EXPECT_EQ(RunShellCommand("exit 7"), 7);
    EXPECT_EQ(RunShellCommand("kill -9 $$"), -1);
    EXPECT_EQ(RunShellCommand("/missing/program 2>/dev/null"), 127);
    std::signal(SIGCHLD, SIG_IGN);
    EXPECT_EQ(RunShellCommand("sleep 0.05; exit 3"), 3);
    EXPECT_TRUE(LaunchItem(Reporter()));
    std::signal(SIGCHLD, SIG_DFL);
    Report();
}
