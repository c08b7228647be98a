#pragma once

#include <string>

namespace Platform {

constexpr char kXCookieMethod[] = "MIT-MAGIC-COOKIE-1";

/// The cookie that the user's authority file holds for a display of this machine. Empty, without
/// logging, when there is none or it cannot be read.
std::string FindXCookie(int display);

} // namespace Platform
