#include "support/allocations.h"

#include <cstdlib>
#include <new>

namespace {
thread_local std::size_t gAllocations = 0;
}

namespace veltrane::tests {

std::size_t AllocationsSoFar() {
    return gAllocations;
}

} // namespace veltrane::tests

// The replacements of the whole program. The array and the non-throwing forms come to these.
void* operator new(std::size_t size) {
    ++gAllocations;
    if (void* memory = std::malloc(size != 0 ? size : 1))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
