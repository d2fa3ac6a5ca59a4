#include "transform/apply/child_values.h"
#include "transform/functions/rules.h"
#include "transform/numbers/missing.h"

namespace veltrane::functions {

/// All numbers at once, when they are complete.
const ScoreValue* EvaluateAccumulate(ApplyNode& node) {
    for (const Argument& argument : node.GetArguments()) {
        node.Numbers().push_back(transform::DoubleOf(argument.value));
    }
    const auto array = node.Function().array;
    return node.Result(array != nullptr ? array(node.Numbers().data(), node.Numbers().size()) : node.Accumulate());
}

} // namespace veltrane::functions

namespace MCVeltrane_900 {

double TransformVar::ApplyAccumulateFunction(const std::vector<double>& arguments,
                                             TransformationDictionary::TransformFunction function) {
    const auto accumulate = veltrane::transform::DispatchOf(function).accumulate;
    return accumulate != nullptr ? accumulate(arguments) : veltrane::functions::kMissing;
}

} // namespace MCVeltrane_900
