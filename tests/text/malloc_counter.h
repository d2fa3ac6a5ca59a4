#ifndef VELTRANE_TESTS_TEXT_MALLOC_COUNTER_H
#define VELTRANE_TESTS_TEXT_MALLOC_COUNTER_H

#include <cstddef>

namespace veltrane::tests {

/// How often this thread has taken memory from the C library, by ICU as well as by operator new.
std::size_t MallocsSoFar();

template <class Action>
std::size_t MallocsOf(Action action) {
    const std::size_t before = MallocsSoFar();
    action();
    return MallocsSoFar() - before;
}

} // namespace veltrane::tests

#endif
