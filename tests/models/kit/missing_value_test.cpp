// What counts as missing among computed values: copies of a missing date do, and nothing that is a value.
#include "kit/inputs/missing_value.h"
#include "support/numbers.h"

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/StringValue.h>

#include <gtest/gtest.h>

#include <cmath>

using namespace veltrane::tests;
using namespace veltrane_kit;
using namespace MCVeltrane_900;

namespace {

TEST(MissingValue, IsNoneAndTheMissingNumber) {
    EXPECT_TRUE(IsMissing(nullptr));
    const NumericValue number;
    EXPECT_TRUE(IsMissing(&number));
    const DateTimeValue date;
    EXPECT_TRUE(IsMissing(&date));
}

TEST(MissingValue, IsEveryCopyOfAMissingDate) {
    DateTimeValue date(NumericValue::GetSysmisValue(), DateTimeValue::VAL_DATE);
    for (int copies = 0; copies < 50; ++copies) {
        EXPECT_TRUE(IsMissing(&date)) << copies << " copies";
        const DateTimeValue source(date);
        date.SetValue(&source);
    }
}

TEST(MissingValue, IsNoMomentBesideThose) {
    const double copy = NumericValue::GetSysmisValue() / 86400;
    for (const double seconds :
         {0.0, -62167219200.0, -9.3e18, -1e20, -1e300, copy * 1.0000000001, std::nextafter(copy, 0),
          std::nextafter(copy, -kInfinity), -copy, -kInfinity, std::nan("")}) {
        const DateTimeValue date(seconds, DateTimeValue::VAL_DATE);
        EXPECT_FALSE(IsMissing(&date)) << seconds;
    }
}

TEST(MissingValue, IsNoNumberThatACopyOfADateCouldHave) {
    const NumericValue number(NumericValue::GetSysmisValue() / 86400);
    EXPECT_FALSE(IsMissing(&number));
}

TEST(MissingValue, IsNoText) {
    const StringValue text("");
    EXPECT_FALSE(IsMissing(&text));
}

} // namespace
