#include "conditions.h"

#include <MCVeltrane_900/SetPredicate.h>

#include <gtest/gtest.h>

#include <memory>

using namespace veltrane::tests;

using Numbers = std::vector<double>;

TEST(SetPredicate, FieldsAtFirst) {
    const SetPredicate predicate;
    EXPECT_EQ(predicate.GetPredType(), ScorePredicate::SET_PREDICATE);
    EXPECT_EQ(predicate.GetSplit(), nullptr);
    EXPECT_EQ(predicate.GetPredicateOperator(), SetPredicate::OP_IS_IN);
    EXPECT_TRUE(predicate.GetArrayData().empty());
    EXPECT_FALSE(predicate.IsDerivedPredictor());
}

TEST(SetPredicate, NumbersOfTheOperators) {
    EXPECT_EQ(SetPredicate::OP_IS_IN, 0);
    EXPECT_EQ(SetPredicate::OP_IS_NOT_IN, 1);
}

TEST(SetPredicate, WithoutASplitIsUnknown) {
    const SetPredicate predicate;
    const Case one(1.0);
    EXPECT_EQ(predicate.Evaluate({1.0}), kUnknown);
    EXPECT_EQ(predicate.Evaluate({}), kUnknown);
    EXPECT_EQ(predicate.Evaluate(&one, nullptr), kUnknown);
    EXPECT_EQ(predicate.Evaluate(nullptr, nullptr), kUnknown);
}

TEST(SetPredicate, Display) {
    EXPECT_EQ(Dump(SetPredicate()), "Set Predicate: \n");
}

TEST(SetPredicate, IsDerivedAsItsVariableIs) {
    Categorical x(kText);
    const SetPredicate predicate(new DiscreteSplit(&x));
    EXPECT_FALSE(predicate.IsDerivedPredictor());
    x.Derived();
    EXPECT_TRUE(predicate.IsDerivedPredictor());
}

TEST(SetPredicate, OperatorIsSetByItsText) {
    SetPredicate predicate;
    predicate.SetPredicateOperator("isNotIn");
    EXPECT_EQ(predicate.GetPredicateOperator(), SetPredicate::OP_IS_NOT_IN);
    predicate.SetPredicateOperator("isIn");
    EXPECT_EQ(predicate.GetPredicateOperator(), SetPredicate::OP_IS_IN);
}

TEST(KeptSetPredicateOperator, AnyOtherTextIsNotIn) {
    for (const char* text : {"", "xyz", "isin", "isIn "}) {
        SetPredicate predicate;
        predicate.SetPredicateOperator(text);
        EXPECT_EQ(predicate.GetPredicateOperator(), SetPredicate::OP_IS_NOT_IN) << text;
    }
}

TEST(SetPredicate, ArrayDataIsReplaced) {
    SetPredicate predicate;
    predicate.SetArrayData({1.0, 2.0});
    EXPECT_EQ(predicate.GetArrayData(), (Numbers{1.0, 2.0}));
    predicate.SetArrayData({3.0});
    EXPECT_EQ(predicate.GetArrayData(), (Numbers{3.0}));
}

TEST(KeptSetArrayData, AnEmptyVectorKeepsTheEarlierData) {
    SetPredicate predicate;
    predicate.SetArrayData({1.0, 2.0});
    predicate.SetArrayData({});
    EXPECT_EQ(predicate.GetArrayData(), (Numbers{1.0, 2.0}));
}

TEST(SetPredicate, InsideAndOutside) {
    Categorical x(kText);
    x.Categories({"red", "green", "blue"});
    const SetPredicate predicate(OfValues(x, {"red", "blue"}));
    EXPECT_EQ(predicate.Evaluate(std::make_unique<Case>("red").get(), nullptr), kTrue);
    EXPECT_EQ(predicate.Evaluate(std::make_unique<Case>("blue").get(), nullptr), kTrue);
    EXPECT_EQ(predicate.Evaluate(std::make_unique<Case>("green").get(), nullptr), kFalse);
}

// The split holds the complement, so the operator isn't applied a second time.
TEST(SetPredicate, TheOperatorDoesNotDecide) {
    Categorical x(kText);
    x.Categories({"red", "green"});
    SetPredicate predicate(OfValues(x, {"green"}));
    predicate.SetPredicateOperator("isNotIn");
    EXPECT_EQ(predicate.Evaluate(std::make_unique<Case>("green").get(), nullptr), kTrue);
    EXPECT_EQ(predicate.Evaluate(std::make_unique<Case>("red").get(), nullptr), kFalse);
    EXPECT_EQ(predicate.Evaluate(std::make_unique<Case>(nullptr).get(), nullptr), kUnknown);
}

