#ifndef VELTRANE_PLUGINS_KIT_REPEATED_TEXTS_H
#define VELTRANE_PLUGINS_KIT_REPEATED_TEXTS_H

#include "kit/columns/text_arena.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace veltrane_kit {

/// Finds the texts of a field that come again, as if they came from a dictionary. Where nearly all texts are new it
/// rests for a while.
class RepeatedTexts {
public:
    /// Texts that it knows at once, and the greatest number of rows in a block.
    static constexpr std::size_t kMost = 2048;

    /// To be called before the texts of a block are looked for.
    /// @return false where looking isn't worth it
    bool Begin(std::size_t rows);

    /// The place of a text, below kMost.
    std::int32_t Find(std::string_view text);

    /// Counts the texts that were forgotten, each time with all their places.
    std::uint64_t Round() const { return fRound; }

private:
    // Looking pays when a text comes so often.
    static constexpr std::size_t kFewestUses = 3;
    static constexpr std::size_t kTrial = 4096;
    static constexpr std::size_t kShortestRest = 65536; // twice as long each time
    static constexpr std::size_t kLongestRest = 1048576;
    static constexpr std::size_t kBuckets = 2 * kMost;

    void Forget();

    std::vector<std::uint16_t> fBuckets; ///< places and 1; 0 for an empty one
    std::vector<std::string_view> fTexts;
    std::size_t fCount = 0;
    std::size_t fLooked = 0; ///< rows, and how many of their texts were new, since the last decision
    std::size_t fNew = 0;
    std::size_t fRest = 0; ///< rows until the next trial
    std::size_t fNextRest = kShortestRest;
    std::uint64_t fRound = 0;
    TextArena fArena;
};

} // namespace veltrane_kit

#endif
