#pragma once

#include <string>

namespace Platform {

int CurrentProcessId();

/// Path of the running program's file, also after that file was deleted. Empty when unknown.
std::string CurrentProgramPath();

} // namespace Platform
