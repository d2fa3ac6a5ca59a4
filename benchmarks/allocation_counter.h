#ifndef VELTRANE_BENCHMARKS_ALLOCATION_COUNTER_H
#define VELTRANE_BENCHMARKS_ALLOCATION_COUNTER_H

#include <cstddef>

namespace veltrane::bench {

/// Calls of operator new in this process so far, those of the library included.
std::size_t Allocations();

/// Bytes handed out by operator new and not yet given back, as the C library rounds them.
std::size_t LiveBytes();

} // namespace veltrane::bench

#endif
