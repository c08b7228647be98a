#include "Tools/vistra/Commands.h"

void AddExportCommand(CLI::App&, ExitCode&) {}
