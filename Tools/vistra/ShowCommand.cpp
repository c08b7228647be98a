#include "Tools/vistra/Commands.h"

void AddShowCommand(CLI::App&, ExitCode&) {}
