#include "support/allocations.h"
#include "support/numbers.h"
#include "translators/derived/derived_fields.h"

#include <MCVeltrane_900/CaseRecord.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/StringValue.h>

#include <gtest/gtest.h>

#include <string>

// From its second case on a field is evaluated by a plan of its tree. What the plan may and may not take over.

using namespace veltrane::tests;

namespace {

const char* const kX = "<FieldRef field='x'/>";
const char* const kY = "<FieldRef field='y'/>";
const char* const kOne = "<Constant>1</Constant>";
const char* const kTwo = "<Constant>2</Constant>";

std::string Numbers(double x, double y, DerivedFields& fields) {
    const auto text = [](double number) {
        return NumericValue::IsSystemMissingValue(number) ? std::string() : std::to_string(number);
    };
    return fields.Score("z", {{"x", text(x)}, {"y", text(y)}});
}

} // namespace

TEST(ApplyPlan, BranchesFollowTheirCondition) {
    DerivedFields fields(NumericField(Apply("if", Apply("greaterThan", kX + std::string(kOne)) + kX + kY)));
    EXPECT_EQ(Numbers(5, 7, fields), "5");
    EXPECT_EQ(Numbers(0, 7, fields), "7");
    EXPECT_EQ(Numbers(5, 7, fields), "5");
    EXPECT_EQ(Numbers(0, kMissing, fields), "missing");
    EXPECT_EQ(Numbers(kMissing, 7, fields), "7");
}

TEST(ApplyPlan, BranchesNestInEveryPlace) {
    const std::string inner = Apply("if", kY + std::string(kOne) + kTwo);
    DerivedFields fields(NumericField(Apply(
        "+", Apply("if", inner + Apply("+", inner + std::string(kX)) + Apply("*", inner + std::string(kX))) + kTwo)));
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(Numbers(10, 1, fields), "13");
        EXPECT_EQ(Numbers(10, 0, fields), "22");
    }
}

/// A constant at the end of the arguments needs no step; one at the end of a branch does.
TEST(ApplyPlan, ArgumentsEndInAConstantOrInABranch) {
    DerivedFields constant(NumericField(Apply("-", Apply("sum", kX + std::string(kY) + kTwo) + kOne)));
    DerivedFields branch(NumericField(Apply("-", kX + Apply("if", kY + std::string(kOne) + kTwo))));
    DerivedFields half(NumericField(Apply("*", kX + Apply("if", kY + std::string(kTwo)))));
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(Numbers(10, 1, constant), "12");
        EXPECT_EQ(Numbers(kMissing, kMissing, constant), "1");
        EXPECT_EQ(Numbers(10, 1, branch), "9");
        EXPECT_EQ(Numbers(10, 0, branch), "8");
        EXPECT_EQ(Numbers(10, 1, half), "20");
        EXPECT_EQ(Numbers(10, 0, half), "0");
        EXPECT_EQ(Numbers(kMissing, 1, half), "missing");
    }
}

TEST(ApplyPlan, TakesOverABranchOnceItsFieldWasReached) {
    DerivedFields fields(NumericField(Apply("if", kX + std::string(kOne) + Apply("+", kY + std::string(kOne)))));
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(Numbers(1, 7, fields), "1");
    }
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(Numbers(0, 7, fields), "8");
        EXPECT_EQ(Numbers(0, kMissing, fields), "missing");
        EXPECT_EQ(Numbers(1, 7, fields), "1");
    }
}

TEST(ApplyPlan, OfAMissingTestSeesFieldsOfEveryKind) {
    const std::string tests =
        Apply("isMissing", "<FieldRef field='s'/>") + Apply("isNotMissing", kX) + Apply("isMissing", kY);
    DerivedFields fields(NumericField(Apply("sum", tests)));
    EXPECT_EQ(fields.Score("z", {{"x", ""}, {"y", ""}, {"s", "?"}}), "2");
    EXPECT_EQ(fields.Score("z", {{"x", "1"}, {"y", "1"}, {"s", "a"}}), "1");
    EXPECT_EQ(fields.Score("z", {{"x", ""}, {"y", "1"}, {"s", "?"}}), "1");
    EXPECT_EQ(fields.Score("z", {{"x", "1"}, {"y", ""}, {"s", "?"}}), "3");
}

