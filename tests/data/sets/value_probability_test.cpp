#include "data/sets/counted_values.h"
#include "support/numbers.h"

#include <MCVeltrane_900/ValueProbability.h>
#include <MCVeltrane_900/ValueProbabilitySet.h>

#include <gtest/gtest.h>

#include <memory>

namespace MCVeltrane_900 {
namespace {

using namespace veltrane::tests;

TEST(ValueProbability, Defaults) {
    const ValueProbability probability;
    EXPECT_EQ(probability.GetValue(), nullptr);
    EXPECT_EQ(probability.GetProbability(), 0.0);
}

TEST(ValueProbability, SetProbabilityAboveOneIsRefusedAndKeepsTheOldNumber) {
    ValueProbability probability(nullptr, 0.25);
    EXPECT_FALSE(probability.SetProbability(1.5));
    EXPECT_EQ(probability.GetProbability(), 0.25);
}

TEST(ValueProbability, SetProbabilityTakesZeroToOne) {
    ValueProbability probability(nullptr, 0.25);
    EXPECT_TRUE(probability.SetProbability(0.0));
    EXPECT_EQ(probability.GetProbability(), 0.0);
    EXPECT_TRUE(probability.SetProbability(1.0));
    EXPECT_EQ(probability.GetProbability(), 1.0);
    EXPECT_FALSE(probability.SetProbability(-1e-300));
    EXPECT_FALSE(probability.SetProbability(kNaN));
    EXPECT_FALSE(probability.SetProbability(NumericValue::GetSysmisValue()));
    EXPECT_EQ(probability.GetProbability(), 1.0);
}

TEST(ValueProbability, SetValueProbabilityRefusesNullAndNumbersOutside) {
    ValueProbability probability;
    NumericValue value(1.0);
    EXPECT_FALSE(probability.SetValueProbability(nullptr, 0.5));
    EXPECT_FALSE(probability.SetValueProbability(&value, 1.5));
    EXPECT_FALSE(probability.SetValueProbability(&value, kNaN));
    EXPECT_EQ(probability.GetValue(), nullptr);
    EXPECT_EQ(probability.GetProbability(), 0.0);
}

TEST(KeptValueProbability, SetValueProbabilityDoesNotDeleteTheOldValue) {
    int deleted = 0;
    auto* first = new CountedNumber(1.0, deleted);
    {
        ValueProbability probability(first, 0.1);
        EXPECT_TRUE(probability.SetValueProbability(new CountedNumber(2.0, deleted), 0.2));
        EXPECT_EQ(probability.GetValue()->GetDouble(), 2.0);
        EXPECT_EQ(probability.GetProbability(), 0.2);
        EXPECT_EQ(deleted, 0);
    }
    EXPECT_EQ(deleted, 1);
    delete first;
}

TEST(ValueProbability, ConstructorStoresWithoutATest) {
    EXPECT_EQ(ValueProbability(new NumericValue(1.0), 7.5).GetProbability(), 7.5);
}

TEST(ValueProbability, ComparesTheValuesOnly) {
    const ValueProbability one(new NumericValue(1.0), 0.9);
    const ValueProbability uno(new NumericValue(1.0), 0.1);
    const ValueProbability two(new NumericValue(2.0), 0.1);
    ExpectOrder(one, uno, two);
    EXPECT_FALSE(ValueProbability() == one);
}

TEST(ValueProbability, CopiesAreDeep) {
    const ValueProbability probability(new NumericValue(1.0), 0.5);
    std::unique_ptr<ScoreValueProbability> clone(probability.Clone());
    EXPECT_NE(clone->GetValue(), probability.GetValue());
    EXPECT_TRUE(*clone == probability);
    EXPECT_EQ(clone->GetProbability(), 0.5);
    int deleted = 0;
    ValueProbability assigned(new CountedNumber(5.0, deleted), 0.0);
    assigned = probability;
    EXPECT_EQ(deleted, 1);
    EXPECT_EQ(assigned.GetProbability(), 0.5);
}

TEST(ValueProbability, Displays) {
    EXPECT_EQ(Dump(ValueProbability(new StringValue("yes"), 0.75)), "Value: yes;  Probability: 0.75\n");
    EXPECT_EQ(Dump(ValueProbability()), "Value: NULL;  Probability: 0\n");
}

/// The probability 0.5 for 1, 0.25 for 2 and 0.125 for 1 again.
class ValueProbabilitySetTest : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(set.Add(new ValueProbability(new NumericValue(1.0), 0.5)));
        ASSERT_TRUE(set.Add(new ValueProbability(new NumericValue(2.0), 0.25)));
        ASSERT_TRUE(set.Add(new ValueProbability(new NumericValue(1.0), 0.125)));
    }

