// A split of many values finds them through an index; it must give what a walk over its values gives.
#include "conditions.h"

#include <MCVeltrane_900/DateTimeValue.h>

#include <gtest/gtest.h>

#include <iterator>
#include <memory>
#include <random>
#include <utility>

using namespace veltrane::tests;

namespace {

/// A text that equals every text with an x, and under the blank rules every text with a y.
class HostText : public StringValue {
public:
    using StringValue::StringValue;
    bool operator==(const ScoreValue& other) const override { return other.GetString().find('x') != std::string::npos; }
    bool Equal(const ScoreValue* other, bool, bool) const override {
        return other->GetString().find('y') != std::string::npos;
    }
    ScoreValue* Clone() const override { return new HostText(GetText()); }
};

ScoreValue* RandomText(std::mt19937& random) {
    const std::string texts[] = {"", " ", "  ", "a", "a ", "a  ", " a", "b", "bx", "bx ", "by", "-3", "7"};
    const std::string text = texts[random() % std::size(texts)] + (random() % 3 ? "" : std::to_string(random() % 30));
    return random() % 40 == 0 ? new HostText(text) : new StringValue(text);
}

ScoreValue* RandomValue(std::mt19937& random) {
    const double nudges[] = {0.0, 1e-15, -2.2e-14, 2.2e-14, 2.3e-14, 4e-13};
    const double number = static_cast<int>(random() % 40) - 20;
    switch (random() % 6) {
    case 0:
        return new NumericValue();
    case 1:
        return new DateTimeValue(number, DateTimeValue::VAL_TIME);
    case 2:
        return RandomText(random);
    default:
        return new NumericValue(number * (1.0 + nudges[random() % std::size(nudges)]));
    }
}

int Walk(const DiscreteSplit& split, const ScoreDictVar& var, const ScoreValue& value) {
    int position = 0;
    for (const ScoreValue* stored : split.GetSplitValues()) {
        const bool isMatch = var.GetVarType() == kText
                                 ? stored->Equal(&value, var.GetNoSpaceTrim(), var.GetEmptyStringOK())
                                 : *stored == value;
        if (isMatch) {
            return position;
        }
        ++position;
    }
    return -1;
}

/// Fills a split whose child indexes are the positions.
void Fill(DiscreteSplit& split, std::mt19937& random, int size, ScoreValue* (*make)(std::mt19937&)) {
    for (int i = 0; i < size; ++i) {
        split.PutSplit(make(random), static_cast<int>(split.GetSplitValues().size()));
    }
}

void ExpectAsWalked(const DiscreteSplit& split, const ScoreDictVar& var, std::mt19937& random) {
    for (int i = 0; i < 300; ++i) {
        const std::unique_ptr<ScoreValue> value(RandomValue(random));
        ASSERT_EQ(split.GetSplitChildIndex(value.get()), Walk(split, var, *value)) << "'" << value->GetString() << "'";
    }
}

} // namespace

TEST(DiscreteSplitIndex, GivesWhatAWalkGivesOnTexts) {
    std::mt19937 random(3);
    for (const int size : {1, 7, 8, 9, 100}) {
        for (const int rules : {0, 1, 2, 3}) {
            Categorical x(kText);
            x.SetNoSpaceTrim(rules & 1);
            x.SetEmptyStringOK(rules & 2);
            DiscreteSplit split(&x);
            Fill(split, random, size, RandomText);
            ExpectAsWalked(split, x, random);
        }
    }
}

TEST(DiscreteSplitIndex, GivesWhatAWalkGivesOnMixedValues) {
    std::mt19937 random(4);
    const Categorical text(kText);
    const Ordinal number(kNumeric);
    for (const ScoreDictVar* var :
         {static_cast<const ScoreDictVar*>(&text), static_cast<const ScoreDictVar*>(&number)}) {
        for (const int size : {1, 7, 8, 9, 100}) {
            DiscreteSplit split(var);
            Fill(split, random, size, RandomValue);
            ExpectAsWalked(split, *var, random);
        }
    }
}

TEST(DiscreteSplitIndex, GivesWhatAWalkGivesInCopies) {
    std::mt19937 random(5);
    const Ordinal x(kNumeric);
    DiscreteSplit split(&x);
    Fill(split, random, 30, RandomValue);
    const DiscreteSplit copy(split);
    ExpectAsWalked(copy, x, random);
    DiscreteSplit assigned(&x);
    assigned = split;
    ExpectAsWalked(assigned, x, random);
}

TEST(DiscreteSplitIndex, AssignmentFindsTheAppendedValues) {
    const Categorical x(kText);
    DiscreteSplit target(&x);
    DiscreteSplit source(&x);
    for (int i = 0; i < 20; ++i) {
        target.PutSplit(new StringValue("t" + std::to_string(i)), 1);
        source.PutSplit(new StringValue("s" + std::to_string(i)), 2);
    }
    target = source;
    for (const auto& [text, child] :
         {std::pair("t19", 1), std::pair("s0", 2), std::pair("s19", 2), std::pair("u", -1)}) {
        const StringValue value(text);
        EXPECT_EQ(target.GetSplitChildIndex(&value), child) << text;
    }
}

TEST(DiscreteSplitIndex, NullValuesMatchNothing) {
    const Categorical x(kText);
    DiscreteSplit split(&x);
    for (int i = 0; i < 20; ++i) {
        split.PutSplit(i % 2 == 0 ? nullptr : new StringValue(std::to_string(i)), i);
    }
    const StringValue nine("9");
    EXPECT_EQ(split.GetSplitChildIndex(&nine), 9);
}

namespace {

/// A text that counts how often it is compared, which asks it for its text.
class CountingText : public StringValue {
public:
    using StringValue::StringValue;
    std::string GetString() const override {
        ++fComparisons;
        return StringValue::GetString();
    }
    int Comparisons() const { return fComparisons; }

private:
    mutable int fComparisons = 0;
};

} // namespace

// A document may repeat one category without end.
TEST(DiscreteSplitIndex, ComparesWithOneOfManyEqualValues) {
    for (const int rules : {0, 1, 2, 3}) {
        Categorical x(kText);
        x.SetNoSpaceTrim(rules & 1);
        x.SetEmptyStringOK(rules & 2);
        DiscreteSplit split(&x);
        for (int i = 0; i < 100000; ++i) {
            split.PutSplit(new StringValue("same"), i);
        }
        for (const auto& [text, child] : {std::pair("same", 0), std::pair("same ", rules & 1 ? -1 : 0)}) {
            const CountingText asked(text);
            EXPECT_EQ(split.GetSplitChildIndex(&asked), child);
            EXPECT_LE(asked.Comparisons(), 5);
        }
    }
}
