#pragma once

#include <string>

namespace Platform {

/// A new random identifier in upper-case 8-4-4-4-12 form; empty if none can be made.
std::string CreateUuidText();

} // namespace Platform
