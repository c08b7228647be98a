#pragma once

#include "Tests/EndToEnd/EndToEndTest.h"

#include <cstdlib>
#include <string>
#include <sys/wait.h>

/// What a run of the command left.
struct VistraRun {
    int exit = -1; ///< -1 when it was ended by a signal
    std::string output;
    std::string errors;
};

/// Runs the command `vistra` in a user account of its own, in which a host may have played.
class VistraTest : public EndToEndTest {
protected:
    /// Runs it with shell words as its arguments; the account's folder is the current one.
    VistraRun Vistra(const std::string& arguments) const {
        const std::string command = "cd '" + m_account.Root() + "'; '" VISTRA "' " + arguments +
                                    " >vistra.out 2>vistra.err </dev/null";
        const int status = std::system(command.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, Text("vistra.out"),
                Text("vistra.err")};
    }

    std::string Path(const std::string& name) const { return m_account.Root() + "/" + name; }
    std::string Text(const std::string& name) const { return ReadText(Path(name)); }
};
