#include "text/malloc_counter.h"

namespace {
thread_local std::size_t gMallocs = 0;
}

namespace veltrane::tests {

std::size_t MallocsSoFar() {
    return gMallocs;
}

} // namespace veltrane::tests

#ifndef VELTRANE_SANITIZED
// The program's own functions come before those of the C library, for all libraries that it loads.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);

void* malloc(std::size_t size) {
    ++gMallocs;
    return __libc_malloc(size);
}
void* calloc(std::size_t count, std::size_t size) {
    ++gMallocs;
    return __libc_calloc(count, size);
}
void* realloc(void* memory, std::size_t size) {
    ++gMallocs;
    return __libc_realloc(memory, size);
}
}
#endif
