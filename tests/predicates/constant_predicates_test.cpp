#include "conditions.h"

#include <MCVeltrane_900/FalsePredicate.h>
#include <MCVeltrane_900/TruePredicate.h>

#include <gtest/gtest.h>

#include <memory>

using namespace veltrane::tests;

namespace {

template <typename Predicate>
void ExpectConstant(ScorePredicate::PredicateResult result, ScorePredicate::PredicateType type, const char* dump) {
    Predicate predicate;
    const Case one(1.0);
    EXPECT_EQ(predicate.Evaluate({}), result);
    EXPECT_EQ(predicate.Evaluate({1.0, 2.0}), result);
    EXPECT_EQ(predicate.Evaluate(&one, &one), result);
    EXPECT_EQ(predicate.Evaluate(nullptr, nullptr), result);
    EXPECT_EQ(predicate.GetPredType(), type);
    EXPECT_FALSE(predicate.IsDerivedPredictor());
    EXPECT_EQ(Dump(predicate), dump);
    const Continuous x;
    const ScaleSplit split(&x);
    predicate.SetSplit(&split);
    EXPECT_EQ(predicate.GetSplit(), nullptr);
    const std::unique_ptr<ScorePredicate> clone(predicate.Clone());
    EXPECT_NE(dynamic_cast<Predicate*>(clone.get()), nullptr);
    EXPECT_NE(clone.get(), &predicate);
}

} // namespace

TEST(TruePredicate, IsTrueForEveryCase) {
    ExpectConstant<TruePredicate>(kTrue, ScorePredicate::TRUE_PREDICATE, "Constant TRUE\n");
}

TEST(FalsePredicate, IsFalseForEveryCase) {
    ExpectConstant<FalsePredicate>(kFalse, ScorePredicate::FALSE_PREDICATE, "Constant FALSE\n");
}
