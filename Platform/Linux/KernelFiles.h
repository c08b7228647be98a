#pragma once

#include "Platform/Machine.h"

#include <string>
#include <string_view>

// What the kernel's own files tell about the machine, read anew at each call. They are looked for
// below `root`, which is empty for the machine that the program runs on.

namespace Platform {

struct ProcessorDescription {
    std::string name;     ///< empty where the kernel names none
    int megahertz = 0;    ///< 0 where the kernel tells none
    bool isKnown = false; ///< whether the kernel's description could be read at all
};

ProcessorDescription DescribeProcessor(const std::string& root);

/// The machine's name from its firmware or its device tree; empty where neither has one.
std::string DescribeModel(const std::string& root);

/// The numbers at the start of a kernel's release text, as in "6.1.0-18-amd64".
/// One that is not there, or too large, is 0.
SystemVersion ParseRelease(std::string_view release);

} // namespace Platform
