#include "support/allocations.h"

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/StringValue.h>

#include <gtest/gtest.h>

#include <memory>

namespace {

using namespace MCVeltrane_900;
using veltrane::tests::AllocationsOf;

// Longer than what a string keeps inside itself.
const std::string kLongText = "a text that doesn't fit into a short string";

TEST(ValueAllocations, AreCounted) {
    EXPECT_EQ(AllocationsOf([] { std::unique_ptr<ScoreValue>(NumericValue(1).Clone()); }), 1u);
    const StringValue text(kLongText);
    EXPECT_GE(AllocationsOf([&] { text.GetString(); }), 1u);
}

TEST(ValueAllocations, ComparingTakesNone) {
    const StringValue left(kLongText + "  "), right(kLongText + "x");
    const NumericValue number(1);
    const DateTimeValue time(1, DateTimeValue::VAL_DATE);
    int results = 0;
    EXPECT_EQ(AllocationsOf([&] {
                  for (const ScoreValue* a :
                       {static_cast<const ScoreValue*>(&left), static_cast<const ScoreValue*>(&number),
                        static_cast<const ScoreValue*>(&time)}) {
                      for (const ScoreValue* b :
                           {static_cast<const ScoreValue*>(&right), static_cast<const ScoreValue*>(&number),
                            static_cast<const ScoreValue*>(&time)}) {
                          results += (*a == *b) + (*a < *b) + (*a > *b) + (*a <= *b) + (*a >= *b) +
                                     a->Equal(b, false, true) + a->IsSystemMissingValue();
                      }
                  }
              }),
              0u);
    EXPECT_GT(results, 0);
}

TEST(ValueAllocations, ReadingNumbersTakesNone) {
    const StringValue text(std::string(60, ' ') + "123456.789012345678e-5 and more");
    const std::string number = "  -12345678901234567890.123456789e12 ";
    double sum = 0;
    EXPECT_EQ(AllocationsOf([&] { sum += text.GetDouble() + text.GetInt() + NumericValue(number).GetDouble(); }), 0u);
    EXPECT_LT(sum, 0);
}

TEST(ValueAllocations, ReadingDatesTakesNone) {
    const std::string text = "  2001 -   12 -   31 T 23 : 59 : 59  ";
    double sum = 0;
    EXPECT_EQ(AllocationsOf([&] {
                  const DateTimeValue value(text, ScoreDictVar::DT_DATETIME);
                  sum += value.GetDouble() + value.ExtractYear() + value.GetDoubleValue(ScoreDictVar::DT_DAYS_SINCE_0) +
                         DateTimeValue::IsValidDateTime(text, ScoreDictVar::DT_DATETIME);
              }),
              0u);
    EXPECT_GT(sum, 1e9);
}

} // namespace
