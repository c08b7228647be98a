#pragma once

#include "Platform/PlatformString.h"

#include <string>

/// Owns a platform string for as long as it lives; null where the text is not valid UTF-8.
class PlatformText {
public:
    explicit PlatformText(const std::string& utf8) : m_string(Platform::CreateString(utf8)) {}
    ~PlatformText() { Platform::ReleaseString(m_string); }
    PlatformText(const PlatformText&) = delete;
    PlatformText& operator=(const PlatformText&) = delete;

    CFStringRef Get() const { return m_string; }

private:
    CFStringRef m_string;
};
