// vistra: shows, checks and converts usage documents, tells why recording is on or off, and lets
// the recorded person decide.

#include "Tools/vistra/Commands.h"
#include "Tools/vistra/Console.h"

#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>

namespace {

constexpr char kExitCodes[] =
    "Exit codes: 0 done; 1 something is not as it should be, or recording is off; 2 wrong command\n"
    "line; 3 some input could not be read; 4 output or a change failed.";

void AddCommands(CLI::App& vistra, ExitCode& exit) {
    AddListCommand(vistra, exit);
    AddShowCommand(vistra, exit);
    AddCheckCommand(vistra, exit);
    AddExportCommand(vistra, exit);
    AddReportCommand(vistra, exit);
    AddDoctorCommand(vistra, exit);
    AddOptInCommand(vistra, exit);
    AddEraseCommand(vistra, exit);
}

/// Reports a wrong command line, or prints the help or the version that was asked for.
ExitCode EndOfParsing(const CLI::App& vistra, const CLI::ParseError& error) {
    return vistra.exit(error) == 0 ? ExitCode::Done : ExitCode::WrongUsage;
}

ExitCode Run(int argc, char** argv) {
    CLI::App vistra("Shows what is recorded about the use of programs, and why.", "vistra");
    ExitCode exit = ExitCode::Done;
    vistra.require_subcommand(1);
    vistra.set_version_flag("--version", "vistra " VISTRA_VERSION);
    vistra.footer(kExitCodes);
    AddCommands(vistra, exit);
    try {
        vistra.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return EndOfParsing(vistra, error);
    }
    return exit;
}

} // namespace

int main(int argc, char** argv) {
    std::ios::sync_with_stdio(false);
    ExitCode exit = ExitCode::NotDone;
    try {
        exit = Run(argc, argv);
    } catch (const std::exception& failure) {
        if (std::cout) // what became of the output is told below
            Console::Complain("failed", failure.what());
    }
    Console::ShowProgress("");
    if (!std::cout.flush()) {
        Console::Complain("standard output", "cannot be written");
        exit = ExitCode::NotDone;
    }
    return static_cast<int>(exit);
}
