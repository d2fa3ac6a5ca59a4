#include "conditions.h"
#include "support/numbers.h"
#include "support/rows.h"

#include <MCVeltrane_900/SimplePredicate.h>

#include <gtest/gtest.h>

#include <memory>

using namespace veltrane::tests;

TEST(ScorePredicate, Numbers) {
    EXPECT_EQ(ScorePredicate::PRED_TRUE, 0);
    EXPECT_EQ(ScorePredicate::PRED_FALSE, 1);
    EXPECT_EQ(ScorePredicate::PRED_UNKNOWN, 2);
    EXPECT_EQ(ScorePredicate::PRED_SURROGATE_TRUE, 3);
    EXPECT_EQ(ScorePredicate::COMPOUND_PREDICATE, 0);
    EXPECT_EQ(ScorePredicate::SIMPLE_PREDICATE, 1);
    EXPECT_EQ(ScorePredicate::SET_PREDICATE, 2);
    EXPECT_EQ(ScorePredicate::TRUE_PREDICATE, 3);
    EXPECT_EQ(ScorePredicate::FALSE_PREDICATE, 4);
    EXPECT_EQ(ScorePredicate::BOOL_OR, 0);
    EXPECT_EQ(ScorePredicate::BOOL_AND, 1);
    EXPECT_EQ(ScorePredicate::BOOL_XOR, 2);
    EXPECT_EQ(ScorePredicate::BOOL_SURROGATE, 3);
}

TEST(SimplePredicate, FieldsAtFirst) {
    const SimplePredicate predicate;
    EXPECT_EQ(predicate.GetPredType(), ScorePredicate::SIMPLE_PREDICATE);
    EXPECT_EQ(predicate.GetSplit(), nullptr);
    EXPECT_FALSE(predicate.IsMissingValue());
    EXPECT_EQ(predicate.GetPredValueByDouble(), kMissing);
    EXPECT_EQ(predicate.GetPredValueByString(), "");
    EXPECT_EQ(predicate.GetPredicateOperator(), SimplePredicate::OP_EQUAL);
    EXPECT_FALSE(predicate.IsDerivedPredictor());
}

TEST(SimplePredicate, WithoutASplitIsUnknown) {
    const SimplePredicate predicate;
    const Case one(1.0);
    EXPECT_EQ(predicate.Evaluate({1.0}), kUnknown);
    EXPECT_EQ(predicate.Evaluate({}), kUnknown);
    EXPECT_EQ(predicate.Evaluate(&one, nullptr), kUnknown);
    EXPECT_EQ(predicate.Evaluate(nullptr, nullptr), kUnknown);
}

TEST(SimplePredicate, Display) {
    EXPECT_EQ(Dump(SimplePredicate()), "Simple Predicate: \n");
}

TEST(SimplePredicate, IsDerivedAsItsVariableIs) {
    Continuous x;
    const SimplePredicate predicate(new ScaleSplit(&x));
    EXPECT_FALSE(predicate.IsDerivedPredictor());
    x.Derived();
    EXPECT_TRUE(predicate.IsDerivedPredictor());
}

namespace {

struct OperatorRow {
    const char* name;
    const char* text;
    SimplePredicate::SimplePredOperator number;
    int value;
};

class SimpleOperator : public testing::TestWithParam<OperatorRow> {};

const OperatorRow kOperators[] = {
    {"Equal", "equal", SimplePredicate::OP_EQUAL, 0},
    {"NotEqual", "notEqual", SimplePredicate::OP_NOT_EQUAL, 1},
    {"LessThan", "lessThan", SimplePredicate::OP_LESS_THAN, 2},
    {"LessOrEqual", "lessOrEqual", SimplePredicate::OP_LESS_OR_EQUAL, 3},
    {"GreaterThan", "greaterThan", SimplePredicate::OP_GREATER_THAN, 4},
    {"GreaterOrEqual", "greaterOrEqual", SimplePredicate::OP_GREATER_OR_EQUAL, 5},
    {"IsMissing", "isMissing", SimplePredicate::OP_IS_MISSING, 6},
    {"IsNotMissing", "isNotMissing", SimplePredicate::OP_IS_NOT_MISSING, 7},
    {"OtherText", "xyz", SimplePredicate::OP_IS_NOT_MISSING, 7},
    {"OtherCase", "Equal", SimplePredicate::OP_IS_NOT_MISSING, 7},
    {"WithBlank", "equal ", SimplePredicate::OP_IS_NOT_MISSING, 7},
};

} // namespace

