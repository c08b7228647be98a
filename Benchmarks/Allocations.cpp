#include "Benchmarks/Allocations.h"

#include <cerrno>
#include <cstddef>

#define STANDING_IN extern "C" __attribute__((visibility("default")))

// The C library's own, under the names that it keeps for those who stand in for it.
extern "C" void* __libc_malloc(std::size_t size);
extern "C" void* __libc_calloc(std::size_t count, std::size_t size);
extern "C" void* __libc_realloc(void* block, std::size_t size);
extern "C" void* __libc_memalign(std::size_t alignment, std::size_t size);

namespace {

unsigned long g_count = 0; // of a host with one thread

} // namespace

STANDING_IN void* malloc(std::size_t size) {
    ++g_count;
    return __libc_malloc(size);
}

STANDING_IN void* calloc(std::size_t count, std::size_t size) {
    ++g_count;
    return __libc_calloc(count, size);
}

STANDING_IN void* realloc(void* block, std::size_t size) {
    ++g_count;
    return __libc_realloc(block, size);
}

STANDING_IN void* aligned_alloc(std::size_t alignment, std::size_t size) {
    ++g_count;
    return __libc_memalign(alignment, size);
}

STANDING_IN int posix_memalign(void** block, std::size_t alignment, std::size_t size) {
    ++g_count;
    *block = __libc_memalign(alignment, size);
    return *block ? 0 : ENOMEM;
}

unsigned long Allocations::Count() {
    return g_count;
}
