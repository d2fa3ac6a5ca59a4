#include "kit/columns/repeated_texts.h"

#include <algorithm>
#include <functional>

namespace veltrane_kit {

bool RepeatedTexts::Begin(std::size_t rows) {
    if (fRest > 0) {
        fRest -= std::min(fRest, rows);
        return false;
    }
    if (fLooked >= kTrial) {
        const bool isWorthIt = fLooked >= kFewestUses * fNew;
        fRest = isWorthIt ? 0 : fNextRest;
        fNextRest = isWorthIt ? kShortestRest : std::min(2 * fNextRest, kLongestRest);
        fLooked = 0;
        fNew = 0;
    }
    if (fRest > 0) {
        return false;
    }
    if (fBuckets.empty() || fCount + rows > kMost) {
        Forget();
    }
    fLooked += rows;
    return true;
}

void RepeatedTexts::Forget() {
    fBuckets.assign(kBuckets, 0);
    fTexts.resize(kMost);
    fArena.Forget();
    fCount = 0;
    ++fRound;
}

std::int32_t RepeatedTexts::Find(std::string_view text) {
    std::size_t bucket = std::hash<std::string_view>()(text) % kBuckets;
    for (; fBuckets[bucket] != 0; bucket = (bucket + 1) % kBuckets) {
        const std::size_t place = fBuckets[bucket] - 1U;
        if (fTexts[place] == text) {
            return static_cast<std::int32_t>(place);
        }
    }
    fTexts[fCount] = fArena.Keep(text);
    fBuckets[bucket] = static_cast<std::uint16_t>(++fCount);
    ++fNew;
    return static_cast<std::int32_t>(fCount - 1);
}

} // namespace veltrane_kit
