#pragma once

#include "Tools/vistra/ExitCode.h"

namespace CLI {
class App;
}

// Each function adds one command to the program. What the command ends with goes into `exit`, which
// outlives the program's run.

void AddListCommand(CLI::App& vistra, ExitCode& exit);
void AddShowCommand(CLI::App& vistra, ExitCode& exit);
void AddCheckCommand(CLI::App& vistra, ExitCode& exit);
void AddExportCommand(CLI::App& vistra, ExitCode& exit);
void AddReportCommand(CLI::App& vistra, ExitCode& exit);
void AddDoctorCommand(CLI::App& vistra, ExitCode& exit);
void AddOptInCommand(CLI::App& vistra, ExitCode& exit);
void AddEraseCommand(CLI::App& vistra, ExitCode& exit);
