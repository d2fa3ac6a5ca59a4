#include "transform/apply/child_values.h"
#include "transform/functions/delete_values.h"
#include "transform/functions/rules.h"

#include <MCVeltrane_900/NumericValue.h>

namespace veltrane::functions {

/// All values, compared when they are complete; anything but two of one type is unequal.
const ScoreValue* EvaluateCompare(ApplyNode& node) {
    transform::ApplyFrame& frame = node.Frame();
    for (const Argument& argument : node.GetArguments()) {
        frame.HoldValue(transform::ValueOrMissing(argument.value));
    }
    bool isEqual = false;
    if (frame.valueCount == 2) {
        const ScoreValue& first = *frame.values[0]->Get();
        const ScoreValue& second = *frame.values[1]->Get();
        isEqual = first.GetType() == second.GetType() && first == second;
    }
    return node.Result(isEqual == node.Function().answer ? 1.0 : 0.0);
}

bool AreTwoEqual(const double* numbers, std::size_t count) {
    return count == 2 && MCVeltrane_900::NumericValue::IsEqual(numbers[0], numbers[1]);
}

} // namespace veltrane::functions

namespace MCVeltrane_900 {

namespace {

bool HasTwoOfDifferentTypes(const std::vector<ScoreValue*>& values) {
    return values.size() == 2 && values[0] != nullptr && values[1] != nullptr &&
           values[0]->GetType() != values[1]->GetType();
}

/// Whether the two entries are equal. Two of different types stay with the caller, who finds them in the vector still.
bool TakeEqual(std::vector<ScoreValue*>& values) {
    if (HasTwoOfDifferentTypes(values)) {
        return false;
    }
    const bool equal = values.size() == 2 && values[0] != nullptr && values[1] != nullptr && *values[0] == *values[1];
    veltrane::functions::DeleteAll(values);
    return equal;
}

} // namespace

double TransformationDictionary::equal(std::vector<ScoreValue*>& values) {
    return TakeEqual(values) ? 1.0 : 0.0;
}

double TransformationDictionary::notEqual(std::vector<ScoreValue*>& values) {
    return TakeEqual(values) ? 0.0 : 1.0;
}

} // namespace MCVeltrane_900
