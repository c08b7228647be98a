#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

/// Runs one input; what is thrown is a finding.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

/// The bytes that decide what one run does, read front to back. Past their end all is 0 or empty.
class FuzzInput {
public:
    FuzzInput(const std::uint8_t* bytes, std::size_t size)
        : m_rest(reinterpret_cast<const char*>(bytes), size) {}

    bool IsEmpty() const { return m_rest.empty(); }

    /// One byte's number below `bound`; a digit stands for itself where the bound is a power of 2
    /// up to 16.
    int Number(int bound) {
        const int byte = m_rest.empty() ? 0 : static_cast<unsigned char>(m_rest.front());
        m_rest.remove_prefix(std::min<std::size_t>(1, m_rest.size()));
        return byte % bound;
    }

    /// The bytes in front of the next `end`, or all.
    std::string Text(char end) {
        std::string text(m_rest.substr(0, m_rest.find(end)));
        m_rest.remove_prefix(std::min(text.size() + 1, m_rest.size()));
        return text;
    }

private:
    std::string_view m_rest;
};

inline void Require(bool holds, const std::string& fault) {
    if (!holds)
        throw std::runtime_error(fault);
}
