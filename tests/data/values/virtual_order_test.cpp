#include "support/vtable_slot.h"

#include <MCVeltrane_900/ScoreCaseRecord.h>
#include <MCVeltrane_900/ScoreDictVar.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/ScoreEncoder.h>
#include <MCVeltrane_900/ScoreMissingValueSet.h>
#include <MCVeltrane_900/ScoreResultField.h>
#include <MCVeltrane_900/ScoreValue.h>
#include <MCVeltrane_900/ScoreValueLabel.h>
#include <MCVeltrane_900/ScoreValueLabelSet.h>
#include <MCVeltrane_900/ScoreValueProbability.h>
#include <MCVeltrane_900/ScoreValueProbabilitySet.h>
#include <MCVeltrane_900/ScoreValueRange.h>
#include <MCVeltrane_900/ScoreVarStats.h>
#include <MCVeltrane_900/ScoreVersionInfo.h>

#include <gtest/gtest.h>

// Plug-ins call these interfaces by their places in the virtual table; the two destructors stand first.
namespace MCVeltrane_900 {
namespace {

using std::string;
using veltrane::tests::ExpectInOrder;

TEST(VirtualOrder, ScoreValue) {
    using T = ScoreValue;
    ExpectInOrder(&T::SetValue, &T::GetValue, &T::Clone, &T::operator==, &T::Equal, &T::operator>, &T::operator<,
                  &T::operator<=, &T::operator>=, &T::IsSystemMissingValue, &T::GetInt, &T::GetDouble, &T::GetString,
                  &T::GetType);
}

TEST(VirtualOrder, ScoreValueRange) {
    using T = ScoreValueRange;
    ExpectInOrder(&T::operator==, &T::Clone, &T::SetMin, &T::SetMax,
                  static_cast<bool (T::*)(double) const>(&T::IsInRange),
                  static_cast<bool (T::*)(const ScoreValue*) const>(&T::IsInRange), &T::GetMin, &T::GetMax,
                  &T::GetHighEnd, &T::GetLowEnd, &T::Display);
}

TEST(VirtualOrder, ScoreMissingValueSet) {
    using T = ScoreMissingValueSet;
    ExpectInOrder(&T::Clone, &T::Add, &T::Remove, &T::Size, &T::Contains, &T::GetMissingValues, &T::Display);
}

TEST(VirtualOrder, ScoreValueLabel) {
    using T = ScoreValueLabel;
    ExpectInOrder(&T::SetValueLabel, &T::SetLabel, &T::Clone, &T::operator==, &T::operator>, &T::operator<,
                  &T::operator<=, &T::operator>=, &T::GetLabel, &T::GetValue, &T::Display);
}

TEST(VirtualOrder, ScoreValueLabelSet) {
    using T = ScoreValueLabelSet;
    ExpectInOrder(&T::Clone, &T::Add, &T::Remove, &T::Size, &T::GetAllValueLabels, &T::GetLabelOfValue, &T::Contains,
                  &T::Display);
}

TEST(VirtualOrder, ScoreValueProbability) {
    using T = ScoreValueProbability;
    ExpectInOrder(&T::SetValueProbability, &T::SetProbability, &T::Clone, &T::operator==, &T::operator>, &T::operator<,
                  &T::operator<=, &T::operator>=, &T::GetProbability, &T::GetValue, &T::Display);
}

TEST(VirtualOrder, ScoreValueProbabilitySet) {
    using T = ScoreValueProbabilitySet;
    ExpectInOrder(&T::Clone, &T::Add, &T::Remove, &T::Size, &T::GetAllValueProbabilities, &T::GetProbabilityOfValue,
                  &T::Contains, &T::Display);
}

TEST(VirtualOrder, ScoreVarStats) {
    using T = ScoreVarStats;
    ExpectInOrder(&T::Clone, &T::SetMin, &T::SetMax, &T::SetStddev, &T::SetMean, &T::SetMissingReplacement, &T::GetMin,
                  &T::GetMax, &T::GetStddev, &T::GetMean, &T::GetMissingReplacement);
}

TEST(VirtualOrder, ScoreVersionInfo) {
    using T = ScoreVersionInfo;
    ExpectInOrder(&T::SetVersionInfo, &T::Clone, &T::operator==, &T::GetVersionInfo);
}

TEST(VirtualOrder, ScoreDictVar) {
    using T = ScoreDictVar;
    ExpectInOrder(
        &T::Clone, &T::operator==, &T::IsMissingValue, &T::IsValidValue, &T::SetName, &T::SetLabel, &T::SetVarType,
        &T::SetMLevel, &T::SetFormat, &T::SetDecimal, &T::SetWidth, &T::GetName, &T::GetLabel, &T::GetVarType,
        &T::GetMLevel, &T::GetDecimal, &T::GetWidth, &T::GetVarStats, &T::SetVarStats, &T::GetValueLabels,
        &T::GetLabelOfValue, &T::GetMissingValues, &T::SetMissingValues, &T::SetValueLabels, &T::ToMyValue, &T::Display,
        &T::GetNumberOfCats, &T::SetValueIndex, &T::SetEncodedValueIndex, &T::GetValueIndex, &T::GetEncodedValueIndex,
        &T::SetNoSpaceTrim, &T::GetNoSpaceTrim, &T::SetEmptyStringOK, &T::GetEmptyStringOK, &T::GetXMeasure,
        &T::SetXMeasure, &T::SetFlagVariable, &T::IsFlagVariable, &T::SetOutlierHandleMethod,
        &T::GetOutlierHandleMethod, &T::IsDerivedVariable, &T::SetDateTimeType, &T::GetDateTimeType, &T::SetDefValue,
        &T::GetDefValue, &T::SetValueProbabilities, &T::GetValueProbabilities,
        static_cast<ScoreEncoder* (T::*)()>(&T::GetEncoder),
        static_cast<const ScoreEncoder* (T::*)() const>(&T::GetEncoder), &T::SetEncoder, &T::SetEmptyCateValues,
        &T::IsEmptyCateValues, &T::AddScoreValueLabel, &T::SetNumericDataType, &T::GetNumericDataType,
        &T::IsUsageTypeEnable, &T::SetUsageType, &T::SetFalgTypeTrueValue, &T::GetFalgTypeTrueValue);
}

TEST(VirtualOrder, ScoreDictionary) {
    using T = ScoreDictionary;
    ExpectInOrder(&T::Clone, static_cast<bool (T::*)(const ScoreDictionary*)>(&T::AddVar),
                  static_cast<bool (T::*)(const string&, ScoreDictVar*)>(&T::AddVar), &T::RemoveVar,
                  static_cast<ScoreDictVar* (T::*)(const string&)>(&T::GetVar),
                  static_cast<const ScoreDictVar* (T::*)(const string&) const>(&T::GetVar), &T::Size,
                  &T::GetScoreDictVars, &T::GetVarNames, &T::Display);
}

TEST(VirtualOrder, ScoreResultField) {
    using T = ScoreResultField;
    ExpectInOrder(&T::SetMapResultValue, &T::GetMapResultValue, &T::GetResultValue,
                  static_cast<bool (T::*)(const string&, const ScoreValue*)>(&T::SetResultValue),
                  static_cast<bool (T::*)(const string&, const string&)>(&T::SetResultValue),
                  static_cast<bool (T::*)(const string&, double)>(&T::SetResultValue), &T::GetResultType,
                  &T::AddResultField, &T::GetResultFields, &T::GetResultSize);
}

TEST(VirtualOrder, ScoreEncoder) {
    using T = ScoreEncoder;
    ExpectInOrder(&T::GetEncoderType, &T::GetNumberOfCategories, static_cast<int (T::*)(const ScoreValue*)>(&T::Encode),
                  static_cast<int (T::*)(const string&)>(&T::Encode),
                  static_cast<int (T::*)(const string&) const>(&T::EncodeConst),
                  static_cast<int (T::*)(const ScoreValue*) const>(&T::EncodeConst), &T::Decode, &T::DecodeNum,
                  &T::Clone, &T::SetValueLabels, &T::SetValueLabel, &T::GetValueLabels, &T::Display);
}

TEST(VirtualOrder, ScoreCaseRecord) {
    using T = ScoreCaseRecord;
    ExpectInOrder(&T::Add, static_cast<bool (T::*)(int, const string&)>(&T::SetValue),
                  static_cast<bool (T::*)(const string&, const string&)>(&T::SetValue),
                  static_cast<bool (T::*)(int, double, ScoreDictVar::DateTimeType)>(&T::SetValue),
                  static_cast<bool (T::*)(const string&, double, ScoreDictVar::DateTimeType)>(&T::SetValue),
                  static_cast<bool (T::*)(int, double)>(&T::SetValue),
                  static_cast<bool (T::*)(const string&, double)>(&T::SetValue),
                  static_cast<bool (T::*)(int)>(&T::SetMissingValue),
                  static_cast<bool (T::*)(const string&)>(&T::SetMissingValue), &T::Remove,
                  static_cast<const ScoreValue* (T::*)(int) const>(&T::Get),
                  static_cast<const ScoreValue* (T::*)(const string&) const>(&T::Get),
                  static_cast<void (T::*)(const std::vector<string>&)>(&T::SetUpNameIndexMap),
                  static_cast<void (T::*)(const std::vector<ScoreDictVar*>&)>(&T::SetUpNameIndexMap), &T::HasMap,
                  &T::GetIndex, &T::Size, &T::GetVarNames, &T::GetAllValues, &T::Display);
}

} // namespace
} // namespace MCVeltrane_900
