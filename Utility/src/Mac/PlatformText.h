#pragma once

#include "Platform/PlatformString.h"

#include <string>

/// Owns a platform string for as long as it lives; null where the text is not valid UTF-8.
class PlatformText {
public:
    explicit PlatformText(const std::string& utf8)
        : m_string{utf8}, m_isValid(Platform::IsValidUtf8(utf8)) {}
    PlatformText(const PlatformText&) = delete;
    PlatformText& operator=(const PlatformText&) = delete;

    CFStringRef Get() const { return m_isValid ? &m_string : nullptr; }

private:
    Platform::String m_string;
    bool m_isValid;
};
