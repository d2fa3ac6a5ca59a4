#include "data/values/number_tests.h"

#include <MCVeltrane_900/ScaleSplit.h>
#include <MCVeltrane_900/ScoreDictVar.h>

namespace MCVeltrane_900 {

ScaleSplit::ScaleSplit(const ScoreDictVar* var) : ScoreSplitVar(var) {}
ScaleSplit::ScaleSplit(const ScaleSplit& other) = default;
ScaleSplit& ScaleSplit::operator=(const ScaleSplit& other) = default;
ScaleSplit::~ScaleSplit() = default;

ScoreSplitVar* ScaleSplit::Clone() const {
    return new ScaleSplit(*this);
}
ScoreSplitVar::SplitVarType ScaleSplit::GetSplitVarType() const {
    return SCALE_SPLIT;
}

int ScaleSplit::GetSplitChildIndex(double value) const {
    if (veltrane::data::IsMissingNumber(value)) {
        return fMissvalMap;
    }
    return fRanges.FindChild([value](const ScoreValueRange& range) { return range.IsInRange(value); });
}

int ScaleSplit::GetSplitChildIndex(const ScoreValue* value) const {
    if (!value || fSplitVar->IsMissingValue(value)) {
        return fMissvalMap;
    }
    return fRanges.FindChild([value](const ScoreValueRange& range) { return range.IsInRange(value); });
}

void ScaleSplit::PutSplit(ScoreValueRange* range, int index) {
    fRanges.Append(range, index);
}

const ScoreValueRange* ScaleSplit::GetSplitValueRangeFirst() const {
    return fRanges.Size() == 0 ? nullptr : fRanges.All().front().object;
}

const ScoreValueRange* ScaleSplit::GetSplitValueRangeForIndex(int index) const {
    for (const auto& record : fRanges.All()) {
        if (record.index == index) {
            return record.object;
        }
    }
    return nullptr;
}

void ScaleSplit::Display(std::ostream& out) const {
    out << "SplitVarName = " << GetSplitName() << "\n"
        << "Missing Value index: " << fMissvalMap << "\n";
    for (const auto& record : fRanges.All()) {
        out << "Index = " << record.index << "\n";
        if (record.object) {
            record.object->Display(out);
        }
    }
    out << "\n";
}

} // namespace MCVeltrane_900
