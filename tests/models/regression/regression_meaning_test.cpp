// What PMML says of sums, links and terms where they leave the ordinary: beyond the numbers, below 0 and above 1, and
// without a value. The answers were worked out by hand.
#include "models/kit/scoring.h"
#include "support/rows.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace veltrane::tests;

namespace {

/// A model of two numbers, x and z.
std::string Document(const std::string& target, const std::string& attributes, const std::string& content) {
    return "<PMML version='4.4'><DataDictionary>" + target +
           "<DataField name='x' optype='continuous' dataType='double'/>"
           "<DataField name='z' optype='continuous' dataType='double'/></DataDictionary><RegressionModel " +
           attributes +
           "><MiningSchema><MiningField name='t' usageType='target'/><MiningField name='x'/>"
           "<MiningField name='z'/></MiningSchema>" +
           content + "</RegressionModel></PMML>";
}

std::string Regression(const std::string& method, const std::string& table) {
    return Document("<DataField name='t' optype='continuous' dataType='double'/>",
                    "functionName='regression' normalizationMethod='" + method + "'",
                    "<RegressionTable intercept='0'>" + table + "</RegressionTable>");
}

/// A classification whose tables have these intercepts; the first one adds x.
std::string Classification(const std::string& method, const std::string& level,
                           const std::vector<std::string>& intercepts) {
    std::string values;
    std::string tables;
    for (std::size_t i = 0; i < intercepts.size(); ++i) {
        const std::string category(1, static_cast<char>('a' + i));
        values += "<Value value='" + category + "'/>";
        tables += "<RegressionTable targetCategory='" + category + "' intercept='" + intercepts[i] + "'>";
        tables += i == 0 ? "<NumericPredictor name='x' coefficient='1'/>" : "";
        tables += "</RegressionTable>";
    }
    return Document("<DataField name='t' optype='" + level + "' dataType='string'>" + values + "<Value value='last'/>" +
                        "</DataField>",
                    "functionName='classification' normalizationMethod='" + method + "'", tables);
}

struct InfiniteSum {
    const char* name;
    std::string document;
};

class RegressionWithoutAFiniteSum : public testing::TestWithParam<InfiniteSum> {};

// x^400 overflows for 10; with z of the other sign two infinities go against each other.
TEST_P(RegressionWithoutAFiniteSum, PredictsNothing) {
    Scored scored(GetParam().document);
    EXPECT_TRUE(scored.Score({{"x", "1"}, {"z", "1"}}).IsOK());
    for (const char* z : {"1", "10", "-10"}) {
        EXPECT_EQ(scored.Score({{"x", "10"}, {"z", z}}).GetErrorCode(), 90027) << z;
        EXPECT_EQ(scored.Text(), "") << z;
    }
}

const char* const kHuge = "<NumericPredictor name='x' exponent='400' coefficient='1'/>"
                          "<NumericPredictor name='z' exponent='401' coefficient='1'/>";

const InfiniteSum kInfiniteSums[] = {
    {"none", Regression("none", kHuge)},       {"logit", Regression("logit", kHuge)},
    {"probit", Regression("probit", kHuge)},   {"cloglog", Regression("cloglog", kHuge)},
    {"loglog", Regression("loglog", kHuge)},   {"cauchit", Regression("cauchit", kHuge)},
    {"softmax", Regression("softmax", kHuge)}, {"exp", Regression("exp", kHuge)},
};
INSTANTIATE_TEST_SUITE_P(Links, RegressionWithoutAFiniteSum, testing::ValuesIn(kInfiniteSums), NameOfRow());

TEST(RegressionTarget, ANumberThatOverflowsWhenItIsRescaledIsNoPrediction) {
    const std::string document =
        Replaced(Regression("none", "<NumericPredictor name='x' coefficient='1'/>"), "</MiningSchema>",
                 "</MiningSchema><Targets><Target field='t' rescaleFactor='1e300'>"
                 "<TargetValue defaultValue='7'/></Target></Targets>");
    Scored scored(document);
    scored.Score({{"x", "2"}});
    EXPECT_EQ(scored.Number(), 2e300);
    scored.Score({{"x", "1e300"}});
    EXPECT_EQ(scored.Number(), 7);
}

struct Rounded {
    const char* name;
    const char* x;
    double expected;
};

class RoundedTarget : public testing::TestWithParam<Rounded> {};

TEST_P(RoundedTarget, IsTheNearestWholeNumberTheLargerOfTwo) {
    Scored scored(Replaced(Regression("none", "<NumericPredictor name='x' coefficient='1'/>"), "</MiningSchema>",
                           "</MiningSchema><Targets><Target field='t' castInteger='round'/></Targets>"));
    scored.Score({{"x", GetParam().x}});
    EXPECT_EQ(scored.Number(), GetParam().expected);
}

constexpr Rounded kRounded[] = {
    {"half", "2.5", 3},
    {"halfBelowZero", "-2.5", -2},
    {"halfOfMinusOne", "-0.5", 0},
    {"below", "-2.75", -3},
    {"justBelowAHalf", "0.49999999999999994", 0},
    {"whole", "-7", -7},
    {"beyondHalves", "4503599627370497", 4503599627370497},
};
INSTANTIATE_TEST_SUITE_P(Numbers, RoundedTarget, testing::ValuesIn(kRounded), NameOfRow());

TEST(RoundedTargetSign, AWholeNumberIsNeverMinusZero) {
    for (const char* cast : {"round", "ceiling", "floor"}) {
        Scored scored(
            Replaced(Regression("none", "<NumericPredictor name='x' coefficient='1'/>"), "</MiningSchema>",
                     "</MiningSchema><Targets><Target field='t' castInteger='" + std::string(cast) + "'/></Targets>"));
        for (const char* x : {"-0.25", "-0.0", "0"}) {
            scored.Score({{"x", x}});
            EXPECT_TRUE(scored.Number() != 0 || !std::signbit(scored.Number())) << cast << " of " << x;
        }
    }
}

TEST(RegressionTerm, AReferenceMapsItsMissingValue) {
    const auto term = [](const std::string& attribute) {
        return Regression("none", "<PredictorTerm coefficient='2'><FieldRef field='x'/><FieldRef field='z'" +
                                      attribute + "/></PredictorTerm>");
    };
    Scored mapped(term(" mapMissingTo='5'"));
    mapped.Score({{"x", "3"}});
    EXPECT_EQ(mapped.Number(), 30);
    mapped.Score({{"x", "3"}, {"z", "4"}});
    EXPECT_EQ(mapped.Number(), 24);
    EXPECT_FALSE(mapped.Score({{"z", "4"}}).IsOK());
    Scored plain(term(""));
    EXPECT_FALSE(plain.Score({{"x", "3"}}).IsOK());
}

TEST(RegressionExponent, IsAWholeNumberHoweverItIsWritten) {
    Scored scored(Regression("none", "<NumericPredictor name='x' exponent='-2.0' coefficient='8'/>"));
    scored.Score({{"x", "-4"}});
    EXPECT_EQ(scored.Number(), 0.5);
    EXPECT_FALSE(scored.Score({{"x", "0"}}).IsOK());
}

struct Shares {
    const char* name;
    std::string document;
    const char* x;
    const char* predicted;
    std::vector<double> expected;
};

class SharesOfCategories : public testing::TestWithParam<Shares> {};

TEST_P(SharesOfCategories, AreNeverNegative) {
    const Shares& row = GetParam();
    Scored scored(row.document);
    ASSERT_TRUE(scored.Score({{"x", row.x}}).IsOK());
    EXPECT_EQ(scored.Text(), row.predicted);
    for (std::size_t i = 0; i < row.expected.size(); ++i) {
        EXPECT_DOUBLE_EQ(scored.Probability(std::string(1, static_cast<char>('a' + i))), row.expected[i]) << i;
    }
    EXPECT_EQ(scored.Probability("last"), 0) << "a category without a table";
}

// cauchit of 1 is 3/4, of 0 1/2, of -1 1/4.
const Shares kShares[] = {
    {"twoAbove", Classification("none", "categorical", {"0", "0"}), "2503.74", "a", {1, 0}},
    {"twoBelow", Classification("none", "categorical", {"0", "0"}), "-3", "b", {0, 1}},
    {"twoWithin", Classification("none", "categorical", {"0", "9"}), "0.25", "b", {0.25, 0.75}},
    {"twoOrdinal", Classification("none", "ordinal", {"0", "0"}), "2", "a", {1, 0}},
    {"manyWithARest", Classification("cauchit", "categorical", {"0", "-1", "9"}), "0", "a", {0.5, 0.25, 0.25}},
    {"manyWithoutARest", Classification("cauchit", "categorical", {"0", "1", "9"}), "1", "a", {0.5, 0.5, 0}},
    {"manyBeyondTheWhole", Classification("cauchit", "categorical", {"0", "0", "9"}), "1", "a", {0.6, 0.4, 0}},
    {"ordinalThatRises", Classification("cauchit", "ordinal", {"0", "1", "9"}), "0", "a", {0.5, 0.25, 0.25}},
    {"ordinalThatFalls", Classification("cauchit", "ordinal", {"0", "0", "9"}), "1", "a", {0.75, 0, 0.25}},
};
INSTANTIATE_TEST_SUITE_P(Links, SharesOfCategories, testing::ValuesIn(kShares), NameOfRow());

} // namespace
