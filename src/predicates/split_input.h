#ifndef VELTRANE_PREDICATES_SPLIT_INPUT_H
#define VELTRANE_PREDICATES_SPLIT_INPUT_H

#include "data/values/number_tests.h"

#include <MCVeltrane_900/ScoreCaseRecord.h>
#include <MCVeltrane_900/ScoreEncoder.h>
#include <MCVeltrane_900/ScorePredicate.h>
#include <MCVeltrane_900/ScoreValue.h>

/// What the predicates that decide through a split share: how the value of the split's variable is found in a case, and
/// when it counts as missing.
namespace veltrane::predicates {

using MCVeltrane_900::ScoreCaseRecord;
using MCVeltrane_900::ScoreDictVar;
using MCVeltrane_900::ScorePredicate;
using MCVeltrane_900::ScoreValue;

/// The code of a category that an encoder doesn't know.
inline constexpr double kUnknownCategory = -1.0;

/// By position where the record has positions, and by name where that gave nothing.
inline const ScoreValue* ReadVariable(const ScoreDictVar& var, const ScoreCaseRecord& record) {
    if (record.HasMap()) {
        if (const ScoreValue* value = record.Get(var.GetValueIndex())) {
            return value;
        }
    }
    return record.Get(var.GetName());
}

/// A derived variable is read from the record of derived fields alone whenever there is one, any other variable from
/// the case alone.
inline const ScoreValue* ReadVariable(const ScoreDictVar& var, const ScoreCaseRecord* record,
                                      const ScoreCaseRecord* derivedRecord) {
    return ReadVariable(var, derivedRecord && var.IsDerivedVariable() ? *derivedRecord : *record);
}

/// The code of a value; the missing number for null and for a variable without encoder.
inline double CodeOf(const ScoreDictVar& var, const ScoreValue* value) {
    const MCVeltrane_900::ScoreEncoder* encoder = value ? var.GetEncoder() : nullptr;
    return encoder ? encoder->EncodeConst(value) : data::kMissingNumber;
}

/// Whether the value of a case counts as missing. A category that isn't known is missing too.
inline bool IsMissing(const ScoreDictVar& var, const ScoreValue* value, bool hasEncoder, double code) {
    if (!value) {
        return true;
    }
    if (var.GetMLevel() != ScoreDictVar::LEVEL_NOMINAL) {
        return var.IsMissingValue(value);
    }
    return hasEncoder ? code == kUnknownCategory || var.IsMissingValue(value) : !var.IsValidValue(value);
}

/// A variable's number in an encoded case.
struct EncodedInput {
    double number;
    bool isMissing;
};

/// Reads a variable from an encoded case. A category that isn't known, -1.0, isn't missing there: the split settles it.
inline EncodedInput ReadEncoded(const ScoreDictVar& var, const std::vector<double>& encodedValues) {
    constexpr double kMissingCategory = -2.0;
    const ScoreDictVar::MeasureLevel level = var.GetMLevel();
    const bool isEncoded = level == ScoreDictVar::LEVEL_NOMINAL || level == ScoreDictVar::LEVEL_ORDINAL;
    const int index = var.GetEncodedValueIndex();
    double number = isEncoded ? kUnknownCategory : data::kMissingNumber;
    if (index >= 0 && static_cast<std::size_t>(index) < encodedValues.size()) {
        number = encodedValues[index];
    }
    return {number, isEncoded ? number == kMissingCategory : data::IsMissingNumber(number)};
}

/// Any child means true.
inline ScorePredicate::PredicateResult ResultOfChild(int child) {
    return child == -1 ? ScorePredicate::PRED_FALSE : ScorePredicate::PRED_TRUE;
}

} // namespace veltrane::predicates

#endif
