#include "data/sets/valued_elements.h"

#include <MCVeltrane_900/ScoreValueProbability.h>
#include <MCVeltrane_900/ValueProbabilitySet.h>

namespace MCVeltrane_900 {

using veltrane::data::FindByValue;

ValueProbabilitySet::ValueProbabilitySet() = default;
ValueProbabilitySet::ValueProbabilitySet(const ValueProbabilitySet& other) = default;
ValueProbabilitySet& ValueProbabilitySet::operator=(const ValueProbabilitySet& other) = default;
ValueProbabilitySet::~ValueProbabilitySet() = default;

ScoreValueProbabilitySet* ValueProbabilitySet::Clone() const {
    return new ValueProbabilitySet(*this);
}

bool ValueProbabilitySet::Add(ScoreValueProbability* probability) {
    if (!probability) {
        return false;
    }
    fProbabilities.Items().push_back(probability);
    return true;
}

bool ValueProbabilitySet::Remove(const ScoreValueProbability* probability) {
    return veltrane::data::RemoveFirstEqual(fProbabilities.Items(), probability);
}

int ValueProbabilitySet::Size() const {
    return fProbabilities.Size();
}

const std::vector<ScoreValueProbability*>& ValueProbabilitySet::GetAllValueProbabilities() const {
    return fProbabilities.Items();
}

double ValueProbabilitySet::GetProbabilityOfValue(const ScoreValue* value) const {
    const ScoreValueProbability* found = FindByValue(fProbabilities.Items(), value);
    return found ? found->GetProbability() : 0.0;
}

bool ValueProbabilitySet::Contains(const ScoreValue* value) const {
    return FindByValue(fProbabilities.Items(), value) != nullptr;
}

void ValueProbabilitySet::Display(std::ostream& out) const {
    out << "Start ScoreValueProbabilitySet Display:\n";
    for (const ScoreValueProbability* probability : fProbabilities.Items()) {
        probability->Display(out);
    }
    out << "End of ScoreValueProbabilitySet Display.\n\n";
}

} // namespace MCVeltrane_900
