#include "Platform/Linux/Environment.h"

#include <array>
#include <cstdlib>
#include <sstream>
#include <unistd.h>

namespace Platform {

std::string Variable(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

std::vector<std::string> ListVariable(const char* name) {
    std::vector<std::string> entries;
    std::istringstream list(Variable(name));
    for (std::string entry; std::getline(list, entry, ':');)
        if (!entry.empty())
            entries.push_back(std::move(entry));
    return entries;
}

std::string HostName() {
    std::array<char, 256> name = {};
    return ::gethostname(name.data(), name.size() - 1) == 0 ? name.data() : "";
}

} // namespace Platform
