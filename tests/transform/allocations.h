#ifndef VELTRANE_TESTS_TRANSFORM_ALLOCATIONS_H
#define VELTRANE_TESTS_TRANSFORM_ALLOCATIONS_H

#include <cstddef>

namespace veltrane::tests {

/// The number of allocations that the calling thread has made with operator new.
std::size_t Allocations();

} // namespace veltrane::tests

#endif