TEST(ApplyPlan, ReplacesWhatEqualityRefusesAsInvalid) {
    DerivedFields fields(DerivedField("z", "optype='categorical' dataType='double'",
                                      "<Value value='1'/><Value value='5'/><Apply function='equal' "
                                      "invalidValueTreatment='asMissing' defaultValue='5'><FieldRef field='x'/>"
                                      "<Constant>2</Constant></Apply>"));
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(Numbers(2, 0, fields), "1");
        EXPECT_EQ(Numbers(3, 0, fields), "5");
    }
}

/// A record may hold a text where the dictionary has a number; the kind counts for equality, membership and branches.
class TextForANumber : public testing::Test {
protected:
    std::string Score(DerivedFields& fields, ScoreValue* x) {
        CaseRecord record;
        record.Add("x", x);
        return ToText(fields.Var("z").GetTransformedValue(&record, fields.dictionary.get(), fields.derived.get()));
    }
};

TEST_F(TextForANumber, IsNotEqualToIt) {
    DerivedFields fields(NumericField(Apply("equal", kX + std::string(kOne))));
    EXPECT_EQ(Score(fields, new NumericValue(1)), "1");
    EXPECT_EQ(Score(fields, new StringValue("1")), "0");
    EXPECT_EQ(Score(fields, new NumericValue(1)), "1");
}

TEST_F(TextForANumber, IsNoMember) {
    DerivedFields fields(NumericField(Apply("isIn", kX + std::string(kTwo) + kOne)));
    EXPECT_EQ(Score(fields, new NumericValue(1)), "1");
    EXPECT_EQ(Score(fields, new StringValue("1")), "0");
    EXPECT_EQ(Score(fields, new NumericValue(2)), "1");
}

TEST_F(TextForANumber, ComesOutOfABranchAsAText) {
    DerivedFields fields(TextField(Apply("if", kOne + std::string(kX))));
    EXPECT_EQ(Score(fields, new StringValue("a text")), "'a text'");
    EXPECT_EQ(Score(fields, new StringValue("a text")), "'a text'");
}

/// The numeric functions of many arguments, and those that compare and choose, once a field has been evaluated.
class ApplyPlanAllocations : public testing::TestWithParam<std::pair<const char*, std::string>> {};

TEST_P(ApplyPlanAllocations, AreNone) {
    DerivedFields fields(NumericField(GetParam().second));
    CaseRecord record;
    record.Add("x", new NumericValue(1));
    record.Add("y", new NumericValue(1));
    const auto cases = [&] {
        for (int i = 0; i < 20; ++i) {
            record.SetValue(0, i % 3 == 2 ? kMissing : i % 3);
            record.SetValue(1, i % 4 == 3 ? kMissing : i % 4);
            fields.derived->GetValuesForDerivedVars(&record, fields.dictionary.get());
        }
    };
    cases();
    EXPECT_EQ(AllocationsOf(cases), 0U);
}

INSTANTIATE_TEST_SUITE_P(
    Functions, ApplyPlanAllocations,
    testing::Values(std::pair{"Median", Apply("median", kX + std::string(kY) + kOne)},
                    std::pair{"MedianInAWalk", Apply("outlierHandle", Apply("median", kX + std::string(kY) + kOne) +
                                                                          kOne + kOne + kOne + kOne + kOne)},
                    std::pair{"Deviation", Apply("sd", kX + std::string(kY) + kOne)},
                    std::pair{"Branch", Apply("if", kX + std::string(kY) + kTwo)},
                    std::pair{"Equality", Apply("equal", kX + std::string(kY))},
                    std::pair{"Membership", Apply("isNotIn", kX + std::string(kY) + kTwo)},
                    std::pair{"MissingTest", Apply("if", Apply("isMissing", kX) + std::string(kTwo) + kX)},
                    std::pair{"Normal", Apply("normalCDF", kX + std::string(kY) + kTwo)}),
    [](const auto& info) { return std::string(info.param.first); });
