#include "Platform/Machine.h"

#include "Platform/Linux/KernelFiles.h"
#include "Platform/ThreadAnnotations.h"

#include <algorithm>
#include <sys/utsname.h>
#include <unistd.h>

namespace Platform {

namespace {

/// What the kernel's files say of the machine does not change while a program runs: each is read
/// until it tells something, and then kept.
struct KnownMachine {
    AnnotatedMutex lock;
    std::optional<ProcessorDescription> processor VISTRA_GUARDED_BY(lock);
    std::string model VISTRA_GUARDED_BY(lock);
};

/// Never destroyed, as calls may come from the host's exit handlers.
KnownMachine& Known() {
    static KnownMachine& machine = *new KnownMachine();
    return machine;
}

ProcessorDescription Processor() {
    KnownMachine& known = Known();
    const ScopedLock lock(known.lock);
    if (!known.processor)
        known.processor = DescribeProcessor("");
    return known.processor.value_or(ProcessorDescription());
}

utsname SystemNames() {
    utsname names = {};
    if (::uname(&names) != 0)
        names = {};
    return names;
}

/// A figure of the system; 0 when it cannot be had.
std::uint64_t Figure(int name) {
    return static_cast<std::uint64_t>(std::max(::sysconf(name), 0L));
}

} // namespace

SystemVersion GetSystemVersion() {
    return ParseRelease(SystemNames().release);
}

std::string HardwareName() {
    return SystemNames().machine;
}

std::string ProcessorName() {
    return Processor().name;
}

std::string MachineModel() {
    KnownMachine& known = Known();
    const ScopedLock lock(known.lock);
    if (known.model.empty())
        known.model = DescribeModel("");
    return known.model;
}

int ProcessorMegahertz() {
    return Processor().megahertz;
}

int ProcessorCount() {
    return static_cast<int>(Figure(_SC_NPROCESSORS_ONLN));
}

std::uint64_t MemoryBytes() {
    return Figure(_SC_PHYS_PAGES) * Figure(_SC_PAGESIZE);
}

} // namespace Platform
