#include "allocation_counter.h"

#include <atomic>
#include <cstdlib>
#include <malloc.h>
#include <new>

namespace {

std::atomic<std::size_t> gCalls{0};
std::atomic<std::size_t> gLive{0};

} // namespace

namespace veltrane::bench {

std::size_t Allocations() {
    return gCalls.load(std::memory_order_relaxed);
}
std::size_t LiveBytes() {
    return gLive.load(std::memory_order_relaxed);
}

} // namespace veltrane::bench

void* operator new(std::size_t size) {
    void* block = std::malloc(size == 0 ? 1 : size);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    gCalls.fetch_add(1, std::memory_order_relaxed);
    gLive.fetch_add(malloc_usable_size(block), std::memory_order_relaxed);
    return block;
}

void operator delete(void* block) noexcept {
    if (block != nullptr) {
        gLive.fetch_sub(malloc_usable_size(block), std::memory_order_relaxed);
        std::free(block);
    }
}

void operator delete(void* block, std::size_t) noexcept {
    operator delete(block);
}
