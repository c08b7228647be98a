#pragma once

namespace Allocations {

/// How often this process and its libraries have asked for memory since it began, in programs that
/// link this: malloc and its kin, on which C++ relies, too.
unsigned long Count();

} // namespace Allocations
