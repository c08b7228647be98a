#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

/// The text of a record, reused from one to the next. Unlike a string it does not clear the room
/// that it makes, which would take as long as composing a record.
class RecordBuffer {
public:
    std::string_view View() const { return {m_bytes.get(), m_size}; }
    std::size_t Capacity() const { return m_capacity; }
    void Clear() { m_size = 0; }

    void Append(std::string_view text);

    /// Where the text ends, with room for so many more bytes. Throws when there is no memory.
    char* MakeRoom(std::size_t bytes) {
        if (bytes > m_capacity - m_size)
            Grow(bytes);
        return m_bytes.get() + m_size;
    }
    /// Makes what was written into the room part of the text.
    void EndAt(const char* end) { m_size = static_cast<std::size_t>(end - m_bytes.get()); }

    /// Obfuscates the whole text.
    void Obfuscate();

private:
    void Grow(std::size_t bytes);

    std::unique_ptr<char[]> m_bytes;
    std::size_t m_capacity = 0;
    std::size_t m_size = 0;
};
