#pragma once

namespace Platform {

enum class StandardStream { Input, Output, Error };

/// Whether the program's stream is a terminal: where colour and progress belong, and where a person
/// can answer.
bool IsTerminal(StandardStream stream);

} // namespace Platform
