// Conditions on fields of the type float, which are compared in single precision, and infinite bounds.
#include "kit/values/single_precision.h"
#include "models/kit/scoring.h"
#include "models/tree/small_tree.h"
#include "support/rows.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

using namespace veltrane::tests;

namespace {

constexpr float kInfinite = std::numeric_limits<float>::infinity();

/// The tree that tells what a condition says, with x of the type float.
std::string FloatDocument(const std::string& predicate) {
    return Replaced(ConditionDocument(predicate), "<DataField name='x' optype='continuous' dataType='double'/>",
                    "<DataField name='x' optype='continuous' dataType='float'/>");
}

struct Row {
    const char* name;
    const char* predicate;
    std::vector<const char*> holds;
    std::vector<const char*> fails;
};

// 0.7 is 0.699999988 in single precision, and so is all that is less than 3e-8 from it.
const Row kRows[] = {
    {"Equal",
     "<SimplePredicate field='x' operator='equal' value='0.7'/>",
     {"0.7", "0.69999997", "0.70000001"},
     {"0.6999999", "0.7000001"}},
    {"NotEqual",
     "<SimplePredicate field='x' operator='notEqual' value='0.7'/>",
     {"0.6999999", "0.7000001"},
     {"0.7", "0.69999997", "0.70000001"}},
    {"Less",
     "<SimplePredicate field='x' operator='lessThan' value='0.7'/>",
     {"0.6999999", "-1e300"},
     {"0.69999997", "0.7", "1e300"}},
    {"LessOrEqual",
     "<SimplePredicate field='x' operator='lessOrEqual' value='0.7'/>",
     {"0.70000001", "0.69999997"},
     {"0.7000001"}},
    {"Greater",
     "<SimplePredicate field='x' operator='greaterThan' value='0.7'/>",
     {"0.7000001", "1e300"},
     {"0.70000001", "0.7"}},
    {"GreaterOrEqual",
     "<SimplePredicate field='x' operator='greaterOrEqual' value='0.7'/>",
     {"0.69999997", "0.7"},
     {"0.6999999"}},
    {"Set",
     "<SimpleSetPredicate field='x' booleanOperator='isIn'><Array n='2' type='real'>3 0.7</Array></SimpleSetPredicate>",
     {"0.70000001", "3.0000001"},
     {"0.7000001", "3.000001"}},
    {"Complement",
     "<SimpleSetPredicate field='x' booleanOperator='isNotIn'><Array n='2' type='real'>3 "
     "0.7</Array></SimpleSetPredicate>",
     {"0.7000001", "3.000001"},
     {"0.70000001", "3.0000001"}},
    {"BoundOfManyDigits",
     "<SimplePredicate field='x' operator='lessThan' value='0.70000001'/>",
     {"0.6999999"},
     {"0.69999997", "0.70000001"}},
    {"AtMostInfinite", "<SimplePredicate field='x' operator='lessOrEqual' value='INF'/>", {"0", "1e300"}, {}},
    {"AboveInfinite", "<SimplePredicate field='x' operator='greaterThan' value='Infinity'/>", {}, {"0", "1e300"}},
    {"BelowNegativeInfinite", "<SimplePredicate field='x' operator='lessThan' value='-INF'/>", {}, {"0", "-1e300"}},
    {"AtLeastNegativeInfinite",
     "<SimplePredicate field='x' operator='greaterOrEqual' value='-Infinity'/>",
     {"0", "-1e300"},
     {}},
};

class SinglePrecision : public testing::TestWithParam<Row> {
protected:
    void Expect(const std::vector<const char*>& numbers, const char* answer) {
        Scored scored(FloatDocument(GetParam().predicate));
        for (const char* number : numbers) {
            scored.Score({{"x", number}});
            EXPECT_EQ(scored.Text(), answer) << number;
        }
    }
};

TEST_P(SinglePrecision, Holds) {
    Expect(GetParam().holds, "yes");
}

TEST_P(SinglePrecision, Fails) {
    Expect(GetParam().fails, "no");
}

TEST_P(SinglePrecision, IsUnknownForAMissingValue) {
    Expect({""}, "");
}

INSTANTIATE_TEST_SUITE_P(Rows, SinglePrecision, testing::ValuesIn(kRows), NameOfRow());

TEST(InfiniteBounds, PartWhatIsMissingFromAllThatIsNot) {
    Scored scored(ConditionDocument("<SimplePredicate field='x' operator='lessOrEqual' value='INF'/>"));
    scored.Score({{"x", "1e300"}});
    EXPECT_EQ(scored.Text(), "yes");
    scored.Score({{"x", ""}});
    EXPECT_EQ(scored.Text(), "");
}

/// Singles of all sizes, and those at the ends of the format.
std::vector<float> Singles() {
    std::vector<float> singles{0.0F,
                               -0.0F,
                               std::numeric_limits<float>::denorm_min(),
                               -std::numeric_limits<float>::denorm_min(),
                               std::numeric_limits<float>::min(),
                               std::numeric_limits<float>::max(),
                               -std::numeric_limits<float>::max(),
                               1.0F,
                               2.0F,
                               kInfinite};
    std::mt19937 random(7);
    while (singles.size() < 20000) {
        const std::uint32_t bits = random();
        float single = 0.0F;
        std::memcpy(&single, &bits, sizeof single);
        if (std::isfinite(single)) {
            singles.push_back(single);
        }
    }
    return singles;
}

TEST(LeastRoundedTo, IsRoundedToTheSingleAndNothingBelowItIs) {
    for (const float single : Singles()) {
        const double least = veltrane_kit::LeastRoundedTo(single);
        ASSERT_EQ(veltrane_kit::NearestSingle(least), single) << single;
        ASSERT_LT(veltrane_kit::NearestSingle(std::nextafter(least, -HUGE_VAL)), single) << single;
    }
}

TEST(NearestSingle, IsTheProcessorsAndInfiniteBeyondAllSingles) {
    for (const float single : Singles()) {
        const double next = veltrane_kit::NextSingle(single);
        for (const double number :
             {0.25 * single + 0.75 * next, 0.5 * single + 0.5 * next, 0.75 * single + 0.25 * next}) {
            if (std::abs(number) <= std::numeric_limits<float>::max()) {
                ASSERT_EQ(veltrane_kit::NearestSingle(number), static_cast<float>(number));
            }
        }
    }
    EXPECT_EQ(veltrane_kit::NearestSingle(1e39), kInfinite);
    EXPECT_EQ(veltrane_kit::NearestSingle(-HUGE_VAL), -kInfinite);
    EXPECT_EQ(veltrane_kit::NearestSingle(0x1.fffffefp127), std::numeric_limits<float>::max());
    EXPECT_EQ(veltrane_kit::NearestSingle(0x1.ffffffp127), kInfinite);
    EXPECT_TRUE(std::isnan(veltrane_kit::NearestSingle(std::nan(""))));
}

} // namespace
