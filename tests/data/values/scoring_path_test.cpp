#include "data/sets/counted_values.h"
#include "support/allocations.h"

#include <MCVeltrane_900/BaseDictionary.h>
#include <MCVeltrane_900/CaseRecord.h>
#include <MCVeltrane_900/DictVar.h>
#include <MCVeltrane_900/MissingValueSet.h>
#include <MCVeltrane_900/Range.h>
#include <MCVeltrane_900/ScoreBinningEncoder.h>
#include <MCVeltrane_900/ScoreCatNumericEncoder.h>
#include <MCVeltrane_900/ScoreCatStringEncoder.h>
#include <MCVeltrane_900/ValueLabelSet.h>

#include <gtest/gtest.h>

#include <functional>

// What runs for each case allocates nothing, also with names and texts that are longer than a string holds in place.
namespace MCVeltrane_900 {
namespace {

using veltrane::tests::AllocationsOf;

const std::string kName = "the name of a field that is not short";
const std::string kText = "the text of a category that is not short";

void ExpectNoAllocation(const std::function<void()>& action) {
    action();
    EXPECT_EQ(AllocationsOf(action), 0u);
}

TEST(ScoringPath, AllocationIsCounted) {
    EXPECT_GT(AllocationsOf([] { delete new DictVar("x", ScoreDictVar::kNUMERIC_VAR); }), 0u);
}

TEST(ScoringPath, CaseRecord) {
    CaseRecord record;
    record.Add(kName, new NumericValue(1.0));
    record.Add("t", new StringValue(kText));
    record.Add("d", new DateTimeValue(1.0, DateTimeValue::VAL_TIME));
    ExpectNoAllocation([&record] {
        EXPECT_EQ(record.GetIndex(kName), 0);
        EXPECT_NE(record.Get(0), nullptr);
        EXPECT_NE(record.Get(kName), nullptr);
        EXPECT_TRUE(record.SetValue(0, 2.0));
        EXPECT_TRUE(record.SetValue(kName, 2.0));
        EXPECT_TRUE(record.SetValue(1, kText));
        EXPECT_TRUE(record.SetValue(2, 2.0, ScoreDictVar::DT_DAYS_SINCE_1960));
        EXPECT_TRUE(record.SetMissingValue(kName));
    });
}

TEST(ScoringPath, DictionaryLookup) {
    BaseDictionary dictionary;
    ASSERT_TRUE(dictionary.AddVar(kName, new DictVar(kName, ScoreDictVar::kNUMERIC_VAR)));
    const ScoreDictionary& constant = dictionary;
    ExpectNoAllocation([&] { EXPECT_EQ(constant.GetVar(kName), dictionary.GetVar(kName)); });
}

TEST(ScoringPath, MissingAndValidValues) {
    for (const int labels : {2, 100}) {
        DictVar var("x", ScoreDictVar::kNUMERIC_VAR);
        DictVar text("t", ScoreDictVar::STRING_VAR);
        var.SetMLevel(ScoreDictVar::LEVEL_NOMINAL);
        text.SetMLevel(ScoreDictVar::LEVEL_NOMINAL);
        auto* missing = new MissingValueSet;
        missing->Add(new Range(0.0, 1.0, true, true));
        var.SetMissingValues(missing);
        for (int i = 0; i < labels; ++i) {
            var.AddScoreValueLabel(new NumericValue(i), "label");
            text.AddScoreValueLabel(new StringValue(kText + std::to_string(i)), "label");
        }
        const NumericValue one(1.0);
        const StringValue known(kText + "1  ");
        ExpectNoAllocation([&] {
            EXPECT_FALSE(var.IsMissingValue(&one));
            EXPECT_TRUE(var.IsValidValue(&one));
            EXPECT_TRUE(text.IsValidValue(&known));
            EXPECT_TRUE(text.GetValueLabels()->Contains(&known));
        });
    }
}

TEST(ScoringPath, Encoders) {
    ScoreCatStringEncoder texts(std::vector<std::string>{kText});
    ScoreCatNumericEncoder numbers(std::vector<double>{1.5});
    ScoreBinningEncoder bins(std::vector<double>{1.0, 2.0});
    const std::string trailing = kText + "  ";
    const StringValue text(trailing);
    const NumericValue number(1.5);
    ExpectNoAllocation([&] {
        EXPECT_EQ(texts.EncodeConst(trailing), 0);
        EXPECT_EQ(texts.EncodeConst(&text), 0);
        EXPECT_EQ(texts.Encode(&text), 0);
        EXPECT_EQ(numbers.EncodeConst(&number), 0);
        EXPECT_EQ(numbers.Encode(&number), 0);
        EXPECT_EQ(bins.EncodeConst(&number), 1);
    });
}

} // namespace
} // namespace MCVeltrane_900
