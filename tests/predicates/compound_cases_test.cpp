// Compounds of predicates over real cases: both forms hand their arguments on.
#include "conditions.h"
#include "support/numbers.h"

#include <MCVeltrane_900/CompoundPredicate.h>
#include <MCVeltrane_900/SetPredicate.h>
#include <MCVeltrane_900/SimplePredicate.h>

#include <gtest/gtest.h>

using namespace veltrane::tests;

TEST(CompoundCases, EncodedValuesReachTheChildren) {
    const Continuous x;
    Continuous y("y");
    y.SetEncodedValueIndex(1);
    CompoundPredicate compound(ScorePredicate::BOOL_AND);
    compound.AddPredicate(new SimplePredicate(InRange(x, 0.0, 1.0)));
    auto* inner = new CompoundPredicate(ScorePredicate::BOOL_OR);
    inner->AddPredicate(new SimplePredicate(InRange(y, 5.0, 6.0)));
    inner->AddPredicate(new SetPredicate(InRange(y, 8.0, 9.0)));
    compound.AddPredicate(inner);
    EXPECT_EQ(compound.Evaluate({0.5, 5.5}), kTrue);
    EXPECT_EQ(compound.Evaluate({0.5, 8.5}), kTrue);
    EXPECT_EQ(compound.Evaluate({0.5, 7.0}), kFalse);
    EXPECT_EQ(compound.Evaluate({0.5}), kUnknown);
    EXPECT_EQ(compound.Evaluate({2.0}), kFalse);
}

TEST(CompoundCases, BothRecordsReachTheChildren) {
    const Continuous x;
    Continuous d("d");
    d.Derived();
    CompoundPredicate compound(ScorePredicate::BOOL_SURROGATE);
    compound.AddPredicate(new SimplePredicate(InRange(x, 0.0, 1.0)));
    compound.AddPredicate(new SimplePredicate(InRange(d, 5.0, 6.0)));
    const Case low(0.5);
    const Case missing(kMissing);
    const Case derived(new NumericValue(5.5), "d");
    const Case otherDerived(new NumericValue(7.0), "d");
    EXPECT_EQ(compound.Evaluate(&low, &derived), kTrue);
    EXPECT_EQ(compound.Evaluate(&missing, &derived), kSurrogateTrue);
    EXPECT_EQ(compound.Evaluate(&missing, &otherDerived), kFalse);
    EXPECT_TRUE(compound.IsDerivedPredictor());
}

TEST(CompoundCases, SurrogatesOverEncodedValues) {
    const Continuous x;
    Continuous y("y");
    y.SetEncodedValueIndex(1);
    CompoundPredicate compound(ScorePredicate::BOOL_SURROGATE);
    compound.AddPredicate(new SimplePredicate(InRange(x, 0.0, 1.0)));
    compound.AddPredicate(new SimplePredicate(InRange(y, 0.0, 1.0)));
    EXPECT_EQ(compound.Evaluate({kMissing, 0.5}), kSurrogateTrue);
    EXPECT_EQ(compound.EvaluateSurrogate({kMissing, 0.5}, 0), kSurrogateTrue);
    EXPECT_EQ(compound.EvaluateSurrogate({kMissing, 0.5}, 1), kTrue);
}
