#include "cut_ladder.h"

#include <algorithm>
#include <utility>

namespace veltrane_forest {

CutLadder::CutLadder(const std::vector<double>& cuts) {
    for (const std::vector<double>* below = &cuts; below->size() > kRun; below = &fRungs.back()) {
        std::vector<double> rung;
        rung.reserve(below->size() / kRun);
        for (std::size_t last = kRun - 1; last < below->size(); last += kRun) {
            rung.push_back((*below)[last]);
        }
        fRungs.push_back(std::move(rung));
    }
}

/// As many runs as end below the number lie below it as a whole.
std::uint32_t CutLadder::PlaceOf(const std::vector<double>& cuts, double number) const {
    std::size_t place = 0;
    const auto stepDown = [&](const std::vector<double>& list) {
        const std::size_t first = place * kRun;
        const std::size_t end = std::min(first + kRun, list.size());
        place = first;
        for (std::size_t at = first; at < end; ++at) {
            place += list[at] < number ? 1 : 0;
        }
    };
    for (auto rung = fRungs.rbegin(); rung != fRungs.rend(); ++rung) {
        stepDown(*rung);
    }
    stepDown(cuts);
    return static_cast<std::uint32_t>(place);
}

} // namespace veltrane_forest
