#pragma once

#include "Platform/PlatformString.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace Platform {

/// How deep a stored value may be nested, itself and the root dictionary included.
inline constexpr int kMaximumPropertyListDepth = 64;

/// A stored value that this system neither reads nor changes: a date, data, a boolean and the
/// like. It is carried so that a rewrite puts back what another program stored.
struct OpaqueValue;
using OpaqueRef = std::shared_ptr<const OpaqueValue>;

/// A property-list value: dictionary, string, number, array, or something opaque. Copies are deep.
class PropertyList {
public:
    using Dictionary = std::map<std::string, PropertyList, std::less<>>;
    using Array = std::vector<PropertyList>;

    enum class Kind { Dictionary, String, Number, Array, Other };

    /// An empty dictionary.
    PropertyList() : m_value(Dictionary()) {}
    explicit PropertyList(Dictionary dictionary) : m_value(std::move(dictionary)) {}
    explicit PropertyList(std::string utf8) : m_value(std::move(utf8)) {}
    explicit PropertyList(Array array) : m_value(std::move(array)) {}
    explicit PropertyList(std::int32_t number) : m_value(Number{number, nullptr}) {}

    // In one place, for they are long.
    PropertyList(const PropertyList& other);
    PropertyList(PropertyList&& other) noexcept;
    PropertyList& operator=(const PropertyList& other);
    PropertyList& operator=(PropertyList&& other) noexcept;
    ~PropertyList();

    /// A number of another width or a real. `value` is its reading as a signed 32-bit integer
    /// (a real loses its fraction), or nothing where it has none; `original` is written back.
    static PropertyList ForeignNumber(std::optional<std::int32_t> value, OpaqueRef original);
    static PropertyList Opaque(OpaqueRef original);

    Kind GetKind() const;

    /// Each returns null or nothing when the value is of another kind.
    const Dictionary* AsDictionary() const { return std::get_if<Dictionary>(&m_value); }
    Dictionary* AsDictionary() { return std::get_if<Dictionary>(&m_value); }
    const std::string* AsString() const { return std::get_if<std::string>(&m_value); }
    const Array* AsArray() const { return std::get_if<Array>(&m_value); }
    std::optional<std::int32_t> AsNumber() const;
    /// The stored form of a foreign number or an opaque value, else null.
    OpaqueRef Original() const;

    /// The value under `key` of a dictionary; null when there is none or this is no dictionary.
    const PropertyList* Find(std::string_view key) const;

    /// Deep equality. Opaque values and foreign numbers are equal only to themselves.
    bool operator==(const PropertyList& other) const;

private:
    struct Number {
        std::optional<std::int32_t> value;
        OpaqueRef original;
        bool operator==(const Number&) const = default;
    };

    std::variant<Dictionary, std::string, Number, Array, OpaqueRef> m_value;
};

} // namespace Platform

/// A shared, immutable property-list value; null where there is none.
using CFPropertyListRef = std::shared_ptr<const Platform::PropertyList>;
