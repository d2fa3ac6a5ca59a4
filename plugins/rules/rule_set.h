#ifndef VELTRANE_PLUGINS_RULES_RULE_SET_H
#define VELTRANE_PLUGINS_RULES_RULE_SET_H

#include "kit/conditions/condition.h"
#include "kit/results/prediction.h"
#include "kit/results/rule.h"

#include <cstdint>
#include <deque>
#include <optional>
#include <vector>

namespace veltrane_rules {

/// How one of the rules that hold is chosen.
enum class Criterion { FIRST_HIT, WEIGHTED_MAX, WEIGHTED_SUM };

/// What a distribution tells of one category.
struct Share {
    std::int32_t category = 0;
    double recordCount = 0.0;
    double probability = veltrane_kit::Prediction::kNone;
    double confidence = veltrane_kit::Prediction::kNone;
};

/// A run of RuleSet::shares.
struct Distribution {
    std::int32_t first = 0;
    std::int32_t count = 0;
};

/// A condition in the order of the document: that of a rule, or that of a compound with all that stands in it behind.
struct Step {
    static constexpr std::int32_t kNoRule = -1;

    veltrane_kit::Condition condition;
    std::int32_t rule = kNoRule; ///< in RuleSet::rules; none for a compound
    std::int32_t next = 0;       ///< the step to go on with where the condition doesn't hold
};

/// What a rule says when it holds.
struct RuleScore {
    std::int32_t score = 0; ///< a category, or in RuleSet::numbers
    double weight = 1.0;
    double confidence = 1.0;
    Distribution distribution;
    const veltrane_kit::Rule* rule = nullptr;
};

/// What is predicted where no rule holds.
struct DefaultScore {
    std::int32_t score = 0;
    double confidence = veltrane_kit::Prediction::kNone;
};

/// A set of rules as the document has it.
struct RuleSet {
    Criterion criterion = Criterion::FIRST_HIT;
    std::vector<Step> steps;
    std::vector<RuleScore> rules;
    std::deque<veltrane_kit::Rule> told; ///< rules and compounds, as output fields tell of them
    std::vector<Share> shares;
    std::vector<double> numbers; ///< that a regression predicts, each once
    std::optional<DefaultScore> otherwise;
    Distribution distribution; ///< of all records
    veltrane_kit::Conditions conditions;
};

} // namespace veltrane_rules

#endif
