#pragma once

#include "Platform/PropertyList.h"

namespace Platform {

// Keys of one element of the list.
inline constexpr char kHandlerScheme[] = "LSHandlerURLScheme";
inline constexpr char kHandlerProgram[] = "LSHandlerRoleAll";

/// The programs that the user chose to open the schemes of addresses: an array with a dictionary
/// for each scheme. As they are now; null, without logging, when the user keeps no such list or it
/// cannot be read.
CFPropertyListRef DefaultHandlers();

} // namespace Platform
