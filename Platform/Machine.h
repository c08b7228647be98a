#pragma once

#include <cstdint>
#include <string>

// Facts about the machine and its operating system. Nothing here logs.

namespace Platform {

/// The numbers of the system's version; one that cannot be read is 0.
struct SystemVersion {
    int major = 0;
    int minor = 0;
    int fix = 0;
};
SystemVersion GetSystemVersion();

/// What the system calls the kind of hardware, as in "x86_64"; empty when unknown.
std::string HardwareName();

/// The maker's name for the processor; empty when unknown.
std::string ProcessorName();

/// The maker's name for the machine; empty when unknown.
std::string MachineModel();

/// Clock of the first processor in MHz, its highest where it varies; 0 when unknown.
int ProcessorMegahertz();

/// Processors that the system uses; 0 when unknown.
int ProcessorCount();

/// Physical memory that the system uses; 0 when unknown.
std::uint64_t MemoryBytes();

} // namespace Platform