TEST_P(SimpleOperator, IsSetByItsText) {
    SimplePredicate predicate;
    predicate.SetPredicateOperator(GetParam().text);
    EXPECT_EQ(predicate.GetPredicateOperator(), GetParam().number);
    EXPECT_EQ(static_cast<int>(predicate.GetPredicateOperator()), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(SimplePredicate, SimpleOperator, testing::ValuesIn(kOperators), NameOfRow());

TEST(KeptSimplePredicateOperator, AnEmptyTextKeepsIt) {
    SimplePredicate predicate;
    predicate.SetPredicateOperator("lessThan");
    predicate.SetPredicateOperator("");
    EXPECT_EQ(predicate.GetPredicateOperator(), SimplePredicate::OP_LESS_THAN);
}

TEST(KeptSimplePredicateOperator, AnyOtherTextIsNotMissing) {
    SimplePredicate predicate;
    predicate.SetPredicateOperator("xyz");
    EXPECT_EQ(predicate.GetPredicateOperator(), SimplePredicate::OP_IS_NOT_MISSING);
}

TEST(SimplePredicateValue, OfANumericVariable) {
    const Continuous x;
    SimplePredicate predicate(new ScaleSplit(&x));
    predicate.SetPredicateValue("1.5");
    EXPECT_EQ(predicate.GetPredValueByString(), "1.5");
    EXPECT_EQ(predicate.GetPredValueByDouble(), 1.5);
}

TEST(SimplePredicateValue, OfANumericVariableThatDoesNotRead) {
    const Continuous x;
    SimplePredicate predicate(new ScaleSplit(&x));
    predicate.SetPredicateValue("1.5");
    predicate.SetPredicateValue("abc");
    EXPECT_EQ(predicate.GetPredValueByString(), "abc");
    EXPECT_EQ(predicate.GetPredValueByDouble(), kMissing);
}

TEST(SimplePredicateValue, OfATextVariable) {
    const Categorical x(kText);
    SimplePredicate predicate(new DiscreteSplit(&x));
    predicate.SetPredicateValue("2.5 metres");
    EXPECT_EQ(predicate.GetPredValueByDouble(), 2.5);
    predicate.SetPredicateValue("red");
    EXPECT_EQ(predicate.GetPredValueByDouble(), 0.0);
    EXPECT_EQ(predicate.GetPredValueByString(), "red");
}

TEST(SimplePredicateValue, OfADateTimeVariableKeepsTheNumber) {
    const DictVar date("d", ScoreDictVar::DATETIME_VAR);
    SimplePredicate predicate(new ScaleSplit(&date));
    predicate.SetPredicateValue("2001-01-01");
    EXPECT_EQ(predicate.GetPredValueByString(), "2001-01-01");
    EXPECT_EQ(predicate.GetPredValueByDouble(), kMissing);
}

TEST(SimplePredicateValue, OfAnEncodedVariableIsItsCode) {
    Categorical x(kText);
    x.Encoded({"red", "green"});
    SimplePredicate predicate(new DiscreteSplit(&x));
    predicate.SetPredicateValue("green ");
    EXPECT_EQ(predicate.GetPredValueByDouble(), 1.0);
    EXPECT_EQ(predicate.GetPredValueByString(), "green ");
}

TEST(SimplePredicateValue, IsLearnedByTheEncoder) {
    Categorical x(kText);
    x.Encoded({"red", "green"});
    SimplePredicate predicate(new DiscreteSplit(&x));
    predicate.SetPredicateValue("blue");
    EXPECT_EQ(predicate.GetPredValueByDouble(), 2.0);
    EXPECT_EQ(x.GetEncoder()->EncodeConst("blue"), 2);
}

TEST(SimplePredicateValue, WithoutASplitIsATextOnly) {
    SimplePredicate predicate;
    predicate.SetPredicateValue("5");
    EXPECT_EQ(predicate.GetPredValueByString(), "5");
    EXPECT_EQ(predicate.GetPredValueByDouble(), kMissing);
}

TEST(SimplePredicate, MissingFlag) {
    SimplePredicate predicate;
    const bool& flag = predicate.IsMissingValue();
    predicate.SetValueToMissing(true);
    EXPECT_TRUE(flag);
    predicate.SetValueToMissing(false);
    EXPECT_FALSE(flag);
}

TEST(SimplePredicate, OwnsItsSplit) {
    ExpectToOwnItsSplit<SimplePredicate>();
}

TEST(KeptSetSplit, OfASimplePredicateLeavesTheFormerSplit) {
    ExpectToLeaveTheFormerSplit<SimplePredicate>();
}

namespace {

/// A predicate with something in every field.
std::unique_ptr<SimplePredicate> Filled(const ScoreDictVar& var) {
    auto predicate = std::make_unique<SimplePredicate>(WithMissing(InRange(var, 1.0, 2.0), 0));
    predicate->SetPredicateValue("1.5");
    predicate->SetValueToMissing(true);
    predicate->SetPredicateOperator("greaterThan");
    return predicate;
}

void ExpectFilled(const SimplePredicate& predicate, const ScoreSplitVar* notThisSplit) {
    EXPECT_EQ(predicate.GetPredValueByString(), "1.5");
    EXPECT_EQ(predicate.GetPredValueByDouble(), 1.5);
    EXPECT_TRUE(predicate.IsMissingValue());
    EXPECT_EQ(predicate.GetPredicateOperator(), SimplePredicate::OP_GREATER_THAN);
    EXPECT_NE(predicate.GetSplit(), notThisSplit);
    EXPECT_EQ(Dump(*predicate.GetSplit()), Dump(*notThisSplit));
    EXPECT_EQ(predicate.Evaluate({1.5}), kTrue);
    EXPECT_EQ(predicate.Evaluate({2.5}), kFalse);
}

} // namespace

TEST(SimplePredicateCopy, HasEverything) {
    const Continuous x;
    const auto predicate = Filled(x);
    ExpectFilled(SimplePredicate(*predicate), predicate->GetSplit());
}

TEST(SimplePredicateCopy, CloneHasEverything) {
    const Continuous x;
    const auto predicate = Filled(x);
    const std::unique_ptr<ScorePredicate> clone(predicate->Clone());
    ASSERT_NE(dynamic_cast<SimplePredicate*>(clone.get()), nullptr);
    ExpectFilled(static_cast<SimplePredicate&>(*clone), predicate->GetSplit());
}

TEST(SimplePredicateCopy, AssignmentDeletesTheFormerSplit) {
    const Continuous x;
    const Categorical y(kText);
    int deleted = 0;
    auto* former = new DiscreteSplit(&y);
    former->PutSplit(new CountedText("a", deleted), 0);
    SimplePredicate target(former);
    const auto source = Filled(x);
    target = *source;
    EXPECT_EQ(deleted, 1);
    ExpectFilled(target, source->GetSplit());
}

TEST(SimplePredicateCopy, AssignmentOfOneWithoutASplit) {
    const Continuous x;
    SimplePredicate target(InRange(x, 1.0, 2.0));
    target = SimplePredicate();
    EXPECT_EQ(target.GetSplit(), nullptr);
}

TEST(SimplePredicateCopy, SelfAssignmentChangesNothing) {
    const Continuous x;
    const auto predicate = Filled(x);
    const ScoreSplitVar* split = predicate->GetSplit();
    const SimplePredicate& same = *predicate;
    *predicate = same;
    EXPECT_EQ(predicate->GetSplit(), split);
    EXPECT_EQ(predicate->Evaluate({1.5}), kTrue);
}

TEST(KeptPredicateCopy, ASplitOfCodesFindsNoChildInACopy) {
    Categorical x(kText);
    x.Encoded({"red", "green"});
    const SimplePredicate predicate(OfCodes(x, {1.0}));
    const SimplePredicate copy(predicate);
    const Case green("green");
    EXPECT_EQ(predicate.Evaluate({1.0}), kTrue);
    EXPECT_EQ(copy.Evaluate({1.0}), kFalse);
    EXPECT_EQ(predicate.Evaluate(&green, nullptr), kTrue);
    EXPECT_EQ(copy.Evaluate(&green, nullptr), kFalse);
}
