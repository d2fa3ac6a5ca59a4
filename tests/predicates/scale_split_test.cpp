#include "conditions.h"
#include "support/numbers.h"

#include <MCVeltrane_900/DateTimeValue.h>

#include <gtest/gtest.h>

#include <memory>

using namespace veltrane::tests;

namespace {

/// A range that counts its own destruction.
class CountedRange : public Range {
public:
    CountedRange(double low, double high, int& deleted) : Range(low, high, true, true), fDeleted(deleted) {}
    ~CountedRange() override { ++fDeleted; }

private:
    int& fDeleted;
};

/// A split with nothing but what every split has.
class BareSplit : public ScoreSplitVar {
public:
    using ScoreSplitVar::ScoreSplitVar;
    ScoreSplitVar* Clone() const override { return new BareSplit(*this); }
    SplitVarType GetSplitVarType() const override { return SCALE_SPLIT; }
    int GetSplitChildIndex(double) const override { return -1; }
    int GetSplitChildIndex(const ScoreValue*) const override { return -1; }
    void Display(std::ostream&) const override {}
};

int ChildOf(const ScoreSplitVar& split, double x) {
    const NumericValue value(x);
    return split.GetSplitChildIndex(&value);
}

} // namespace

TEST(ScoreSplitVar, NumbersOfTheTypes) {
    EXPECT_EQ(ScoreSplitVar::SCALE_SPLIT, 0);
    EXPECT_EQ(ScoreSplitVar::DISCRETE_SPLIT, 1);
    const Continuous x;
    EXPECT_EQ(ScaleSplit(&x).GetSplitVarType(), ScoreSplitVar::SCALE_SPLIT);
    EXPECT_EQ(DiscreteSplit(&x).GetSplitVarType(), ScoreSplitVar::DISCRETE_SPLIT);
}

TEST(ScoreSplitVar, FieldsOfTheVariable) {
    Variable var(kText, ScoreDictVar::LEVEL_ORDINAL, "size");
    var.SetLabel("Size of it");
    const ScaleSplit split(&var);
    EXPECT_EQ(split.GetSplitVar(), &var);
    EXPECT_EQ(&split.GetSplitName(), &var.GetName());
    EXPECT_EQ(&split.GetSplitLabel(), &var.GetLabel());
    EXPECT_EQ(split.GetSplitType(), 1);
    EXPECT_EQ(split.GetSplitMLevel(), 1);
}

TEST(ScoreSplitVar, VariableCanBeSet) {
    const Continuous x("x");
    const Continuous y("y");
    ScaleSplit split(&x);
    split.SetSplitVar(&y);
    EXPECT_EQ(split.GetSplitName(), "y");
}

TEST(ScoreSplitVar, MissingValuesGoNowhereAtFirst) {
    const Continuous x;
    ScaleSplit split(&x);
    EXPECT_EQ(split.GetMissvalMap(), -1);
    split.SetMissvalMap(3);
    EXPECT_EQ(split.GetMissvalMap(), 3);
}

TEST(ScoreSplitVar, HasNoVariableUntilItIsGivenOne) {
    const BareSplit split;
    EXPECT_EQ(split.GetSplitVar(), nullptr);
    EXPECT_EQ(split.GetMissvalMap(), -1);
}

TEST(ScoreSplitVar, CopiesTakeVariableAndMap) {
    const Continuous x("x");
    BareSplit split(&x);
    split.SetMissvalMap(3);
    const BareSplit copy(split);
    EXPECT_EQ(copy.GetSplitVar(), &x);
    EXPECT_EQ(copy.GetMissvalMap(), 3);
    BareSplit assigned;
    assigned = split;
    EXPECT_EQ(assigned.GetSplitVar(), &x);
    EXPECT_EQ(assigned.GetMissvalMap(), 3);
}

