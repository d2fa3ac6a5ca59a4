#include "data/valued_elements.h"

#include <MCVeltrane_900/ScoreValueLabel.h>
#include <MCVeltrane_900/ValueLabelSet.h>

namespace MCVeltrane_900 {

using veltrane::data::FindByValue;

ValueLabelSet::ValueLabelSet() = default;
ValueLabelSet::ValueLabelSet(const ValueLabelSet& other) = default;
ValueLabelSet& ValueLabelSet::operator=(const ValueLabelSet& other) = default;
ValueLabelSet::~ValueLabelSet() = default;

ScoreValueLabelSet* ValueLabelSet::Clone() const {
    return new ValueLabelSet(*this);
}

bool ValueLabelSet::Add(ScoreValueLabel* label) {
    if (!label) {
        return false;
    }
    fLabels.Items().push_back(label);
    return true;
}

bool ValueLabelSet::Remove(const ScoreValueLabel* label) {
    return veltrane::data::RemoveFirstEqual(fLabels.Items(), label);
}

int ValueLabelSet::Size() const {
    return fLabels.Size();
}
const std::vector<ScoreValueLabel*>& ValueLabelSet::GetAllValueLabels() const {
    return fLabels.Items();
}

std::string ValueLabelSet::GetLabelOfValue(const ScoreValue* value) const {
    const ScoreValueLabel* found = FindByValue(fLabels.Items(), value);
    return found ? found->GetLabel() : std::string();
}

bool ValueLabelSet::Contains(const ScoreValue* value) const {
    return FindByValue(fLabels.Items(), value) != nullptr;
}

void ValueLabelSet::Display(std::ostream& out) const {
    out << "Start ScoreValueLabelSet Display:\n";
    for (const ScoreValueLabel* label : fLabels.Items()) {
        label->Display(out);
    }
    out << "End of ScoreValueLabelSet Display.\n\n";
}

} // namespace MCVeltrane_900
