#include "support/dom.h"
#include "support/faults/failure.h"
#include "translators/frame/test_translator.h"

#include <MCVeltrane_900/DictVar.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreCatNumericEncoder.h>
#include <MCVeltrane_900/ScoreCatStringEncoder.h>
#include <MCVeltrane_900/StringValue.h>

#include <gtest/gtest.h>

namespace {

using namespace veltrane::tests;

constexpr Failure kNoList{MISSING_VALUE_LIST, "v"};

DictVar MakeVar(ScoreDictVar::VariableType type, ScoreDictVar::MeasureLevel level = ScoreDictVar::LEVEL_ORDINAL) {
    DictVar var("v", type);
    var.SetMLevel(level);
    return var;
}

DictVar StringVar(const std::vector<std::string>& values) {
    DictVar var = MakeVar(ScoreDictVar::STRING_VAR);
    for (const std::string& value : values) {
        var.AddScoreValueLabel(new StringValue(value), "label");
    }
    return var;
}

DictVar NumericVar(const std::vector<double>& values) {
    DictVar var = MakeVar(ScoreDictVar::kNUMERIC_VAR);
    for (double value : values) {
        var.AddScoreValueLabel(new NumericValue(value), "label");
    }
    return var;
}

class CategoryEncoder : public testing::Test {
protected:
    TestTranslator translator;
};

TEST_F(CategoryEncoder, IsForOrdinalAndNominalVariablesOnly) {
    DictVar continuous = MakeVar(ScoreDictVar::STRING_VAR, ScoreDictVar::LEVEL_CONTINUOUS);
    EXPECT_FALSE(translator.SetupCatEncoder(nullptr));
    EXPECT_FALSE(translator.SetupCatEncoder(&continuous));
    EXPECT_EQ(continuous.GetEncoder(), nullptr);
    for (auto level : {ScoreDictVar::LEVEL_ORDINAL, ScoreDictVar::LEVEL_NOMINAL}) {
        DictVar var = MakeVar(ScoreDictVar::STRING_VAR, level);
        EXPECT_TRUE(translator.SetupCatEncoder(&var));
        EXPECT_NE(var.GetEncoder(), nullptr);
    }
}

TEST_F(CategoryEncoder, KnowsTheCategoriesOfAStringInOrder) {
    DictVar var = StringVar({"b", "a"});
    ASSERT_TRUE(translator.SetupCatEncoder(&var));
    ASSERT_EQ(var.GetEncoder()->GetEncoderType(), ScoreEncoder::ENCODER_CAT_STRING);
    EXPECT_EQ(var.GetEncoder()->GetNumberOfCategories(), 2);
    EXPECT_EQ(var.GetEncoder()->Decode(0), "b");
    EXPECT_EQ(var.GetEncoder()->Decode(1), "a");
}

TEST_F(CategoryEncoder, KnowsTheCategoriesOfANumberInOrder) {
    DictVar var = NumericVar({5, 3});
    ASSERT_TRUE(translator.SetupCatEncoder(&var));
    ASSERT_EQ(var.GetEncoder()->GetEncoderType(), ScoreEncoder::ENCODER_CAT_NUMERIC);
    EXPECT_EQ(var.GetEncoder()->DecodeNum(0), 5);
    EXPECT_EQ(var.GetEncoder()->DecodeNum(1), 3);
}

TEST_F(CategoryEncoder, OfADateTimeIsOneOfStrings) {
    DictVar var = MakeVar(ScoreDictVar::DATETIME_VAR);
    ASSERT_TRUE(translator.SetupCatEncoder(&var));
    EXPECT_EQ(var.GetEncoder()->GetEncoderType(), ScoreEncoder::ENCODER_CAT_STRING);
}

TEST_F(CategoryEncoder, TakesTheBlankRulesOfTheVariable) {
    for (bool rule : {false, true}) {
        DictVar var = MakeVar(ScoreDictVar::STRING_VAR);
        var.SetNoSpaceTrim(rule);
        var.SetEmptyStringOK(!rule);
        translator.SetupCatEncoder(&var);
        const auto& encoder = static_cast<ScoreCatStringEncoder&>(*var.GetEncoder());
        EXPECT_EQ(encoder.GetNoSpaceTrim(), rule);
        EXPECT_EQ(encoder.GetEmptyStringOK(), !rule);
    }
}

TEST_F(CategoryEncoder, KeepsTheOneThatIsThereAndTeachesIt) {
    DictVar var = StringVar({"a"});
    auto* encoder = new ScoreCatStringEncoder(std::vector<std::string>{"z"});
    var.SetEncoder(encoder);
    EXPECT_TRUE(translator.SetupCatEncoder(&var));
    EXPECT_EQ(var.GetEncoder(), encoder);
    EXPECT_EQ(encoder->EncodeConst(std::string("a")), 1);
}

class ListedValues : public testing::Test {
protected:
    TestTranslator translator;
};

TEST_F(ListedValues, TextsAreComparedExactly) {
    const DictVar var = StringVar({"b", "a "});
    EXPECT_TRUE(translator.IsValidScoreValue(&var, "b"));
    EXPECT_FALSE(translator.IsValidScoreValue(&var, "a"));
    EXPECT_FALSE(translator.IsValidScoreValue(&var, "B"));
    EXPECT_EQ(translator.GetIndexOfOrdinalValue("a ", &var), 1);
    EXPECT_EQ(translator.GetIndexOfOrdinalValue("a", &var), -1);
}

TEST_F(ListedValues, NumbersAreComparedAsNumbers) {
    const DictVar var = NumericVar({5, 3});
    EXPECT_TRUE(translator.IsValidScoreValue(&var, "3.0"));
    EXPECT_FALSE(translator.IsValidScoreValue(&var, "4"));
    EXPECT_FALSE(translator.IsValidScoreValue(&var, "x"));
    EXPECT_EQ(translator.GetIndexOfOrdinalValue("5.0", &var), 0);
    EXPECT_EQ(translator.GetIndexOfOrdinalValue("3", &var), 1);
    EXPECT_EQ(translator.GetIndexOfOrdinalValue("x", &var), -1);
}

TEST_F(ListedValues, ValidityIsExactAndTheIndexTolerant) {
    const DictVar var = NumericVar({1});
    EXPECT_FALSE(translator.IsValidScoreValue(&var, "1.00000000000002"));
    EXPECT_EQ(translator.GetIndexOfOrdinalValue("1.00000000000002", &var), 0);
}

TEST_F(ListedValues, OfNoVariableThereAreNone) {
    EXPECT_FALSE(translator.IsValidScoreValue(nullptr, "a"));
    EXPECT_EQ(translator.GetIndexOfOrdinalValue("a", nullptr), -1);
}

TEST_F(ListedValues, AreRequired) {
    for (auto type : {ScoreDictVar::kNUMERIC_VAR, ScoreDictVar::STRING_VAR}) {
        const DictVar var = MakeVar(type);
        ExpectFailure([&] { translator.IsValidScoreValue(&var, "a"); }, kNoList);
        ExpectFailure([&] { translator.GetIndexOfOrdinalValue("a", &var); }, kNoList);
    }
}

struct OperatorRow {
    const char* text;
    int result, low, high;
};

class OrdinalComparison : public testing::TestWithParam<OperatorRow> {};

TEST_P(OrdinalComparison, BecomesARangeOfPositions) {
    TestTranslator translator("UTF-8");
    const DictVar var = StringVar({"a", "b", "c", "d"});
    const ParsedXml document = ParseXml(std::string("<SimplePredicate value='c' operator='") + GetParam().text + "'/>");
    int low = -9;
    int high = -9;
    EXPECT_EQ(translator.HandleOrdinalVariable(document.Root(), &var, low, high), GetParam().result);
    EXPECT_EQ(low, GetParam().low);
    EXPECT_EQ(high, GetParam().high);
}

INSTANTIATE_TEST_SUITE_P(Operators, OrdinalComparison,
                         testing::Values(OperatorRow{"greaterThan", 1, 3, 3}, OperatorRow{"greaterOrEqual", 1, 2, 3},
                                         OperatorRow{"lessThan", 1, 0, 1}, OperatorRow{"lessOrEqual", 1, 0, 2},
                                         OperatorRow{"equal", 0, 2, 2}, OperatorRow{"notEqual", 2, 2, 2}));

class OrdinalPredicate : public testing::Test {
protected:
    int Handle(const std::string& attributes, const DictVar& var) {
        const ParsedXml document = ParseXml("<SimplePredicate " + attributes + "/>");
        return translator.HandleOrdinalVariable(document.Root(), &var, low, high);
    }

