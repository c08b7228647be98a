#pragma once

#include <string>

/// What a host does with its own process. `playOn` plays the lines that are left.
///
///   state noted|changed          keeps the state of the process, or prints what is another since
///   streams closed, locale other  results go elsewhere; numbers are printed in groups
///   umask MASK, shell COMMAND, children ignored|counted, fork exit|_exit|stay
///   end handler|destructor|last   plays on in an exit handler, the destructor of a static object,
///                                 or a handler that was there before all libraries
void ActAsHost(const std::string& verb, const std::string& argument, void (*playOn)());
