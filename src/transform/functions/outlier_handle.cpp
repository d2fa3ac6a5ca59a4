#include "transform/apply/child_values.h"
#include "transform/functions/rules.h"
#include "transform/numbers/missing.h"

#include <cmath>

namespace veltrane::functions {

/// The number, the method, and the four numbers of the bounds, six arguments in all. Replacements of a missing result
/// look at the numbers.
const ScoreValue* HandleOutlier(ApplyNode& node) {
    using TD = MCVeltrane_900::TransformationDictionary;
    std::vector<double>& numbers = node.Numbers();
    int method = 0;
    for (const Argument& argument : node.GetArguments()) {
        if (argument.position == 1) {
            method = argument.value == nullptr ? 0 : argument.value->GetInt();
        } else {
            numbers.push_back(transform::DoubleOf(argument.value));
        }
    }
    const bool isComplete = numbers.size() == 5;
    return node.Result(
        isComplete ? TD::OutlierHandle(numbers[0], method, numbers[1], numbers[2], numbers[3], numbers[4]) : kMissing);
}

} // namespace veltrane::functions

namespace MCVeltrane_900 {

using veltrane::functions::IsMissing;
using veltrane::functions::kMissing;

double TransformationDictionary::OutlierHandle(double x, int method, double centre, double p, double q, double r) {
    constexpr int kAsExtremeValues = 2;
    const double reach = p * q / std::sqrt(r);
    if (IsMissing(x)) {
        return x;
    }
    const double low = centre - reach;
    const double high = centre + reach;
    if (x < low) {
        return method == kAsExtremeValues ? low : kMissing;
    }
    if (x > high) {
        return method == kAsExtremeValues ? high : kMissing;
    }
    return x;
}

} // namespace MCVeltrane_900
