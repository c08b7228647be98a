#pragma once

#include <string>
#include <string_view>

namespace Platform {

/// A text object of the system's services. Its bytes are always valid UTF-8.
struct String {
    std::string utf8;
};

/// Copies `utf8` into a new object that the caller releases. Returns null, without logging, when
/// the bytes are not valid UTF-8.
const String* CreateString(const std::string& utf8);

/// Releases an object of CreateString; null is ignored.
void ReleaseString(const String* string);

/// Whether `bytes` are valid UTF-8.
bool IsValidUtf8(std::string_view bytes);

} // namespace Platform

/// A borrowed or owned reference to a text object; null where there is none.
using CFStringRef = const Platform::String*;
