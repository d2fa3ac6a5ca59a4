#include "data/values/value_cast.h"
#include "transform/derivation/field_evaluation.h"

#include <MCVeltrane_900/MapValues.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreValueRange.h>

using namespace MCVeltrane_900;

namespace {

bool IsSysmis(const ScoreValue& value) {
    return value.GetDouble() == NumericValue::GetSysmisValue();
}

bool HasNumber(const ScoreValue& value) {
    return veltrane::data::IsNumber(value) || veltrane::data::IsDateTime(value);
}

} // namespace

namespace veltrane::transform {

const ScoreValue* FieldEvaluation::ReplacementOfMissing(const ScoreDictVar& source, VariableType ownType,
                                                        const ScoreValue& value) const {
    if (fVar.fRecodeSysmisValue != nullptr && source.GetVarType() == ScoreDictVar::kNUMERIC_VAR && IsSysmis(value) &&
        (ownType != ScoreDictVar::kNUMERIC_VAR || !IsSysmis(*fVar.fRecodeSysmisValue))) {
        return fVar.fRecodeSysmisValue.get();
    }
    if (fVar.fRecodeMissValue != nullptr) {
        return fVar.fRecodeMissValue.get();
    }
    return fVar.fRecodeMissingCopy || fVar.fRecodeElseCopy ? &value : nullptr;
}

const ScoreValue* FieldEvaluation::ReplacementOfUnmatched(const ScoreValue& value) const {
    if (fVar.fRecodeDefaultValue != nullptr) {
        return fVar.fRecodeDefaultValue.get();
    }
    return fVar.fRecodeElseCopy ? &value : nullptr;
}

} // namespace veltrane::transform

namespace MCVeltrane_900 {

/// Takes the replacement into the cleared scratch value of the own type, which is what comes back in every case.
const ScoreValue* TransformVar::HandleMissingAndInvalidValue(const ScoreDictVar* source, VariableType ownType,
                                                             const ScoreValue* value) {
    const ScoreValue* cleared = fEvaluation->ClearScratch(ownType);
    if (source == nullptr) {
        return cleared;
    }
    const ScoreValue* replacement = source->IsMissingValue(value)
                                        ? fEvaluation->ReplacementOfMissing(*source, ownType, *value)
                                        : fEvaluation->ReplacementOfUnmatched(*value);
    return replacement == nullptr ? cleared : fEvaluation->FillScratch(ownType, *replacement);
}

const ScoreValue* TransformVar::GetEncodedValue(const ScoreDictVar* source, const ScoreValue* value) {
    const VariableType ownType = GetVarType();
    if (value == nullptr) {
        // A missing text stays empty here even with a replacement for missing values; binning differs.
        return ownType == kNUMERIC_VAR && fRecodeMissValue != nullptr
                   ? fEvaluation->FillScratch(ownType, *fRecodeMissValue)
                   : fEvaluation->ClearScratch(ownType);
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
        return fRecodeMissValue != nullptr ? fEvaluation->FillScratch(ownType, *fRecodeMissValue)
                                           : fEvaluation->ClearScratch(ownType);
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
