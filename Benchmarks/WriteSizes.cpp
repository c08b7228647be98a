#include "Benchmarks/WriteSizes.h"

#include <sys/syscall.h>
#include <unistd.h>

namespace {

std::vector<std::size_t>* g_sizes = nullptr;

} // namespace

// Stands in front of the C library's function for every shared library, too.
extern "C" __attribute__((visibility("default"))) ssize_t write(int file, const void* data,
                                                                size_t size) {
    const ssize_t written = ::syscall(SYS_write, file, data, size);
    if (g_sizes && written > 0)
        g_sizes->push_back(static_cast<std::size_t>(written));
    return written;
}

WriteSizes::WriteSizes() {
    g_sizes = &m_sizes;
}

WriteSizes::~WriteSizes() {
    g_sizes = nullptr;
}
