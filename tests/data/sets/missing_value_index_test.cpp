#include "data/sets/counted_values.h"
#include "support/numbers.h"

#include <MCVeltrane_900/MissingValueSet.h>
#include <MCVeltrane_900/Range.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <string>

// A set of many ranges finds them through an index; it must give what a walk over its ranges gives.
namespace MCVeltrane_900 {
namespace {

using namespace veltrane::tests;

/// A number that equals every number above 15.
class HostNumber : public NumericValue {
public:
    using NumericValue::NumericValue;
    bool operator==(const ScoreValue& other) const override { return other.GetDouble() > 15.0; }
    ScoreValue* Clone() const override { return new HostNumber(GetDouble()); }
};

/// A range of a host's own class that holds more than its bounds tell.
class HostRange : public Range {
public:
    HostRange() : Range(-77.0, -77.0, true, true) {}
    bool operator==(const ScoreValueRange& other) const override { return other.GetMin()->GetDouble() == 5.0; }
    bool IsInRange(const ScoreValue* value) const override { return value && value->GetString() == "host"; }
    ScoreValueRange* Clone() const override { return new HostRange; }
};

/// Values close to each other in every way that equality knows.
ScoreValue* RandomValue(std::mt19937& random) {
    const double number = static_cast<int>(random() % 40) - 20;
    const double nudges[] = {0.0, 1e-15, -2.2e-14, 2.2e-14, 2.3e-14, 4e-13};
    const std::string texts[] = {"", " ", "  ", "a", "a ", "a  ", " a", "b", "-3", "7", "host"};
    switch (random() % 10) {
    case 0:
        return new NumericValue();
    case 1: {
        const double odd[] = {kInfinity, -kInfinity, kNaN, -0.0, 1e-320, 1.1e308};
        return new NumericValue(odd[random() % std::size(odd)]);
    }
    case 2:
        return new DateTimeValue(number, static_cast<DateTimeValue::DateTimeValType>(random() % 3));
    case 3:
        return new HostNumber(number);
    case 4:
    case 5:
        return new StringValue(texts[random() % std::size(texts)]);
    default:
        return new NumericValue(number * (1.0 + nudges[random() % std::size(nudges)]));
    }
}

ScoreValueRange* RandomRange(std::mt19937& random) {
    switch (random() % 8) {
    case 0:
        return new HostRange;
    case 1:
        return new Range(RandomValue(random), RandomValue(random), random() % 2 == 0, random() % 2 == 0);
    case 2: {
        const double low = static_cast<int>(random() % 40) - 20;
        return new Range(low, low + static_cast<int>(random() % 2) * 0.5, random() % 2 == 0, random() % 2 == 0);
    }
    default:
        return new Range(RandomValue(random));
    }
}

bool WalkForEqual(const ScoreMissingValueSet& set, const ScoreValueRange& range) {
    const auto ranges = set.GetMissingValues();
    return std::any_of(ranges.begin(), ranges.end(),
                       [&range](const ScoreValueRange* element) { return *element == range; });
}

bool WalkForValue(const ScoreMissingValueSet& set, const ScoreValue& value) {
    const auto ranges = set.GetMissingValues();
    return std::any_of(ranges.begin(), ranges.end(),
                       [&value](const ScoreValueRange* range) { return range->IsInRange(&value); });
}

void ExpectAsWalked(const MissingValueSet& set, std::mt19937& random) {
    for (int i = 0; i < 500; ++i) {
        const std::unique_ptr<ScoreValue> value(RandomValue(random));
        const std::unique_ptr<ScoreValueRange> range(RandomRange(random));
        ASSERT_EQ(set.IsInAnyRange(value.get()), WalkForValue(set, *value)) << value->GetString();
        ASSERT_EQ(set.Contains(range.get()), WalkForEqual(set, *range)) << veltrane::tests::Dump(*range);
    }
}

/// A set to which so many ranges were offered; it refuses equal ones as a walk would.
void Fill(MissingValueSet& set, std::mt19937& random, int offers) {
    for (int i = 0; i < offers; ++i) {
        std::unique_ptr<ScoreValueRange> range(RandomRange(random));
        const bool isNew = !WalkForEqual(set, *range);
        ASSERT_EQ(set.Add(range.get()), isNew);
        if (isNew) {
            range.release();
        }
    }
}

TEST(MissingValueIndex, GivesWhatAWalkGives) {
    std::mt19937 random(11);
    for (const int offers : {1, 15, 16, 17, 60, 400}) {
        MissingValueSet set;
        Fill(set, random, offers);
        ExpectAsWalked(set, random);
        ExpectAsWalked(MissingValueSet(set), random);
        MissingValueSet assigned;
        Fill(assigned, random, 30);
        assigned = set;
        ExpectAsWalked(assigned, random);
    }
}

TEST(MissingValueIndex, GivesWhatAWalkGivesAfterRemovals) {
    std::mt19937 random(12);
    MissingValueSet set;
    Fill(set, random, 200);
    for (int i = 0; i < 40; ++i) {
        const std::unique_ptr<ScoreValueRange> range(RandomRange(random));
        const bool isThere = WalkForEqual(set, *range);
        ASSERT_EQ(set.Remove(range.get()), isThere);
    }
    ExpectAsWalked(set, random);
}

/// Many single values, and the range of the first.
struct ManyValues {
    ManyValues() {
        for (int i = 0; i < 40; ++i) {
            auto* range = new Range(new NumericValue(i));
            set.Add(range);
            first = i == 0 ? range : first;
        }
    }

