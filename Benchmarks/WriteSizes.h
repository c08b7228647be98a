#pragma once

#include <cstddef>
#include <vector>

/// Notes the size of every write(2) of this process and its libraries while it is there. Programs
/// that link it have a write(2) that looks for it; so where a single write is measured, none does.
class WriteSizes {
public:
    WriteSizes();
    ~WriteSizes();
    WriteSizes(const WriteSizes&) = delete;
    WriteSizes& operator=(const WriteSizes&) = delete;

    const std::vector<std::size_t>& Get() const { return m_sizes; }

private:
    std::vector<std::size_t> m_sizes;
};
