#include "transform/apply/child_values.h"
#include "transform/functions/rules.h"

namespace veltrane::functions {

using transform::DoubleOf;

/// The first argument starts the result and each further one combines with it; one alone combines with 0.
const ScoreValue* EvaluateFold(ApplyNode& node) {
    double folded = 0.0;
    double result = 0.0;
    const ApplyNode::Arguments arguments = node.GetArguments();
    for (const Argument& argument : arguments) {
        const double number = DoubleOf(argument.value);
        if (argument.position > 0) {
            folded = result = node.Fold(folded, number);
            continue;
        }
        folded = number;
        if (arguments.size() == 1) {
            result = node.Fold(number, 0.0);
        }
    }
    return node.Result(result);
}

const ScoreValue* EvaluateNothing(ApplyNode& node) {
    for ([[maybe_unused]] const Argument& argument : node.GetArguments()) {
    }
    return node.Result(0.0);
}

} // namespace veltrane::functions

namespace MCVeltrane_900 {

double TransformVar::ApplyTransFunction(double a, double b, TransformationDictionary::TransformFunction function) {
    const auto fold = veltrane::transform::DispatchOf(function).fold;
    return fold != nullptr ? fold(a, b) : 0.0;
}

} // namespace MCVeltrane_900
