#include <MCVeltrane_900/DictVar.h>
#include <MCVeltrane_900/MissingValueSet.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreEncoder.h>
#include <MCVeltrane_900/ScoreValueLabel.h>
#include <MCVeltrane_900/ScoreValueProbabilitySet.h>
#include <MCVeltrane_900/ScoreValueRange.h>
#include <MCVeltrane_900/ScoreVarStats.h>
#include <MCVeltrane_900/StringValue.h>
#include <MCVeltrane_900/ValueLabelSet.h>
#include <MCVeltrane_900/ValueLbl.h>

#include <algorithm>
#include <typeinfo>

namespace MCVeltrane_900 {

namespace {

bool IsInMissingRange(const ScoreMissingValueSet& missingValues, const ScoreValue* value) {
    // The library's own set is asked without the copy of its list that the interface gives.
    if (typeid(missingValues) == typeid(MissingValueSet)) {
        return static_cast<const MissingValueSet&>(missingValues).IsInAnyRange(value);
    }
    const std::vector<const ScoreValueRange*> ranges = missingValues.GetMissingValues();
    return std::any_of(ranges.begin(), ranges.end(),
                       [value](const ScoreValueRange* range) { return range->IsInRange(value); });
}

/// The library's own set, which finds values without a walk over its labels; null for any other class.
const ValueLabelSet* AsOwnSet(const ScoreValueLabelSet& labels) {
    return typeid(labels) == typeid(ValueLabelSet) ? static_cast<const ValueLabelSet*>(&labels) : nullptr;
}

template <typename Matches>
bool HasLabel(const ScoreValueLabelSet& labels, Matches matches) {
    const std::vector<ScoreValueLabel*>& all = labels.GetAllValueLabels();
    return std::any_of(all.begin(), all.end(), [matches](const ScoreValueLabel* label) {
        return label && label->GetValue() && matches(*label->GetValue());
    });
}

/// Whether a label has the value, by the operator of the value.
bool HasLabelOfValue(const ScoreValueLabelSet& labels, const ScoreValue& value) {
    if (const ValueLabelSet* own = AsOwnSet(labels)) {
        return own->HasValueEqualTo(value);
    }
    return HasLabel(labels, [&value](const ScoreValue& labelled) { return value == labelled; });
}

/// Whether a label has the value, by the label's comparison of texts.
bool HasLabelOfText(const ScoreValueLabelSet& labels, const ScoreValue& value, bool noSpaceTrim, bool emptyStringOK) {
    if (const ValueLabelSet* own = AsOwnSet(labels)) {
        return own->HasTextEqualTo(value, noSpaceTrim, emptyStringOK);
    }
    return HasLabel(labels,
                    [&](const ScoreValue& labelled) { return labelled.Equal(&value, noSpaceTrim, emptyStringOK); });
}

} // namespace

DictVar::DictVar(const std::string& name, VariableType type) : fName(name), fVarType(type) {}
DictVar::DictVar(const DictVar& other) = default;
DictVar::~DictVar() = default;

/// All owned objects go before the first of the other's is cloned.
DictVar& DictVar::operator=(const DictVar& other) {
    if (this == &other) {
        return *this;
    }
    fMissingValues.Reset(nullptr);
    fValueLabels.Reset(nullptr);
    fVarStats.Reset(nullptr);
    fDefValue.Reset(nullptr);
    fValueProbabilities.Reset(nullptr);
    fEncoder.Reset(nullptr);
    fName = other.fName;
    fLabel = other.fLabel;
    fVarType = other.fVarType;
    fDateTimeType = other.fDateTimeType;
    fNumericDataType = other.fNumericDataType;
    fMLevel = other.fMLevel;
    fDecimal = other.fDecimal;
    fWidth = other.fWidth;
    fMissingValues = other.fMissingValues;
    fValueLabels = other.fValueLabels;
    fVarStats = other.fVarStats;
    fValueIndex = other.fValueIndex;
    fEncodedValueIndex = other.fEncodedValueIndex;
    fNoSpaceTrim = other.fNoSpaceTrim;
    fEmptyStringOK = other.fEmptyStringOK;
    fXMeasure = other.fXMeasure;
    fFlagVariable = other.fFlagVariable;
    fUsageTypeEnable = other.fUsageTypeEnable;
    fOutlierHandleMethod = other.fOutlierHandleMethod;
    fDefValue = other.fDefValue;
    fValueProbabilities = other.fValueProbabilities;
    fEncoder = other.fEncoder;
    fEmptyCateValues = other.fEmptyCateValues;
    fFlagTypeTrueValue = other.fFlagTypeTrueValue;
    return *this;
}

ScoreDictVar* DictVar::Clone() const {
    return new DictVar(*this);
}
bool DictVar::operator==(const ScoreDictVar& other) const {
    return fName == other.GetName();
}

bool DictVar::IsMissingValue(const ScoreValue* value) const {
    if (!value) {
        return true;
    }
    const bool hasSystemMissing = fVarType == kNUMERIC_VAR || fVarType == DATETIME_VAR;
    if (hasSystemMissing && value->IsSystemMissingValue()) {
        return true;
    }
    if (!fMissingValues || !IsInMissingRange(*fMissingValues, value)) {
        return false;
    }
    if (!fValueLabels || !hasSystemMissing) {
        return true;
    }
    // A label rescues a number that lies in a missing range.
    return !HasLabelOfValue(*fValueLabels, *value);
}

bool DictVar::IsValidValue(const ScoreValue* value) const {
    if (IsMissingValue(value) || !value) {
        return false;
    }
    if (fValueLabels && (fMLevel == LEVEL_ORDINAL || fMLevel == LEVEL_NOMINAL)) {
        return fVarType == STRING_VAR ? HasLabelOfText(*fValueLabels, *value, GetNoSpaceTrim(), GetEmptyStringOK())
                                      : HasLabelOfValue(*fValueLabels, *value);
    }
    if (fVarType == kNUMERIC_VAR && !fValueLabels) {
        return value->GetType() == ScoreValue::NUMERIC_VALUE || value->GetType() == ScoreValue::DATETIME_VALUE;
    }
    return true;
}

ScoreValue* DictVar::ToMyValue(const std::string& text) const {
    switch (fVarType) {
    case kNUMERIC_VAR:
        return new NumericValue(text);
    case STRING_VAR:
        return new StringValue(text);
    default:
        return nullptr;
    }
}

bool DictVar::AddScoreValueLabel(ScoreValue* value, const std::string& label) {
    if (!fValueLabels) {
        fValueLabels.Reset(new ValueLabelSet);
    }
    if (!value || label.empty()) {
        return false;
    }
    if (fValueLabels->Contains(value)) {
        delete value;
        return false;
    }
    fValueLabels->Add(new ValueLbl(value, label));
    return true;
}

std::string DictVar::GetLabelOfValue(const ScoreValue* value) const {
    return fValueLabels ? fValueLabels->GetLabelOfValue(value) : std::string();
}

int DictVar::GetNumberOfCats() const {
    if (fMLevel == LEVEL_CONTINUOUS) {
        return 1;
    }
    return fValueLabels ? fValueLabels->Size() : 0;
}

} // namespace MCVeltrane_900
