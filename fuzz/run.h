#ifndef VELTRANE_FUZZ_RUN_H
#define VELTRANE_FUZZ_RUN_H

#include <MCVeltrane_900/VTException.h>

#include <cstddef>
#include <cstdint>

namespace veltrane::fuzz {

/// One run of a target. The first one starts the XML platform for the process; at the end of each what the library
/// keeps for its hosts to the end of the process, such as the translator of a dictionary, is freed. Nothing that the
/// run has made may be left then.
class Run {
public:
    Run();
    ~Run();
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;
};

/// The bytes of a run as small numbers; zeroes behind their end.
struct Bytes {
    const std::uint8_t* next;
    const std::uint8_t* end;

    bool AtEnd() const { return next == end; }
    std::uint8_t Take() { return next < end ? *next++ : 0; }
    /// A number below `bound`.
    std::size_t Below(std::size_t bound) { return Take() % bound; }
};

/// Ends the run as a crash.
void Require(bool condition);

/// Runs what may fail in the catalogued way, and in no other.
template <typename Action>
void MayFail(Action action) {
    try {
        action();
    } catch (const MCVeltrane_900::VTException& failure) {
        Require(!failure.GetErrorMessage().empty());
    }
}

} // namespace veltrane::fuzz

#endif
