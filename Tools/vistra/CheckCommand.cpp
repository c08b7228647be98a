#include "Tools/vistra/Commands.h"

void AddCheckCommand(CLI::App&, ExitCode&) {}
