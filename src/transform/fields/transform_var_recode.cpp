#include "data/values/value_cast.h"

#include <MCVeltrane_900/MapValues.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreValueRange.h>
#include <MCVeltrane_900/TransformVar.h>

namespace MCVeltrane_900 {

namespace {

bool IsSysmis(const ScoreValue& value) {
    return value.GetDouble() == NumericValue::GetSysmisValue();
}

bool HasNumber(const ScoreValue& value) {
    return veltrane::data::IsNumber(value) || veltrane::data::IsDateTime(value);
}

} // namespace

/// What stands for a missing value, or null. To a numeric field a replacement of system-missing values that is missing
/// itself is none.
const ScoreValue* TransformVar::ReplacementOfMissing(const ScoreDictVar& source, VariableType ownType,
                                                     const ScoreValue& value) const {
    if (fRecodeSysmisValue != nullptr && source.GetVarType() == kNUMERIC_VAR && IsSysmis(value) &&
        (ownType != kNUMERIC_VAR || !IsSysmis(*fRecodeSysmisValue))) {
        return fRecodeSysmisValue.get();
    }
    if (fRecodeMissValue != nullptr) {
        return fRecodeMissValue.get();
    }
    return fRecodeMissingCopy || fRecodeElseCopy ? &value : nullptr;
}

/// What stands for a value that matched nothing, or null.
const ScoreValue* TransformVar::ReplacementOfUnmatched(const ScoreValue& value) const {
    if (fRecodeDefaultValue != nullptr) {
        return fRecodeDefaultValue.get();
    }
    return fRecodeElseCopy ? &value : nullptr;
}

/// Takes the replacement into the cleared scratch value of the own type, which is what comes back in every case.
const ScoreValue* TransformVar::HandleMissingAndInvalidValue(const ScoreDictVar* source, VariableType ownType,
                                                             const ScoreValue* value) {
    const ScoreValue* cleared = ClearScratch(ownType);
    if (source == nullptr) {
        return cleared;
    }
    const ScoreValue* replacement =
        source->IsMissingValue(value) ? ReplacementOfMissing(*source, ownType, *value) : ReplacementOfUnmatched(*value);
    return replacement == nullptr ? cleared : FillScratch(ownType, *replacement);
}

const ScoreValue* TransformVar::GetEncodedValue(const ScoreDictVar* source, const ScoreValue* value) {
    const VariableType ownType = GetVarType();
    if (value == nullptr) {
        // A missing text stays empty here even with a replacement for missing values; binning differs.
        return ownType == kNUMERIC_VAR && fRecodeMissValue != nullptr ? FillScratch(ownType, *fRecodeMissValue)
                                                                      : ClearScratch(ownType);
    }
    for (const auto& [key, encoded] : fEncodedValues) {
        if (key != nullptr && *key == *value) {
            return encoded;
        }
    }
    return HandleMissingAndInvalidValue(source, ownType, value);
}

const ScoreValue* TransformVar::GetBinningValue(const ScoreDictVar* source, const ScoreValue* value) {
    const VariableType ownType = GetVarType();
    if (value == nullptr || !HasNumber(*value)) {
        return fRecodeMissValue != nullptr ? FillScratch(ownType, *fRecodeMissValue) : ClearScratch(ownType);
    }
    for (const auto& [range, binValue] : fBins) {
        if (range != nullptr && range->IsInRange(value)) {
            return binValue != nullptr ? binValue : value;
        }
    }
    return HandleMissingAndInvalidValue(source, ownType, value);
}

const ScoreValue* TransformVar::GetMappedValue(const ScoreCaseRecord* record, const ScoreDictionary* dictionary,
                                               const ScoreDictionary* transformations, const ScoreValue* value) {
    for (const auto& [key, encoded] : fEncodedValues) {
        if (value == nullptr) {
            break;
        }
        if (key != nullptr && *key == *value) {
            if (encoded != nullptr) {
                return encoded;
            }
            break;
        }
    }
    return fMapValues == nullptr ? nullptr : fMapValues->Evaluate(record, dictionary, transformations);
}

} // namespace MCVeltrane_900
