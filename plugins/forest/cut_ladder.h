#ifndef VELTRANE_PLUGINS_FOREST_CUT_LADDER_H
#define VELTRANE_PLUGINS_FOREST_CUT_LADDER_H

#include <cstddef>
#include <cstdint>
#include <vector>

namespace veltrane_forest {

/// Finds the places of cuts while a forest is made, as Feature::PlaceOf() does, for each of its nodes once.
///
/// A search by halves through some ten thousand cuts waits for memory at nearly every step. Here every 16th cut stands
/// in a shorter list, every 16th of those in a shorter one again, and so on: the short ones stay in the nearest caches,
/// and in each list one run of 16 is looked at.
class CutLadder {
public:
    CutLadder() = default;

    /// @param cuts sorted, each once; not kept
    explicit CutLadder(const std::vector<double>& cuts);

    /// How many cuts lie below a number.
    /// @param cuts those that it was made of
    std::uint32_t PlaceOf(const std::vector<double>& cuts, double number) const;

private:
    static constexpr std::size_t kRun = 16;

    std::vector<std::vector<double>> fRungs; ///< each has the last cut of every whole run of the one before
};

} // namespace veltrane_forest

#endif
