#include "support/allocations.h"
#include "support/foreign_value.h"

#include <MCVeltrane_900/MissingValueSet.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/Range.h>
#include <MCVeltrane_900/StringValue.h>
#include <MCVeltrane_900/ValueLabelSet.h>
#include <MCVeltrane_900/ValueLbl.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>

// What the operations of long sets cost, in comparisons and allocations: a removal costs no more in a long set than in
// a short one, and equal elements cost no more than one.
namespace MCVeltrane_900 {
namespace {

using veltrane::tests::AllocationsOf;

constexpr int kMany = 8000;

/// A number that counts how often another value is compared with it, which asks it for its number.
class CountingNumber : public veltrane::tests::ForeignValue {
public:
    explicit CountingNumber(double number) : ForeignValue(NUMERIC_VALUE, number) {}
    ScoreValue* Clone() const override { return new NumericValue(ForeignValue::GetDouble()); }
    double GetDouble() const override {
        ++comparisons;
        return ForeignValue::GetDouble();
    }

    static inline int comparisons = 0;
};

/// The same for a text.
class CountingText : public StringValue {
public:
    using StringValue::StringValue;
    std::string GetString() const override {
        ++comparisons;
        return StringValue::GetString();
    }

    static inline int comparisons = 0;
};

class SetCosts : public testing::Test {
protected:
    void SetUp() override { CountingNumber::comparisons = CountingText::comparisons = 0; }
};

TEST_F(SetCosts, OfRemovingManyLabels) {
    ValueLabelSet set;
    for (int i = 0; i < kMany; ++i) {
        set.Add(new ValueLbl(new NumericValue(i), "label"));
    }
    std::size_t allocations = 0;
    for (int i = 0; i < kMany; ++i) {
        const ValueLbl key(new CountingNumber(i * 7919 % kMany), "key");
        allocations += AllocationsOf([&] { EXPECT_TRUE(set.Remove(&key)); });
        EXPECT_FALSE(set.Contains(key.GetValue()));
    }
    EXPECT_EQ(set.Size(), 0);
    EXPECT_LE(CountingNumber::comparisons, 100 * kMany);
    EXPECT_LE(allocations, 40U * kMany);
}

TEST_F(SetCosts, OfRemovingManyEqualLabels) {
    ValueLabelSet set;
    for (int i = 0; i < kMany; ++i) {
        set.Add(new ValueLbl(new NumericValue(5.0), std::to_string(i)));
    }
    const ValueLbl key(new CountingNumber(5.0), "key");
    for (int i = 0; i < kMany; ++i) {
        ASSERT_EQ(set.GetLabelOfValue(key.GetValue()), std::to_string(i));
        ASSERT_TRUE(set.Remove(&key));
    }
    EXPECT_LE(CountingNumber::comparisons, 100 * kMany);
}

TEST_F(SetCosts, OfRemovingManySingleValues) {
    MissingValueSet set;
    for (int i = 0; i < kMany; ++i) {
        set.Add(new Range(new NumericValue(i)));
    }
    std::size_t allocations = 0;
    for (int i = 0; i < kMany; ++i) {
        const Range key(new CountingNumber(i * 7919 % kMany));
        allocations += AllocationsOf([&] { EXPECT_TRUE(set.Remove(&key)); });
        const NumericValue value(i * 7919 % kMany);
        EXPECT_FALSE(set.IsInAnyRange(&value));
    }
    EXPECT_EQ(set.Size(), 0);
    EXPECT_LE(CountingNumber::comparisons, 200 * kMany);
    EXPECT_LE(allocations, 40U * kMany);
}

// Intervals that all overlap, taken out from the largest to the smallest and asked for in between.
TEST_F(SetCosts, OfRemovingManyIntervals) {
    MissingValueSet set;
    for (int i = 0; i < kMany; ++i) {
        set.Add(new Range(-i - 1.0, i + 1.0, true, true));
    }
    std::size_t allocations = 0;
    for (int i = kMany; i > 0; --i) {
        const Range key(new CountingNumber(-i), new NumericValue(i), true, true);
        allocations += AllocationsOf([&] { EXPECT_TRUE(set.Remove(&key)); });
        const NumericValue inside(i - 1.0);
        const NumericValue outside(i - 0.5);
        EXPECT_EQ(set.IsInAnyRange(&inside), i > 1);
        EXPECT_FALSE(set.IsInAnyRange(&outside));
    }
    EXPECT_LE(CountingNumber::comparisons, 200 * kMany);
    EXPECT_LE(allocations, 40U * kMany);
}

TEST_F(SetCosts, OfAskingForOneOfManyEqualLabels) {
    ValueLabelSet set;
    for (int i = 0; i < kMany; ++i) {
        set.Add(new ValueLbl(new StringValue("same"), "same"));
    }
    const CountingText same("same");
    EXPECT_TRUE(set.HasTextEqualTo(same, true, false));
    EXPECT_TRUE(set.Contains(&same));
    EXPECT_TRUE(set.HasTextEqualTo(CountingText("same "), false, false));
    // Its blank counts, so it is equal to none of them.
    EXPECT_FALSE(set.HasTextEqualTo(CountingText("same "), true, false));
    EXPECT_LE(CountingText::comparisons, 20);
}

} // namespace
} // namespace MCVeltrane_900
