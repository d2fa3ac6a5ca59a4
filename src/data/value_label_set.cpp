#include "data/value_index.h"
#include "data/valued_elements.h"

#include <MCVeltrane_900/ValueLabelSet.h>
#include <MCVeltrane_900/ValueLbl.h>

#include <typeinfo>

namespace MCVeltrane_900 {

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
        AddToIndex(Size() - 1);
    } else {
        MakeIndex();
    }
    return true;
}

bool ValueLabelSet::Remove(const ScoreValueLabel* label) {
    const bool removed = veltrane::data::RemoveFirstEqual(fLabels.Items(), label);
    if (removed) {
        MakeIndex();
    }
    return removed;
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
    return FindFirst(value, veltrane::data::AgreesWithIndex(value),
                     [&value](const ScoreValue& stored) { return value == stored; }) != nullptr;
}

bool ValueLabelSet::HasTextEqualTo(const ScoreValue& value, bool noSpaceTrim, bool emptyStringOK) const {
    const bool useIndex = fIndex && !fIndex->HoldsNumbers();
    return FindFirst(value, useIndex, [&](const ScoreValue& stored) {
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
    return value ? FindFirst(*value, true, [value](const ScoreValue& stored) { return stored == *value; }) : nullptr;
}

template <typename Matches>
const ScoreValueLabel* ValueLabelSet::FindFirst(const ScoreValue& value, bool useIndex, Matches matches) const {
    const std::vector<ScoreValueLabel*>& labels = fLabels.Items();
    const auto isMatch = [&labels, matches](int position) {
        const ScoreValue* stored = labels[position]->GetValue();
        return stored && matches(*stored);
    };
    int first = Size();
    if (useIndex && fIndex) {
        fIndex->Search(value, [&first, isMatch](int position) {
            if (position < first && isMatch(position)) {
                first = position;
            }
        });
    } else {
        for (int position = 0; position < first; ++position) {
            if (isMatch(position)) {
                first = position;
            }
        }
    }
    return first < Size() ? labels[first] : nullptr;
}

void ValueLabelSet::MakeIndex() {
    fIndex.reset();
    if (Size() >= kIndexedFrom) {
        fIndex = std::make_unique<veltrane::data::ValueIndex>();
        for (int position = 0; position < Size(); ++position) {
            AddToIndex(position);
        }
    }
}

void ValueLabelSet::AddToIndex(int position) {
    ScoreValueLabel& label = *fLabels.Items()[position];
    if (typeid(label) == typeid(ValueLbl)) {
        fIndex->Add(position, label.GetValue());
        static_cast<ValueLbl&>(label).fIndexedIn.fSet = this;
    } else {
        fIndex->AddOther(position);
    }
}

void ValueLabelSet::DropIndex() {
    fIndex.reset();
}

} // namespace MCVeltrane_900
