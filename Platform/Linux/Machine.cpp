#include "Platform/Machine.h"

#include "Platform/Linux/KernelFiles.h"
#include "Platform/ThreadAnnotations.h"

#include <algorithm>
#include <optional>
#include <sys/utsname.h>
#include <unistd.h>

namespace Platform {

namespace {

/// A figure of the system; 0 when it cannot be had.
std::uint64_t Figure(int name) {
    return static_cast<std::uint64_t>(std::max(::sysconf(name), 0L));
}

utsname SystemNames() {
    utsname names = {};
    if (::uname(&names) != 0)
        names = {};
    return names;
}

/// What hardly ever changes while a program runs.
struct MachineFacts {
    utsname system = SystemNames();
    ProcessorDescription processor = DescribeProcessor("");
    std::string model = DescribeModel("");
    int processorCount = static_cast<int>(Figure(_SC_NPROCESSORS_ONLN));
};

struct KnownMachine {
    AnnotatedMutex lock;
    std::optional<MachineFacts> facts VISTRA_GUARDED_BY(lock);
};

/// The facts are looked up once, or again when the files could not be opened the last time. What
/// holds them is never destroyed, as calls may come from the host's exit handlers.
MachineFacts Facts() {
    static KnownMachine& known = *new KnownMachine();
    const ScopedLock lock(known.lock);
    if (!known.facts || !known.facts->processor.isKnown)
        known.facts = MachineFacts();
    return *known.facts;
}

} // namespace

SystemVersion GetSystemVersion() {
    return ParseRelease(Facts().system.release);
}

std::string HardwareName() {
    return Facts().system.machine;
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
