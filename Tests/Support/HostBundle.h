#pragma once

#include "Tests/Support/Sandbox.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <thread>

/// The lines of a text file; none when it does not exist.
inline std::vector<std::string> LinesOf(const std::string& path) {
    std::vector<std::string> lines;
    std::ifstream file(path, std::ios::binary);
    for (std::string line; std::getline(file, line);)
        lines.push_back(line);
    return lines;
}

/// A host program in a bundle of its own in a user account, with the library's log switched on and
/// inside it an agent that does nothing but count its launches.
class HostBundle {
public:
    explicit HostBundle(const Sandbox& account) : m_account(account) {
        const std::string agent = AgentBundle() + "/Contents/MacOS/LogTransport2";
        WriteText(agent, "#!/bin/sh\necho launched >>\"$HOME/launches\"\n");
        std::filesystem::permissions(agent, std::filesystem::perms::owner_all);
        WriteText(AgentBundle() + "/Contents/Info.plist",
                  ReadText(TEST_DATA "/Bundles/Agent.plist"));
        WriteText(Folder() + "/Contents/Info.plist", ReadText(TEST_DATA "/Bundles/Host.plist"));
        WriteText(Folder() + "/VSLog.config", "append=1\n");
        std::filesystem::copy_file(SCRIPT_HOST, Folder() + "/Contents/MacOS/Host");
    }

    std::string Folder() const { return m_account.Root() + "/Host.app"; }
    std::string AgentBundle() const { return Folder() + "/Contents/MacOS/LogTransport2.app"; }

    /// Plays calls, as ScriptHost takes them, in a new process, with shell text in front of its
    /// command if given, and awaits the agents it launched. Returns what it printed; the test
    /// fails when the process does not end well.
    std::string Play(const std::string& calls, const std::string& prefix = "") const {
        WriteText(m_account.Root() + "/calls", calls);
        const std::string command = "cd '" + m_account.Root() + "'; " + prefix +
                                    " Host.app/Contents/MacOS/Host <calls >results";
        EXPECT_EQ(std::system(command.c_str()), 0) << command;
        std::size_t launched = 0;
        for (const std::string& message : Log())
            launched += message.starts_with("INFO LogTransport2 Path: ");
        for (int i = 0; Launches() < launched && i < 2000; ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        return ReadText(m_account.Root() + "/results");
    }

    /// The library's log, one "LEVEL message" for each line.
    std::vector<std::string> Log() const {
        std::vector<std::string> lines = LinesOf(m_account.DiagnosticLog());
        for (std::string& line : lines) {
            const std::size_t value = line.find(" | VALUE:") + 9;
            line = line.substr(1, line.find(']') - 1) + " " +
                   line.substr(value, line.rfind(" | DETAIL:File:") - value);
        }
        return lines;
    }

    std::size_t Launches() const { return LinesOf(m_account.Home() + "/launches").size(); }

private:
    const Sandbox& m_account;
};
