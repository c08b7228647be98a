#pragma once

#include <string>

namespace Platform {

int CurrentProcessId();

/// Path of the running program's file, as it was at the first look that found it. Empty when
/// unknown.
std::string CurrentProgramPath();

} // namespace Platform
