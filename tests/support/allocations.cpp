#include "support/allocations.h"

#include <cstdlib>
#include <new>

namespace {
thread_local std::size_t gAllocations = 0;
/// The number of the allocation that fails; 0 for none, since they count from 1.
thread_local std::size_t gFailing = 0;
} // namespace

namespace veltrane::tests {

std::size_t AllocationsSoFar() {
    return gAllocations;
}

FailingAllocation::FailingAllocation(std::size_t before) {
    gFailing = gAllocations + before + 1;
}
FailingAllocation::~FailingAllocation() {
    gFailing = 0;
}

} // namespace veltrane::tests

// The replacements of the whole program. All forms are here, since the sanitizers bring forms of their own, which do
// not come to the replaced ones.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    if (++gAllocations == gFailing) {
        return nullptr;
    }
    return std::malloc(size != 0 ? size : 1);
}
void* operator new(std::size_t size) {
    if (void* memory = operator new(size, std::nothrow)) {
        return memory;
    }
    throw std::bad_alloc();
}
void* operator new[](std::size_t size) {
    return operator new(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return operator new(size, std::nothrow);
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept {
    std::free(memory);
}
void operator delete[](void* memory) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, const std::nothrow_t&) noexcept {
    std::free(memory);
}
