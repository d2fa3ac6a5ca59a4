#include "data/sets/counted_values.h"

#include <MCVeltrane_900/ValueLabelSet.h>
#include <MCVeltrane_900/ValueLbl.h>

#include <gtest/gtest.h>

#include <memory>

namespace MCVeltrane_900 {
namespace {

using namespace veltrane::tests;

TEST(ValueLbl, Defaults) {
    const ValueLbl label;
    EXPECT_EQ(label.GetValue(), nullptr);
    EXPECT_EQ(label.GetLabel(), "");
}

TEST(ValueLbl, SetLabelRefusesAnEmptyText) {
    ValueLbl label;
    EXPECT_TRUE(label.SetLabel("one"));
    EXPECT_FALSE(label.SetLabel(""));
    EXPECT_EQ(label.GetLabel(), "one");
}

TEST(ValueLbl, SetValueLabelRefusesNullAndAnEmptyText) {
    ValueLbl label;
    NumericValue value(1.0);
    EXPECT_FALSE(label.SetValueLabel(nullptr, "one"));
    EXPECT_FALSE(label.SetValueLabel(&value, ""));
    EXPECT_EQ(label.GetValue(), nullptr);
    EXPECT_EQ(label.GetLabel(), "");
}

TEST(KeptValueLbl, SetValueLabelDoesNotDeleteTheOldValue) {
    int deleted = 0;
    auto* first = new CountedNumber(1.0, deleted);
    auto* second = new CountedNumber(2.0, deleted);
    {
        ValueLbl label(first, "one");
        EXPECT_TRUE(label.SetValueLabel(second, "two"));
        EXPECT_EQ(label.GetValue(), second);
        EXPECT_EQ(label.GetLabel(), "two");
        EXPECT_EQ(deleted, 0);
    }
    EXPECT_EQ(deleted, 1);
    delete first;
}

TEST(ValueLbl, ComparesTheValuesOnly) {
    const ValueLbl one(new NumericValue(1.0), "same");
    const ValueLbl uno(new NumericValue(1.0), "other");
    const ValueLbl two(new NumericValue(2.0), "same");
    ExpectOrder(one, uno, two);
}

TEST(ValueLbl, UsesTheOperatorOfTheSameName) {
    // For a blank right side the operators of texts disagree with any one ordering.
    const ValueLbl text(new StringValue("abc"), "text");
    const ValueLbl blank(new StringValue("   "), "blank");
    EXPECT_TRUE(text < blank);
    EXPECT_TRUE(text > blank);
    EXPECT_TRUE(text >= blank);
    EXPECT_FALSE(text <= blank);
}

TEST(ValueLbl, NullValuesCompareFalse) {
    const ValueLbl none;
    const ValueLbl one(new NumericValue(1.0), "one");
    EXPECT_FALSE(none == one);
    EXPECT_FALSE(one == none);
    EXPECT_FALSE(none <= none);
}

TEST(ValueLbl, CopiesAreDeep) {
    const ValueLbl label(new NumericValue(1.0), "one");
    std::unique_ptr<ScoreValueLabel> clone(label.Clone());
    EXPECT_NE(clone->GetValue(), label.GetValue());
    EXPECT_TRUE(*clone == label);
    EXPECT_EQ(clone->GetLabel(), "one");
    int deleted = 0;
    ValueLbl assigned(new CountedNumber(5.0, deleted), "five");
    assigned = label;
    EXPECT_EQ(deleted, 1);
    EXPECT_EQ(assigned.GetValue()->GetDouble(), 1.0);
    std::unique_ptr<ScoreValueLabel> empty(ValueLbl().Clone());
    EXPECT_EQ(empty->GetValue(), nullptr);
}

TEST(ValueLbl, Displays) {
    EXPECT_EQ(Dump(ValueLbl(new NumericValue(1.5), "one and a half")), "Value: 1.5;  Label: one and a half\n");
    EXPECT_EQ(Dump(ValueLbl()), "Value: NULL;  Label: \n");
}

/// The labels "one" for 1, "two" for 2 and "uno" for 1 again.
class ValueLabelSetTest : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(set.Add(new ValueLbl(new NumericValue(1.0), "one")));
        ASSERT_TRUE(set.Add(new ValueLbl(new NumericValue(2.0), "two")));
        ASSERT_TRUE(set.Add(new ValueLbl(new NumericValue(1.0), "uno")));
    }

