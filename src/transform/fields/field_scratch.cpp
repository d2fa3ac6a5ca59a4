#include "transform/derivation/field_evaluation.h"
#include "transform/derivation/values.h"

#include <MCVeltrane_900/ApplyNodeStats.h>
#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/StringValue.h>

using namespace MCVeltrane_900;

/// The values that a field holds for what it computes on the way to its result.
namespace veltrane::transform {

NumericValue& FieldEvaluation::NumericScratch() {
    return MadeValue(fVar.fNumericScratch);
}

StringValue& FieldEvaluation::TextScratch() {
    return MadeValue(fVar.fTextScratch);
}

const ScoreValue* FieldEvaluation::ClearScratch(VariableType ownType) {
    if (ownType == ScoreDictVar::kNUMERIC_VAR) {
        NumericScratch().SetDoubleValue(NumericValue::GetSysmisValue());
        return fVar.fNumericScratch.get();
    }
    TextScratch().SetString(std::string());
    return fVar.fTextScratch.get();
}

const ScoreValue* FieldEvaluation::FillScratch(VariableType ownType, const ScoreValue& value) {
    if (ownType == ScoreDictVar::kNUMERIC_VAR) {
        NumericScratch().SetDoubleValue(value.GetDouble());
        return fVar.fNumericScratch.get();
    }
    std::string buffer;
    TextScratch().SetString(TextOf(value, buffer));
    return fVar.fTextScratch.get();
}

const ScoreValue* FieldEvaluation::MissingScratch(VariableType type, int width) {
    switch (type) {
    case ScoreDictVar::kNUMERIC_VAR:
        return ClearScratch(type);
    case ScoreDictVar::DATETIME_VAR:
        MadeValue(fVar.fDateTimeScratch).SetDoubleValue(NumericValue::GetSysmisValue());
        return fVar.fDateTimeScratch.get();
    default:
        TextScratch().SetString(std::string());
        TextScratch().SetLength(width);
        return fVar.fTextScratch.get();
    }
}

/// What stands for a missing value of a field in the record; null when the value itself does.
const ScoreValue* FieldEvaluation::ReplaceMissingLeaf(const ScoreDictVar& variable, const ScoreValue& value,
                                                      const ApplyNodeStats& stats) {
    const ScoreValue* replacement = stats.GetFieldrefRecodeMissValueRep();
    switch (variable.GetVarType()) {
    case ScoreDictVar::kNUMERIC_VAR:
        NumericScratch().SetDoubleValue(replacement != nullptr ? replacement->GetDouble()
                                                               : NumericValue::GetSysmisValue());
        return fVar.fNumericScratch.get();
    case ScoreDictVar::DATETIME_VAR:
        if (replacement == nullptr || value.GetType() != ScoreValue::DATETIME_VALUE) {
            return nullptr;
        }
        MadeValue(fVar.fSecondDateTimeScratch).SetValue(replacement);
        return fVar.fSecondDateTimeScratch.get();
    case ScoreDictVar::STRING_VAR:
        if (replacement == nullptr || value.GetType() != ScoreValue::STRING_VALUE) {
            return nullptr;
        }
        MadeValue(fVar.fSecondTextScratch).SetLength(variable.GetWidth());
        MadeValue(fVar.fSecondTextScratch).SetValue(replacement);
        return fVar.fSecondTextScratch.get();
    default:
        return nullptr;
    }
}

} // namespace veltrane::transform
