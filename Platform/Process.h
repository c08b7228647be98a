#pragma once

#include <string>

namespace Platform {

int CurrentProcessId();

/// Path of the running program's file, as it was at the first look that found it. Empty when
/// unknown.
std::string CurrentProgramPath();

/// Path of the file of the program that a process runs. Empty when there is no such process, and
/// when it is another user's.
std::string ProgramPathOf(int processId);

} // namespace Platform
