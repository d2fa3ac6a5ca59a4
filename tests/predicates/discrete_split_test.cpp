#include "conditions.h"
#include "support/numbers.h"

#include <MCVeltrane_900/DateTimeValue.h>

#include <gtest/gtest.h>

#include <memory>

using namespace veltrane::tests;

namespace {

int ChildOf(const ScoreSplitVar& split, const char* text) {
    const StringValue value(text);
    return split.GetSplitChildIndex(&value);
}

int ChildOf(const ScoreSplitVar& split, double number) {
    const NumericValue value(number);
    return split.GetSplitChildIndex(&value);
}

} // namespace

TEST(DiscreteSplit, AKnownCodeKeepsItsIndex) {
    const Ordinal x(kNumeric);
    DiscreteSplit split(&x);
    split.PutSplit(2.0, 0);
    split.PutSplit(2.0, 1);
    EXPECT_EQ(split.GetSplitChildIndex(2.0), 0);
}

TEST(DiscreteSplit, CodesMatchExactly) {
    const Ordinal x(kNumeric);
    DiscreteSplit split(&x);
    split.PutSplit(1.0, 0);
    split.PutSplit(0.0, 3);
    EXPECT_EQ(split.GetSplitChildIndex(1.0 + 1e-15), -1);
    EXPECT_EQ(split.GetSplitChildIndex(1.0), 0);
    EXPECT_EQ(split.GetSplitChildIndex(-0.0), 3);
}

TEST(DiscreteSplit, NegativeCodeOfACategoricalVariableIsMissing) {
    const Categorical x(kText);
    DiscreteSplit split(&x);
    split.PutSplit(-1.0, 0);
    EXPECT_EQ(split.GetSplitChildIndex(-1.0), -1);
    split.SetMissvalMap(5);
    EXPECT_EQ(split.GetSplitChildIndex(-1.0), 5);
    EXPECT_EQ(split.GetSplitChildIndex(-0.5), 5);
    EXPECT_EQ(split.GetSplitChildIndex(-kInfinity), 5);
}

TEST(DiscreteSplit, NegativeCodeOfAnOrdinalVariableIsAKeyLikeAnyOther) {
    const Ordinal x(kNumeric);
    DiscreteSplit split(&x);
    split.SetMissvalMap(5);
    EXPECT_EQ(split.GetSplitChildIndex(-1.0), -1);
    split.PutSplit(-1.0, 2);
    EXPECT_EQ(split.GetSplitChildIndex(-1.0), 2);
}

TEST(DiscreteSplit, ANumberThatIsNoneEqualsNoCode) {
    const Ordinal x(kNumeric);
    DiscreteSplit split(&x);
    const double nan = kNaN;
    split.PutSplit(nan, 1);
    split.PutSplit(3.0, 2);
    split.PutSplit(4.0, 0);
    EXPECT_EQ(split.GetSplitChildIndex(nan), -1);
    EXPECT_EQ(split.GetSplitChildIndex(3.0), 2);
    EXPECT_EQ(split.GetSplitChildIndex(4.0), 0);
}

TEST(DiscreteSplit, NullIsMissing) {
    const Categorical x(kText);
    DiscreteSplit split(&x);
    const ScoreValue* none = nullptr;
    EXPECT_EQ(split.GetSplitChildIndex(none), -1);
    split.SetMissvalMap(2);
    EXPECT_EQ(split.GetSplitChildIndex(none), 2);
}

TEST(DiscreteSplit, TheFirstEqualValueDecides) {
    const Categorical x(kText);
    DiscreteSplit split(&x);
    split.PutSplit(new StringValue("b"), 3);
    split.PutSplit(new StringValue("a"), 4);
    split.PutSplit(new StringValue("a"), 5);
    EXPECT_EQ(ChildOf(split, "a"), 4);
    EXPECT_EQ(ChildOf(split, "b"), 3);
    EXPECT_EQ(ChildOf(split, "c"), -1);
}

TEST(DiscreteSplit, TextsAreComparedUnderTheBlankRulesOfTheVariable) {
    Categorical x(kText);
    DiscreteSplit split(&x);
    split.PutSplit(new StringValue("a  "), 0);
    split.PutSplit(new StringValue("  "), 1);
    EXPECT_EQ(ChildOf(split, "a"), 0);
    EXPECT_EQ(ChildOf(split, ""), 1);
    x.SetEmptyStringOK(true);
    EXPECT_EQ(ChildOf(split, "a"), 0);
    EXPECT_EQ(ChildOf(split, ""), -1);
    EXPECT_EQ(ChildOf(split, "   "), 1);
    x.SetNoSpaceTrim(true);
    EXPECT_EQ(ChildOf(split, "a"), -1);
    EXPECT_EQ(ChildOf(split, "a  "), 0);
}

