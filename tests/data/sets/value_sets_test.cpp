#include "data/sets/counted_values.h"

#include <MCVeltrane_900/MissingValueSet.h>
#include <MCVeltrane_900/Range.h>
#include <MCVeltrane_900/VarStats.h>
#include <MCVeltrane_900/VersionInfo.h>

#include <gtest/gtest.h>

#include <limits>
#include <memory>

namespace MCVeltrane_900 {
namespace {

using namespace veltrane::tests;

TEST(MissingValueSet, AddTakesTheRange) {
    int deleted = 0;
    {
        MissingValueSet set;
        EXPECT_EQ(set.Size(), 0);
        auto* range = new Range(new CountedNumber(1.0, deleted));
        EXPECT_TRUE(set.Add(range));
        EXPECT_EQ(set.Size(), 1);
        EXPECT_EQ(set.GetMissingValues(), std::vector<const ScoreValueRange*>{range});
    }
    EXPECT_EQ(deleted, 1);
}

TEST(MissingValueSet, AddRefusesNull) {
    MissingValueSet set;
    EXPECT_FALSE(set.Add(nullptr));
    EXPECT_EQ(set.Size(), 0);
}

TEST(MissingValueSet, AddRefusesAnEqualRangeAndTheCallerKeepsIt) {
    int deleted = 0;
    MissingValueSet set;
    ASSERT_TRUE(set.Add(new Range(1.0, 2.0, true, true)));
    auto equal = std::make_unique<Range>(new CountedNumber(1.0, deleted), new NumericValue(2.0), true, true);
    EXPECT_FALSE(set.Add(equal.get()));
    EXPECT_EQ(set.Size(), 1);
    EXPECT_EQ(deleted, 0);
}

TEST(MissingValueSet, ContainsByEquality) {
    MissingValueSet set;
    ASSERT_TRUE(set.Add(new Range(1.0, 2.0, true, true)));
    const Range equal(1.0, 2.0, true, true);
    const Range other(1.0, 2.0, true, false);
    EXPECT_TRUE(set.Contains(&equal));
    EXPECT_FALSE(set.Contains(&other));
    EXPECT_FALSE(set.Contains(nullptr));
}

/// A range that equals every other one, so that a set can hold several that a removal matches.
class AnyRange : public Range {
public:
    AnyRange(double value, int& deleted) : Range(value, value, true, true), fDeleted(deleted) {}
    ~AnyRange() override { ++fDeleted; }
    bool operator==(const ScoreValueRange& other) const override { return other.GetMax()->GetDouble() > 100.0; }

private:
    int& fDeleted;
};

TEST(MissingValueSet, RemoveDeletesEveryEqualRangeAndKeepsTheOrder) {
    int deleted = 0;
    MissingValueSet set;
    ASSERT_TRUE(set.Add(new Range(1.0, 2.0, true, true)));
    ASSERT_TRUE(set.Add(new AnyRange(5.0, deleted)));
    ASSERT_TRUE(set.Add(new Range(3.0, 4.0, true, true)));
    ASSERT_TRUE(set.Add(new AnyRange(6.0, deleted)));
    const Range big(101.0, 101.0, true, true);
    EXPECT_TRUE(set.Remove(&big));
    EXPECT_EQ(deleted, 2);
    ASSERT_EQ(set.Size(), 2);
    EXPECT_EQ(set.GetMissingValues()[0]->GetMin()->GetDouble(), 1.0);
    EXPECT_EQ(set.GetMissingValues()[1]->GetMin()->GetDouble(), 3.0);
}

TEST(MissingValueSet, RemoveOfAnElementItself) {
    MissingValueSet set;
    auto* range = new Range(1.0, 2.0, true, true);
    ASSERT_TRUE(set.Add(range));
    EXPECT_TRUE(set.Remove(range));
    EXPECT_EQ(set.Size(), 0);
}

TEST(MissingValueSet, RemoveOfAnUnknownRangeOrNull) {
    MissingValueSet set;
    ASSERT_TRUE(set.Add(new Range(1.0, 2.0, true, true)));
    const Range other(5.0, 6.0, true, true);
    EXPECT_FALSE(set.Remove(&other));
    EXPECT_FALSE(set.Remove(nullptr));
    EXPECT_EQ(set.Size(), 1);
}

TEST(MissingValueSet, CopiesAreDeep) {
    MissingValueSet set;
    ASSERT_TRUE(set.Add(new Range(1.0, 2.0, true, true)));
    std::unique_ptr<ScoreMissingValueSet> clone(set.Clone());
    ASSERT_EQ(clone->Size(), 1);
    EXPECT_NE(clone->GetMissingValues()[0], set.GetMissingValues()[0]);
    EXPECT_TRUE(*clone->GetMissingValues()[0] == *set.GetMissingValues()[0]);

    int deleted = 0;
    MissingValueSet target;
    ASSERT_TRUE(target.Add(new Range(new CountedNumber(9.0, deleted))));
    target = set;
    EXPECT_EQ(deleted, 1);
    EXPECT_EQ(target.Size(), 1);
    EXPECT_TRUE(target.Contains(set.GetMissingValues()[0]));
}

TEST(MissingValueSet, AsksEachRangeInTurn) {
    MissingValueSet set;
    ASSERT_TRUE(set.Add(new Range(1.0, 2.0, true, true)));
    ASSERT_TRUE(set.Add(new Range(new StringValue("x"))));
    const NumericValue in(1.5);
    const NumericValue out(3.0);
    const StringValue text("x ");
    EXPECT_TRUE(set.IsInAnyRange(&in));
    EXPECT_TRUE(set.IsInAnyRange(&text));
    EXPECT_FALSE(set.IsInAnyRange(&out));
    EXPECT_FALSE(set.IsInAnyRange(nullptr));
}

TEST(MissingValueSet, Displays) {
    MissingValueSet set;
    EXPECT_EQ(Dump(set), " Begin MissingValueSet Display:\nEnd MissingValueSet Display.\n");
    ASSERT_TRUE(set.Add(new Range(1.0, 2.0, true, true)));
    EXPECT_EQ(Dump(set), " Begin MissingValueSet Display:\n" + Dump(Range(1.0, 2.0, true, true)) +
                             "End MissingValueSet Display.\n");
}

TEST(VarStats, Defaults) {
    const VarStats stats;
    EXPECT_EQ(stats.GetMin(), NumericValue::GetSysmisValue());
    EXPECT_EQ(stats.GetMax(), 1.7976931348623157e+308);
    EXPECT_EQ(stats.GetMean(), 0.0);
    EXPECT_EQ(stats.GetStddev(), 1.0);
    EXPECT_EQ(stats.GetMissingReplacement(), nullptr);
}

TEST(VarStats, TakesMinMaxMeanStddevInThatOrder) {
    const VarStats stats(1.0, 2.0, 3.0, 4.0);
    EXPECT_EQ(stats.GetMin(), 1.0);
    EXPECT_EQ(stats.GetMax(), 2.0);
    EXPECT_EQ(stats.GetMean(), 3.0);
    EXPECT_EQ(stats.GetStddev(), 4.0);
    EXPECT_EQ(stats.GetMissingReplacement(), nullptr);
}

TEST(VarStats, SettersStoreWithoutATest) {
    VarStats stats;
    stats.SetMin(10.0);
    stats.SetMax(-10.0);
    stats.SetMean(NumericValue::GetSysmisValue());
    stats.SetStddev(-1.0);
    EXPECT_EQ(stats.GetMin(), 10.0);
    EXPECT_EQ(stats.GetMax(), -10.0);
    EXPECT_EQ(stats.GetMean(), NumericValue::GetSysmisValue());
    EXPECT_EQ(stats.GetStddev(), -1.0);
}

/// A number whose clones count as well.
class CloningNumber : public CountedNumber {
public:
    CloningNumber(double value, int& deleted) : CountedNumber(value, deleted), fCount(deleted) {}
    ScoreValue* Clone() const override { return new CloningNumber(GetDouble(), fCount); }

private:
    int& fCount;
};

TEST(VarStats, MissingReplacementIsAClone) {
    int deleted = 0;
    VarStats stats;
    {
        const CloningNumber value(5.0, deleted);
        stats.SetMissingReplacement(&value);
        EXPECT_NE(stats.GetMissingReplacement(), &value);
    }
    EXPECT_EQ(deleted, 1);
    EXPECT_EQ(stats.GetMissingReplacement()->GetDouble(), 5.0);
    const StringValue text("x");
    stats.SetMissingReplacement(&text);
    EXPECT_EQ(deleted, 2);
    EXPECT_EQ(stats.GetMissingReplacement()->GetString(), "x");
    stats.SetMissingReplacement(stats.GetMissingReplacement());
    EXPECT_EQ(stats.GetMissingReplacement()->GetString(), "x");
    stats.SetMissingReplacement(nullptr);
    EXPECT_EQ(stats.GetMissingReplacement(), nullptr);
}

TEST(VarStats, CopiesCloneTheReplacement) {
    VarStats stats(1.0, 2.0, 3.0, 4.0);
    const NumericValue replacement(6.0);
    stats.SetMissingReplacement(&replacement);
    const VarStats copy(stats);
    VarStats assigned;
    assigned.SetMissingReplacement(&replacement);
    assigned = stats;
    std::unique_ptr<ScoreVarStats> clone(stats.Clone());
    for (const ScoreVarStats* other :
         {static_cast<const ScoreVarStats*>(&copy), static_cast<const ScoreVarStats*>(&assigned),
          static_cast<const ScoreVarStats*>(clone.get())}) {
        EXPECT_EQ(other->GetMin(), 1.0);
        EXPECT_EQ(other->GetMax(), 2.0);
        EXPECT_EQ(other->GetMean(), 3.0);
        EXPECT_EQ(other->GetStddev(), 4.0);
        EXPECT_NE(other->GetMissingReplacement(), stats.GetMissingReplacement());
        EXPECT_EQ(other->GetMissingReplacement()->GetDouble(), 6.0);
    }
    assigned = VarStats();
    EXPECT_EQ(assigned.GetMissingReplacement(), nullptr);
}

TEST(VersionInfo, HoldsAText) {
    VersionInfo version;
    EXPECT_EQ(version.GetVersionInfo(), "2.1");
    EXPECT_EQ(VersionInfo("4.2").GetVersionInfo(), "4.2");
    version.SetVersionInfo("");
    EXPECT_EQ(version.GetVersionInfo(), "");
}

TEST(VersionInfo, ComparesAndCopiesTheText) {
    const VersionInfo version("3.0");
    EXPECT_TRUE(version == VersionInfo("3.0"));
    EXPECT_FALSE(version == VersionInfo());
    std::unique_ptr<ScoreVersionInfo> clone(version.Clone());
    EXPECT_EQ(clone->GetVersionInfo(), "3.0");
    VersionInfo assigned;
    assigned = version;
    EXPECT_EQ(assigned.GetVersionInfo(), "3.0");
}

} // namespace
} // namespace MCVeltrane_900
