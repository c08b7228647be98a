#include "Platform/PropertyList.h"

namespace Platform {

PropertyList PropertyList::ForeignNumber(std::optional<std::int32_t> value, OpaqueRef original) {
    PropertyList number;
    number.m_value = Number{value, std::move(original)};
    return number;
}

PropertyList PropertyList::Opaque(OpaqueRef original) {
    PropertyList opaque;
    opaque.m_value = std::move(original);
    return opaque;
}

PropertyList::PropertyList(const PropertyList& other) = default;
PropertyList::PropertyList(PropertyList&& other) noexcept = default;
PropertyList& PropertyList::operator=(const PropertyList& other) = default;
PropertyList& PropertyList::operator=(PropertyList&& other) noexcept = default;
PropertyList::~PropertyList() = default;

bool PropertyList::operator==(const PropertyList& other) const {
    return m_value == other.m_value;
}

PropertyList::Kind PropertyList::GetKind() const {
    static_assert(std::variant_size_v<decltype(m_value)> == std::size_t(Kind::Other) + 1);
    return static_cast<Kind>(m_value.index());
}

std::optional<std::int32_t> PropertyList::AsNumber() const {
    const Number* number = std::get_if<Number>(&m_value);
    return number ? number->value : std::nullopt;
}

OpaqueRef PropertyList::Original() const {
    if (const Number* number = std::get_if<Number>(&m_value))
        return number->original;
    const OpaqueRef* opaque = std::get_if<OpaqueRef>(&m_value);
    return opaque ? *opaque : nullptr;
}

const PropertyList* PropertyList::Find(std::string_view key) const {
    const Dictionary* dictionary = AsDictionary();
    if (!dictionary)
        return nullptr;
    const auto found = dictionary->find(key);
    return found == dictionary->end() ? nullptr : &found->second;
}

} // namespace Platform