TEST(DiscreteSplit, NumbersAreComparedByTheOperator) {
    const Ordinal x(kNumeric);
    DiscreteSplit split(&x);
    split.PutSplit(new NumericValue(1.0), 0);
    EXPECT_EQ(ChildOf(split, 1.0 + 1e-15), 0);
    EXPECT_EQ(ChildOf(split, 1.0 + 1e-13), -1);
    EXPECT_EQ(ChildOf(split, "1"), -1);
}

// A text that stands in a numeric variable's split goes by the operator, which ignores trailing blanks whatever the
// variable says.
TEST(DiscreteSplit, TheBlankRulesAreThoseOfStringVariablesOnly) {
    Categorical x(kNumeric);
    x.SetNoSpaceTrim(true);
    DiscreteSplit split(&x);
    split.PutSplit(new StringValue("a"), 0);
    EXPECT_EQ(ChildOf(split, "a  "), 0);
}

// NumericValue::Equal is true whatever it is asked.
TEST(DiscreteSplit, TheStoredValueIsTheReceiver) {
    const Categorical x(kText);
    DiscreteSplit split(&x);
    split.PutSplit(new StringValue("a"), 1);
    split.PutSplit(new NumericValue(5.0), 2);
    EXPECT_EQ(ChildOf(split, "a"), 1);
    EXPECT_EQ(ChildOf(split, "b"), 2);
    EXPECT_EQ(ChildOf(split, 7.0), 2);
}

TEST(KeptDiscreteSplitMissing, TheVariablesMissingValuesAreNotAsked) {
    Ordinal x(kNumeric);
    x.Missing("9");
    DiscreteSplit split(&x);
    split.SetMissvalMap(4);
    split.PutSplit(new NumericValue(9.0), 0);
    EXPECT_EQ(ChildOf(split, 9.0), 0);
    EXPECT_EQ(ChildOf(split, kMissing), -1);
    split.PutSplit(new NumericValue(kMissing), 1);
    EXPECT_EQ(ChildOf(split, kMissing), 1);
}

TEST(DiscreteSplit, EachFormAnswersThroughItsOwnStore) {
    const Ordinal x(kNumeric);
    DiscreteSplit split(&x);
    split.PutSplit(1.0, 0);
    split.PutSplit(new NumericValue(2.0), 0);
    EXPECT_EQ(split.GetSplitChildIndex(1.0), 0);
    EXPECT_EQ(ChildOf(split, 1.0), -1);
    EXPECT_EQ(split.GetSplitChildIndex(2.0), -1);
    EXPECT_EQ(ChildOf(split, 2.0), 0);
}

TEST(DiscreteSplit, SplitValues) {
    const Categorical x(kText);
    DiscreteSplit split(&x);
    EXPECT_TRUE(split.GetSplitValues().empty());
    EXPECT_TRUE(split.GetSplitValuesFirst().empty());
    EXPECT_TRUE(split.GetSplitValuesForIndex(0).empty());
    auto* a = new StringValue("a");
    auto* b = new StringValue("b");
    auto* again = new StringValue("a");
    split.PutSplit(a, 1);
    split.PutSplit(b, 2);
    split.PutSplit(again, 1);
    using Values = std::vector<const ScoreValue*>;
    EXPECT_EQ(split.GetSplitValues(), (Values{a, b, again}));
    EXPECT_EQ(split.GetSplitValuesFirst(), (Values{a}));
    EXPECT_EQ(split.GetSplitValuesForIndex(1), (Values{a, again}));
    EXPECT_EQ(split.GetSplitValuesForIndex(2), (Values{b}));
    EXPECT_TRUE(split.GetSplitValuesForIndex(3).empty());
}

TEST(DiscreteSplit, StartAndEndIndex) {
    const Categorical x(kText);
    DiscreteSplit split(&x);
    int start = 5;
    int end = 5;
    split.GetStartAndEndIndex(start, end);
    EXPECT_EQ(start, -1);
    EXPECT_EQ(end, -1);
    split.SetStartAndEndIndex(2, 4);
    split.GetStartAndEndIndex(start, end);
    EXPECT_EQ(start, 2);
    EXPECT_EQ(end, 4);
}

TEST(DiscreteSplit, DeletesItsValues) {
    const Categorical x(kText);
    int deleted = 0;
    {
        DiscreteSplit split(&x);
        split.PutSplit(new CountedText("a", deleted), 0);
        split.PutSplit(new CountedText("a", deleted), 0);
        EXPECT_EQ(deleted, 0);
    }
    EXPECT_EQ(deleted, 2);
}

TEST(DiscreteSplit, NullValueMatchesNothing) {
    const Categorical x(kText);
    DiscreteSplit split(&x);
    split.PutSplit(nullptr, 1);
    split.PutSplit(new StringValue(""), 2);
    EXPECT_EQ(ChildOf(split, ""), 2);
    EXPECT_EQ(Dump(split), Dump(DiscreteSplit(split)));
}

