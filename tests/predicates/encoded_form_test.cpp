// How a predicate finds its value in an encoded case, and when the value counts as missing.
#include "conditions.h"
#include "support/numbers.h"

#include <MCVeltrane_900/SetPredicate.h>
#include <MCVeltrane_900/SimplePredicate.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace veltrane::tests;

namespace {

template <typename Predicate>
class EncodedForm : public testing::Test {};
using Kinds = testing::Types<SimplePredicate, SetPredicate>;
TYPED_TEST_SUITE(EncodedForm, Kinds);

} // namespace

TYPED_TEST(EncodedForm, ReadsThePlaceOfTheVariable) {
    Continuous x;
    x.SetEncodedValueIndex(1);
    const TypeParam predicate(InRange(x, 1.0, 3.0));
    EXPECT_EQ(predicate.Evaluate({9.0, 2.0, 9.0}), kTrue);
    EXPECT_EQ(predicate.Evaluate({2.0, 9.0, 2.0}), kFalse);
}

TYPED_TEST(EncodedForm, APlaceOutsideTheVectorIsAMissingNumber) {
    Continuous x;
    const TypeParam predicate(InRange(x, -kInfinity, kInfinity));
    for (const int index : {-1, 1, 2, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        x.SetEncodedValueIndex(index);
        EXPECT_EQ(predicate.Evaluate({1.0}), kUnknown) << index;
    }
    x.SetEncodedValueIndex(0);
    EXPECT_EQ(predicate.Evaluate({}), kUnknown);
}

TYPED_TEST(EncodedForm, APlaceOutsideTheVectorIsAnUnseenCategory) {
    Categorical categorical(kText);
    Ordinal ordinal(kText);
    for (Variable* var : {static_cast<Variable*>(&categorical), static_cast<Variable*>(&ordinal)}) {
        const TypeParam predicate(WithMissing(InRange(*var, -1.0, -1.0), -1));
        for (const int index : {-1, 1, std::numeric_limits<int>::max()}) {
            var->SetEncodedValueIndex(index);
            EXPECT_EQ(predicate.Evaluate({-2.0}), kTrue) << index;
        }
    }
}

TYPED_TEST(EncodedForm, AnUnseenCategoryIsSettledByTheSplit) {
    const Categorical categorical(kText);
    EXPECT_EQ(TypeParam(OfCodes(categorical, {0.0})).Evaluate({-1.0}), kFalse);
    EXPECT_EQ(TypeParam(WithMissing(OfCodes(categorical, {0.0}), 0)).Evaluate({-1.0}), kTrue);
    const Ordinal ordinal(kText);
    EXPECT_EQ(TypeParam(WithMissing(OfCodes(ordinal, {0.0}), 0)).Evaluate({-1.0}), kFalse);
    EXPECT_EQ(TypeParam(OfCodes(ordinal, {-1.0})).Evaluate({-1.0}), kTrue);
}

TYPED_TEST(EncodedForm, MinusTwoIsAMissingCategoryExactly) {
    const Categorical categorical(kText);
    const Ordinal ordinal(kText);
    for (const ScoreDictVar* var :
         {static_cast<const ScoreDictVar*>(&categorical), static_cast<const ScoreDictVar*>(&ordinal)}) {
        const TypeParam predicate(InRange(*var, -3.0, 3.0));
        EXPECT_EQ(predicate.Evaluate({-2.0}), kUnknown);
        EXPECT_EQ(predicate.Evaluate({std::nextafter(-2.0, 0.0)}), kTrue);
    }
}

TYPED_TEST(EncodedForm, MinusTwoIsANumberOfAContinuousVariable) {
    const Continuous x;
    EXPECT_EQ(TypeParam(InRange(x, -3.0, 3.0)).Evaluate({-2.0}), kTrue);
}

TYPED_TEST(EncodedForm, TheMissingNumberIsMissingInAContinuousVariableOnly) {
    const Continuous x;
    EXPECT_EQ(TypeParam(InRange(x, -kInfinity, kInfinity)).Evaluate({kMissing}), kUnknown);
    const Ordinal y(kText);
    EXPECT_EQ(TypeParam(OfCodes(y, {kMissing})).Evaluate({kMissing}), kTrue);
}

TYPED_TEST(EncodedForm, TheVariablesMissingValuesAreNotAsked) {
    Continuous x;
    x.Missing("2");
    EXPECT_EQ(TypeParam(InRange(x, 1.0, 3.0)).Evaluate({2.0}), kTrue);
}

TYPED_TEST(EncodedForm, ANumberThatIsNoneIsFalse) {
    const Continuous x;
    const Categorical y(kText);
    const double nan = kNaN;
    EXPECT_EQ(TypeParam(InRange(x, -kInfinity, kInfinity)).Evaluate({nan}), kFalse);
    EXPECT_EQ(TypeParam(OfCodes(y, {0.0, 1.0})).Evaluate({nan}), kFalse);
}

TYPED_TEST(EncodedForm, AnyChildIsTrue) {
    const Ordinal x(kText);
    auto* split = new DiscreteSplit(&x);
    split->PutSplit(0.0, 5);
    split->PutSplit(1.0, -1);
    split->PutSplit(2.0, -2);
    const TypeParam predicate(split);
    EXPECT_EQ(predicate.Evaluate({0.0}), kTrue);
    EXPECT_EQ(predicate.Evaluate({1.0}), kFalse);
    EXPECT_EQ(predicate.Evaluate({2.0}), kTrue);
}

TEST(EncodedFormMissing, ASimplePredicateAsksTheMissingValueMap) {
    const Continuous x;
    EXPECT_EQ(SimplePredicate(WithMissing(new ScaleSplit(&x), 0)).Evaluate({kMissing}), kTrue);
    EXPECT_EQ(SimplePredicate(WithMissing(new ScaleSplit(&x), -2)).Evaluate({kMissing}), kTrue);
    EXPECT_EQ(SimplePredicate(WithMissing(new ScaleSplit(&x), -1)).Evaluate({kMissing}), kUnknown);
}

TEST(KeptSetPredicateMissing, IsNeverTrueInAnEncodedCase) {
    const Continuous x;
    EXPECT_EQ(SetPredicate(WithMissing(new ScaleSplit(&x), 0)).Evaluate({kMissing}), kUnknown);
}

// A category that isn't known is missing in the record form, but an input of the split in an encoded case.
TEST(KeptUnseenCategory, IsMissingInARecordAndSettledByTheSplitInAnEncodedCase) {
    Categorical x(kText);
    x.Encoded({"red", "green"});
    const Case unseen("mauve");
    const SimplePredicate predicate(OfCodes(x, {0.0}));
    EXPECT_EQ(predicate.Evaluate(&unseen, nullptr), kUnknown);
    EXPECT_EQ(predicate.Evaluate({-1.0}), kFalse);
    const SetPredicate set(WithMissing(OfCodes(x, {0.0}), 0));
    EXPECT_EQ(set.Evaluate(&unseen, nullptr), kUnknown);
    EXPECT_EQ(set.Evaluate({-1.0}), kTrue);
}
