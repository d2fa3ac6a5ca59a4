#include "tools/parts/string_sink.h"

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/StringValue.h>

#include <gtest/gtest.h>

namespace veltrane::host {
namespace {

using namespace MCVeltrane_900;

TEST(WriteValueTest, LeavesTheCellOfAMissingValueEmpty) {
    const NumericValue number;
    const DateTimeValue date;
    for (const ScoreValue* missing : {static_cast<const ScoreValue*>(nullptr), static_cast<const ScoreValue*>(&number),
                                      static_cast<const ScoreValue*>(&date)}) {
        EXPECT_EQ(RowOf({missing}), "\"\"\n");
    }
}

TEST(WriteValueTest, TakesCopiesOfAMissingDateForMissing) {
    const DateTimeValue missing(NumericValue::GetSysmisValue(), DateTimeValue::VAL_DATE);
    DateTimeValue copy;
    copy.SetValue(&missing);
    EXPECT_FALSE(copy.IsSystemMissingValue());
    EXPECT_EQ(RowOf({&copy}), "\"\"\n");
    DateTimeValue copyOfCopy;
    copyOfCopy.SetValue(&copy);
    EXPECT_EQ(RowOf({&copyOfCopy}), "\"\"\n");
}

TEST(WriteValueTest, WritesValues) {
    const NumericValue number(1.5);
    const StringValue text("a,b");
    const DateTimeValue date(86400, DateTimeValue::VAL_DATE);
    const DateTimeValue farDate(-1e300, DateTimeValue::VAL_DATE);
    EXPECT_EQ(RowOf({&number}), "1.5\n");
    EXPECT_EQ(RowOf({&text}), "\"a,b\"\n");
    EXPECT_EQ(RowOf({&date}), "1970-01-02\n");
    EXPECT_EQ(RowOf({&farDate}), "-1e+300\n");
}

} // namespace
} // namespace veltrane::host
