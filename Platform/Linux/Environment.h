#pragma once

#include <string>
#include <vector>

// The host's surroundings, read at each call.

namespace Platform {

/// Empty when the variable is not set.
std::string Variable(const char* name);

/// The entries between the variable's colons; empty ones are left out.
std::vector<std::string> ListVariable(const char* name);

/// The machine's name in its network; empty when unknown.
std::string HostName();

} // namespace Platform