    TestTranslator translator{"UTF-8"};
    int low = -9;
    int high = -9;
};

TEST_F(OrdinalPredicate, MayLeaveNoPosition) {
    Handle("value='a' operator='lessThan'", StringVar({"a", "b"}));
    EXPECT_EQ(low, 0);
    EXPECT_EQ(high, -1);
    Handle("value='b' operator='greaterThan'", StringVar({"a", "b"}));
    EXPECT_EQ(low, 2);
    EXPECT_EQ(high, 1);
}

TEST_F(OrdinalPredicate, NeedsItsAttributes) {
    const DictVar var = StringVar({"a"});
    ExpectFailure([&] { Handle("operator='equal'", var); }, {MISSING_ATTRIBUTE_OF, "value", "SimplePredicate"});
    ExpectFailure([&] { Handle("value='x'", var); }, {MISSING_ATTRIBUTE_OF, "operator", "SimplePredicate"});
}

TEST_F(OrdinalPredicate, RefusesUnlistedValuesAndUnknownOperators) {
    const DictVar var = StringVar({"a"});
    ExpectFailure([&] { Handle("value='x' operator='any'", var); }, {INVALID_ATTRIBUTE_VALUE_IN, "x", "value", "v"});
    ExpectFailure([&] { Handle("value='a' operator='any'", var); },
                  {INVALID_ATTRIBUTE_VALUE_IN, "any", "operator", "v"});
    ExpectFailure([&] { Handle("value='a' operator='isMissing'", var); },
                  {INVALID_ATTRIBUTE_VALUE_IN, "isMissing", "operator", "v"});
    EXPECT_EQ(low, -9);
    EXPECT_EQ(high, -9);
}

TEST_F(OrdinalPredicate, OfNoVariableHasNoListedValue) {
    const ParsedXml document = ParseXml("<SimplePredicate value='x' operator='any'/>");
    ExpectFailure([&] { translator.HandleOrdinalVariable(document.Root(), nullptr, low, high); },
                  {INVALID_ATTRIBUTE_VALUE_IN, "x", "value", ""});
    const ParsedXml bare = ParseXml("<SimplePredicate value='x'/>");
    ExpectFailure([&] { translator.HandleOrdinalVariable(bare.Root(), nullptr, low, high); },
                  {MISSING_ATTRIBUTE_OF, "operator", "SimplePredicate"});
    EXPECT_EQ(low, -9);
    EXPECT_EQ(high, -9);
}

TEST_F(OrdinalPredicate, NeedsAListOfValues) {
    const DictVar var = MakeVar(ScoreDictVar::STRING_VAR);
    ExpectFailure([&] { Handle("value='a' operator='equal'", var); }, kNoList);
}

} // namespace
