#include "data/sets/counted_values.h"

#include <MCVeltrane_900/DictVar.h>
#include <MCVeltrane_900/MissingValueSet.h>
#include <MCVeltrane_900/Range.h>
#include <MCVeltrane_900/ResultVar.h>
#include <MCVeltrane_900/ScoreEncoder.h>
#include <MCVeltrane_900/ValueLabelSet.h>
#include <MCVeltrane_900/ValueLbl.h>
#include <MCVeltrane_900/ValueProbabilitySet.h>
#include <MCVeltrane_900/VarStats.h>

#include <gtest/gtest.h>

#include <memory>

namespace MCVeltrane_900 {
namespace {

using namespace veltrane::tests;

TEST(DictVarNumbers, OfTheEnumerations) {
    EXPECT_EQ(ScoreDictVar::kNUMERIC_VAR, 0);
    EXPECT_EQ(ScoreDictVar::STRING_VAR, 1);
    EXPECT_EQ(ScoreDictVar::DATETIME_VAR, 4);
    EXPECT_EQ(ScoreDictVar::LEVEL_CONTINUOUS, 0);
    EXPECT_EQ(ScoreDictVar::LEVEL_ORDINAL, 1);
    EXPECT_EQ(ScoreDictVar::LEVEL_NOMINAL, 2);
    EXPECT_EQ(ScoreDictVar::NUM_UNSPECIFIED, 0);
    EXPECT_EQ(ScoreDictVar::NUM_INTEGER, 1);
    EXPECT_EQ(ScoreDictVar::NUM_DOUBLE, 2);
    EXPECT_EQ(ScoreDictVar::OUTLIER_AS_IS, 0);
    EXPECT_EQ(ScoreDictVar::OUTLIER_AS_MISSING_VALUES, 1);
    EXPECT_EQ(ScoreDictVar::OUTLIER_AS_EXTREME_VALUES, 2);
}

TEST(DictVarNumbers, OfTheDateTimeTypes) {
    const ScoreDictVar::DateTimeType inOrder[] = {
        ScoreDictVar::DT_NONE,
        ScoreDictVar::DT_DATE,
        ScoreDictVar::DT_TIME,
        ScoreDictVar::DT_DATETIME,
        ScoreDictVar::DT_DAYS_SINCE_0,
        ScoreDictVar::DT_DAYS_SINCE_1960,
        ScoreDictVar::DT_DAYS_SINCE_1970,
        ScoreDictVar::DT_DAYS_SINCE_1980,
        ScoreDictVar::DT_TIME_SECONDS,
        ScoreDictVar::DT_SECONDS_SINCE_0,
        ScoreDictVar::DT_SECONDS_SINCE_1960,
        ScoreDictVar::DT_SECONDS_SINCE_1970,
        ScoreDictVar::DT_SECONDS_SINCE_1980,
    };
    int number = 0;
    for (const ScoreDictVar::DateTimeType type : inOrder) {
        EXPECT_EQ(type, number++);
    }
}

TEST(DictVarNumbers, OfTheResultFeatures) {
    const ScoreResultField::ResultFeature inOrder[] = {
        ScoreResultField::RF_NONE,
        ScoreResultField::RF_PREDICTED_VALUE,
        ScoreResultField::RF_PREDICTED_DISPLAY_VALUE,
        ScoreResultField::RF_PROBABILITY,
        ScoreResultField::RF_RESIDUAL,
        ScoreResultField::RF_STANDARD_ERROR,
        ScoreResultField::RF_CLUSTER_ID,
        ScoreResultField::RF_CLUSTER_AFFINITY,
        ScoreResultField::RF_ENTITY_ID,
        ScoreResultField::RF_ENTITY_AFFINITY,
        ScoreResultField::RF_WARNING,
        ScoreResultField::RF_RULE_VALUE,
        ScoreResultField::RF_STANDARD_DEVIATION,
    };
    int number = 0;
    for (const ScoreResultField::ResultFeature feature : inOrder) {
        EXPECT_EQ(feature, number++);
    }
}

TEST(DictVar, Defaults) {
    DictVar var("age", ScoreDictVar::STRING_VAR);
    EXPECT_EQ(var.GetName(), "age");
    EXPECT_EQ(var.GetLabel(), "");
    EXPECT_EQ(var.GetVarType(), ScoreDictVar::STRING_VAR);
    EXPECT_EQ(var.GetDateTimeType(), ScoreDictVar::DT_NONE);
    EXPECT_EQ(var.GetNumericDataType(), ScoreDictVar::NUM_UNSPECIFIED);
    EXPECT_EQ(var.GetMLevel(), ScoreDictVar::LEVEL_CONTINUOUS);
    EXPECT_EQ(var.GetDecimal(), -1);
    EXPECT_EQ(var.GetWidth(), -1);
    EXPECT_EQ(var.GetMissingValues(), nullptr);
    EXPECT_EQ(var.GetValueLabels(), nullptr);
    EXPECT_EQ(var.GetVarStats(), nullptr);
    EXPECT_EQ(var.GetValueIndex(), -1);
    EXPECT_EQ(var.GetEncodedValueIndex(), -1);
    EXPECT_FALSE(var.GetNoSpaceTrim());
    EXPECT_FALSE(var.GetEmptyStringOK());
    EXPECT_EQ(var.GetXMeasure(), "");
    EXPECT_FALSE(var.IsFlagVariable());
    EXPECT_TRUE(var.IsUsageTypeEnable());
    EXPECT_EQ(var.GetOutlierHandleMethod(), 0);
    EXPECT_EQ(var.GetDefValue(), nullptr);
    EXPECT_EQ(var.GetValueProbabilities(), nullptr);
    EXPECT_EQ(var.GetEncoder(), nullptr);
    EXPECT_EQ(static_cast<const DictVar&>(var).GetEncoder(), nullptr);
    EXPECT_FALSE(var.IsEmptyCateValues());
    EXPECT_EQ(var.GetFalgTypeTrueValue(), "");
    EXPECT_FALSE(var.IsDerivedVariable());
}

TEST(DictVar, SettersStore) {
    DictVar var("x", ScoreDictVar::kNUMERIC_VAR);
    var.SetLabel("the x");
    var.SetVarType(ScoreDictVar::DATETIME_VAR);
    var.SetMLevel(ScoreDictVar::LEVEL_ORDINAL);
    var.SetFormat(2, 8);
    EXPECT_EQ(var.GetLabel(), "the x");
    EXPECT_EQ(var.GetVarType(), ScoreDictVar::DATETIME_VAR);
    EXPECT_EQ(var.GetMLevel(), ScoreDictVar::LEVEL_ORDINAL);
    EXPECT_EQ(var.GetDecimal(), 2);
    EXPECT_EQ(var.GetWidth(), 8);
    var.SetDecimal(3);
    var.SetWidth(9);
    EXPECT_EQ(var.GetDecimal(), 3);
    EXPECT_EQ(var.GetWidth(), 9);
    var.SetValueIndex(4);
    var.SetEncodedValueIndex(5);
    EXPECT_EQ(var.GetValueIndex(), 4);
    EXPECT_EQ(var.GetEncodedValueIndex(), 5);
    var.SetNoSpaceTrim(true);
    EXPECT_TRUE(var.GetNoSpaceTrim());
    EXPECT_FALSE(var.GetEmptyStringOK());
    var.SetEmptyStringOK(true);
    EXPECT_TRUE(var.GetEmptyStringOK());
    var.SetXMeasure("split");
    EXPECT_EQ(var.GetXMeasure(), "split");
    var.SetOutlierHandleMethod(ScoreDictVar::OUTLIER_AS_EXTREME_VALUES);
    EXPECT_EQ(var.GetOutlierHandleMethod(), 2);
    var.SetDateTimeType(ScoreDictVar::DT_TIME);
    EXPECT_EQ(var.GetDateTimeType(), ScoreDictVar::DT_TIME);
    var.SetEmptyCateValues(true);
    EXPECT_TRUE(var.IsEmptyCateValues());
    var.SetNumericDataType(ScoreDictVar::NUM_DOUBLE);
    EXPECT_EQ(var.GetNumericDataType(), ScoreDictVar::NUM_DOUBLE);
    var.SetUsageType(false);
    EXPECT_FALSE(var.IsUsageTypeEnable());
    var.SetFalgTypeTrueValue("T");
    EXPECT_EQ(var.GetFalgTypeTrueValue(), "T");
}

TEST(DictVar, SetNameRefusesAnEmptyNameAndKeepsTheOld) {
    DictVar var("x", ScoreDictVar::kNUMERIC_VAR);
    EXPECT_FALSE(var.SetName(""));
    EXPECT_EQ(var.GetName(), "x");
    EXPECT_TRUE(var.SetName("y"));
    EXPECT_EQ(var.GetName(), "y");
}

TEST(DictVar, SetFlagVariableOnAContinuousVariableIsRefused) {
    DictVar var("x", ScoreDictVar::kNUMERIC_VAR);
    EXPECT_FALSE(var.SetFlagVariable(true));
    EXPECT_FALSE(var.IsFlagVariable());
}

TEST(DictVar, SetFlagVariableStoresOnTheOtherLevels) {
    for (const auto level : {ScoreDictVar::LEVEL_ORDINAL, ScoreDictVar::LEVEL_NOMINAL}) {
        DictVar var("x", ScoreDictVar::kNUMERIC_VAR);
        var.SetMLevel(level);
        EXPECT_TRUE(var.SetFlagVariable(true));
        EXPECT_TRUE(var.IsFlagVariable());
        EXPECT_TRUE(var.SetFlagVariable(false));
        EXPECT_FALSE(var.IsFlagVariable());
        EXPECT_TRUE(var.SetFlagVariable(true));
        var.SetMLevel(ScoreDictVar::LEVEL_CONTINUOUS);
        EXPECT_FALSE(var.SetFlagVariable(false));
        EXPECT_TRUE(var.IsFlagVariable());
    }
}

TEST(DictVar, EqualityIsThatOfTheNames) {
    const DictVar var("x", ScoreDictVar::kNUMERIC_VAR);
    EXPECT_TRUE(var == DictVar("x", ScoreDictVar::STRING_VAR));
    EXPECT_FALSE(var == DictVar("X", ScoreDictVar::kNUMERIC_VAR));
}

TEST(DictVar, IsStringByItsStorage) {
    EXPECT_TRUE(DictVar("x", ScoreDictVar::STRING_VAR).IsString());
    EXPECT_FALSE(DictVar("x", ScoreDictVar::kNUMERIC_VAR).IsString());
    EXPECT_FALSE(DictVar("x", ScoreDictVar::DATETIME_VAR).IsString());
}

TEST(DictVar, NumberOfCategories) {
    DictVar var("x", ScoreDictVar::kNUMERIC_VAR);
    ASSERT_TRUE(var.AddScoreValueLabel(new NumericValue(1.0), "one"));
    ASSERT_TRUE(var.AddScoreValueLabel(new NumericValue(2.0), "two"));
    EXPECT_EQ(var.GetNumberOfCats(), 1);
    var.SetMLevel(ScoreDictVar::LEVEL_ORDINAL);
    EXPECT_EQ(var.GetNumberOfCats(), 2);
    DictVar bare("y", ScoreDictVar::kNUMERIC_VAR);
    bare.SetMLevel(ScoreDictVar::LEVEL_NOMINAL);
    EXPECT_EQ(bare.GetNumberOfCats(), 0);
}

TEST(DictVar, LabelOfValue) {
    DictVar var("x", ScoreDictVar::kNUMERIC_VAR);
    const NumericValue one(1.0);
    EXPECT_EQ(var.GetLabelOfValue(&one), "");
    ASSERT_TRUE(var.AddScoreValueLabel(new NumericValue(1.0), "one"));
    EXPECT_EQ(var.GetLabelOfValue(&one), "one");
    EXPECT_EQ(var.GetLabelOfValue(nullptr), "");
}

TEST(DictVarToMyValue, ByTheStorage) {
    std::unique_ptr<ScoreValue> number(DictVar("x", ScoreDictVar::kNUMERIC_VAR).ToMyValue("1.5 m"));
    EXPECT_EQ(number->GetType(), ScoreValue::NUMERIC_VALUE);
    EXPECT_EQ(number->GetDouble(), 1.5);
    std::unique_ptr<ScoreValue> missing(DictVar("x", ScoreDictVar::kNUMERIC_VAR).ToMyValue("none"));
    EXPECT_TRUE(missing->IsSystemMissingValue());
    std::unique_ptr<ScoreValue> text(DictVar("x", ScoreDictVar::STRING_VAR).ToMyValue("1.5 m"));
    EXPECT_EQ(text->GetType(), ScoreValue::STRING_VALUE);
    EXPECT_EQ(text->GetString(), "1.5 m");
    EXPECT_EQ(DictVar("x", ScoreDictVar::DATETIME_VAR).ToMyValue("2000-01-01"), nullptr);
    EXPECT_EQ(DictVar("x", static_cast<ScoreDictVar::VariableType>(3)).ToMyValue("1"), nullptr);
}

TEST(DictVarAddScoreValueLabel, MakesTheSetAndTakesTheValue) {
    int deleted = 0;
    {
        DictVar var("x", ScoreDictVar::kNUMERIC_VAR);
        EXPECT_TRUE(var.AddScoreValueLabel(new CountedNumber(1.0, deleted), "one"));
        ASSERT_NE(var.GetValueLabels(), nullptr);
        EXPECT_EQ(var.GetValueLabels()->Size(), 1);
        EXPECT_EQ(deleted, 0);
    }
    EXPECT_EQ(deleted, 1);
}

TEST(DictVarAddScoreValueLabel, RefusesNullAndAnEmptyLabelWithoutConsumingTheValue) {
    int deleted = 0;
    CountedNumber value(1.0, deleted);
    DictVar var("x", ScoreDictVar::kNUMERIC_VAR);
    EXPECT_FALSE(var.AddScoreValueLabel(nullptr, "one"));
    EXPECT_FALSE(var.AddScoreValueLabel(&value, ""));
    EXPECT_EQ(deleted, 0);
    ASSERT_NE(var.GetValueLabels(), nullptr);
    EXPECT_EQ(var.GetValueLabels()->Size(), 0);
}

TEST(DictVarAddScoreValueLabel, DeletesAValueThatIsKnown) {
    int deleted = 0;
    DictVar var("x", ScoreDictVar::kNUMERIC_VAR);
    ASSERT_TRUE(var.AddScoreValueLabel(new NumericValue(1.0), "one"));
    EXPECT_FALSE(var.AddScoreValueLabel(new CountedNumber(1.0 + 1e-15, deleted), "uno"));
    EXPECT_EQ(deleted, 1);
    EXPECT_EQ(var.GetValueLabels()->Size(), 1);
    const NumericValue one(1.0);
    EXPECT_EQ(var.GetLabelOfValue(&one), "one");
}

TEST(DictVarDisplay, OfAPlainVariable) {
    DictVar var("x", ScoreDictVar::kNUMERIC_VAR);
    var.SetLabel("the x");
    EXPECT_EQ(Dump(var), "Start ScoreDictVar Display:\nVar Name = x; Var Lable = the x; Var Type = kNUMERIC_VAR; Var "
                         "level =  Continuous; \nEnd of ScoreDictVar Display.\n\n");
}

TEST(DictVarDisplay, OfSetsAndMeasure) {
    DictVar var("s", ScoreDictVar::STRING_VAR);
    var.SetMLevel(ScoreDictVar::LEVEL_NOMINAL);
    var.SetXMeasure("m");
    ASSERT_TRUE(var.AddScoreValueLabel(new StringValue("a"), "A"));
    auto* missing = new MissingValueSet;
    var.SetMissingValues(missing);
    ASSERT_TRUE(missing->Add(new Range(new StringValue("b"))));
    EXPECT_EQ(Dump(var),
              "Start ScoreDictVar Display:\nVar Name = s; Var Lable = ; Var Type = STRING_VAR; Var level =  Nominal; "
              "\nStart ScoreValueLabelSet Display:\nValue: a;  Label: A\nEnd of ScoreValueLabelSet Display.\n\n Begin "
              "MissingValueSet Display:\n  Start Range Display   \nMinValue: b;  MaxValue: b; High End included; lower "
              "End included\n End of Range Display\n\nEnd MissingValueSet Display.\nx-Measure: m\nEnd of ScoreDictVar "
              "Display.\n\n");
}

TEST(DictVarDisplay, OfOtherTypesAndLevels) {
    DictVar var("d", ScoreDictVar::DATETIME_VAR);
    var.SetMLevel(ScoreDictVar::LEVEL_ORDINAL);
    EXPECT_EQ(Dump(var), "Start ScoreDictVar Display:\nVar Name = d; Var Lable = ; Var level =  Ordinal; \nEnd of "
                         "ScoreDictVar Display.\n\n");
    var.SetMLevel(static_cast<ScoreDictVar::MeasureLevel>(7));
    EXPECT_EQ(Dump(var), "Start ScoreDictVar Display:\nVar Name = d; Var Lable = ; Var level = unknown;\nEnd of "
                         "ScoreDictVar Display.\n\n");
}

} // namespace
} // namespace MCVeltrane_900