    ValueProbabilitySet set;
};

TEST_F(ValueProbabilitySetTest, AddOfADuplicateValueGrowsTheSetAndTheFirstIsFound) {
    EXPECT_EQ(set.Size(), 3);
    EXPECT_EQ(set.GetAllValueProbabilities().size(), 3u);
    const NumericValue one(1.0);
    EXPECT_EQ(set.GetProbabilityOfValue(&one), 0.5);
    EXPECT_FALSE(set.Add(nullptr));
    EXPECT_EQ(set.Size(), 3);
}

TEST_F(ValueProbabilitySetTest, ProbabilityOfNullOrUnknownIsZero) {
    const NumericValue three(3.0);
    EXPECT_EQ(set.GetProbabilityOfValue(nullptr), 0.0);
    EXPECT_EQ(set.GetProbabilityOfValue(&three), 0.0);
}

TEST_F(ValueProbabilitySetTest, ContainsByTheOperatorOfTheStoredValue) {
    const NumericValue near(2.0 - 1e-15);
    const NumericValue three(3.0);
    EXPECT_TRUE(set.Contains(&near));
    EXPECT_FALSE(set.Contains(&three));
    EXPECT_FALSE(set.Contains(nullptr));
}

TEST_F(ValueProbabilitySetTest, RemoveDeletesTheFirstOfTheValue) {
    const ValueProbability one(new NumericValue(1.0), 0.0);
    const ValueProbability three(new NumericValue(3.0), 0.0);
    EXPECT_FALSE(set.Remove(nullptr));
    EXPECT_FALSE(set.Remove(&three));
    EXPECT_TRUE(set.Remove(&one));
    ASSERT_EQ(set.Size(), 2);
    EXPECT_EQ(set.GetAllValueProbabilities()[0]->GetProbability(), 0.25);
    EXPECT_EQ(set.GetAllValueProbabilities()[1]->GetProbability(), 0.125);
}

TEST_F(ValueProbabilitySetTest, CopiesAreDeepAndOwned) {
    std::unique_ptr<ScoreValueProbabilitySet> clone(set.Clone());
    ASSERT_EQ(clone->Size(), 3);
    EXPECT_NE(clone->GetAllValueProbabilities()[0], set.GetAllValueProbabilities()[0]);
    EXPECT_EQ(clone->GetAllValueProbabilities()[2]->GetProbability(), 0.125);
    int deleted = 0;
    ValueProbabilitySet assigned;
    ASSERT_TRUE(assigned.Add(new ValueProbability(new CountedNumber(9.0, deleted), 0.1)));
    assigned = set;
    EXPECT_EQ(deleted, 1);
    EXPECT_EQ(assigned.Size(), 3);
}

TEST_F(ValueProbabilitySetTest, Displays) {
    EXPECT_EQ(Dump(set), "Start ScoreValueProbabilitySet Display:\nValue: 1;  Probability: 0.5\nValue: 2;  "
                         "Probability: 0.25\nValue: 1;  Probability: 0.125\nEnd of ScoreValueProbabilitySet "
                         "Display.\n\n");
}

} // namespace
} // namespace MCVeltrane_900
