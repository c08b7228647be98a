#pragma once

#include "Platform/PropertyList.h"

#include <optional>
#include <string>
#include <string_view>

namespace Platform {

/// What a property-list file may be to be read at all.
constexpr std::size_t kMaximumPropertyListBytes = std::size_t{16} * 1024 * 1024;

/// Reads a property list in its XML or binary form. Nothing, without logging, when the bytes are
/// none, hold text that is not UTF-8, or exceed the limits.
std::optional<PropertyList> ParsePropertyList(const std::string& bytes);

/// The XML form. Nothing, without logging, when the value cannot be written so that it reads the
/// same: too large or deep, or with text that is not UTF-8 or holds a NUL.
std::optional<std::string> SerializePropertyList(const PropertyList& value);

/// Whether the text, as markup, stays within the depth and takes no undue time, and as bytes is
/// UTF-8 without NUL.
bool IsHarmlessXml(std::string_view text);

/// Whether all references of a binary property list stay within its bytes, its values within the
/// depth, and what they unfold to within reason: one object may be used in many places.
bool IsHarmlessBinary(std::string_view bytes);

} // namespace Platform
