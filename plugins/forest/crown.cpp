#include "crown.h"

namespace veltrane_forest {

Crown::Crown(const Sketch& sketch) : exits{sketch.root} {
    std::vector<std::uint8_t> sets; // that are to be parted
    if (!sketch.root.isLeaf) {
        sets.push_back(0);
    }
    for (std::size_t next = 0; next < sets.size(); ++next) {
        const std::uint8_t set = sets[next];
        if (steps.size() == kMostSteps) {
            isWhole = false;
            return;
        }
        const Sketch::Step& step = sketch.steps[exits[set].to];
        steps.push_back(exits[set].to);
        from.push_back(set);
        const auto made = static_cast<std::uint8_t>(steps.size());
        exits[set] = step.no;
        exits.push_back(step.yes);
        if (!step.no.isLeaf) {
            sets.push_back(set);
        }
        if (!step.yes.isLeaf) {
            sets.push_back(made);
        }
    }
}

} // namespace veltrane_forest
