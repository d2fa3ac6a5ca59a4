#include "conditions.h"
#include "support/allocations.h"

#include <MCVeltrane_900/CompoundPredicate.h>
#include <MCVeltrane_900/SetPredicate.h>
#include <MCVeltrane_900/SimplePredicate.h>

#include <gtest/gtest.h>

using namespace veltrane::tests;

// Evaluation allocates nothing, also with names and texts that are longer than a string holds in place.
namespace {

const std::string kLong = "a text of a category that is not short, number ";

std::vector<std::string> Texts(int count) {
    std::vector<std::string> texts;
    for (int i = 0; i < count; ++i) {
        texts.push_back(kLong + std::to_string(i));
    }
    return texts;
}

void ExpectNoAllocation(const ScorePredicate& predicate, const Case& record, const std::vector<double>& encoded,
                        ScorePredicate::PredicateResult expected = kTrue) {
    EXPECT_EQ(AllocationsOf([&] { EXPECT_EQ(predicate.Evaluate(&record, &record), expected); }), 0u);
    EXPECT_EQ(AllocationsOf([&] { EXPECT_EQ(predicate.Evaluate(encoded), expected); }), 0u);
}

} // namespace

TEST(PredicateScoringPath, ContinuousByPositionAndByName) {
    Continuous x("the name of a field that is not short");
    x.Missing("9");
    const SimplePredicate predicate(InRange(x, 1.0, 3.0));
    const Case record(new NumericValue(2.0), x.GetName());
    ExpectNoAllocation(predicate, record, {2.0});
    x.SetValueIndex(-1);
    ExpectNoAllocation(predicate, record, {2.0});
}

TEST(PredicateScoringPath, EncodedCategories) {
    for (const int count : {2, 100}) {
        Categorical x(kText);
        x.Encoded(Texts(count)).Categories(Texts(count)).Missing("n/a");
        const Case known((kLong + "1  ").c_str());
        ExpectNoAllocation(SimplePredicate(OfCodes(x, {1.0})), known, {1.0});
        ExpectNoAllocation(SetPredicate(OfCodes(x, {0.0, 1.0})), known, {1.0});
        const Case unknown((kLong + "unknown").c_str());
        ExpectNoAllocation(SimplePredicate(OfCodes(x, {1.0})), unknown, {-2.0}, kUnknown);
    }
}

TEST(PredicateScoringPath, CategoriesWithoutEncoder) {
    for (const int count : {2, 100}) {
        Categorical x(kText);
        x.Categories(Texts(count));
        const Case known((kLong + "1  ").c_str());
        const SetPredicate predicate(OfValues(x, Texts(count)));
        EXPECT_EQ(AllocationsOf([&] { EXPECT_EQ(predicate.Evaluate(&known, nullptr), kTrue); }), 0u);
    }
}

TEST(PredicateScoringPath, Compound) {
    const Continuous x;
    for (const auto boolOperator : {ScorePredicate::BOOL_OR, ScorePredicate::BOOL_AND, ScorePredicate::BOOL_XOR,
                                    ScorePredicate::BOOL_SURROGATE}) {
        CompoundPredicate compound(boolOperator);
        for (int i = 0; i < 3; ++i) {
            compound.AddPredicate(new SimplePredicate(InRange(x, 1.0, 3.0)));
        }
        ExpectNoAllocation(compound, Case(2.0), {2.0});
        EXPECT_EQ(AllocationsOf([&] { compound.EvaluateSurrogate({}, 0); }), 0u);
    }
}
