#include "data/sets/valued_elements.h"

#include <MCVeltrane_900/ValueLbl.h>

#include <functional>

namespace MCVeltrane_900 {

using veltrane::data::CompareValues;

ValueLbl::ValueLbl() = default;
ValueLbl::ValueLbl(ScoreValue* value, const std::string& label) : fValue(value), fLabel(label) {}
ValueLbl::ValueLbl(const ValueLbl& other) = default;

ValueLbl& ValueLbl::operator=(const ValueLbl& other) {
    fValue = other.fValue;
    fLabel = other.fLabel;
    fChanges.Note();
    return *this;
}

ValueLbl::~ValueLbl() = default;

bool ValueLbl::SetValueLabel(ScoreValue* value, const std::string& label) {
    if (!value || label.empty()) {
        return false;
    }
    fValue.Overwrite(value);
    fLabel = label;
    fChanges.Note();
    return true;
}

bool ValueLbl::SetLabel(const std::string& label) {
    if (label.empty()) {
        return false;
    }
    fLabel = label;
    return true;
}

ScoreValueLabel* ValueLbl::Clone() const {
    return new ValueLbl(*this);
}

bool ValueLbl::operator==(const ScoreValueLabel& other) const {
    return CompareValues<ScoreValueLabel>(*this, other, std::equal_to<ScoreValue>());
}
bool ValueLbl::operator>(const ScoreValueLabel& other) const {
    return CompareValues<ScoreValueLabel>(*this, other, std::greater<ScoreValue>());
}
bool ValueLbl::operator<(const ScoreValueLabel& other) const {
    return CompareValues<ScoreValueLabel>(*this, other, std::less<ScoreValue>());
}
bool ValueLbl::operator<=(const ScoreValueLabel& other) const {
    return CompareValues<ScoreValueLabel>(*this, other, std::less_equal<ScoreValue>());
}
bool ValueLbl::operator>=(const ScoreValueLabel& other) const {
    return CompareValues<ScoreValueLabel>(*this, other, std::greater_equal<ScoreValue>());
}

std::string ValueLbl::GetLabel() const {
    return fLabel;
}
const ScoreValue* ValueLbl::GetValue() const {
    return fValue.Get();
}

void ValueLbl::Display(std::ostream& out) const {
    out << "Value: " << veltrane::data::DisplayText(fValue.Get()) << ";  "
        << "Label: " << fLabel << "\n";
}

} // namespace MCVeltrane_900