TEST(KeptSetPredicateMissing, IsNeverTrue) {
    Categorical x(kText);
    x.Categories({"red"});
    const SetPredicate predicate(WithMissing(OfValues(x, {"red"}), 0));
    EXPECT_EQ(predicate.Evaluate(std::make_unique<Case>(nullptr).get(), nullptr), kUnknown);
    EXPECT_EQ(predicate.Evaluate(std::make_unique<Case>("mauve").get(), nullptr), kUnknown);
    EXPECT_EQ(predicate.Evaluate({-2.0}), kUnknown);
}

TEST(SetPredicate, OwnsItsSplit) {
    ExpectToOwnItsSplit<SetPredicate>();
}

TEST(KeptSetSplit, OfASetPredicateLeavesTheFormerSplit) {
    ExpectToLeaveTheFormerSplit<SetPredicate>();
}

namespace {

std::unique_ptr<SetPredicate> Filled(const ScoreDictVar& var) {
    auto predicate = std::make_unique<SetPredicate>(OfValues(var, {"red"}));
    predicate->SetArrayData({4.0, 5.0});
    predicate->SetPredicateOperator("isNotIn");
    return predicate;
}

} // namespace

TEST(KeptSetPredicateCopy, StartsWithAnEmptySet) {
    const Categorical x(kText);
    const auto predicate = Filled(x);
    const std::unique_ptr<ScorePredicate> clone(predicate->Clone());
    ASSERT_NE(dynamic_cast<SetPredicate*>(clone.get()), nullptr);
    const auto& copy = static_cast<SetPredicate&>(*clone);
    EXPECT_TRUE(copy.GetArrayData().empty());
    EXPECT_EQ(copy.GetPredicateOperator(), SetPredicate::OP_IS_NOT_IN);
    EXPECT_NE(copy.GetSplit(), predicate->GetSplit());
    EXPECT_EQ(Dump(*copy.GetSplit()), Dump(*predicate->GetSplit()));
    EXPECT_EQ(copy.Evaluate(std::make_unique<Case>("red").get(), nullptr), kTrue);
}

TEST(KeptSetPredicateCopy, OfOneWithoutASplitHasTheFirstOperator) {
    SetPredicate predicate;
    predicate.SetPredicateOperator("isNotIn");
    EXPECT_EQ(SetPredicate(predicate).GetPredicateOperator(), SetPredicate::OP_IS_IN);
    EXPECT_EQ(SetPredicate(predicate).GetSplit(), nullptr);
}

TEST(KeptSetPredicateCopy, AssignmentKeepsTheSetAndCopiesTheOperator) {
    const Categorical x(kText);
    const Categorical y(kText);
    int deleted = 0;
    auto* former = new DiscreteSplit(&y);
    former->PutSplit(new CountedText("a", deleted), 0);
    SetPredicate target(former);
    target.SetArrayData({1.0});
    const auto source = Filled(x);
    target = *source;
    EXPECT_EQ(deleted, 1);
    EXPECT_EQ(target.GetArrayData(), (Numbers{1.0}));
    EXPECT_EQ(target.GetPredicateOperator(), SetPredicate::OP_IS_NOT_IN);
    EXPECT_NE(target.GetSplit(), source->GetSplit());
    EXPECT_EQ(target.GetSplit()->GetSplitVar(), &x);
}

TEST(SetPredicateCopy, AssignmentOfOneWithoutASplitCopiesTheOperator) {
    const Categorical x(kText);
    const auto target = Filled(x);
    *target = SetPredicate();
    EXPECT_EQ(target->GetSplit(), nullptr);
    EXPECT_EQ(target->GetPredicateOperator(), SetPredicate::OP_IS_IN);
    SetPredicate notIn;
    notIn.SetPredicateOperator("isNotIn");
    *target = notIn;
    EXPECT_EQ(target->GetPredicateOperator(), SetPredicate::OP_IS_NOT_IN);
}

TEST(SetPredicateCopy, SelfAssignmentChangesNothing) {
    const Categorical x(kText);
    const auto predicate = Filled(x);
    const ScoreSplitVar* split = predicate->GetSplit();
    const SetPredicate& same = *predicate;
    *predicate = same;
    EXPECT_EQ(predicate->GetSplit(), split);
    EXPECT_EQ(predicate->GetArrayData(), (Numbers{4.0, 5.0}));
}
