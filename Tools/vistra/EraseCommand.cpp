#include "Tools/vistra/Commands.h"

void AddEraseCommand(CLI::App&, ExitCode&) {}
