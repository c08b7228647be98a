#include "Tools/vistra/Commands.h"

void AddReportCommand(CLI::App&, ExitCode&) {}
