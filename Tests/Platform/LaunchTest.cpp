#include "Platform/Launch.h"

#include "Tests/Support/Sandbox.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace fs = std::filesystem;
using Platform::LaunchItem;
using Platform::RunShellCommand;

namespace {

/// Sets what the process does with a signal, until it ends.
class Disposition {
public:
    Disposition(int signal, void (*handler)(int)) : m_signal(signal) {
        struct sigaction action = {};
        action.sa_handler = handler;
        ::sigaction(signal, &action, &m_previous);
    }
    ~Disposition() { ::sigaction(m_signal, &m_previous, nullptr); }

private:
    int m_signal;
    struct sigaction m_previous = {};
};

std::atomic<int> gChildSignals{0};

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

bool HasChild() {
    return ::waitpid(-1, nullptr, WNOHANG) != -1;
}

} // namespace

TEST_F(Launch, NeitherProgramNorShellHasAnythingOfTheHost) {
    const Disposition ignored(SIGPIPE, SIG_IGN);
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

TEST_F(Launch, LeavesNoChildBehind) {
    const Disposition counted(SIGCHLD, [](int) { ++gChildSignals; });
    gChildSignals = 0;
    EXPECT_TRUE(LaunchItem(Reporter()));
    EXPECT_FALSE(HasChild());
    Report();
    EXPECT_FALSE(HasChild());
    EXPECT_EQ(RunShellCommand("true"), 0);
    EXPECT_EQ(gChildSignals, 0);
}

TEST_F(Launch, WhatCannotBeExecutedIsNotStarted) {
    WriteText(m_sandbox.Root() + "/text", "no program");
    EXPECT_FALSE(LaunchItem(m_sandbox.Root() + "/text"));
    EXPECT_FALSE(LaunchItem(m_sandbox.Root() + "/missing"));
    EXPECT_FALSE(LaunchItem(m_sandbox.Root()));
    EXPECT_FALSE(LaunchItem(""));
    EXPECT_FALSE(HasChild());
}

TEST_F(Launch, ShellStatusIsReturned) {
    EXPECT_EQ(RunShellCommand("exit 7"), 7);
    EXPECT_EQ(RunShellCommand("kill -9 $$"), -1);
    EXPECT_EQ(RunShellCommand("/missing/program 2>/dev/null"), 127);
    const Disposition ignored(SIGCHLD, SIG_IGN);
    EXPECT_EQ(RunShellCommand("sleep 0.05; exit 3"), 3);
    EXPECT_TRUE(LaunchItem(Reporter()));
    Report();
}
