#include "Fuzz/FuzzInput.h"
#include "Platform/Linux/KernelFiles.h"
#include "Platform/Linux/SystemText.h"
#include "Tests/Support/Sandbox.h"

using namespace Platform;

static void RequireName(const std::string& name) {
    Require(IsPlainText(name) && Trimmed(name) == name, "odd name: " + name);
}

/// The kernel's files about a machine, and its release text; a form feed ends each.
int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    static const Sandbox machine;
    FuzzInput input(bytes, size);
    for (const char* file : {"/proc/cpuinfo", "/proc/device-tree/model",
                             "/sys/devices/system/cpu/cpu0/cpufreq/cpuinfo_max_freq",
                             "/sys/class/dmi/id/product_name"})
        WriteText(machine.Root() + file, input.Text('\f'));
    const ProcessorDescription processor = DescribeProcessor(machine.Root());
    RequireName(processor.name);
    RequireName(DescribeModel(machine.Root()));
    const SystemVersion version = ParseRelease(input.Text('\f'));
    Require(processor.megahertz >= 0 && version.major >= 0 && version.minor >= 0 &&
                version.fix >= 0,
            "a number below 0");
    return 0;
}
