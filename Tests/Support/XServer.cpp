#include "Tests/Support/XServer.h"

#include "Platform/Launch.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>

namespace fs = std::filesystem;

XServer::XServer(const std::string& arguments) {
    XSocketPath("0");
    // It ends with the test, should that be ended.
    const std::string command = "echo $$; exec setpriv --pdeathsig KILL Xvfb -displayfd 1 -noreset "
                                "-nolisten tcp -screen 0 1280x720x24 " +
                                arguments + " 2>/dev/null";
    m_output = ::popen(command.c_str(), "re");
    // The server chooses a number, and writes it as a line when it is ready.
    char number[16] = "none";
    EXPECT_EQ(std::fscanf(m_output, "%d %15s", &m_process, number), 2) << "no X server";
    m_number = number;
}

XServer::~XServer() {
    if (m_process > 0)
        ::kill(m_process, SIGTERM);
    ::pclose(m_output);
}

void XServer::RunXrandr(const std::string& arguments) const {
    EXPECT_EQ(Platform::RunShellCommand("xrandr -d " + Name() + " " + arguments), 0);
}

std::string XSocketPath(const std::string& number) {
    const fs::path folder = "/tmp/.X11-unix";
    if (fs::create_directory(folder))
        fs::permissions(folder, fs::perms::all | fs::perms::sticky_bit);
    return folder / ("X" + number);
}
