#include "Benchmarks/Stretch.h"

#include <unistd.h>
#include <valgrind/callgrind.h>

namespace {

/// A call that leaves the name in the trace. What follows on an empty one is not counted.
void Announce(const std::string& name) {
    if (::access(("stretch:" + name).c_str(), F_OK) == 0)
        ::_exit(1);
}

} // namespace

Stretch::Stretch(const std::string& name) : m_name(name) {
    Announce(m_name);
    CALLGRIND_ZERO_STATS;
}

Stretch::~Stretch() {
    CALLGRIND_DUMP_STATS_AT(m_name.c_str());
    Announce("");
}
