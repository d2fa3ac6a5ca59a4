#include "transform/apply/apply_plan.h"
#include "transform/functions/rules.h"

#include <MCVeltrane_900/ScoreDictVar.h>

using namespace MCVeltrane_900;

namespace veltrane::functions {

/// Only a field can be missing: a constant or a function gives 0. The field's answer goes out as it is, and the other
/// arguments aren't evaluated.
const ScoreValue* EvaluateMissing(ApplyNode& node) {
    for (const Argument& argument : node.GetArguments()) {
        const ScoreDictVar* field = argument.position == 0 ? argument.node->GetNodeStats().GetVariable() : nullptr;
        if (field != nullptr) {
            return node.PlainNumber(field->IsMissingValue(argument.value) == node.Function().answer ? 1.0 : 0.0);
        }
    }
    return node.Result(0.0);
}

/// 1 for a number that is missing behind the replacements of its field, else 0. A second argument makes it 0.
const ScoreValue* SysMis(ApplyNode& node) {
    double result = 0.0;
    for (const Argument& argument : node.GetArguments()) {
        const bool isMissing = argument.value == nullptr || argument.value->IsSystemMissingValue();
        result = argument.position == 0 && isMissing ? 1.0 : 0.0;
    }
    return node.Result(result);
}

} // namespace veltrane::functions

namespace veltrane::transform {

/// A plan asks the field too. The field of a leaf that no case has reached is not known yet.
ApplyPlan::Added ApplyPlan::AddMissingTest(FunctionTree& node) {
    FunctionTree* child = node.GetChildAt(0);
    if (child == nullptr || !child->IsLeaf() || !TellsChanges(node, *child)) {
        return AddWalk(node, true);
    }
    const ApplyNodeStats& stats = child->GetNodeStats();
    if (stats.GetVariable() == nullptr) {
        if (NamesField(stats)) {
            fUnresolved.push_back(child);
        }
        return AddWalk(node, true);
    }
    fSteps.push_back({.kind = Kind::MISSING_TEST,
                      .node = child,
                      .variable = stats.GetVariable(),
                      .dispatch = &DispatchOf(node.GetNodeStats().GetTransformFunction())});
    return Added::NUMBER;
}

/// The field's own test of what its leaf gives, replacement included.
double ApplyPlan::TestMissing(const Step& step, TransformVar& var, const ApplyCase& oneCase) const {
    int status = 0;
    const ScoreValue* value = FieldEvaluation::Of(var).Traverse(*step.node, oneCase, status);
    return step.variable->IsMissingValue(value) == step.dispatch->answer ? 1.0 : 0.0;
}

} // namespace veltrane::transform
