#pragma once

#include <clocale>

namespace Platform {

/// Puts the calling thread into the classic locale, and back into the host's at the end.
class ClassicLocale {
public:
    ClassicLocale();
    ~ClassicLocale();
    ClassicLocale(const ClassicLocale&) = delete;
    ClassicLocale& operator=(const ClassicLocale&) = delete;

private:
    locale_t m_previous;
};

} // namespace Platform
