#pragma once

#include <exception>

namespace Platform {

/// What a service of the system may raise, running out of memory included. The exported frame
/// catches and logs it; any other object passes to the host.
using Exception = std::exception;

} // namespace Platform