TEST(ScaleSplit, WithoutRangesOnlyMissingValuesHaveAChild) {
    Continuous x;
    x.Missing("9");
    ScaleSplit split(&x);
    split.SetMissvalMap(4);
    EXPECT_EQ(ChildOf(split, 1), -1);
    EXPECT_EQ(split.GetSplitChildIndex(1.0), -1);
    EXPECT_EQ(ChildOf(split, kMissing), 4);
    EXPECT_EQ(ChildOf(split, 9), 4);
    EXPECT_EQ(split.GetSplitChildIndex(kMissing), 4);
}

TEST(ScaleSplit, OpenRangesOnBothSidesLeaveOneNumberOut) {
    const Continuous x;
    ScaleSplit split(&x);
    split.PutSplit(new Range(-kInfinity, 2.0, false, false), 0);
    split.PutSplit(new Range(2.0, kInfinity, false, false), 0);
    for (const double other : {-1e300, 1.0, 1.999999, 2.000001, 3.0, 1e300}) {
        EXPECT_EQ(ChildOf(split, other), 0) << other;
        EXPECT_EQ(split.GetSplitChildIndex(other), 0) << other;
    }
    EXPECT_EQ(ChildOf(split, 2.0), -1);
    EXPECT_EQ(split.GetSplitChildIndex(2.0), -1);
}

TEST(ScaleSplit, TheFirstOfOverlappingRangesWins) {
    const Continuous x;
    ScaleSplit split(&x);
    split.PutSplit(new Range(0.0, 5.0, true, true), 7);
    split.PutSplit(new Range(3.0, 9.0, true, true), 8);
    EXPECT_EQ(ChildOf(split, 4.0), 7);
    EXPECT_EQ(split.GetSplitChildIndex(4.0), 7);
    EXPECT_EQ(ChildOf(split, 6.0), 8);
    EXPECT_EQ(split.GetSplitChildIndex(6.0), 8);
}

TEST(ScaleSplit, NullIsMissing) {
    const Continuous x;
    ScaleSplit split(&x);
    split.PutSplit(new Range(-kInfinity, kInfinity, false, false), 0);
    split.SetMissvalMap(2);
    EXPECT_EQ(split.GetSplitChildIndex(static_cast<const ScoreValue*>(nullptr)), 2);
}

TEST(ScaleSplit, DateTimesLieInRangesToo) {
    const Continuous x;
    const ScaleSplit split = [&x] {
        ScaleSplit made(&x);
        made.PutSplit(new Range(0.0, 100.0, true, true), 1);
        return made;
    }();
    const DateTimeValue seconds(50.0, DateTimeValue::VAL_TIME);
    EXPECT_EQ(split.GetSplitChildIndex(&seconds), 1);
    const StringValue text("50");
    EXPECT_EQ(split.GetSplitChildIndex(&text), -1);
}

// The form by number serves encoded cases, where missing values were marked when the case was encoded.
TEST(KeptScaleSplitNumbers, TheVariablesMissingValuesAreNotAsked) {
    Continuous x;
    x.Missing("9");
    ScaleSplit split(&x);
    split.PutSplit(new Range(0.0, 10.0, true, true), 0);
    split.SetMissvalMap(4);
    EXPECT_EQ(split.GetSplitChildIndex(9.0), 0);
    EXPECT_EQ(ChildOf(split, 9.0), 4);
}

TEST(ScaleSplit, FirstRange) {
    const Continuous x;
    ScaleSplit split(&x);
    EXPECT_EQ(split.GetSplitValueRangeFirst(), nullptr);
    auto* first = new Range(0.0, 1.0, true, true);
    split.PutSplit(first, 3);
    split.PutSplit(new Range(1.0, 2.0, true, true), 3);
    EXPECT_EQ(split.GetSplitValueRangeFirst(), first);
}

TEST(ScaleSplit, RangeForIndex) {
    const Continuous x;
    ScaleSplit split(&x);
    auto* second = new Range(1.0, 2.0, true, true);
    split.PutSplit(new Range(0.0, 1.0, true, true), 3);
    split.PutSplit(second, 5);
    split.PutSplit(new Range(2.0, 3.0, true, true), 5);
    EXPECT_EQ(split.GetSplitValueRangeForIndex(5), second);
    EXPECT_EQ(split.GetSplitValueRangeForIndex(4), nullptr);
}

