#include "Platform/Linux/KernelFiles.h"

#include <gtest/gtest.h>

TEST(KernelFiles, DescribeMachinesOfManyKinds) {
    constexpr const char* kMachines[][2] = {
        {"desktop", "Intel(R) Core(TM) i7-8700 CPU @ 3.20GHz|4600|OptiPlex 7060"},
        {"virtual", "AMD EPYC|2596|"},
        {"arm64-board", "|1800|Raspberry Pi 4 Model B Rev 1.4"},
        {"arm32", "Feroceon 88FR131 rev 1 (v5l)|1200|"},
        {"power", "POWER9, altivec supported|3800|8335-GTH"},
        {"riscv", "sifive,u74-mc|0|SiFive HiFive Unmatched A00"},
        {"mips", "MIPS 1004Kc V2.15|0|"},
        {"odd-empty", "|0|"},
        {"odd-garbage", "|0|"},
        {"odd-huge-clock", "Blanks  around  it|3000|Board behind a blank name"},
        {"odd-missing", "|0|Model without a line feed"},
    };
    for (const auto& [machine, description] : kMachines) {
        const std::string root = TEST_DATA "/Machines/" + std::string(machine);
        const auto processor = Platform::DescribeProcessor(root);
        EXPECT_EQ(processor.name + "|" + std::to_string(processor.megahertz) + "|" +
                      Platform::DescribeModel(root),
                  description)
            << machine;
    }
}

TEST(KernelFiles, ReleasesBeginWithTheirNumbers) {
    constexpr const char* kReleases[][2] = {
        {"6.1.0-18-amd64", "6.1.0"},  {"5.10.257-rc1+", "5.10.257"},
        {"4.4-foo", "4.4.0"},         {"6.12.9.1", "6.12.9"},
        {"6.1-18", "6.1.0"},          {"6.99999999999.7", "6.0.7"},
        {"99999999999.2.3", "0.2.3"}, {"-5.10.1", "0.0.0"},
        {"garbage", "0.0.0"},         {"", "0.0.0"},
    };
    for (const auto& [release, expected] : kReleases) {
        const auto [major, minor, fix] = Platform::ParseRelease(release);
        EXPECT_EQ(std::to_string(major) + "." + std::to_string(minor) + "." + std::to_string(fix),
                  expected);
    }
}
