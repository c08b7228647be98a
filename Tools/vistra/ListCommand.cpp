#include "Tools/vistra/Commands.h"

void AddListCommand(CLI::App&, ExitCode&) {}