    bool Holds(double x) const {
        const NumericValue value(x);
        return set.IsInAnyRange(&value);
    }

    MissingValueSet set;
    Range* first = nullptr;
};

// Ends that meet, insides that overlap, and numbers within the tolerance of an end.
TEST(MissingValueIndex, GivesWhatAWalkGivesOnIntervals) {
    std::mt19937 random(14);
    const double odd[] = {kInfinity, -kInfinity, kNaN, 1e308, -1e308, 0.0, 1e-320};
    const auto end = [&] {
        return random() % 20 == 0 ? odd[random() % std::size(odd)] : static_cast<int>(random() % 400) / 4.0 - 50.0;
    };
    for (const int size : {20, 40, 200}) {
        MissingValueSet set;
        for (int i = 0; i < size; ++i) {
            const double low = end();
            const double high = random() % 4 == 0 ? end() : low + static_cast<int>(random() % 3) * 0.25;
            auto range = std::make_unique<Range>(low, high, random() % 2 == 0, random() % 2 == 0);
            if (set.Add(range.get())) {
                range.release();
            }
        }
        for (int i = 0; i < 5000; ++i) {
            const double nudges[] = {0.0, 1e-15, -1e-15, 2.2e-14, -2.2e-14, 3e-14, -3e-14, 1e-3};
            const NumericValue number(end() * (1.0 + nudges[random() % std::size(nudges)]));
            ASSERT_EQ(set.IsInAnyRange(&number), WalkForValue(set, number)) << number.GetDouble();
            const DateTimeValue date(number.GetDouble(), DateTimeValue::VAL_TIME);
            ASSERT_EQ(set.IsInAnyRange(&date), WalkForValue(set, date)) << number.GetDouble();
        }
    }
}

TEST(MissingValueIndex, NullIsInNoRange) {
    EXPECT_FALSE(ManyValues().set.IsInAnyRange(nullptr));
    EXPECT_FALSE(ManyValues().set.Contains(nullptr));
}

TEST(MissingValueIndex, KnowsANewLowerBound) {
    ManyValues many;
    const std::unique_ptr<const ScoreValue> former(many.first->GetMin()); // a setter leaves it to the caller
    many.first->SetMin(new NumericValue(-100.0));
    EXPECT_TRUE(many.Holds(-50.0));
    const Range asked(-100.0, 0.0, true, true);
    EXPECT_TRUE(many.set.Contains(&asked));
}

TEST(MissingValueIndex, KnowsANewUpperBound) {
    ManyValues many;
    const std::unique_ptr<const ScoreValue> former(many.first->GetMax()); // a setter leaves it to the caller
    many.first->SetMax(new NumericValue(1000.0));
    EXPECT_TRUE(many.Holds(500.0));
    EXPECT_TRUE(many.set.Add(new Range(new NumericValue(2000.0))));
    EXPECT_TRUE(many.Holds(500.0));
    EXPECT_TRUE(many.Holds(2000.0));
}

TEST(MissingValueIndex, KnowsAnAssignedRange) {
    ManyValues many;
    *many.first = Range(new NumericValue(500.0));
    EXPECT_TRUE(many.Holds(500.0));
    EXPECT_FALSE(many.Holds(0.0));
    const Range asked(new NumericValue(500.0));
    EXPECT_TRUE(many.set.Contains(&asked));
}

TEST(MissingValueIndex, ACopiedRangeIsInNoSet) {
    auto many = std::make_unique<ManyValues>();
    Range copy(*many->first);
    many.reset();
    const std::unique_ptr<const ScoreValue> former(copy.GetMin()); // a setter leaves it to the caller
    copy.SetMin(new NumericValue(7.0));
    // From 7 to 0: both ends are included, and nothing lies between them.
    EXPECT_TRUE(copy.IsInRange(7.0));
    EXPECT_TRUE(copy.IsInRange(0.0));
    EXPECT_FALSE(copy.IsInRange(3.0));
    EXPECT_FALSE(copy.IsInRange(8.0));
}

/// A range of a host's own class without bounds, which is equal to the range of 0.
class HostRangeWithoutBounds : public Range {
public:
    HostRangeWithoutBounds() : Range(0.0, 0.0, true, true) {}
    const ScoreValue* GetMin() const override { return fAsked++ == 0 ? nullptr : Range::GetMin(); }

private:
    mutable int fAsked = 0;
};

TEST(MissingValueIndex, ForgetsARangeThatIsRemovedByAKeyWithoutBounds) {
    ManyValues many;
    const HostRangeWithoutBounds key;
    EXPECT_TRUE(many.set.Remove(&key));
    EXPECT_EQ(many.set.Size(), 39);
    EXPECT_FALSE(many.Holds(0.0));
    EXPECT_TRUE(many.Holds(1.0));
}

TEST(MissingValueIndex, ManyValuesAreAddedAndFound) {
    MissingValueSet set;
    for (int i = 0; i < 20000; ++i) {
        auto range = std::make_unique<Range>(new NumericValue(i % 15000));
        if (set.Add(range.get())) {
            range.release();
        }
    }
    EXPECT_EQ(set.Size(), 15000);
    for (int i = 0; i < 20000; ++i) {
        const NumericValue value(i);
        ASSERT_EQ(set.IsInAnyRange(&value), i < 15000);
    }
}

// All of these would take minutes if every range were compared with all the others.
TEST(MissingValueIndex, ManyRangesOfEachKindAreAddedAndSearched) {
    constexpr int kCount = 20000;
    MissingValueSet set;
    for (int i = 0; i < kCount; ++i) {
        ASSERT_TRUE(set.Add(new Range(new StringValue("v" + std::to_string(i)))));
        ASSERT_TRUE(set.Add(new Range(new DateTimeValue(i, DateTimeValue::VAL_DATETIME))));
        ASSERT_TRUE(set.Add(new Range(i + 0.25, i + 0.5, true, true)));
        ASSERT_TRUE(set.Add(new Range(-kInfinity, -i, true, true)));
        ASSERT_TRUE(set.Add(new Range(kInfinity, kInfinity, true, true)));
    }
    const Range known(new StringValue("v7777 "));
    EXPECT_TRUE(set.Contains(&known));
    for (int i = 0; i < kCount; ++i) {
        const NumericValue outside(i + 0.75);
        ASSERT_FALSE(set.IsInAnyRange(&outside));
        const NumericValue inside(i + 0.375);
        ASSERT_TRUE(set.IsInAnyRange(&inside));
    }
}

} // namespace
} // namespace MCVeltrane_900
