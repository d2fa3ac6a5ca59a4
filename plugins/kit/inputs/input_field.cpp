#include "kit/inputs/input_field.h"

#include "kit/inputs/missing_value.h"

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/ScoreMissingValueSet.h>
#include <MCVeltrane_900/ScoreValueRange.h>
#include <MCVeltrane_900/StringValue.h>

#include <algorithm>
#include <cmath>

namespace veltrane_kit {

using namespace MCVeltrane_900;

namespace {

ScoreValue::ValueType KindOf(const ScoreDictVar& var) {
    switch (var.GetVarType()) {
    case ScoreDictVar::STRING_VAR:
        return ScoreValue::STRING_VALUE;
    case ScoreDictVar::DATETIME_VAR:
        return ScoreValue::DATETIME_VALUE;
    default:
        return ScoreValue::NUMERIC_VALUE;
    }
}

std::unique_ptr<ScoreValue> MakePlaceholder(ScoreValue::ValueType kind, bool emptyIsMissing) {
    return kind == ScoreValue::STRING_VALUE && !emptyIsMissing ? nullptr : MakeMissing(kind);
}

/// Whether the field has missing values of its own, beside the empty text, which is found without them.
bool HasMissingSet(const ScoreDictVar& var, bool emptyIsMissing) {
    const ScoreMissingValueSet* missing = var.GetMissingValues();
    if (missing == nullptr || !emptyIsMissing || var.GetVarType() != ScoreDictVar::STRING_VAR) {
        return missing != nullptr && missing->Size() > 0;
    }
    const StringValue empty("");
    const std::vector<const ScoreValueRange*> ranges = missing->GetMissingValues();
    return std::any_of(ranges.begin(), ranges.end(),
                       [&empty](const ScoreValueRange* range) { return !range->IsInRange(&empty); });
}

} // namespace

InputField::InputField(const ScoreDictVar& var, const MiningField* schema, const DeclaredValidity* validity)
    : fVar(&var), fKind(KindOf(var)), fCategories(var), fInvalid(var), fLow(-kInfinity), fHigh(kInfinity) {
    if (validity != nullptr) {
        DeclareValid(*validity);
    }
    if (fKind == ScoreValue::STRING_VALUE) {
        fEmptyIsMissing = fCategories.Find(std::string_view()) == Categories::kUnknown;
    }
    fHasMissingSet = HasMissingSet(var, fEmptyIsMissing);
    fPlaceholder = MakePlaceholder(fKind, fEmptyIsMissing);
    if (schema == nullptr) {
        return;
    }
    fMissingRefused = schema->missingRefused;
    fInvalidTreatment = schema->invalid;
    SetStandIn(fMissingReplacement, schema->missingReplacement.get());
    SetStandIn(fInvalidReplacement, schema->invalidReplacement.get());
    fOutliers = fKind == ScoreValue::NUMERIC_VALUE ? schema->outliers : OutlierTreatment::AS_IS;
    fLow = schema->low.value_or(-kInfinity);
    fHigh = schema->high.value_or(kInfinity);
    if (fOutliers == OutlierTreatment::AS_EXTREME) {
        const NumericValue low(fLow);
        const NumericValue high(fHigh);
        SetStandIn(fLowest, &low);
        SetStandIn(fHighest, &high);
    }
}

/// Lists of values count in any field; intervals do in one that is continuous, where the two add up.
void InputField::DeclareValid(const DeclaredValidity& validity) {
    for (const std::string& text : validity.validTexts) {
        if (const std::unique_ptr<ScoreValue> value(MakeValue(*fVar, text)); value != nullptr) {
            fCategories.Add(*value);
        }
    }
    for (const std::string& text : validity.invalidTexts) {
        if (const std::unique_ptr<ScoreValue> value(MakeValue(*fVar, text)); value != nullptr) {
            fInvalid.Add(*value);
        }
    }
    fDeclaredCategories = fCategories.Size();
    fNeedsCategory = fDeclaredCategories > 0;
    if (fVar->GetMLevel() == ScoreDictVar::LEVEL_CONTINUOUS) {
        fIntervals = validity.intervals;
    }
    fChecksNumbers = fDeclaredCategories > 0 || fInvalid.Size() > 0 || !fIntervals.empty();
}

void InputField::SetStandIn(StandIn& standIn, const ScoreValue* value) {
    if (value == nullptr) {
        return;
    }
    standIn.value.reset(value->Clone());
    standIn.field.value = standIn.value.get();
    if (fKind != ScoreValue::STRING_VALUE) {
        standIn.field.number = value->GetDouble();
    }
    standIn.field.category = fCategories.Find(*value);
}

int InputField::CategoryOf(const ScoreValue& category) {
    fNeedsCategory = true;
    const int code = fCategories.Add(category);
    for (StandIn* standIn : {&fMissingReplacement, &fInvalidReplacement, &fLowest, &fHighest}) {
        if (standIn->value != nullptr) {
            standIn->field.category = fCategories.Find(*standIn->value);
        }
    }
    return code;
}

bool InputField::SaysNothing() const {
    const bool hasOneValue = fDeclaredCategories == 1 && fIntervals.empty();
    const bool admitsNoOther =
        fInvalidTreatment == InvalidTreatment::REFUSE || fInvalidTreatment == InvalidTreatment::AS_MISSING;
    return hasOneValue && admitsNoOther && fMissingReplacement.value != nullptr &&
           fCategories.Find(*fMissingReplacement.value) == 0;
}

bool InputField::Read(const ScoreValue* raw, FieldValue& field) const {
    if (raw == nullptr) {
        return GiveMissing(field);
    }
    if (raw->GetType() != fKind) {
        // A value of another kind can't be taken as it is, whatever the treatment says.
        return fInvalidTreatment == InvalidTreatment::REPLACE  ? (field = fInvalidReplacement.field, true)
               : fInvalidTreatment == InvalidTreatment::REFUSE ? false
                                                               : GiveMissing(field);
    }
    return fKind == ScoreValue::STRING_VALUE ? ReadText(*raw, field) : ReadNumber(*raw, field);
}

bool InputField::ReadNumber(const ScoreValue& raw, FieldValue& field) const {
    const double number = raw.GetDouble();
    if (IsMissingNumber(raw, number)) {
        return GiveMissing(field);
    }
    field.value = &raw;
    field.number = number;
    field.category = fNeedsCategory ? fCategories.Find(number) : Categories::kUnknown;
    if (fChecksNumbers && !IsAllowedNumber(number, field.category)) {
        bool goesOn = false;
        if (const bool scored = GiveInvalid(field, goesOn); !goesOn) {
            return scored;
        }
    }
    if (fOutliers != OutlierTreatment::AS_IS && (number < fLow || number > fHigh)) {
        if (fOutliers == OutlierTreatment::AS_MISSING) {
            return GiveMissing(field);
        }
        field = number < fLow ? fLowest.field : fHighest.field;
    }
    return true;
}

bool InputField::ReadText(const ScoreValue& raw, FieldValue& field) const {
    std::string buffer;
    const std::string& text = TextOf(raw, buffer);
    if (IsMissingText(raw, text)) {
        return GiveMissing(field);
    }
    field.value = &raw;
    field.number = FieldValue::kMissingNumber;
    field.category = fNeedsCategory ? fCategories.Find(std::string_view(text)) : Categories::kUnknown;
    const bool isAllowed = IsAllowedCategory(field.category) &&
                           (fInvalid.Size() == 0 || fInvalid.Find(std::string_view(text)) == Categories::kUnknown);
    bool goesOn = true;
    return isAllowed || GiveInvalid(field, goesOn);
}

bool InputField::IsMissing(const ScoreValue* raw) const {
    if (raw == nullptr) {
        return true;
    }
    if (raw->GetType() != fKind) {
        return false;
    }
    std::string buffer;
    return fKind == ScoreValue::STRING_VALUE ? IsMissingText(*raw, TextOf(*raw, buffer))
                                             : IsMissingNumber(*raw, raw->GetDouble());
}

bool InputField::IsMissingNumber(const ScoreValue& raw, double number) const {
    const bool isSystemMissing =
        fKind == ScoreValue::NUMERIC_VALUE ? number == FieldValue::kMissingNumber : raw.IsSystemMissingValue();
    return isSystemMissing || std::isnan(number) || (fHasMissingSet && fVar->IsMissingValue(&raw));
}

bool InputField::IsMissingText(const ScoreValue& raw, const std::string& text) const {
    return (fEmptyIsMissing && IsBlank(text)) || (fHasMissingSet && fVar->IsMissingValue(&raw));
}

bool InputField::GiveMissing(FieldValue& field) const {
    if (fMissingReplacement.value != nullptr) {
        field = fMissingReplacement.field;
        return true;
    }
    field = FieldValue();
    return !fMissingRefused;
}

/// Trailing blanks don't count in texts, so one of blanks alone is empty, unless the field says that they do.
bool InputField::IsBlank(const std::string& text) const {
    return text.empty() || (!fVar->GetNoSpaceTrim() && text.find_first_not_of(' ') == std::string::npos);
}

/// @param goesOn whether the value stays and is still to be looked at
bool InputField::GiveInvalid(FieldValue& field, bool& goesOn) const {
    goesOn = fInvalidTreatment == InvalidTreatment::AS_IS;
    switch (fInvalidTreatment) {
    case InvalidTreatment::REFUSE:
        return false;
    case InvalidTreatment::AS_MISSING:
        return GiveMissing(field);
    case InvalidTreatment::REPLACE:
        field = fInvalidReplacement.field;
        return true;
    default:
        return true;
    }
}

bool InputField::IsAllowedCategory(int category) const {
    return fDeclaredCategories == 0 || (category >= 0 && category < fDeclaredCategories);
}

bool InputField::IsAllowedNumber(double number, int category) const {
    if (fInvalid.Size() > 0 && fInvalid.Find(number) != Categories::kUnknown) {
        return false;
    }
    if (fIntervals.empty()) {
        return IsAllowedCategory(category);
    }
    const bool isListed = fDeclaredCategories > 0 && IsAllowedCategory(category);
    return isListed || std::any_of(fIntervals.begin(), fIntervals.end(),
                                   [number](const ValidInterval& interval) { return interval.Holds(number); });
}

} // namespace veltrane_kit
