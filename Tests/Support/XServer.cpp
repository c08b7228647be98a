#include "Tests/Support/XServer.h"

#include "Platform/Launch.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstring>
#include <filesystem>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

constexpr int kMillisecondsToStart = 60000;

/// The server chooses a number, and writes it as a line when it is ready.
std::string NumberFrom(int pipe) {
    pollfd entry = {pipe, POLLIN, 0};
    char line[16] = {};
    if (::poll(&entry, 1, kMillisecondsToStart) == 1 && ::read(pipe, line, sizeof line - 1) > 0)
        return std::string(line, std::strcspn(line, "\n"));
    ADD_FAILURE() << "no X server";
    return "none";
}

} // namespace

XServer::XServer(const std::string& arguments) {
    XSocketPath("0");
    int pipe[2] = {-1, -1};
    EXPECT_EQ(::pipe(pipe), 0);
    const std::string command = "exec Xvfb -displayfd " + std::to_string(pipe[1]) +
                                " -noreset -nolisten tcp -screen 0 1280x720x24 " + arguments +
                                " 2>/dev/null";
    m_process = ::fork();
    if (m_process == 0) {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL); // should the test be ended
        ::execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
        ::_exit(127);
    }
    ::close(pipe[1]);
    m_number = NumberFrom(pipe[0]);
    ::close(pipe[0]);
}

XServer::~XServer() {
    ::kill(m_process, SIGTERM);
    Continue();
    ::waitpid(m_process, nullptr, 0);
}

void XServer::RunXrandr(const std::string& arguments) const {
    EXPECT_EQ(Platform::RunShellCommand("xrandr -d " + Name() + " " + arguments), 0);
}

void XServer::Stop() const {
    ::kill(m_process, SIGSTOP);
    ::waitpid(m_process, nullptr, WUNTRACED);
}

void XServer::Continue() const {
    ::kill(m_process, SIGCONT);
}

std::string XSocketPath(const std::string& number) {
    const fs::path folder = "/tmp/.X11-unix";
    if (fs::create_directory(folder))
        fs::permissions(folder, fs::perms::all | fs::perms::sticky_bit);
    return folder / ("X" + number);
}
