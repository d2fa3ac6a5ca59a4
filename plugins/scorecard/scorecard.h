#ifndef VELTRANE_PLUGINS_SCORECARD_SCORECARD_H
#define VELTRANE_PLUGINS_SCORECARD_SCORECARD_H

#include "kit/conditions/condition.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace veltrane_scorecard {

/// A range of a characteristic and the points for it.
struct Attribute {
    static constexpr std::int32_t kNone = -1;

    veltrane_kit::Condition condition;
    double points = 0.0;
    std::int32_t slot = kNone;   ///< of the points, where an expression gives them
    std::int32_t reason = kNone; ///< in Scorecard::reasons
};

/// A characteristic: its attributes stand side by side.
struct Characteristic {
    std::int32_t first = 0;
    std::int32_t count = 0;
    double baseline = 0.0; ///< the points that others are compared with for reasons
};

/// A scorecard as the document has it.
struct Scorecard {
    double initialScore = 0.0;
    bool tellsReasons = true;
    bool areReasonsAbove = false; ///< whether points above the baseline are a reason, not those below it
    std::vector<Characteristic> characteristics;
    std::vector<Attribute> attributes;
    std::vector<std::string> reasons; ///< each code once
    veltrane_kit::Conditions conditions;
};

} // namespace veltrane_scorecard

#endif
