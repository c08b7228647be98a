#pragma once

#include "Platform/PropertyList.h"

#include <optional>
#include <string_view>

namespace Platform {

inline constexpr char kLocaleDefault[] = "AppleLocale";       ///< a string, as in "de_DE"
inline constexpr char kLanguagesDefault[] = "AppleLanguages"; ///< strings, the preferred one first

/// The user's setting for all programs, as it is now. Nothing, without logging, for another key,
/// and when the user has no such setting.
std::optional<PropertyList> UserDefault(std::string_view key);

} // namespace Platform
