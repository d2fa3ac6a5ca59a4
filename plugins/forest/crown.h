#ifndef VELTRANE_PLUGINS_FOREST_CROWN_H
#define VELTRANE_PLUGINS_FOREST_CROWN_H

#include "sketch.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace veltrane_forest {

/// The upper part of a tree: its first steps level by level, as sets of rows. All rows are in set 0 at first; each step
/// parts a set and makes a new one of those that say yes. What the sets are in the end are the ways out of the crown.
struct Crown {
    /// More steps than that aren't in it, so that a set is told by a byte.
    static constexpr std::size_t kMostSteps = 255;

    /// @param sketch borrowed while the crown is made
    explicit Crown(const Sketch& sketch);

    std::vector<std::uint32_t> steps; ///< of the sketch; the i-th one makes set i + 1
    std::vector<std::uint8_t> from;   ///< the set that each parts
    std::vector<Sketch::Way> exits;   ///< by set
    bool isWhole = true;              ///< whether all exits are leaves
};

} // namespace veltrane_forest

#endif
