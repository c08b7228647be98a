#include "Platform/Terminal.h"

#include <unistd.h>

namespace Platform {

bool IsTerminal(StandardStream stream) {
    constexpr int kNumbers[] = {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO};
    return ::isatty(kNumbers[static_cast<int>(stream)]) == 1;
}

} // namespace Platform
