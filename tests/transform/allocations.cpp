#include "allocations.h"

#include <cstdlib>
#include <new>

namespace {

thread_local std::size_t tAllocations = 0;

} // namespace

namespace veltrane::tests {

std::size_t Allocations() {
    return tAllocations;
}

} // namespace veltrane::tests

void* operator new(std::size_t size) {
    ++tAllocations;
    if (void* block = std::malloc(size == 0 ? 1 : size)) {
        return block;
    }
    throw std::bad_alloc();
}

void operator delete(void* block) noexcept {
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}
