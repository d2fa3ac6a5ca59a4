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
constexpr std::size_t kIndexedFrom = 32;

using Labels = std::vector<ScoreValueLabel*>;
using Index = std::unique_ptr<veltrane::data::LabelIndex>;

Index IndexOf(const Labels& labels) {
    return labels.size() < kIndexedFrom ? nullptr : std::make_unique<veltrane::data::LabelIndex>(labels);
}

void DropSmallIndex(Index& index, const Labels& labels) {
    if (labels.size() < kIndexedFrom) {
        index.reset();
    }
}

/// Null when the labels have to be walked.
const LabelPlaces* FindPlaces(const Labels& labels, const Index& index) {
    return index ? index->Get(labels) : nullptr;
}

/// The first label whose value matches.
/// @param places null for a walk over all labels
template <typename Matches>
const ScoreValueLabel* FindFirst(const Labels& labels, const LabelPlaces* places, const ScoreValue& value,
                                 Matches matches) {
    const auto isMatch = [matches](const ScoreValueLabel* label) {
        const ScoreValue* stored = label->GetValue();
        return stored && matches(*stored);
    };
    if (!places) {
        const auto found = std::find_if(labels.begin(), labels.end(), isMatch);
        return found == labels.end() ? nullptr : *found;
    }
    const int place = places->values.FindLowest(value, [&](int at) { return isMatch(places->elements[at]); });
    return place == ValueIndex::kNowhere ? nullptr : places->elements[place];
}

const ScoreValueLabel* FindByStoredValue(const Labels& labels, const Index& index, const ScoreValue* value) {
    const auto matches = [value](const ScoreValue& stored) { return stored == *value; };
    return value ? FindFirst(labels, FindPlaces(labels, index), *value, matches) : nullptr;
}

} // namespace

ValueLabelSet::ValueLabelSet() = default;

ValueLabelSet::ValueLabelSet(const ValueLabelSet& other) : ScoreValueLabelSet(other), fLabels(other.fLabels) {
    fIndex = IndexOf(fLabels.Items());
}

ValueLabelSet& ValueLabelSet::operator=(const ValueLabelSet& other) {
    if (this != &other) {
        fIndex.reset();
        fLabels = other.fLabels;
        fIndex = IndexOf(fLabels.Items());
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
        fIndex = IndexOf(fLabels.Items());
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
        DropSmallIndex(fIndex, fLabels.Items());
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
        fIndex = IndexOf(fLabels.Items());
    } else {
        DropSmallIndex(fIndex, fLabels.Items());
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
    const ScoreValueLabel* found = FindByStoredValue(fLabels.Items(), fIndex, value);
    return found ? found->GetLabel() : std::string();
}

bool ValueLabelSet::Contains(const ScoreValue* value) const {
    return FindByStoredValue(fLabels.Items(), fIndex, value) != nullptr;
}

bool ValueLabelSet::HasValueEqualTo(const ScoreValue& value) const {
    return FindFirst(fLabels.Items(),
                     veltrane::data::AgreesWithIndex(value) ? FindPlaces(fLabels.Items(), fIndex) : nullptr, value,
                     [&value](const ScoreValue& stored) { return value == stored; }) != nullptr;
}

bool ValueLabelSet::HasTextEqualTo(const ScoreValue& value, bool noSpaceTrim, bool emptyStringOK) const {
    const LabelPlaces* places = FindPlaces(fLabels.Items(), fIndex);
    // A number is equal to every text, so with one among the values they have to be walked.
    return FindFirst(fLabels.Items(), places && !places->values.HoldsNumbers() ? places : nullptr, value,
                     [&](const ScoreValue& stored) { return stored.Equal(&value, noSpaceTrim, emptyStringOK); }) !=
           nullptr;
}

void ValueLabelSet::Display(std::ostream& out) const {
    out << "Start ScoreValueLabelSet Display:\n";
    for (const ScoreValueLabel* label : fLabels.Items()) {
        label->Display(out);
    }
    out << "End of ScoreValueLabelSet Display.\n\n";
}

} // namespace MCVeltrane_900
