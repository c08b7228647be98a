#include "Platform/Linux/Environment.h"

#include "Platform/Linux/SystemText.h"

#include <array>
#include <cstdlib>
#include <unistd.h>

namespace Platform {

std::string Variable(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

std::vector<std::string> ListVariable(const char* name) {
    std::vector<std::string> entries;
    const std::string value = Variable(name);
    for (std::string_view list = value; !list.empty();)
        if (const std::string_view entry = TakeUntil(':', list); !entry.empty())
            entries.push_back(std::string(entry));
    return entries;
}

std::string HostName() {
    std::array<char, 256> name = {};
    return ::gethostname(name.data(), name.size() - 1) == 0 ? name.data() : "";
}

} // namespace Platform