    ValueLabelSet set;
};

TEST_F(ValueLabelSetTest, AddOfADuplicateValueGrowsTheSetAndTheFirstLabelIsFound) {
    EXPECT_EQ(set.Size(), 3);
    const NumericValue one(1.0);
    EXPECT_EQ(set.GetLabelOfValue(&one), "one");
    ASSERT_EQ(set.GetAllValueLabels().size(), 3u);
    EXPECT_EQ(set.GetAllValueLabels()[2]->GetLabel(), "uno");
}

TEST_F(ValueLabelSetTest, AddRefusesNull) {
    EXPECT_FALSE(set.Add(nullptr));
    EXPECT_EQ(set.Size(), 3);
}

TEST_F(ValueLabelSetTest, ContainsByTheOperatorOfTheStoredValue) {
    const NumericValue near(1.0 + 1e-15);
    const NumericValue three(3.0);
    const StringValue text("1");
    EXPECT_TRUE(set.Contains(&near));
    EXPECT_FALSE(set.Contains(&three));
    EXPECT_FALSE(set.Contains(&text));
    EXPECT_FALSE(set.Contains(nullptr));
}

TEST_F(ValueLabelSetTest, LabelOfNullOrUnknownIsEmpty) {
    const NumericValue three(3.0);
    EXPECT_EQ(set.GetLabelOfValue(nullptr), "");
    EXPECT_EQ(set.GetLabelOfValue(&three), "");
}

TEST_F(ValueLabelSetTest, RemoveDeletesTheFirstOfTheValue) {
    const ValueLbl one(new NumericValue(1.0), "whatever");
    EXPECT_TRUE(set.Remove(&one));
    ASSERT_EQ(set.Size(), 2);
    EXPECT_EQ(set.GetAllValueLabels()[0]->GetLabel(), "two");
    EXPECT_EQ(set.GetAllValueLabels()[1]->GetLabel(), "uno");
}

TEST_F(ValueLabelSetTest, RemoveOfAnElementItselfNullOrUnknown) {
    const ValueLbl three(new NumericValue(3.0), "three");
    EXPECT_FALSE(set.Remove(&three));
    EXPECT_FALSE(set.Remove(nullptr));
    EXPECT_TRUE(set.Remove(set.GetAllValueLabels()[1]));
    EXPECT_EQ(set.Size(), 2);
}

TEST_F(ValueLabelSetTest, CopiesAreDeep) {
    std::unique_ptr<ScoreValueLabelSet> clone(set.Clone());
    ASSERT_EQ(clone->Size(), 3);
    EXPECT_NE(clone->GetAllValueLabels()[0], set.GetAllValueLabels()[0]);
    EXPECT_EQ(clone->GetAllValueLabels()[2]->GetLabel(), "uno");
    int deleted = 0;
    ValueLabelSet assigned;
    ASSERT_TRUE(assigned.Add(new ValueLbl(new CountedNumber(9.0, deleted), "nine")));
    assigned = set;
    EXPECT_EQ(deleted, 1);
    EXPECT_EQ(assigned.Size(), 3);
}

TEST_F(ValueLabelSetTest, OwnsItsElements) {
    int deleted = 0;
    {
        ValueLabelSet owner;
        ASSERT_TRUE(owner.Add(new ValueLbl(new CountedNumber(9.0, deleted), "nine")));
    }
    EXPECT_EQ(deleted, 1);
}

TEST_F(ValueLabelSetTest, ElementWithoutAValueMatchesNothing) {
    ValueLabelSet holder;
    ASSERT_TRUE(holder.Add(new ValueLbl));
    const NumericValue one(1.0);
    EXPECT_FALSE(holder.Contains(&one));
    EXPECT_EQ(holder.GetLabelOfValue(&one), "");
}

TEST_F(ValueLabelSetTest, Displays) {
    EXPECT_EQ(Dump(set), "Start ScoreValueLabelSet Display:\nValue: 1;  Label: one\nValue: 2;  Label: two\nValue: 1;  "
                         "Label: uno\nEnd of ScoreValueLabelSet Display.\n\n");
}

} // namespace
} // namespace MCVeltrane_900
