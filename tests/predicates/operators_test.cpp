// What the operators come to through splits of the shape that documents give them.
#include "conditions.h"
#include "support/numbers.h"
#include "support/rows.h"

#include <MCVeltrane_900/SimplePredicate.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

using namespace veltrane::tests;

namespace {

Range* Open(double low, double high) {
    return new Range(low, high, false, false);
}

struct ScaleRow {
    const char* name;
    const char* op;
    std::function<void(ScaleSplit&)> fill;
    ScorePredicate::PredicateResult below, at, above, missing;
};

/// The operand is 2.
const ScaleRow kScale[] = {
    {"Equal", "equal", [](ScaleSplit& s) { s.PutSplit(new Range(2.0, 2.0, true, true), 0); }, kFalse, kTrue, kFalse,
     kUnknown},
    {"NotEqual", "notEqual",
     [](ScaleSplit& s) {
         s.PutSplit(Open(-kInfinity, 2.0), 0);
         s.PutSplit(Open(2.0, kInfinity), 0);
     },
     kTrue, kFalse, kTrue, kUnknown},
    {"LessThan", "lessThan", [](ScaleSplit& s) { s.PutSplit(Open(-kInfinity, 2.0), 0); }, kTrue, kFalse, kFalse,
     kUnknown},
    {"LessOrEqual", "lessOrEqual", [](ScaleSplit& s) { s.PutSplit(new Range(-kInfinity, 2.0, false, true), 0); }, kTrue,
     kTrue, kFalse, kUnknown},
    {"GreaterThan", "greaterThan", [](ScaleSplit& s) { s.PutSplit(Open(2.0, kInfinity), 0); }, kFalse, kFalse, kTrue,
     kUnknown},
    {"GreaterOrEqual", "greaterOrEqual", [](ScaleSplit& s) { s.PutSplit(new Range(2.0, kInfinity, true, false), 0); },
     kFalse, kTrue, kTrue, kUnknown},
    {"IsMissing", "isMissing", [](ScaleSplit& s) { s.SetMissvalMap(0); }, kFalse, kFalse, kFalse, kTrue},
    {"IsNotMissing", "isNotMissing", [](ScaleSplit& s) { s.PutSplit(Open(-kInfinity, kInfinity), 0); }, kTrue, kTrue,
     kTrue, kUnknown},
    {"EqualToNothing", "equal", [](ScaleSplit& s) { s.SetMissvalMap(0); }, kFalse, kFalse, kFalse, kTrue},
};

class ScaleOperator : public testing::TestWithParam<ScaleRow> {
protected:
    ScaleOperator() {
        auto* split = new ScaleSplit(&fVar);
        GetParam().fill(*split);
        fPredicate.SetSplit(split);
        fPredicate.SetPredicateOperator(GetParam().op);
    }

    Continuous fVar;
    SimplePredicate fPredicate;
};

} // namespace

TEST_P(ScaleOperator, OfAnEncodedCase) {
    EXPECT_EQ(fPredicate.Evaluate({1.0}), GetParam().below);
    EXPECT_EQ(fPredicate.Evaluate({2.0}), GetParam().at);
    EXPECT_EQ(fPredicate.Evaluate({3.0}), GetParam().above);
    EXPECT_EQ(fPredicate.Evaluate({kMissing}), GetParam().missing);
}

TEST_P(ScaleOperator, OfARecord) {
    const auto of = [this](ScoreValue* value) {
        const Case record(value);
        return fPredicate.Evaluate(&record, nullptr);
    };
    EXPECT_EQ(of(new NumericValue(1.0)), GetParam().below);
    EXPECT_EQ(of(new NumericValue(2.0)), GetParam().at);
    EXPECT_EQ(of(new NumericValue(3.0)), GetParam().above);
    EXPECT_EQ(of(new NumericValue(kMissing)), GetParam().missing);
    EXPECT_EQ(of(nullptr), GetParam().missing);
}

INSTANTIATE_TEST_SUITE_P(SimplePredicate, ScaleOperator, testing::ValuesIn(kScale), NameOfRow());

namespace {

ScorePredicate::PredicateResult Of(const ScorePredicate& predicate, const char* text) {
    const Case record(text ? new StringValue(text) : nullptr);
    return predicate.Evaluate(&record, nullptr);
}

} // namespace

TEST(OrdinalOperator, HoldsForTheCategoriesThatSatisfyIt) {
    Ordinal x(kText);
    x.Categories({"a", "b", "c"});
    SimplePredicate predicate(OfValues(x, {"b", "c"}));
    predicate.SetPredicateOperator("greaterThan");
    EXPECT_EQ(Of(predicate, "a"), kFalse);
    EXPECT_EQ(Of(predicate, "b"), kTrue);
    EXPECT_EQ(Of(predicate, "c"), kTrue);
    EXPECT_EQ(Of(predicate, nullptr), kUnknown);
}

// The split of a categorical variable holds just the operand, so every operator reads like "equal".
TEST(KeptCategoricalOperator, IsNotApplied) {
    Categorical x(kText);
    x.Categories({"a", "b"});
    for (const char* op : {"equal", "notEqual", "lessThan", "lessOrEqual", "greaterThan", "greaterOrEqual"}) {
        SimplePredicate predicate(OfValues(x, {"a"}));
        predicate.SetPredicateOperator(op);
        EXPECT_EQ(Of(predicate, "a"), kTrue) << op;
        EXPECT_EQ(Of(predicate, "b"), kFalse) << op;
        EXPECT_EQ(Of(predicate, nullptr), kUnknown) << op;
    }
}

TEST(KeptIsNotMissing, AMissingValueIsUnknownAndNotFalse) {
    Categorical x(kText);
    x.Categories({"a", "b"});
    SimplePredicate predicate(OfValues(x, {"a", "b"}));
    predicate.SetPredicateOperator("isNotMissing");
    EXPECT_EQ(Of(predicate, nullptr), kUnknown);
    EXPECT_EQ(Of(predicate, "a"), kTrue);
}

TEST(KeptIsNotMissing, OfADiscreteSplitIsFalseOutsideTheCategories) {
    Ordinal x(kText);
    x.Categories({"a", "b"});
    SimplePredicate predicate(OfValues(x, {"a", "b"}));
    predicate.SetPredicateOperator("isNotMissing");
    EXPECT_EQ(Of(predicate, "c"), kFalse);
}

TEST(DiscreteIsMissing, HoldsForMissingValuesOnly) {
    Categorical x(kText);
    x.Categories({"a", "b"});
    SimplePredicate predicate(WithMissing(new DiscreteSplit(&x), 0));
    predicate.SetPredicateOperator("isMissing");
    EXPECT_EQ(Of(predicate, "a"), kFalse);
    EXPECT_EQ(Of(predicate, nullptr), kTrue);
}
