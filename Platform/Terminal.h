#pragma once

namespace Platform {

enum class StandardStream { Output, Error };

/// Whether the program's stream shows on a terminal, where colour and progress belong.
bool IsTerminal(StandardStream stream);

} // namespace Platform
