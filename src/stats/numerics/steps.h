#ifndef VELTRANE_STATS_STEPS_H
#define VELTRANE_STATS_STEPS_H

/// The work of a distribution function, counted in rounds of its loops. Tests that bound it build these sources with
/// VELTRANE_COUNT_STEPS; the library itself counts nothing.
namespace veltrane::stats {

#ifdef VELTRANE_COUNT_STEPS
/// The rounds taken by this thread since a test last set it to 0.
inline thread_local long stepsTaken = 0;
inline void CountStep() {
    ++stepsTaken;
}
#else
inline void CountStep() {}
#endif

} // namespace veltrane::stats

#endif