TEST(ScaleSplit, DeletesItsRanges) {
    const Continuous x;
    int deleted = 0;
    {
        ScaleSplit split(&x);
        split.PutSplit(new CountedRange(0.0, 1.0, deleted), 0);
        split.PutSplit(new CountedRange(1.0, 2.0, deleted), 0);
        EXPECT_EQ(deleted, 0);
    }
    EXPECT_EQ(deleted, 2);
}

TEST(ScaleSplit, NullRangeMatchesNothing) {
    const Continuous x;
    ScaleSplit split(&x);
    split.PutSplit(nullptr, 1);
    split.PutSplit(new Range(0.0, 1.0, true, true), 2);
    EXPECT_EQ(ChildOf(split, 0.5), 2);
    EXPECT_EQ(split.GetSplitChildIndex(0.5), 2);
    const ScaleSplit copy(split);
    EXPECT_EQ(copy.GetSplitChildIndex(0.5), 2);
    EXPECT_EQ(Dump(ScaleSplit(split)), Dump(split));
}

TEST(ScaleSplit, CloneHasRangesOfItsOwn) {
    const Continuous x;
    ScaleSplit split(&x);
    split.PutSplit(new Range(0.0, 1.0, true, true), 3);
    split.PutSplit(new Range(1.0, 2.0, true, true), 5);
    split.SetMissvalMap(6);
    const std::unique_ptr<ScoreSplitVar> clone(split.Clone());
    ASSERT_NE(dynamic_cast<ScaleSplit*>(clone.get()), nullptr);
    EXPECT_EQ(Dump(*clone), Dump(split));
    EXPECT_EQ(clone->GetSplitVar(), &x);
    EXPECT_EQ(clone->GetMissvalMap(), 6);
    EXPECT_NE(static_cast<ScaleSplit&>(*clone).GetSplitValueRangeFirst(), split.GetSplitValueRangeFirst());
    EXPECT_EQ(clone->GetSplitChildIndex(1.5), 5);
}

TEST(KeptScaleSplitAssignment, AppendsRanges) {
    const Continuous x("x");
    const Continuous y("y");
    ScaleSplit target(&x);
    target.PutSplit(new Range(0.0, 1.0, true, true), 1);
    ScaleSplit source(&y);
    source.PutSplit(new Range(0.0, 9.0, true, true), 2);
    source.SetMissvalMap(3);
    target = source;
    EXPECT_EQ(target.GetSplitVar(), &y);
    EXPECT_EQ(target.GetMissvalMap(), 3);
    EXPECT_EQ(target.GetSplitChildIndex(0.5), 1);
    EXPECT_EQ(target.GetSplitChildIndex(5.0), 2);
}

TEST(ScaleSplit, SelfAssignmentChangesNothing) {
    const Continuous x;
    ScaleSplit split(&x);
    split.PutSplit(new Range(0.0, 1.0, true, true), 1);
    const std::string before = Dump(split);
    const ScaleSplit& same = split;
    split = same;
    EXPECT_EQ(Dump(split), before);
}

TEST(ScaleSplit, Display) {
    const Continuous x("income");
    ScaleSplit split(&x);
    split.PutSplit(new Range(0.0, 1.0, true, false), 3);
    split.PutSplit(new Range(1.0, 2.0, false, true), 5);
    EXPECT_EQ(Dump(split),
              "SplitVarName = income\n"
              "Missing Value index: -1\n"
              "Index = 3\n"
              "  Start Range Display   \nMinValue: 0;  MaxValue: 1; High End not included; lower End included"
              "\n End of Range Display\n\n"
              "Index = 5\n"
              "  Start Range Display   \nMinValue: 1;  MaxValue: 2; High End included; lower End not included"
              "\n End of Range Display\n\n"
              "\n");
}

TEST(ScaleSplit, DisplayWithoutRanges) {
    const Continuous x("income");
    EXPECT_EQ(Dump(ScaleSplit(&x)), "SplitVarName = income\nMissing Value index: -1\n\n");
}
