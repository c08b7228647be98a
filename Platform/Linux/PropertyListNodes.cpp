#include "Platform/Linux/PropertyListNodes.h"

#include "Platform/Linux/PropertyListFile.h"
#include "Platform/PlatformString.h"

#include <cstdlib>
#include <limits>

namespace Platform {

namespace {

using CText = std::unique_ptr<char, decltype(&std::free)>;

std::optional<PropertyList> FromNodeAt(plist_t node, int depth);

OpaqueRef Keep(plist_t node) {
    auto opaque = std::make_shared<OpaqueValue>();
    opaque->node.reset(plist_copy(node));
    return opaque;
}

bool IsStorableText(const std::string& text) {
    return text.find('\0') == std::string::npos && IsValidUtf8(text);
}

bool FitsNumber(double value) {
    using Limits = std::numeric_limits<std::int32_t>;
    return value > double{Limits::min()} - 1 && value < double{Limits::max()} + 1;
}

std::optional<PropertyList> FromString(plist_t node) {
    std::uint64_t length = 0;
    const char* text = plist_get_string_ptr(node, &length);
    std::string utf8(text ? text : "", text ? static_cast<std::size_t>(length) : 0);
    if (!IsStorableText(utf8))
        return std::nullopt;
    return PropertyList(std::move(utf8));
}

PropertyList FromInteger(plist_t node) {
    std::uint64_t bits = 0;
    plist_get_uint_val(node, &bits);
    // An unsigned number above the signed range has the bits of a negative one.
    const NodePointer sameBitsSigned(plist_new_uint(bits));
    const bool isSigned = plist_compare_node_value(node, sameBitsSigned.get()) != 0;
    const auto number = static_cast<std::int64_t>(bits);
    const auto narrow = static_cast<std::int32_t>(number);
    if (isSigned && narrow == number)
        return PropertyList(narrow);
    return PropertyList::ForeignNumber(std::nullopt, Keep(node));
}

PropertyList FromReal(plist_t node) {
    double value = 0;
    plist_get_real_val(node, &value);
    std::optional<std::int32_t> reading;
    if (FitsNumber(value))
        reading = static_cast<std::int32_t>(value);
    return PropertyList::ForeignNumber(reading, Keep(node));
}

std::optional<PropertyList> FromArray(plist_t node, int depth) {
    PropertyList::Array items;
    plist_array_iter start = nullptr;
    plist_array_new_iter(node, &start);
    const CText iterator(static_cast<char*>(start), &std::free);
    for (;;) {
        plist_t item = nullptr;
        plist_array_next_item(node, iterator.get(), &item);
        if (!item)
            return PropertyList(std::move(items));
        std::optional<PropertyList> value = FromNodeAt(item, depth + 1);
        if (!value)
            return std::nullopt;
        items.push_back(std::move(*value));
    }
}

std::optional<PropertyList> FromDictionary(plist_t node, int depth) {
    PropertyList::Dictionary items;
    plist_dict_iter start = nullptr;
    plist_dict_new_iter(node, &start);
    const CText iterator(static_cast<char*>(start), &std::free);
    for (;;) {
        char* name = nullptr;
        plist_t item = nullptr;
        plist_dict_next_item(node, iterator.get(), &name, &item);
        const CText owner(name, &std::free);
        if (!item)
            return PropertyList(std::move(items));
        std::optional<PropertyList> value = FromNodeAt(item, depth + 1);
        if (!value || !name || !IsStorableText(name))
            return std::nullopt;
        items.insert_or_assign(name, std::move(*value));
    }
}

std::optional<PropertyList> FromNodeAt(plist_t node, int depth) {
    if (depth > kMaximumPropertyListDepth)
        return std::nullopt;
    switch (plist_get_node_type(node)) {
    case PLIST_DICT:
        return FromDictionary(node, depth);
    case PLIST_ARRAY:
        return FromArray(node, depth);
    case PLIST_STRING:
        return FromString(node);
    case PLIST_UINT:
        return FromInteger(node);
    case PLIST_REAL:
        return FromReal(node);
    case PLIST_NONE:
        return std::nullopt;
    default:
        return PropertyList::Opaque(Keep(node));
    }
}

NodePointer ToNodeAt(const PropertyList& value, int depth);

NodePointer ToDictionary(const PropertyList::Dictionary& items, int depth) {
    NodePointer node(plist_new_dict());
    for (const auto& [key, item] : items) {
        NodePointer child = IsStorableText(key) ? ToNodeAt(item, depth + 1) : nullptr;
        if (!child)
            return nullptr;
        plist_dict_set_item(node.get(), key.c_str(), child.release());
    }
    return node;
}

NodePointer ToArray(const PropertyList::Array& items, int depth) {
    NodePointer node(plist_new_array());
    for (const PropertyList& item : items) {
        NodePointer child = ToNodeAt(item, depth + 1);
        if (!child)
            return nullptr;
        plist_array_append_item(node.get(), child.release());
    }
    return node;
}

NodePointer ToNodeAt(const PropertyList& value, int depth) {
    if (depth > kMaximumPropertyListDepth)
        return nullptr;
    if (const auto* items = value.AsDictionary())
        return ToDictionary(*items, depth);
    if (const auto* items = value.AsArray())
        return ToArray(*items, depth);
    if (const std::string* text = value.AsString())
        return NodePointer(IsStorableText(*text) ? plist_new_string(text->c_str()) : nullptr);
    if (const OpaqueRef original = value.Original())
        return NodePointer(plist_copy(original->node.get()));
    const std::optional<std::int32_t> number = value.AsNumber();
    return NodePointer(number ? plist_new_uint(static_cast<std::uint64_t>(std::int64_t{*number}))
                              : nullptr);
}

} // namespace

std::optional<PropertyList> FromNode(plist_t node) {
    return FromNodeAt(node, 1);
}

NodePointer ToNode(const PropertyList& value) {
    return ToNodeAt(value, 1);
}

} // namespace Platform
