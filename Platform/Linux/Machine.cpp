#include "Platform/Machine.h"

#include "Platform/Linux/KernelFiles.h"

#include <algorithm>
#include <sys/utsname.h>
#include <unistd.h>

namespace Platform {

namespace {

/// A figure of the system; 0 when it cannot be had.
std::uint64_t Figure(int name) {
    return static_cast<std::uint64_t>(std::max(::sysconf(name), 0L));
}

/// What does not change while a program runs. It is looked up once.
struct MachineFacts {
    ProcessorDescription processor = DescribeProcessor("");
    std::string model = DescribeModel("");
    int processorCount = static_cast<int>(Figure(_SC_NPROCESSORS_ONLN));
};

/// Never destroyed, as calls may come from the host's exit handlers.
const MachineFacts& Facts() {
    static const MachineFacts& facts = *new MachineFacts();
    return facts;
}

utsname SystemNames() {
    utsname names = {};
    if (::uname(&names) != 0)
        names = {};
    return names;
}

} // namespace

SystemVersion GetSystemVersion() {
    return ParseRelease(SystemNames().release);
}

std::string HardwareName() {
    return SystemNames().machine;
}

std::string ProcessorName() {
    return Facts().processor.name;
}

std::string MachineModel() {
    return Facts().model;
}

int ProcessorMegahertz() {
    return Facts().processor.megahertz;
}

int ProcessorCount() {
    return Facts().processorCount;
}

std::uint64_t MemoryBytes() {
    return Figure(_SC_PHYS_PAGES) * Figure(_SC_PAGESIZE);
}

} // namespace Platform
