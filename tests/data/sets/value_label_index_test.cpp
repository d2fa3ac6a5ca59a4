#include "data/sets/counted_values.h"
#include "support/numbers.h"

#include <MCVeltrane_900/DictVar.h>
#include <MCVeltrane_900/MissingValueSet.h>
#include <MCVeltrane_900/Range.h>
#include <MCVeltrane_900/ScoreEncoder.h>
#include <MCVeltrane_900/ValueLabelSet.h>
#include <MCVeltrane_900/ValueLbl.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>

// A set of many values finds them through an index; it must give what a walk over its labels gives.
namespace MCVeltrane_900 {
namespace {

using namespace veltrane::tests;

/// A number that equals every number above 1000, and a text that equals every text with an x.
class HostNumber : public NumericValue {
public:
    using NumericValue::NumericValue;
    bool operator==(const ScoreValue& other) const override { return other.GetDouble() > 1000.0; }
    ScoreValue* Clone() const override { return new HostNumber(GetDouble()); }
};

class HostText : public StringValue {
public:
    using StringValue::StringValue;
    bool operator==(const ScoreValue& other) const override { return other.GetString().find('x') != std::string::npos; }
    ScoreValue* Clone() const override { return new HostText(GetText()); }
};

/// A label of a host's own class that shows another value than it was given.
class HostLabel : public ValueLbl {
public:
    HostLabel() : ValueLbl(new NumericValue(1.0), "host") {}
    const ScoreValue* GetValue() const override { return &fShown; }

private:
    NumericValue fShown{-77.0};
};

/// Values close to each other in every way that equality knows.
ScoreValue* RandomValue(std::mt19937& random) {
    const double number = static_cast<int>(random() % 40) - 20;
    const double nudges[] = {0.0, 1e-15, -2.2e-14, 2.2e-14, 2.3e-14, 4e-13};
    const std::string texts[] = {"", " ", "  ", "a", "a ", "a  ", " a", "b", "bx", "bx ", "-3", "7"};
    switch (random() % 12) {
    case 0:
        return new NumericValue();
    case 1: {
        const double odd[] = {kInfinity, -kInfinity, kNaN, 0.0, -0.0, 1e-320, 1e308, 1.1e308};
        return new NumericValue(odd[random() % std::size(odd)]);
    }
    case 2:
        return new DateTimeValue(number, static_cast<DateTimeValue::DateTimeValType>(random() % 3));
    case 3:
        return new HostNumber(number * 100.0);
    case 4:
        return new HostText(texts[random() % std::size(texts)]);
    case 5:
    case 6:
    case 7:
    case 8:
        return new StringValue(texts[random() % std::size(texts)] +
                               (random() % 3 ? "" : std::to_string(random() % 30)));
    default:
        return new NumericValue(number * (1.0 + nudges[random() % std::size(nudges)]));
    }
}

/// A copy of a set in a class of its own, so that a variable walks over its labels.
class WalkedSet : public ValueLabelSet {
public:
    explicit WalkedSet(const ValueLabelSet& other) : ValueLabelSet(other) {}
};

std::string WalkForLabel(const ScoreValueLabelSet& set, const ScoreValue& value) {
    for (const ScoreValueLabel* label : set.GetAllValueLabels()) {
        if (*label->GetValue() == value) {
            return label->GetLabel();
        }
    }
    return "";
}

bool WalkForEqual(const ScoreValueLabelSet& set, const ScoreValue& value) {
    const auto& labels = set.GetAllValueLabels();
    return std::any_of(labels.begin(), labels.end(),
                       [&value](const ScoreValueLabel* label) { return value == *label->GetValue(); });
}

bool WalkForText(const ScoreValueLabelSet& set, const ScoreValue& value, bool noSpaceTrim, bool emptyStringOK) {
    const auto& labels = set.GetAllValueLabels();
    return std::any_of(labels.begin(), labels.end(), [&](const ScoreValueLabel* label) {
        return label->GetValue()->Equal(&value, noSpaceTrim, emptyStringOK);
    });
}

void ExpectAsWalked(const ValueLabelSet& set, std::mt19937& random, int questions) {
    for (int i = 0; i < questions; ++i) {
        std::unique_ptr<ScoreValue> value(RandomValue(random));
        const std::string text = value->GetString();
        const std::string label = WalkForLabel(set, *value);
        ASSERT_EQ(set.GetLabelOfValue(value.get()), label) << "'" << text << "'";
        ASSERT_EQ(set.Contains(value.get()), !label.empty()) << "'" << text << "'";
        ASSERT_EQ(set.HasValueEqualTo(*value), WalkForEqual(set, *value)) << "'" << text << "'";
        for (const bool noSpaceTrim : {false, true}) {
            for (const bool emptyStringOK : {false, true}) {
                ASSERT_EQ(set.HasTextEqualTo(*value, noSpaceTrim, emptyStringOK),
                          WalkForText(set, *value, noSpaceTrim, emptyStringOK))
                    << "'" << text << "'" << noSpaceTrim << emptyStringOK;
            }
        }
    }
}

TEST(ValueLabelIndex, GivesWhatAWalkGivesOnMixedValues) {
    std::mt19937 random(7);
    for (const int size : {1, 31, 32, 33, 200}) {
        ValueLabelSet set;
        for (int i = 0; i < size; ++i) {
            ASSERT_TRUE(set.Add(new ValueLbl(RandomValue(random), "label " + std::to_string(i))));
        }
        ExpectAsWalked(set, random, 500);
    }
}

TEST(ValueLabelIndex, GivesWhatAWalkGivesOnPlainTexts) {
    std::mt19937 random(8);
    ValueLabelSet set;
    for (int i = 0; i < 60; ++i) {
        ASSERT_TRUE(set.Add(new ValueLbl(
            new StringValue(std::string(random() % 2, ' ') + std::to_string(i % 25) + std::string(random() % 3, ' ')),
            "label " + std::to_string(i))));
    }
    ASSERT_TRUE(set.Add(new ValueLbl(new StringValue("  "), "blank")));
    ExpectAsWalked(set, random, 500);
    const StringValue empty("");
    EXPECT_TRUE(set.HasTextEqualTo(empty, false, false));
    EXPECT_FALSE(set.HasTextEqualTo(empty, false, true));
    const StringValue three("3 ");
    EXPECT_TRUE(set.HasTextEqualTo(three, false, true));
}

TEST(ValueLabelIndex, NumberAmongTextsIsEqualToEveryText) {
    ValueLabelSet set;
    for (int i = 0; i < 40; ++i) {
        ASSERT_TRUE(set.Add(new ValueLbl(new StringValue("text " + std::to_string(i)), "label")));
    }
    const StringValue other("other");
    EXPECT_FALSE(set.HasTextEqualTo(other, false, false));
    ASSERT_TRUE(set.Add(new ValueLbl(new NumericValue(1.0), "one")));
    EXPECT_TRUE(set.HasTextEqualTo(other, false, false));
}

TEST(ValueLabelIndex, FollowsRemovalsAndCopies) {
    std::mt19937 random(9);
    ValueLabelSet set;
    for (int i = 0; i < 80; ++i) {
        ASSERT_TRUE(set.Add(new ValueLbl(RandomValue(random), "label " + std::to_string(i))));
    }
    const ValueLabelSet copy(set);
    ValueLabelSet assigned;
    assigned = set;
    for (int i = 0; i < 60; ++i) {
        const ValueLbl key(RandomValue(random), "key");
        set.Remove(&key);
        ExpectAsWalked(set, random, 20);
    }
    ExpectAsWalked(copy, random, 200);
    ExpectAsWalked(assigned, random, 200);
}

/// The numbers 0 to 99, labelled by themselves.
class ManyLabels : public testing::Test {
protected:
    void SetUp() override {
        for (int i = 0; i < 100; ++i) {
            ASSERT_TRUE(set.Add(new ValueLbl(new NumericValue(i), std::to_string(i))));
        }
    }

