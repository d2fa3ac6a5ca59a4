#include "data/sets/label_index.h"
#include "data/sets/valued_elements.h"

#include <MCVeltrane_900/ValueLabelSet.h>
#include <MCVeltrane_900/ValueLbl.h>

#include <algorithm>

namespace MCVeltrane_900 {

using veltrane::data::LabelPlaces;
using veltrane::data::ValueIndex;

namespace {

/// A shorter list is searched from end to end.
constexpr int kIndexedFrom = 32;

} // namespace

ValueLabelSet::ValueLabelSet() = default;

ValueLabelSet::ValueLabelSet(const ValueLabelSet& other) : ScoreValueLabelSet(other), fLabels(other.fLabels) {
    MakeIndex();
}

ValueLabelSet& ValueLabelSet::operator=(const ValueLabelSet& other) {
    if (this != &other) {
        fIndex.reset();
        fLabels = other.fLabels;
        MakeIndex();
    }
    return *this;
}

ValueLabelSet::~ValueLabelSet() = default;

ScoreValueLabelSet* ValueLabelSet::Clone() const {
    return new ValueLabelSet(*this);
}

bool ValueLabelSet::Add(ScoreValueLabel* label) {
    if (!label) {
        return false;
    }
    fLabels.Items().push_back(label);
    if (fIndex) {
        fIndex->Any().Add(*label);
    } else {
        MakeIndex();
    }
    return true;
}

bool ValueLabelSet::Remove(const ScoreValueLabel* label) {
    auto& labels = fLabels.Items();
    LabelPlaces* places = fIndex && label && label->GetValue() ? fIndex->GetToChange(labels) : nullptr;
    if (!places) {
        const bool removed = veltrane::data::RemoveFirstEqual(labels, label);
        if (removed && fIndex) {
            fIndex->Forget();
        }
        DropSmallIndex();
        return removed;
    }
    const int place =
        places->values.FindLowest(*label->GetValue(), [&](int at) { return *places->elements[at] == *label; });
    if (place == ValueIndex::kNowhere) {
        return false;
    }
    const ScoreValueLabel* doomed = places->elements[place];
    labels.erase(labels.begin() + places->Remove(place));
    delete doomed;
    if (places->IsWorn(labels.size())) {
        MakeIndex();
    } else {
        DropSmallIndex();
    }
    return true;
}

int ValueLabelSet::Size() const {
    return fLabels.Size();
}

const std::vector<ScoreValueLabel*>& ValueLabelSet::GetAllValueLabels() const {
    return fLabels.Items();
}

std::string ValueLabelSet::GetLabelOfValue(const ScoreValue* value) const {
    const ScoreValueLabel* found = FindByStoredValue(value);
    return found ? found->GetLabel() : std::string();
}

bool ValueLabelSet::Contains(const ScoreValue* value) const {
    return FindByStoredValue(value) != nullptr;
}

bool ValueLabelSet::HasValueEqualTo(const ScoreValue& value) const {
    return FindFirst(veltrane::data::AgreesWithIndex(value) ? FindPlaces() : nullptr, value,
                     [&value](const ScoreValue& stored) { return value == stored; }) != nullptr;
}

bool ValueLabelSet::HasTextEqualTo(const ScoreValue& value, bool noSpaceTrim, bool emptyStringOK) const {
    const LabelPlaces* places = FindPlaces();
    // A number is equal to every text, so with one among the values they have to be walked.
    return FindFirst(places && !places->values.HoldsNumbers() ? places : nullptr, value, [&](const ScoreValue& stored) {
               return stored.Equal(&value, noSpaceTrim, emptyStringOK);
           }) != nullptr;
}

void ValueLabelSet::Display(std::ostream& out) const {
    out << "Start ScoreValueLabelSet Display:\n";
    for (const ScoreValueLabel* label : fLabels.Items()) {
        label->Display(out);
    }
    out << "End of ScoreValueLabelSet Display.\n\n";
}

const ScoreValueLabel* ValueLabelSet::FindByStoredValue(const ScoreValue* value) const {
    const auto matches = [value](const ScoreValue& stored) { return stored == *value; };
    return value ? FindFirst(FindPlaces(), *value, matches) : nullptr;
}

/// The first label whose value matches.
/// @param places null for a walk over all labels
template <typename Matches>
const ScoreValueLabel* ValueLabelSet::FindFirst(const LabelPlaces* places, const ScoreValue& value,
                                                Matches matches) const {
    const auto isMatch = [matches](const ScoreValueLabel* label) {
        const ScoreValue* stored = label->GetValue();
        return stored && matches(*stored);
    };
    if (!places) {
        const auto& labels = fLabels.Items();
        const auto found = std::find_if(labels.begin(), labels.end(), isMatch);
        return found == labels.end() ? nullptr : *found;
    }
    const int place = places->values.FindLowest(value, [&](int at) { return isMatch(places->elements[at]); });
    return place == ValueIndex::kNowhere ? nullptr : places->elements[place];
}

/// Null when the labels have to be walked.
const LabelPlaces* ValueLabelSet::FindPlaces() const {
    return fIndex ? fIndex->Get(fLabels.Items()) : nullptr;
}

void ValueLabelSet::MakeIndex() {
    fIndex.reset();
    if (Size() >= kIndexedFrom) {
        fIndex = std::make_unique<veltrane::data::LabelIndex>(fLabels.Items());
    }
}

void ValueLabelSet::DropSmallIndex() {
    if (Size() < kIndexedFrom) {
        fIndex.reset();
    }
}

} // namespace MCVeltrane_900
