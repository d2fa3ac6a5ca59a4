#include "data/sets/counted_values.h"

#include <MCVeltrane_900/DictVar.h>
#include <MCVeltrane_900/MissingValueSet.h>
#include <MCVeltrane_900/Range.h>
#include <MCVeltrane_900/ScoreEncoder.h>
#include <MCVeltrane_900/ValueLabelSet.h>
#include <MCVeltrane_900/ValueLbl.h>

#include <gtest/gtest.h>

namespace MCVeltrane_900 {
namespace {

/// A variable whose missing ranges are the single values 1 and "gone", with a label for 1 when asked for.
DictVar MakeVar(ScoreDictVar::VariableType type) {
    DictVar var("x", type);
    auto* missing = new MissingValueSet;
    missing->Add(new Range(new NumericValue(1.0)));
    missing->Add(new Range(new StringValue("gone")));
    missing->Add(new Range(new DateTimeValue(5.0, DateTimeValue::VAL_TIME)));
    var.SetMissingValues(missing);
    return var;
}

const NumericValue kOne(1.0);
const NumericValue kTwo(2.0);
const NumericValue kThree(3.0);
const NumericValue kNone;
const StringValue kGone("gone ");
const StringValue kHere("here");
const DateTimeValue kFive(5.0, DateTimeValue::VAL_TIME);

TEST(DictVarIsMissing, NullIsMissing) {
    for (const auto type : {ScoreDictVar::kNUMERIC_VAR, ScoreDictVar::STRING_VAR, ScoreDictVar::DATETIME_VAR}) {
        EXPECT_TRUE(DictVar("x", type).IsMissingValue(nullptr));
        EXPECT_FALSE(DictVar("x", type).IsValidValue(nullptr));
    }
}

TEST(DictVarIsMissing, SystemMissingUnlessTheVariableIsAString) {
    EXPECT_TRUE(DictVar("x", ScoreDictVar::kNUMERIC_VAR).IsMissingValue(&kNone));
    EXPECT_TRUE(DictVar("x", ScoreDictVar::DATETIME_VAR).IsMissingValue(&kNone));
    EXPECT_FALSE(DictVar("x", ScoreDictVar::STRING_VAR).IsMissingValue(&kNone));
}

TEST(DictVarIsMissing, NotWithoutAMissingSet) {
    EXPECT_FALSE(DictVar("x", ScoreDictVar::kNUMERIC_VAR).IsMissingValue(&kOne));
    EXPECT_FALSE(DictVar("x", ScoreDictVar::STRING_VAR).IsMissingValue(&kGone));
}

TEST(DictVarIsMissing, ByTheRangesInTurn) {
    const DictVar number = MakeVar(ScoreDictVar::kNUMERIC_VAR);
    EXPECT_TRUE(number.IsMissingValue(&kOne));
    EXPECT_FALSE(number.IsMissingValue(&kTwo));
    const DictVar text = MakeVar(ScoreDictVar::STRING_VAR);
    EXPECT_TRUE(text.IsMissingValue(&kGone));
    EXPECT_FALSE(text.IsMissingValue(&kHere));
    const DictVar date = MakeVar(ScoreDictVar::DATETIME_VAR);
    EXPECT_TRUE(date.IsMissingValue(&kFive));
}

TEST(DictVarIsMissing, LabelRescuesANumberInAMissingRange) {
    DictVar var = MakeVar(ScoreDictVar::kNUMERIC_VAR);
    ASSERT_TRUE(var.AddScoreValueLabel(new NumericValue(7.0), "seven"));
    EXPECT_TRUE(var.IsMissingValue(&kOne));
    ASSERT_TRUE(var.AddScoreValueLabel(new NumericValue(1.0), "one"));
    EXPECT_FALSE(var.IsMissingValue(&kOne));
    EXPECT_TRUE(var.IsMissingValue(&kNone));
}

TEST(DictVarIsMissing, LabelRescuesADateInAMissingRange) {
    DictVar var = MakeVar(ScoreDictVar::DATETIME_VAR);
    ASSERT_TRUE(var.AddScoreValueLabel(new DateTimeValue(5.0, DateTimeValue::VAL_TIME), "five"));
    EXPECT_FALSE(var.IsMissingValue(&kFive));
}

TEST(DictVarIsMissing, LabelDoesNotRescueAString) {
    DictVar var = MakeVar(ScoreDictVar::STRING_VAR);
    ASSERT_TRUE(var.AddScoreValueLabel(new StringValue("gone"), "gone"));
    EXPECT_TRUE(var.IsMissingValue(&kGone));
}

TEST(DictVarIsMissing, LabelDoesNotRescueInAStringVariableThatIsGivenANumber) {
    DictVar var = MakeVar(ScoreDictVar::STRING_VAR);
    ASSERT_TRUE(var.AddScoreValueLabel(new NumericValue(1.0), "one"));
    EXPECT_TRUE(var.IsMissingValue(&kOne));
}

TEST(DictVarIsMissing, VariableOfAnotherTypeIsMissingByNothingButRanges) {
    DictVar var = MakeVar(static_cast<ScoreDictVar::VariableType>(3));
    EXPECT_FALSE(var.IsMissingValue(&kNone));
    EXPECT_TRUE(var.IsMissingValue(&kOne));
}

/// A host's own set that answers with a range of its own.
class HostMissingSet : public MissingValueSet {
public:
    std::vector<const ScoreValueRange*> GetMissingValues() const override { return {&fRange}; }

private:
    Range fRange{2.0, 2.0, true, true};
};

TEST(DictVarIsMissing, AsksAForeignSetThroughItsInterface) {
    DictVar var("x", ScoreDictVar::kNUMERIC_VAR);
    var.SetMissingValues(new HostMissingSet);
    EXPECT_TRUE(var.IsMissingValue(&kTwo));
    EXPECT_FALSE(var.IsMissingValue(&kOne));
}

/// A host's own label set with an empty entry in front.
class HostLabelSet : public ValueLabelSet {
public:
    HostLabelSet() : fAll{nullptr, &fBare, &fOne} {}
    const std::vector<ScoreValueLabel*>& GetAllValueLabels() const override { return fAll; }

private:
    ValueLbl fBare;
    ValueLbl fOne{new NumericValue(1.0), "one"};
    std::vector<ScoreValueLabel*> fAll;
};

TEST(DictVarIsMissing, NullLabelsAreSteppedOver) {
    DictVar var = MakeVar(ScoreDictVar::kNUMERIC_VAR);
    var.SetValueLabels(new HostLabelSet);
    EXPECT_FALSE(var.IsMissingValue(&kOne));
    var.SetMLevel(ScoreDictVar::LEVEL_NOMINAL);
    EXPECT_TRUE(var.IsValidValue(&kOne));
    EXPECT_FALSE(var.IsValidValue(&kTwo));
}

TEST(DictVarIsValid, CategoriesDecideOnACategoricalVariable) {
    for (const auto level : {ScoreDictVar::LEVEL_NOMINAL, ScoreDictVar::LEVEL_ORDINAL}) {
        DictVar var("x", ScoreDictVar::kNUMERIC_VAR);
        var.SetMLevel(level);
        ASSERT_TRUE(var.AddScoreValueLabel(new NumericValue(1.0), "one"));
        ASSERT_TRUE(var.AddScoreValueLabel(new NumericValue(2.0), "two"));
        EXPECT_TRUE(var.IsValidValue(&kOne));
        EXPECT_TRUE(var.IsValidValue(&kTwo));
        EXPECT_FALSE(var.IsValidValue(&kThree));
    }
}

TEST(DictVarIsValid, CategoriesDoNotDecideOnAContinuousVariable) {
    DictVar var("x", ScoreDictVar::kNUMERIC_VAR);
    ASSERT_TRUE(var.AddScoreValueLabel(new NumericValue(1.0), "one"));
    ASSERT_TRUE(var.AddScoreValueLabel(new NumericValue(2.0), "two"));
    EXPECT_TRUE(var.IsValidValue(&kThree));
    // With a label set not even the kind of the value counts.
    EXPECT_TRUE(var.IsValidValue(&kHere));
}

TEST(DictVarIsValid, MissingIsNotValid) {
    DictVar var = MakeVar(ScoreDictVar::kNUMERIC_VAR);
    EXPECT_FALSE(var.IsValidValue(&kOne));
    EXPECT_FALSE(var.IsValidValue(&kNone));
    EXPECT_TRUE(var.IsValidValue(&kTwo));
}

TEST(DictVarIsValid, NumericVariableWithoutLabelsTakesNumbersAndDates) {
    DictVar var("x", ScoreDictVar::kNUMERIC_VAR);
    EXPECT_TRUE(var.IsValidValue(&kOne));
    EXPECT_TRUE(var.IsValidValue(&kFive));
    EXPECT_FALSE(var.IsValidValue(&kHere));
    var.SetMLevel(ScoreDictVar::LEVEL_NOMINAL);
    EXPECT_FALSE(var.IsValidValue(&kHere));
}

TEST(DictVarIsValid, OtherVariablesWithoutLabelsTakeAnything) {
    EXPECT_TRUE(DictVar("x", ScoreDictVar::STRING_VAR).IsValidValue(&kOne));
    EXPECT_TRUE(DictVar("x", ScoreDictVar::STRING_VAR).IsValidValue(&kHere));
    EXPECT_TRUE(DictVar("x", ScoreDictVar::DATETIME_VAR).IsValidValue(&kHere));
}

TEST(DictVarIsValid, StringCategoriesFollowTheVariablesBlankRules) {
    DictVar var("x", ScoreDictVar::STRING_VAR);
    var.SetMLevel(ScoreDictVar::LEVEL_NOMINAL);
    ASSERT_TRUE(var.AddScoreValueLabel(new StringValue("here"), "here"));
    ASSERT_TRUE(var.AddScoreValueLabel(new StringValue(" "), "blank"));
    const StringValue trailing("here  ");
    const StringValue empty("");
    EXPECT_TRUE(var.IsValidValue(&trailing));
    EXPECT_TRUE(var.IsValidValue(&empty));
    EXPECT_FALSE(var.IsValidValue(&kOne));
    var.SetEmptyStringOK(true);
    EXPECT_FALSE(var.IsValidValue(&empty));
    var.SetNoSpaceTrim(true);
    EXPECT_FALSE(var.IsValidValue(&trailing));
    EXPECT_TRUE(var.IsValidValue(&kHere));
}

/// A variable for which 2 is missing and blanks count.
class HostVar : public DictVar {
public:
    using DictVar::DictVar;
    bool IsMissingValue(const ScoreValue* value) const override { return *value == kTwo; }
    bool GetNoSpaceTrim() const override { return true; }
};

TEST(DictVarIsValid, AsksThroughTheVirtualOperations) {
    HostVar number("x", ScoreDictVar::kNUMERIC_VAR);
    EXPECT_FALSE(number.IsValidValue(&kTwo));
    EXPECT_TRUE(number.IsValidValue(&kNone));
    HostVar text("x", ScoreDictVar::STRING_VAR);
    text.SetMLevel(ScoreDictVar::LEVEL_NOMINAL);
    ASSERT_TRUE(text.AddScoreValueLabel(new StringValue("here "), "here"));
    EXPECT_FALSE(text.IsValidValue(&kHere));
}

} // namespace
} // namespace MCVeltrane_900