    ValueLabelSet set;
    const NumericValue fifty{50.0};
    const NumericValue thousand{1000.0};
};

TEST_F(ManyLabels, FindTheFirstOfEqualValues) {
    ASSERT_TRUE(set.Add(new ValueLbl(new NumericValue(50.0), "again")));
    EXPECT_EQ(set.GetLabelOfValue(&fifty), "50");
}

TEST_F(ManyLabels, FindARelabelledValue) {
    std::unique_ptr<const ScoreValue> old(set.GetAllValueLabels()[50]->GetValue());
    ASSERT_TRUE(set.GetAllValueLabels()[50]->SetValueLabel(new NumericValue(1000.0), "thousand"));
    EXPECT_FALSE(set.Contains(&fifty));
    EXPECT_EQ(set.GetLabelOfValue(&thousand), "thousand");
    ASSERT_TRUE(set.Add(new ValueLbl(new NumericValue(50.0), "new")));
    EXPECT_EQ(set.GetLabelOfValue(&fifty), "new");
    EXPECT_EQ(set.GetLabelOfValue(&thousand), "thousand");
}

TEST_F(ManyLabels, FindAnAssignedValue) {
    auto* label = dynamic_cast<ValueLbl*>(set.GetAllValueLabels()[50]);
    ASSERT_NE(label, nullptr);
    *label = ValueLbl(new NumericValue(1000.0), "thousand");
    EXPECT_FALSE(set.Contains(&fifty));
    EXPECT_EQ(set.GetLabelOfValue(&thousand), "thousand");
}

TEST_F(ManyLabels, CopyOfAnElementIsInNoSet) {
    {
        ValueLbl copy(*dynamic_cast<ValueLbl*>(set.GetAllValueLabels()[50]));
        copy = ValueLbl(new NumericValue(1000.0), "thousand");
    }
    EXPECT_EQ(set.GetLabelOfValue(&fifty), "50");
}

TEST_F(ManyLabels, AskALabelOfAnotherClassForItsValue) {
    ASSERT_TRUE(set.Add(new HostLabel));
    const NumericValue shown(-77.0);
    EXPECT_EQ(set.GetLabelOfValue(&shown), "host");
}

/// A label of a host's own class that is equal to every label without a value.
class HostLabelOfNothing : public HostLabel {
public:
    bool operator==(const ScoreValueLabel& other) const override { return other.GetValue() == nullptr; }
};

TEST_F(ManyLabels, ForgetALabelThatIsRemovedByAKeyWithoutAValue) {
    ASSERT_TRUE(set.Add(new HostLabelOfNothing));
    const ValueLbl key;
    EXPECT_TRUE(set.Remove(&key));
    EXPECT_EQ(set.Size(), 100);
    const NumericValue shown(-77.0);
    EXPECT_FALSE(set.Contains(&shown));
    EXPECT_EQ(set.GetLabelOfValue(&fifty), "50");
}

TEST_F(ManyLabels, StepOverALabelWithoutAValue) {
    ASSERT_TRUE(set.Add(new ValueLbl));
    EXPECT_FALSE(set.Contains(&thousand));
    EXPECT_TRUE(set.Contains(&fifty));
}

TEST_F(ManyLabels, AnswerAVariableAsAWalkDoes) {
    for (const auto type : {ScoreDictVar::kNUMERIC_VAR, ScoreDictVar::STRING_VAR, ScoreDictVar::DATETIME_VAR}) {
        std::mt19937 random(10);
        DictVar var("x", type);
        var.SetMLevel(ScoreDictVar::LEVEL_NOMINAL);
        auto* missing = new MissingValueSet;
        missing->Add(new Range(-5.0, 5.0, true, true));
        var.SetMissingValues(missing);
        for (int i = 0; i < 60; ++i) {
            var.AddScoreValueLabel(RandomValue(random), "label");
        }
        DictVar walked(var);
        std::unique_ptr<ScoreValueLabelSet> indexed(walked.GetValueLabels());
        walked.SetValueLabels(new WalkedSet(dynamic_cast<const ValueLabelSet&>(*indexed)));
        for (int i = 0; i < 500; ++i) {
            std::unique_ptr<ScoreValue> value(RandomValue(random));
            ASSERT_EQ(var.IsMissingValue(value.get()), walked.IsMissingValue(value.get())) << value->GetString();
            ASSERT_EQ(var.IsValidValue(value.get()), walked.IsValidValue(value.get())) << value->GetString();
        }
    }
}

} // namespace
} // namespace MCVeltrane_900
