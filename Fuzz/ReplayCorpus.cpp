#include "Fuzz/FuzzInput.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

/// Runs every file of the folders once: the seeds, and what was a finding.
int main(int count, char** folders) {
    int runs = 0;
    for (int i = 1; i < count; ++i)
        for (const auto& entry : std::filesystem::directory_iterator(folders[i])) {
            std::cout << entry.path() << std::endl;
            std::ifstream file(entry.path(), std::ios::binary);
            const std::vector<char> bytes(std::istreambuf_iterator<char>(file), {});
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()),
                                   bytes.size());
            ++runs;
        }
    return runs > 0 ? 0 : 1;
}
