#include "Platform/TextFormat.h"

#include "Platform/Linux/ClassicLocale.h"

#include <cstdio>

namespace Platform {

std::string FormatText(const char* format, std::va_list arguments) {
    const ClassicLocale classic;
    std::va_list measured;
    va_copy(measured, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, measured);
    va_end(measured);
    if (length < 0)
        return std::string();
    std::string text(static_cast<std::size_t>(length), '\0');
    std::vsnprintf(text.data(), text.size() + 1, format, arguments);
    return text;
}

} // namespace Platform
