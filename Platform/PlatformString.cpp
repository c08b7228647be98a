#include "Platform/PlatformString.h"

#include <algorithm>
#include <utf8.h>

namespace Platform {

const String* CreateString(const std::string& utf8) {
    return IsValidUtf8(utf8) ? new String{utf8} : nullptr;
}

void ReleaseString(const String* string) {
    delete string;
}

bool IsValidUtf8(std::string_view bytes) {
    const auto isBeyondAscii = [](char c) { return static_cast<signed char>(c) < 0; };
    return utf8::is_valid(std::find_if(bytes.begin(), bytes.end(), isBeyondAscii), bytes.end());
}

} // namespace Platform
