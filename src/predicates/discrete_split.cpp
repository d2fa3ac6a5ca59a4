#include "data/sets/kept_index.h"
#include "data/sets/value_index.h"

#include <MCVeltrane_900/DiscreteSplit.h>
#include <MCVeltrane_900/ScoreDictVar.h>

#include <algorithm>
#include <cmath>

namespace veltrane::data {

/// Narrows the search among the values of a split; their places are their positions.
struct SplitPlaces {
    using List = MCVeltrane_900::SplitRecords<MCVeltrane_900::ScoreValue>;

    explicit SplitPlaces(const List& list) {
        for (int position = 0; position < list.Size(); ++position) {
            Add(position, list.All()[position].object);
        }
    }

    bool IsTrue(const List& list) const {
        return std::all_of(list.All().begin(), list.All().end(),
                           [](const auto& record) { return Marks::IsUnchanged(record.object); });
    }

    void Add(int position, const MCVeltrane_900::ScoreValue* value) {
        Marks::MarkValue(value);
        values.Add(position, value);
    }

    ValueIndex values;
};

class SplitIndex : public KeptIndex<SplitPlaces> {
public:
    using KeptIndex::KeptIndex;
};

} // namespace veltrane::data

namespace MCVeltrane_900 {

using veltrane::data::SplitPlaces;
using veltrane::data::ValueIndex;

namespace {

/// Fewer values are searched from end to end.
constexpr int kIndexedFrom = 8;

std::unique_ptr<veltrane::data::SplitIndex> IndexOf(const SplitPlaces::List& values) {
    return values.Size() < kIndexedFrom ? nullptr : std::make_unique<veltrane::data::SplitIndex>(values);
}

/// The child index of the first value that matches, -1 for none.
/// @param places null for a walk over all values
template <typename Matches>
int FindChild(const SplitPlaces::List& values, const SplitPlaces* places, const ScoreValue& value, Matches matches) {
    if (!places) {
        return values.FindChild(matches);
    }
    const auto& records = values.All();
    const int found = places->values.FindLowest(value, [&](int at) { return matches(*records[at].object); });
    return found == ValueIndex::kNowhere ? -1 : records[found].index;
}

} // namespace

DiscreteSplit::DiscreteSplit(const ScoreDictVar* var) : ScoreSplitVar(var) {}

// The codes belong to the split that they were put into and don't travel with a copy.
DiscreteSplit::DiscreteSplit(const DiscreteSplit& other)
    : ScoreSplitVar(other), fValues(other.fValues), fStartIndex(other.fStartIndex), fEndIndex(other.fEndIndex) {
    fIndex = IndexOf(fValues);
}

DiscreteSplit& DiscreteSplit::operator=(const DiscreteSplit& other) {
    if (this != &other) {
        ScoreSplitVar::operator=(other);
        fValues = other.fValues;
        fStartIndex = other.fStartIndex;
        fEndIndex = other.fEndIndex;
        fIndex = IndexOf(fValues);
    }
    return *this;
}

DiscreteSplit::~DiscreteSplit() = default;

ScoreSplitVar* DiscreteSplit::Clone() const {
    return new DiscreteSplit(*this);
}
ScoreSplitVar::SplitVarType DiscreteSplit::GetSplitVarType() const {
    return DISCRETE_SPLIT;
}

int DiscreteSplit::GetSplitChildIndex(double code) const {
    if (code < 0 && fSplitVar->GetMLevel() == ScoreDictVar::LEVEL_NOMINAL) {
        return fMissvalMap;
    }
    if (std::isnan(code)) { // equal to no code, but not ordered either, so the map can't be asked
        return -1;
    }
    const auto found = fNumericMap.find(code);
    return found == fNumericMap.end() ? -1 : found->second;
}

int DiscreteSplit::GetSplitChildIndex(const ScoreValue* value) const {
    if (!value) {
        return fMissvalMap;
    }
    const SplitPlaces* places = fIndex ? fIndex->Get(fValues) : nullptr;
    if (fSplitVar->GetVarType() != ScoreDictVar::STRING_VAR) {
        return FindChild(fValues, places, *value, [value](const ScoreValue& stored) { return stored == *value; });
    }
    const bool noSpaceTrim = fSplitVar->GetNoSpaceTrim();
    const bool emptyStringOK = fSplitVar->GetEmptyStringOK();
    // A number is equal to every text, so with one among the values the index can't say which comes first.
    return FindChild(fValues, places && !places->values.HoldsNumbers() ? places : nullptr, *value,
                     [=](const ScoreValue& stored) { return stored.Equal(value, noSpaceTrim, emptyStringOK); });
}

void DiscreteSplit::PutSplit(ScoreValue* value, int index) {
    fValues.Append(value, index);
    if (fIndex) {
        fIndex->Any().Add(fValues.Size() - 1, value);
    } else {
        fIndex = IndexOf(fValues);
    }
}

void DiscreteSplit::PutSplit(double code, int index) {
    if (!std::isnan(code)) {
        fNumericMap.emplace(code, index);
    }
}

std::vector<const ScoreValue*> DiscreteSplit::GetSplitValues() const {
    std::vector<const ScoreValue*> values;
    values.reserve(fValues.All().size());
    for (const auto& record : fValues.All()) {
        values.push_back(record.object);
    }
    return values;
}

std::vector<const ScoreValue*> DiscreteSplit::GetSplitValuesForIndex(int index) const {
    std::vector<const ScoreValue*> values;
    for (const auto& record : fValues.All()) {
        if (record.index == index) {
            values.push_back(record.object);
        }
    }
    return values;
}

std::vector<const ScoreValue*> DiscreteSplit::GetSplitValuesFirst() const {
    std::vector<const ScoreValue*> values;
    if (fValues.Size() != 0) {
        values.push_back(fValues.All().front().object);
    }
    return values;
}

void DiscreteSplit::GetStartAndEndIndex(int& start, int& end) const {
    start = fStartIndex;
    end = fEndIndex;
}

void DiscreteSplit::SetStartAndEndIndex(int start, int end) {
    fStartIndex = start;
    fEndIndex = end;
}

void DiscreteSplit::Display(std::ostream& out) const {
    const bool isCategorical = fSplitVar->GetMLevel() == ScoreDictVar::LEVEL_NOMINAL;
    out << "SplitVarName = " << GetSplitName()
        << (isCategorical ? "; Var type: Categorical\n" : "; Var type: Ordinal\n")
        << "Missing Value index: " << fMissvalMap << "\n";
    if (fStartIndex >= 0 && fEndIndex >= 0) {
        out << "Split value index starts from  " << fStartIndex << " to " << fEndIndex << "\n";
    }
    for (const auto& record : fValues.All()) {
        out << "Value = " << (record.object ? record.object->GetString() : std::string()) << "; "
            << "Index = " << record.index << "\n";
    }
    out << "\n";
}

} // namespace MCVeltrane_900
