#include "Tools/vistra/Commands.h"

void AddDoctorCommand(CLI::App&, ExitCode&) {}
