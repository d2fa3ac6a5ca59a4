#include "transform/apply/child_values.h"
#include "transform/functions/delete_values.h"
#include "transform/functions/rules.h"

#include <MCVeltrane_900/NumericValue.h>

#include <algorithm>
#include <cstddef>
#include <memory>

namespace veltrane::functions {

/// The first value against all others. One that isn't there is in nothing.
const ScoreValue* EvaluateMember(ApplyNode& node) {
    transform::ApplyFrame& frame = node.Frame();
    for (const Argument& argument : node.GetArguments()) {
        if (argument.position > 0) {
            frame.HoldValue(transform::ValueOrMissing(argument.value));
        } else if (argument.value != nullptr) {
            frame.kept.Take(*argument.value);
        }
    }
    const ScoreValue* tested = frame.kept.Get();
    const auto end = frame.values.begin() + static_cast<std::ptrdiff_t>(frame.valueCount);
    const bool isFound = tested != nullptr && std::any_of(frame.values.begin(), end, [tested](const auto& value) {
                             return *tested == *value->Get();
                         });
    return node.Result(isFound == node.Function().answer ? 1.0 : 0.0);
}

bool IsAmongOthers(const double* numbers, std::size_t count) {
    const double tested = numbers[0];
    return std::any_of(numbers + 1, numbers + count,
                       [tested](double x) { return MCVeltrane_900::NumericValue::IsEqual(tested, x); });
}

} // namespace veltrane::functions

namespace MCVeltrane_900 {

namespace {

bool TakeContains(std::vector<ScoreValue*>& values, ScoreValue* test) {
    const std::unique_ptr<ScoreValue> owner(test);
    const bool found = test != nullptr && std::any_of(values.begin(), values.end(), [test](const ScoreValue* value) {
                           return value != nullptr && *test == *value;
                       });
    veltrane::functions::DeleteAll(values);
    return found;
}

} // namespace

double TransformationDictionary::isIn(std::vector<ScoreValue*>& values, ScoreValue* test) {
    return TakeContains(values, test) ? 1.0 : 0.0;
}

double TransformationDictionary::isNotIn(std::vector<ScoreValue*>& values, ScoreValue* test) {
    return TakeContains(values, test) ? 0.0 : 1.0;
}

} // namespace MCVeltrane_900
