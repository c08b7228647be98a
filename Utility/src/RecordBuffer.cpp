#include "Utility/src/RecordBuffer.h"

#include "Utility/src/Encryption.h"

#include <algorithm>

void RecordBuffer::Append(std::string_view text) {
    EndAt(std::copy(text.begin(), text.end(), MakeRoom(text.size())));
}

void RecordBuffer::Obfuscate() {
    Encryption::Rot47(m_bytes.get(), m_size);
}

void RecordBuffer::Grow(std::size_t bytes) {
    const std::size_t capacity = std::max(m_size + bytes, 2 * m_capacity);
    auto grown = std::make_unique_for_overwrite<char[]>(capacity);
    std::copy_n(m_bytes.get(), m_size, grown.get());
    m_bytes = std::move(grown);
    m_capacity = capacity;
}
