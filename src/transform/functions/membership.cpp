#include <MCVeltrane_900/ScoreValue.h>
#include <MCVeltrane_900/TransformationDictionary.h>

#include <algorithm>
#include <memory>

namespace MCVeltrane_900 {

namespace {

void DeleteAll(std::vector<ScoreValue*>& values) {
    for (ScoreValue* value : values) {
        delete value;
    }
    values.clear();
}

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
    DeleteAll(values);
    return equal;
}

bool TakeContains(std::vector<ScoreValue*>& values, ScoreValue* test) {
    const std::unique_ptr<ScoreValue> owner(test);
    const bool found = test != nullptr && std::any_of(values.begin(), values.end(), [test](const ScoreValue* value) {
                           return value != nullptr && *test == *value;
                       });
    DeleteAll(values);
    return found;
}

} // namespace

double TransformationDictionary::equal(std::vector<ScoreValue*>& values) {
    return TakeEqual(values) ? 1.0 : 0.0;
}

double TransformationDictionary::notEqual(std::vector<ScoreValue*>& values) {
    return TakeEqual(values) ? 0.0 : 1.0;
}

double TransformationDictionary::isIn(std::vector<ScoreValue*>& values, ScoreValue* test) {
    return TakeContains(values, test) ? 1.0 : 0.0;
}

double TransformationDictionary::isNotIn(std::vector<ScoreValue*>& values, ScoreValue* test) {
    return TakeContains(values, test) ? 0.0 : 1.0;
}

} // namespace MCVeltrane_900
