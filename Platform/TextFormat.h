#pragma once

#include <cstdarg>
#include <string>

namespace Platform {

/// printf-style formatting in the classic locale, whatever the host's. Empty when the format
/// cannot be carried out.
std::string FormatText(const char* format, std::va_list arguments);

} // namespace Platform