TEST(DiscreteSplit, CloneHasValuesOfItsOwn) {
    const Categorical x(kText);
    DiscreteSplit split(&x);
    split.PutSplit(new StringValue("a"), 3);
    split.PutSplit(new StringValue("b"), 5);
    split.SetMissvalMap(6);
    split.SetStartAndEndIndex(1, 2);
    const std::unique_ptr<ScoreSplitVar> clone(split.Clone());
    ASSERT_NE(dynamic_cast<DiscreteSplit*>(clone.get()), nullptr);
    EXPECT_EQ(Dump(*clone), Dump(split));
    EXPECT_EQ(clone->GetSplitVar(), &x);
    EXPECT_NE(static_cast<DiscreteSplit&>(*clone).GetSplitValues(), split.GetSplitValues());
    EXPECT_EQ(ChildOf(*clone, "b"), 5);
}

TEST(KeptDiscreteSplitCopy, CodesDoNotTravel) {
    const Categorical categorical(kText);
    const Ordinal ordinal(kNumeric);
    for (const ScoreDictVar* var :
         {static_cast<const ScoreDictVar*>(&categorical), static_cast<const ScoreDictVar*>(&ordinal)}) {
        DiscreteSplit split(var);
        split.PutSplit(1.0, 3);
        split.SetMissvalMap(6);
        DiscreteSplit copy(split);
        EXPECT_EQ(copy.GetSplitChildIndex(1.0), -1);
        EXPECT_EQ(copy.GetSplitChildIndex(-1.0), var == &categorical ? 6 : -1);
        copy.PutSplit(1.0, 4);
        EXPECT_EQ(copy.GetSplitChildIndex(1.0), 4);
        EXPECT_EQ(split.GetSplitChildIndex(1.0), 3);
    }
}

TEST(KeptDiscreteSplitAssignment, AppendsValuesAndKeepsItsCodes) {
    const Categorical x(kText);
    const Categorical y(kText);
    DiscreteSplit target(&x);
    target.PutSplit(new StringValue("a"), 1);
    target.PutSplit(7.0, 1);
    DiscreteSplit source(&y);
    source.PutSplit(new StringValue("a"), 2);
    source.PutSplit(new StringValue("b"), 2);
    source.PutSplit(8.0, 2);
    source.SetMissvalMap(3);
    source.SetStartAndEndIndex(4, 5);
    target = source;
    EXPECT_EQ(target.GetSplitVar(), &y);
    EXPECT_EQ(target.GetMissvalMap(), 3);
    EXPECT_EQ(target.GetSplitValues().size(), 3u);
    EXPECT_EQ(ChildOf(target, "a"), 1);
    EXPECT_EQ(ChildOf(target, "b"), 2);
    EXPECT_EQ(target.GetSplitChildIndex(7.0), 1);
    EXPECT_EQ(target.GetSplitChildIndex(8.0), -1);
    int start = 0;
    int end = 0;
    target.GetStartAndEndIndex(start, end);
    EXPECT_EQ(start, 4);
    EXPECT_EQ(end, 5);
}

TEST(DiscreteSplit, SelfAssignmentChangesNothing) {
    const Categorical x(kText);
    DiscreteSplit split(&x);
    split.PutSplit(new StringValue("a"), 1);
    split.PutSplit(1.0, 2);
    const DiscreteSplit& same = split;
    split = same;
    EXPECT_EQ(split.GetSplitValues().size(), 1u);
    EXPECT_EQ(split.GetSplitChildIndex(1.0), 2);
}

TEST(DiscreteSplit, DisplayOfACategoricalSplit) {
    const Variable x(kText, ScoreDictVar::LEVEL_NOMINAL, "color");
    DiscreteSplit split(&x);
    split.PutSplit(new StringValue("red"), 0);
    split.PutSplit(new NumericValue(1.5), 2);
    split.PutSplit(4.0, 3);
    EXPECT_EQ(Dump(split), "SplitVarName = color; Var type: Categorical\n"
                           "Missing Value index: -1\n"
                           "Value = red; Index = 0\n"
                           "Value = 1.5; Index = 2\n"
                           "\n");
}

TEST(DiscreteSplit, DisplayWithStartAndEnd) {
    const Variable x(kText, ScoreDictVar::LEVEL_ORDINAL, "size");
    DiscreteSplit split(&x);
    split.SetMissvalMap(7);
    split.SetStartAndEndIndex(0, 3);
    EXPECT_EQ(Dump(split), "SplitVarName = size; Var type: Ordinal\n"
                           "Missing Value index: 7\n"
                           "Split value index starts from  0 to 3\n"
                           "\n");
}

TEST(DiscreteSplit, DisplayNeedsStartAndEnd) {
    const Continuous x("x");
    DiscreteSplit split(&x);
    for (const auto& [start, end] : {std::pair(-1, 3), std::pair(3, -1)}) {
        split.SetStartAndEndIndex(start, end);
        EXPECT_EQ(Dump(split), "SplitVarName = x; Var type: Ordinal\nMissing Value index: -1\n\n");
    }
}
