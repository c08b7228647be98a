#pragma once

#include <string>

namespace Platform {

/// Starts an executable detached from this process: a session of its own, standard streams on
/// the null device, no descriptor and no signal setting of this process. Returns false, without
/// logging, when it could not be started.
bool LaunchItem(const std::string& path);

/// Runs a command line in the system's shell, detached like a launched item, and waits for it.
/// Returns its exit status, or -1 when the shell could not be run or was ended by a signal.
int RunShellCommand(const std::string& command);

} // namespace Platform
