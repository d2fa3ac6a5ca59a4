#include "data/sets/counted_values.h"
#include "support/numbers.h"

#include <MCVeltrane_900/Range.h>

#include <gtest/gtest.h>

#include <memory>

namespace MCVeltrane_900 {
namespace {

using namespace veltrane::tests;

TEST(RangeOfOneValue, TakesTheValueAndAClone) {
    auto* value = new NumericValue(5.0);
    const Range range(value);
    EXPECT_EQ(range.GetMin(), value);
    EXPECT_NE(range.GetMax(), value);
    EXPECT_EQ(range.GetMax()->GetDouble(), 5.0);
    EXPECT_TRUE(range.GetHighEnd());
    EXPECT_TRUE(range.GetLowEnd());
    EXPECT_TRUE(range.IsInRange(5.0));
    EXPECT_FALSE(range.IsInRange(5.1));
}

TEST(RangeOfOneValue, MissingNumberBecomesMinusInfinityOnBothEndsAndMatchesNoNumber) {
    const Range range(new NumericValue(kMissing));
    EXPECT_EQ(range.GetMin()->GetDouble(), -kInfinity);
    EXPECT_EQ(range.GetMax()->GetDouble(), -kInfinity);
    const NumericValue missing;
    const NumericValue zero(0.0);
    EXPECT_FALSE(range.IsInRange(-kInfinity));
    EXPECT_FALSE(range.IsInRange(kMissing));
    EXPECT_FALSE(range.IsInRange(0.0));
    EXPECT_FALSE(range.IsInRange(&missing));
    EXPECT_FALSE(range.IsInRange(&zero));
}

TEST(RangeOfOneValue, NullHasInfiniteBoundsAndMatchesNoNumber) {
    const Range range(nullptr);
    EXPECT_EQ(range.GetMin()->GetDouble(), -kInfinity);
    EXPECT_EQ(range.GetMax()->GetDouble(), kInfinity);
    EXPECT_TRUE(range.GetHighEnd());
    EXPECT_TRUE(range.GetLowEnd());
    const NumericValue zero(0.0);
    const NumericValue low(-kInfinity);
    EXPECT_FALSE(range.IsInRange(0.0));
    EXPECT_FALSE(range.IsInRange(-kInfinity));
    EXPECT_FALSE(range.IsInRange(kInfinity));
    EXPECT_FALSE(range.IsInRange(&zero));
    EXPECT_FALSE(range.IsInRange(&low));
}

TEST(RangeOfOneValue, NumberOfATextOrDateIsItsDouble) {
    EXPECT_TRUE(Range(new StringValue("7")).IsInRange(7.0));
    EXPECT_TRUE(Range(new StringValue("seven")).IsInRange(0.0));
    EXPECT_TRUE(Range(new DateTimeValue(2 * 86400.0, DateTimeValue::VAL_DATE)).IsInRange(2.0));
}

TEST(RangeOfOneValue, MissingDateKeepsItsNumber) {
    const Range range(new DateTimeValue(kMissing, DateTimeValue::VAL_DATETIME));
    EXPECT_TRUE(range.GetMin()->IsSystemMissingValue());
    EXPECT_TRUE(range.IsInRange(kMissing));
}

TEST(RangeOfNumbers, MakesNumericBounds) {
    const Range range(1.0, 2.0, true, false);
    EXPECT_EQ(range.GetMin()->GetType(), ScoreValue::NUMERIC_VALUE);
    EXPECT_EQ(range.GetMin()->GetDouble(), 1.0);
    EXPECT_EQ(range.GetMax()->GetType(), ScoreValue::NUMERIC_VALUE);
    EXPECT_EQ(range.GetMax()->GetDouble(), 2.0);
    EXPECT_TRUE(range.GetLowEnd());
    EXPECT_FALSE(range.GetHighEnd());
}

TEST(KeptRangeOfNumbers, MissingLowerBoundIsReplacedInTheObjectOnly) {
    const Range range(kMissing, kMissing, true, true);
    EXPECT_EQ(range.GetMin()->GetDouble(), -kInfinity);
    EXPECT_EQ(range.GetMax()->GetDouble(), kMissing);
    // The number that is tested is still the argument.
    EXPECT_TRUE(range.IsInRange(kMissing));
    EXPECT_FALSE(range.IsInRange(-kInfinity));
}

TEST(RangeOfNumbers, SingleValueIsExactEquality) {
    // Not single: a missing number is asked by the rule of an interval.
    EXPECT_FALSE(Range(1.0, 1.0 + 1e-15, false, false).IsInRange(1.0));
    EXPECT_TRUE(Range(1.0, 1.0, false, false).IsInRange(1.0));
}

TEST(RangeOfValues, SingleValueIsEqualityOfTheValues) {
    EXPECT_TRUE(Range(new NumericValue(1.0), new NumericValue(1.0 + 1e-15), false, false).IsInRange(1.0));
    const StringValue text("a");
    EXPECT_TRUE(Range(new StringValue("a"), new StringValue("a  "), false, false).IsInRange(&text));
}

TEST(RangeOfValues, OwnsItsBounds) {
    int deleted = 0;
    {
        const Range range(new CountedNumber(1.0, deleted), new CountedNumber(2.0, deleted), true, true);
        EXPECT_EQ(deleted, 0);
    }
    EXPECT_EQ(deleted, 2);
}

TEST(RangeOfValues, OneObjectForBothBoundsIsCloned) {
    int deleted = 0;
    {
        auto* value = new CountedNumber(3.0, deleted);
        const Range range(value, value, false, false);
        EXPECT_EQ(range.GetMin(), value);
        EXPECT_NE(range.GetMax(), value);
        EXPECT_EQ(range.GetMax()->GetDouble(), 3.0);
        EXPECT_TRUE(range.IsInRange(3.0));
    }
    EXPECT_EQ(deleted, 1);
}

TEST(RangeOfValues, NullBoundsAreInfinite) {
    const Range range(nullptr, nullptr, false, false);
    EXPECT_EQ(range.GetMin()->GetDouble(), -kInfinity);
    EXPECT_EQ(range.GetMax()->GetDouble(), kInfinity);
    EXPECT_TRUE(range.IsInRange(0.0));
    EXPECT_FALSE(range.IsInRange(kInfinity));

    const Range upTo(nullptr, new NumericValue(3.0), false, true);
    EXPECT_TRUE(upTo.IsInRange(-1e300));
    EXPECT_TRUE(upTo.IsInRange(3.0));
    EXPECT_FALSE(upTo.IsInRange(3.1));
}

TEST(RangeOfValues, MissingLowerNumberIsMinusInfinity) {
    const Range range(new NumericValue(), new NumericValue(2.0), true, true);
    EXPECT_EQ(range.GetMin()->GetDouble(), -kInfinity);
    EXPECT_TRUE(range.IsInRange(-1e308));
    EXPECT_FALSE(range.IsInRange(2.1));
}

TEST(RangeOfValues, MissingUpperNumberStays) {
    const Range range(new NumericValue(1.0), new NumericValue(), true, true);
    EXPECT_TRUE(range.GetMax()->IsSystemMissingValue());
    EXPECT_TRUE(range.IsInRange(1.0));
    EXPECT_FALSE(range.IsInRange(1.5));
}

TEST(KeptRangeOfValues, TextAndDateBoundsDoNothingForNumbers) {
    const Range texts(new StringValue("1"), new StringValue("2"), true, true);
    EXPECT_TRUE(texts.IsInRange(1e9));
    EXPECT_TRUE(texts.IsInRange(-1e9));
    const Range dates(new DateTimeValue(0.0, DateTimeValue::VAL_DATETIME),
                      new DateTimeValue(10.0, DateTimeValue::VAL_DATETIME), true, true);
    const DateTimeValue later(1000.0, DateTimeValue::VAL_DATETIME);
    EXPECT_TRUE(dates.IsInRange(1000.0));
    EXPECT_TRUE(dates.IsInRange(&later));
}

TEST(RangeSetMin, NullDoesNothing) {
    Range range(1.0, 2.0, true, true);
    const ScoreValue* old = range.GetMin();
    range.SetMin(nullptr);
    EXPECT_EQ(range.GetMin(), old);
    EXPECT_TRUE(range.IsInRange(1.0));
}

TEST(KeptRangeSetMin, OldBoundIsNotDeleted) {
    int deleted = 0;
    auto* old = new CountedNumber(1.0, deleted);
    {
        Range range(old, new NumericValue(2.0), true, true);
        range.SetMin(new NumericValue(0.0));
    }
    EXPECT_EQ(deleted, 0);
    delete old;
}

TEST(RangeSetMin, NumberIsTestedFromThenOn) {
    Range range(1.0, 2.0, true, true);
    std::unique_ptr<const ScoreValue> old(range.GetMin());
    range.SetMin(new NumericValue(0.5));
    EXPECT_TRUE(range.IsInRange(0.75));
    EXPECT_FALSE(range.IsInRange(0.25));
}

TEST(RangeSetMin, MissingNumberIsMinusInfinity) {
    Range range(1.0, 2.0, true, true);
    std::unique_ptr<const ScoreValue> old(range.GetMin());
    range.SetMin(new NumericValue());
    EXPECT_EQ(range.GetMin()->GetDouble(), -kInfinity);
    EXPECT_TRUE(range.IsInRange(-1e308));
}

TEST(RangeSetMin, MissingDateOpensTheRangeAndKeepsItsOwnNumber) {
    Range range(1.0, 2.0, true, true);
    std::unique_ptr<const ScoreValue> old(range.GetMin());
    range.SetMin(new DateTimeValue());
    EXPECT_EQ(range.GetMin()->GetDouble(), kMissing);
    EXPECT_TRUE(range.IsInRange(-1e308));
}

TEST(KeptRangeSetMin, TextAndDateLeaveTheTestedNumber) {
    Range range(1.0, 2.0, true, true);
    std::unique_ptr<const ScoreValue> old(range.GetMin());
    range.SetMin(new StringValue("0"));
    EXPECT_FALSE(range.IsInRange(0.5));
    std::unique_ptr<const ScoreValue> text(range.GetMin());
    range.SetMin(new DateTimeValue(0.0, DateTimeValue::VAL_DATETIME));
    EXPECT_FALSE(range.IsInRange(0.5));
    EXPECT_TRUE(range.IsInRange(1.0));
}

TEST(RangeSetMin, FindsTheSingleValueAgain) {
    Range range(1.0, 2.0, false, false);
    std::unique_ptr<const ScoreValue> old(range.GetMin());
    range.SetMin(new NumericValue(2.0));
    EXPECT_TRUE(range.IsInRange(2.0));
    std::unique_ptr<const ScoreValue> two(range.GetMin());
    range.SetMin(new NumericValue(1.0));
    EXPECT_FALSE(range.IsInRange(2.0));
    EXPECT_TRUE(range.IsInRange(1.5));
}

TEST(KeptRangeSetMax, OldBoundIsNotDeleted) {
    int deleted = 0;
    auto* old = new CountedNumber(2.0, deleted);
    {
        Range range(new NumericValue(1.0), old, true, true);
        range.SetMax(new NumericValue(3.0));
    }
    EXPECT_EQ(deleted, 0);
    delete old;
}

TEST(RangeSetMax, NumberIsTestedFromThenOnAlsoAMissingOne) {
    Range range(1.0, 2.0, true, true);
    std::unique_ptr<const ScoreValue> old(range.GetMax());
    range.SetMax(new NumericValue(3.0));
    EXPECT_TRUE(range.IsInRange(2.5));
    std::unique_ptr<const ScoreValue> three(range.GetMax());
    range.SetMax(new NumericValue());
    EXPECT_TRUE(range.GetMax()->IsSystemMissingValue());
    EXPECT_FALSE(range.IsInRange(1.5));
}

TEST(RangeSetMax, TextLeavesTheTestedNumber) {
    Range range(1.0, 2.0, true, true);
    std::unique_ptr<const ScoreValue> old(range.GetMax());
    range.SetMax(new StringValue("9"));
    EXPECT_FALSE(range.IsInRange(5.0));
    EXPECT_TRUE(range.IsInRange(2.0));
}

TEST(RangeSetMax, FindsTheSingleValueAgain) {
    Range range(1.0, 2.0, false, false);
    std::unique_ptr<const ScoreValue> old(range.GetMax());
    range.SetMax(new NumericValue(1.0));
    EXPECT_TRUE(range.IsInRange(1.0));
    EXPECT_FALSE(range.IsInRange(1.5));
}

TEST(RangeSetMax, NullDoesNothing) {
    Range range(1.0, 2.0, true, true);
    const ScoreValue* old = range.GetMax();
    range.SetMax(nullptr);
    EXPECT_EQ(range.GetMax(), old);
}

TEST(RangeCopy, ClonesBoundsAndCopiesTheTestedNumbers) {
    Range range(1.0, 2.0, true, false);
    std::unique_ptr<const ScoreValue> old(range.GetMin());
    range.SetMin(new StringValue("x"));
    std::unique_ptr<ScoreValueRange> clone(range.Clone());
    EXPECT_NE(clone->GetMin(), range.GetMin());
    EXPECT_NE(clone->GetMax(), range.GetMax());
    EXPECT_TRUE(*clone == range);
    EXPECT_TRUE(clone->GetLowEnd());
    EXPECT_FALSE(clone->GetHighEnd());
    // The number 1 of the bound that was replaced by a text.
    EXPECT_TRUE(clone->IsInRange(1.0));
    EXPECT_FALSE(clone->IsInRange(0.5));
}

TEST(RangeCopy, CopiesTheSingleValueRule) {
    const Range single(1.0, 1.0, false, false);
    EXPECT_TRUE(Range(single).IsInRange(1.0));
}

TEST(RangeCopy, AssignmentDeletesTheOldBounds) {
    int deleted = 0;
    Range target(new CountedNumber(7.0, deleted), new CountedNumber(8.0, deleted), false, false);
    const Range source(1.0, 2.0, true, true);
    target = source;
    EXPECT_EQ(deleted, 2);
    EXPECT_TRUE(target == source);
    EXPECT_TRUE(target.IsInRange(1.0));
    EXPECT_NE(target.GetMin(), source.GetMin());
}

TEST(RangeCopy, SelfAssignmentKeepsTheBounds) {
    Range range(1.0, 2.0, true, true);
    const Range& alias = range;
    range = alias;
    EXPECT_EQ(range.GetMin()->GetDouble(), 1.0);
    EXPECT_TRUE(range.IsInRange(2.0));
}

} // namespace
} // namespace MCVeltrane_900
