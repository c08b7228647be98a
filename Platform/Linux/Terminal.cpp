#include "Platform/Terminal.h"

#include <unistd.h>

namespace Platform {

bool IsTerminal(StandardStream stream) {
    return ::isatty(stream == StandardStream::Output ? STDOUT_FILENO : STDERR_FILENO) == 1;
}

} // namespace Platform
