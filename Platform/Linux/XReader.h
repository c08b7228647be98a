#pragma once

#include <cstring>
#include <string_view>
#include <type_traits>

namespace Platform {

/// Reads structures from what an X server sent, whatever lengths and counts it states in them.
class XReader {
public:
    explicit XReader(std::string_view bytes) : m_bytes(bytes) {}

    /// Reads the next structure. False, without logging, when the bytes end before it does.
    template <typename Structure>
    bool Take(Structure& structure) {
        static_assert(std::is_trivially_copyable_v<Structure>);
        const std::string_view bytes = m_bytes;
        if (!Skip(sizeof structure))
            return false;
        std::memcpy(&structure, bytes.data(), sizeof structure);
        return true;
    }

    /// Leaves out `count` bytes. False, without logging, when there are fewer.
    bool Skip(std::size_t count) {
        if (count > m_bytes.size())
            return false;
        m_bytes.remove_prefix(count);
        return true;
    }

private:
    std::string_view m_bytes;
};

/// Padded to the unit in which X counts.
constexpr std::size_t PaddedForX(std::size_t count) {
    return (count + 3) / 4 * 4;
}

} // namespace Platform
