#include "run/error_limit.h"

#include <gtest/gtest.h>

#include <limits>

namespace veltrane::host {
namespace {

TEST(ErrorLimitTest, IsNoneAtFirst) {
    EXPECT_TRUE(ErrorLimit().Allows(0, 0));
    EXPECT_FALSE(ErrorLimit().Allows(1, 1'000'000));
    EXPECT_EQ(ErrorLimit::Parse("0"), ErrorLimit());
}

TEST(ErrorLimitTest, IsANumber) {
    EXPECT_TRUE(ErrorLimit::Parse("5")->Allows(5, 5));
    EXPECT_FALSE(ErrorLimit::Parse("5")->Allows(6, 1'000'000));
}

TEST(ErrorLimitTest, IsAShareToTheRow) {
    EXPECT_TRUE(ErrorLimit::Parse("0.29%")->Allows(29, 10'000));
    EXPECT_FALSE(ErrorLimit::Parse("0.29%")->Allows(30, 10'000));
    EXPECT_TRUE(ErrorLimit::Parse("0.000000001%")->Allows(1, 100'000'000'000));
    EXPECT_FALSE(ErrorLimit::Parse("0.000000001%")->Allows(1, 99'999'999'999));
    const auto most = std::numeric_limits<std::uint64_t>::max();
    EXPECT_TRUE(ErrorLimit::Parse("100%")->Allows(most, most));
    EXPECT_FALSE(ErrorLimit::Parse("99.999999999%")->Allows(most, most));
}

TEST(ErrorLimitTest, IsReadFromPlainTexts) {
    for (const char* text : {"0", "18446744073709551615", "0%", "100%", "100.0%", "50.5%", "007%"}) {
        EXPECT_TRUE(ErrorLimit::Parse(text)) << text;
    }
    for (const char* text : {"", "%", "1.5", "-1", "+1", " 1", "1 ", "1e3", "101%", "100.1%", ".5%", "5.%", "1.2.3%",
                             "0.1234567890%", "18446744073709551616", "x%"}) {
        EXPECT_FALSE(ErrorLimit::Parse(text)) << text;
    }
}

} // namespace
} // namespace veltrane::host
