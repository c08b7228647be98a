#pragma once

#include "Tools/vistra/ExitCode.h"

#include <ostream>
#include <string>

/// Writes the clear text of a document byte for byte or, for a terminal, made printable but for its
/// line feeds. Complains of one that cannot be read, or not to its end: InputMissed.
ExitCode WriteClearText(const std::string& path, std::ostream& out, bool isForTerminal);
