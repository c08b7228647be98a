#include "Platform/Linux/ClassicLocale.h"

namespace Platform {

namespace {

/// Made once and kept to the end, as calls may come from the host's exit handlers.
locale_t TheClassicLocale() {
    static const locale_t classic = ::newlocale(LC_ALL_MASK, "C", nullptr);
    return classic;
}

} // namespace

ClassicLocale::ClassicLocale() : m_previous(::uselocale(TheClassicLocale())) {}

ClassicLocale::~ClassicLocale() {
    ::uselocale(m_previous);
}

} // namespace Platform
