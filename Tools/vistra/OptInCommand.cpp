#include "Tools/vistra/Commands.h"

void AddOptInCommand(CLI::App&, ExitCode&) {}
