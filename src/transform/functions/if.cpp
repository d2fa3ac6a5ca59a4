#include "transform/apply/apply_plan.h"
#include "transform/apply/child_values.h"
#include "transform/functions/rules.h"

#include <MCVeltrane_900/NumericValue.h>

using namespace MCVeltrane_900;

namespace veltrane::functions {

/// The second argument is evaluated in every case, a third one only when the condition is false, and none behind the
/// outcome. The outcome goes out as it is; a text has a length of 0, and what is no text is a number.
const ScoreValue* If(ApplyNode& node) {
    bool condition = false;
    for (const Argument& argument : node.GetArguments()) {
        const ScoreValue* value = argument.value;
        if (argument.position == 0) {
            condition = NumericValue::IsEqual(transform::DoubleOf(value), 1.0);
        } else if (argument.position == (condition ? 1 : 2)) {
            return value != nullptr && value->GetType() == ScoreValue::STRING_VALUE
                       ? node.Text(transform::TextOfChild(value), 0)
                       : node.PlainNumber(transform::DoubleOf(value));
        }
    }
    return node.Result(0.0);
}

} // namespace veltrane::functions

namespace veltrane::transform {

/// The condition, the second child, the choice, the third child, which the choice jumps over.
ApplyPlan::Added ApplyPlan::AddBranch(FunctionTree& node, int depth) {
    static const NumericValue kNoAlternative(0.0);
    const std::size_t first = fSteps.size();
    const int count = node.GetChildCount();
    const bool mayBeTreated =
        count < 3 && node.GetNodeStats().GetInvalidValueTreatmentMethod() == ApplyNodeStats::IV_AS_MISSING;
    FunctionTree* condition = node.GetChildAt(0);
    if (count < 2 || mayBeTreated || condition == nullptr || AddChild(node, *condition, depth) == Added::NOTHING ||
        AddOperand(node, 1, depth) != Added::NUMBER) {
        return WalkInstead(first, node, false);
    }
    const std::size_t choice = fSteps.size();
    fSteps.push_back({.kind = Kind::BRANCH, .node = &node});
    if (count == 2) {
        fSteps.push_back({.kind = Kind::CONSTANT, .constant = &kNoAlternative});
    } else if (AddOperand(node, 2, depth) != Added::NUMBER) {
        return WalkInstead(first, node, false);
    }
    fSteps[choice].count = fSteps.size() - choice - 1;
    return Added::NUMBER;
}

} // namespace veltrane::transform
