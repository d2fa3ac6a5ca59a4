#include "data/sets/valued_elements.h"

#include <MCVeltrane_900/ValueProbability.h>

#include <functional>

namespace MCVeltrane_900 {

using veltrane::data::CompareValues;

namespace {

/// Written so that a NaN is not one.
bool IsProbability(double number) {
    return number >= 0.0 && number <= 1.0;
}

} // namespace

ValueProbability::ValueProbability() : fProbability(0.0) {}
ValueProbability::ValueProbability(ScoreValue* value, double probability) : fValue(value), fProbability(probability) {}
ValueProbability::ValueProbability(const ValueProbability& other) = default;
ValueProbability& ValueProbability::operator=(const ValueProbability& other) = default;
ValueProbability::~ValueProbability() = default;

bool ValueProbability::SetValueProbability(ScoreValue* value, double probability) {
    if (!value || !IsProbability(probability)) {
        return false;
    }
    fValue.Overwrite(value);
    fProbability = probability;
    return true;
}

bool ValueProbability::SetProbability(double probability) {
    if (!IsProbability(probability)) {
        return false;
    }
    fProbability = probability;
    return true;
}

ScoreValueProbability* ValueProbability::Clone() const {
    return new ValueProbability(*this);
}

bool ValueProbability::operator==(const ScoreValueProbability& other) const {
    return CompareValues<ScoreValueProbability>(*this, other, std::equal_to<ScoreValue>());
}
bool ValueProbability::operator>(const ScoreValueProbability& other) const {
    return CompareValues<ScoreValueProbability>(*this, other, std::greater<ScoreValue>());
}
bool ValueProbability::operator<(const ScoreValueProbability& other) const {
    return CompareValues<ScoreValueProbability>(*this, other, std::less<ScoreValue>());
}
bool ValueProbability::operator<=(const ScoreValueProbability& other) const {
    return CompareValues<ScoreValueProbability>(*this, other, std::less_equal<ScoreValue>());
}
bool ValueProbability::operator>=(const ScoreValueProbability& other) const {
    return CompareValues<ScoreValueProbability>(*this, other, std::greater_equal<ScoreValue>());
}

double ValueProbability::GetProbability() const {
    return fProbability;
}
const ScoreValue* ValueProbability::GetValue() const {
    return fValue.Get();
}

void ValueProbability::Display(std::ostream& out) const {
    out << "Value: " << veltrane::data::DisplayText(fValue.Get()) << ";  "
        << "Probability: " << fProbability << "\n";
}

} // namespace MCVeltrane_900
