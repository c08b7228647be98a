#include "Platform/PlatformString.h"

#include <utf8.h>

namespace Platform {

const String* CreateString(const std::string& utf8) {
    return IsValidUtf8(utf8) ? new String{utf8} : nullptr;
}

void ReleaseString(const String* string) {
    delete string;
}

bool IsValidUtf8(const std::string& bytes) {
    return utf8::is_valid(bytes.begin(), bytes.end());
}

} // namespace Platform
