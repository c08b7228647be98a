#pragma once

#include <cstddef>
#include <cstdint>
#include <map>

/// How often each key came, for no more than so many different keys.
template <typename Key>
class BoundedCounts {
public:
    explicit BoundedCounts(std::size_t mostKeys) : m_mostKeys(mostKeys) {}

    void Add(const Key& key) {
        ++m_total;
        if (const auto found = m_counts.find(key); found != m_counts.end())
            ++found->second;
        else if (m_counts.size() < m_mostKeys)
            m_counts.emplace(key, 1);
        else
            ++m_beyond;
    }

    const std::map<Key, std::uint64_t>& Counts() const { return m_counts; }
    std::uint64_t Total() const { return m_total; }
    /// How often a key came for which there was no room any more.
    std::uint64_t Beyond() const { return m_beyond; }

private:
    std::size_t m_mostKeys;
    std::map<Key, std::uint64_t> m_counts;
    std::uint64_t m_total = 0, m_beyond = 0;
};
