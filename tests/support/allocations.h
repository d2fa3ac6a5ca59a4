#ifndef VELTRANE_TESTS_SUPPORT_ALLOCATIONS_H
#define VELTRANE_TESTS_SUPPORT_ALLOCATIONS_H

#include <cstddef>

namespace veltrane::tests {

/// How often this thread has taken memory with operator new, in the test program and in the library.
std::size_t AllocationsSoFar();

/// Lets one allocation of this thread fail with std::bad_alloc, the one after `before` others, within its lifetime.
class FailingAllocation {
public:
    explicit FailingAllocation(std::size_t before);
    ~FailingAllocation();
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;
};

/// The allocations of an action.
template <class Action>
std::size_t AllocationsOf(Action action) {
    const std::size_t before = AllocationsSoFar();
    action();
    return AllocationsSoFar() - before;
}

} // namespace veltrane::tests

#endif
