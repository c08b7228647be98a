#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

/// One product's demographic answers, kept in its preferences record. Failures are false results;
/// nothing is logged.
class DemographicNode {
public:
    /// The name is the product's key; null and empty name the answers of no product.
    explicit DemographicNode(const char* name) : m_name(name ? name : "") {}
    explicit DemographicNode(const std::string& name) : m_name(name) {}

    /// False for a null pointer, or when the answer could not be stored.
    bool SetValue(const char* key, const char* value) const;

    /// Copies the answer into the buffer of `size` bytes (at least 1), or with `sizeOnly` only
    /// reports the size in bytes that it needs. False, with nothing touched, when there is none.
    bool GetValue(const char* key, char* buffer, std::size_t& size, bool sizeOnly) const;

    /// Copies what fits with a terminating NUL; `size` becomes the bytes written. Always true.
    bool CopyValue(const std::string& value, char* buffer, std::size_t& size) const;

    /// Appends every answer, by key.
    void EnumKeyValues(std::vector<std::pair<std::string, std::string>>& out) const;

private:
    std::string m_name;
};
