// A host may keep pointers to the values that it put into a split and change them there. Whether the split has so many
// that it has an index or not, it gives what a walk over the values gives as they are.
#include "conditions.h"
#include "support/changing_values.h"

#include <gtest/gtest.h>

#include <memory>

using namespace veltrane::tests;

namespace {

int Walk(const DiscreteSplit& split, const ScoreDictVar& var, const ScoreValue& value) {
    int position = 0;
    for (const ScoreValue* stored : split.GetSplitValues()) {
        if (var.GetVarType() == kText ? stored->Equal(&value, var.GetNoSpaceTrim(), var.GetEmptyStringOK())
                                      : *stored == value) {
            return position;
        }
        ++position;
    }
    return -1;
}

void ChangeAndAsk(const ScoreDictVar& var, int size, std::mt19937& random) {
    DiscreteSplit split(&var);
    std::vector<ScoreValue*> kept;
    for (int i = 0; i < size; ++i) {
        kept.push_back(AnyValue(random));
        split.PutSplit(kept.back(), i);
    }
    for (int round = 0; round < 100; ++round) {
        for (unsigned changes = random() % 3; changes != 0; --changes) {
            ChangeAnyhow(*kept[random() % kept.size()], random);
        }
        // Sometimes so many that the index is made anew.
        for (int questions = random() % 8 == 0 ? 60 : 3; questions != 0; --questions) {
            const std::unique_ptr<const ScoreValue> value(AnyValue(random));
            ASSERT_EQ(split.GetSplitChildIndex(value.get()), Walk(split, var, *value)) << value->GetString();
        }
    }
}

} // namespace

TEST(ChangedSplitValues, AreFoundAsTheyAre) {
    std::mt19937 random(21);
    for (const int size : {1, 7, 8, 9, 60}) {
        for (const int rules : {0, 1, 2, 3}) {
            Categorical text(kText);
            text.SetNoSpaceTrim(rules & 1);
            text.SetEmptyStringOK(rules & 2);
            ASSERT_NO_FATAL_FAILURE(ChangeAndAsk(text, size, random));
        }
        const Ordinal number(kNumeric);
        ASSERT_NO_FATAL_FAILURE(ChangeAndAsk(number, size, random));
    }
}

/// Texts alone, so that the index is asked by text.
TEST(ChangedSplitValues, AreFoundAmongTexts) {
    const Categorical x(kText);
    DiscreteSplit split(&x);
    std::vector<StringValue*> kept;
    for (int i = 0; i < 20; ++i) {
        kept.push_back(new StringValue("v" + std::to_string(i)));
        split.PutSplit(kept.back(), i);
    }
    const StringValue seven("v7");
    const StringValue other("other");
    for (int i = 0; i < 100; ++i) {
        kept[7]->SetString("other");
        EXPECT_EQ(split.GetSplitChildIndex(&seven), -1);
        EXPECT_EQ(split.GetSplitChildIndex(&other), 7);
        kept[3]->SetString("v7");
        EXPECT_EQ(split.GetSplitChildIndex(&seven), 3);
        kept[3]->SetString("v3");
        kept[7]->SetString("v7");
        EXPECT_EQ(split.GetSplitChildIndex(&seven), 7);
        EXPECT_EQ(split.GetSplitChildIndex(&other), -1);
    }
}
