// The values of a target: what they are, what people see of them, and what is predicted where nothing else is.
#include "models/kit/scoring.h"
#include "support/faults/failure.h"
#include "support/faults/fault.h"
#include "support/rows.h"

#include <MCVeltrane_900/CaseRecord.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreClsResult.h>
#include <MCVeltrane_900/ScoreResultField.h>
#include <MCVeltrane_900/ScoreValue.h>

#include <gtest/gtest.h>

#include <string>
#include <utility>

using namespace veltrane::tests;
using namespace MCVeltrane_900;
using enum MCVeltrane_900::Message;

namespace {

/// Predicts the first category for x below 1, else the second one, with shares of 3 to 1; nothing for x above 9.
std::string Choice(const std::string& target, const std::string& first, const std::string& second,
                   const std::string& values, const std::string& outputs = "") {
    const auto node = [&](const std::string& predicate, const std::string& score, const std::string& other) {
        return "<Node score='" + score + "'>" + predicate + "<ScoreDistribution value='" + score +
               "' recordCount='3'/><ScoreDistribution value='" + other + "' recordCount='1'/></Node>";
    };
    return "<PMML version='4.4'><DataDictionary>" + target +
           "<DataField name='x' optype='continuous' dataType='double'/></DataDictionary>"
           "<TreeModel functionName='classification'><MiningSchema><MiningField name='t' usageType='target'/>"
           "<MiningField name='x'/></MiningSchema><Output><OutputField name='shown' "
           "feature='predictedDisplayValue'/><OutputField name='first' feature='probability' value='" +
           first + "'/>" + outputs + "</Output><Targets><Target field='t'>" + values +
           "</Target></Targets><Node><True/>" +
           node("<SimplePredicate field='x' operator='lessThan' value='1'/>", first, second) +
           node("<SimplePredicate field='x' operator='lessThan' value='9'/>", second, first) +
           "</Node></TreeModel></PMML>";
}

const std::string kBlanks = "<TargetValue value='a' displayValue='A' priorProbability='0.25'/>"
                            "<TargetValue value='a ' displayValue='A and a blank' priorProbability='0.75'/>";

class BlankCategories : public testing::TestWithParam<const char*> {};

TEST_P(BlankCategories, StayApart) {
    Scored scored(Choice(GetParam(), "a", "a ", kBlanks));
    scored.Score({{"x", "0"}});
    EXPECT_EQ(scored.Text(), "a");
    EXPECT_EQ(scored.Text("shown"), "A");
    EXPECT_EQ(scored.Number("first"), 0.75);
    EXPECT_EQ(scored.Probability("a"), 0.75);
    EXPECT_EQ(scored.Probability("a "), 0.25);
    EXPECT_EQ(scored.Probability("a  "), 0.75); // neither: the first that is the same but for blanks
    scored.Score({{"x", "2"}});
    EXPECT_EQ(scored.Text(), "a ");
    EXPECT_EQ(scored.Text("shown"), "A and a blank");
    EXPECT_EQ(scored.Probability("a"), 0.25);
    EXPECT_EQ(scored.Probability("a "), 0.75);
    EXPECT_EQ(static_cast<ScoreClsResult&>(scored.Result()).GetCategories().size(), 2U);
}

TEST_P(BlankCategories, HaveTheirOwnPriors) {
    Scored scored(Choice(GetParam(), "a", "a ", kBlanks));
    ASSERT_TRUE(scored.Score({}).IsOK());
    EXPECT_EQ(scored.Text(), "a ");
    EXPECT_EQ(scored.Text("shown"), "A and a blank");
    EXPECT_EQ(scored.Number("first"), 0.25);
    EXPECT_EQ(scored.Result().GetResultConfidence(), 0.75);
}

INSTANTIATE_TEST_SUITE_P(TargetValues, BlankCategories,
                         testing::Values("<DataField name='t' optype='categorical' dataType='string'/>",
                                         "<DataField name='t' optype='categorical' dataType='string'>"
                                         "<Value value='a'/><Value value='a '/></DataField>"));

TEST(TargetValues, ListedOnesAreTakenWithTheirBlanks) {
    const std::string listed =
        "<DataField name='t' optype='categorical' dataType='string'><Value value='a'/><Value value='b'/></DataField>";
    ExpectFailure([&] { ReadModel(Choice(listed, "a", "b ", "")); },
                  {INVALID_ATTRIBUTE_VALUE_IN, "b ", "value", "ScoreDistribution"});
    ExpectFailure([&] { ReadModel(Choice(listed, "a", "b", "<TargetValue value='b '/>")); },
                  {VALUE_TARGET_MISMATCH, "b ", "value", "TargetValue", "t", "DataDictionary"});
}

const std::string kDate = "<DataField name='t' optype='categorical' dataType='date'/>";
const std::string kDates = "<TargetValue value='2020-01-01' displayValue='new year' priorProbability='0.75'/>"
                           "<TargetValue value='2020-02-01' priorProbability='0.25'/>";

TEST(TargetValues, CanBeDates) {
    // 2020-01-01 is day 18262 from 1970; an output field behind the prediction sees a date, not a text.
    Scored scored(Choice(kDate, "2020-01-01", "2020-02-01", kDates,
                         "<OutputField name='p'/><OutputField name='days' feature='transformedValue' "
                         "dataType='integer'><Apply function='dateDaysSinceYear'><FieldRef field='p'/>"
                         "<Constant>2020</Constant></Apply></OutputField>"));
    ASSERT_TRUE(scored.Score({{"x", "0"}}).IsOK());
    EXPECT_EQ(scored.Number(), 18262);
    EXPECT_EQ(scored.Text("shown"), "new year");
    EXPECT_EQ(scored.Number("p"), 18262);
    EXPECT_EQ(scored.Number("days"), 0);
    ASSERT_TRUE(scored.Score({{"x", "2"}}).IsOK());
    EXPECT_EQ(scored.Number(), 18293);
    EXPECT_EQ(scored.Text("shown"), "2020-02-01");
    EXPECT_EQ(scored.Number("days"), 31);
    ASSERT_TRUE(scored.Score({}).IsOK());
    EXPECT_EQ(scored.Number(), 18262);
    EXPECT_EQ(scored.Number("first"), 0.75);
}

TEST(TargetValues, CanBeCountedDays) {
    const std::string document =
        Choice("<DataField name='t' optype='categorical' dataType='dateDaysSince[1960]'/>", "1", "2",
               "<TargetValue value='1.0' displayValue='one'/>",
               "<OutputField name='p' dataType='integer'/><OutputField name='r' feature='residual' value='1'/>");
    Scored scored(document);
    CaseRecord record;
    record.Add("x", new NumericValue(0));
    record.Add("t", new NumericValue(1));
    ASSERT_TRUE(scored.Model().Score(&record, &scored.Result()).IsOK());
    EXPECT_EQ(scored.Text("shown"), "one");
    EXPECT_EQ(scored.Number("first"), 0.75);
    EXPECT_EQ(scored.Number("r"), 0.25);
    EXPECT_EQ(scored.Number("p"), 1);
    Scored other(document);
    ASSERT_TRUE(other.Score({{"x", "2"}}).IsOK());
    EXPECT_EQ(other.Text("shown"), "2");
    EXPECT_EQ(other.Number("p"), 2);
}

const Fault kTargetFaults[] = {
    {"OtherThanListedDates",
     Choice("<DataField name='t' optype='categorical' dataType='date'><Value value='2020-01-01'/>"
            "<Value value='2020-02-01'/></DataField>",
            "2020-01-01", "2020-02-01", "<TargetValue value='2020-03-01'/>"),
     Failure(VALUE_TARGET_MISMATCH, "2020-03-01", "value", "TargetValue", "t", "DataDictionary")},
    {"NoDate", Choice(kDate, "2020-01-01", "2020-02-01", "<TargetValue value='never'/>"),
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "never", "value", "TargetValue")},
    {"NoNumber",
     Choice("<DataField name='t' optype='categorical' dataType='integer'/>", "1", "2", "<TargetValue value='1.5'/>"),
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "1.5", "value", "TargetValue")},
    {"NoTruthValue",
     Choice("<DataField name='t' optype='categorical' dataType='boolean'/>", "true", "false",
            "<TargetValue value='maybe'/>"),
     Failure(VALUE_TARGET_MISMATCH, "maybe", "value", "TargetValue", "t", "DataDictionary")},
    {"Twice", Choice(kDate, "2020-01-01", "2020-02-01", kDates + "<TargetValue value='2020-02-01'/>"),
     Failure(DUPLICATE_DEFINITION, "TargetValue", "2020-02-01", "Target")},
    {"WithoutAValue", Choice(kDate, "2020-01-01", "2020-02-01", "<TargetValue priorProbability='0.5'/>"),
     Failure(MISSING_ATTRIBUTE_OF, "value", "TargetValue")},
    {"WithoutAValueOfAListedTarget",
     Choice("<DataField name='t' optype='categorical' dataType='string'><Value value='a'/><Value value='b'/>"
            "</DataField>",
            "a", "b", "<TargetValue value='a'/><TargetValue displayValue='B'/>"),
     Failure(MISSING_ATTRIBUTE_OF, "value", "TargetValue")},
    {"PriorsAboveOne",
     Choice(kDate, "2020-01-01", "2020-02-01",
            "<TargetValue value='2020-01-01' priorProbability='0.75'/>"
            "<TargetValue value='2020-02-01' priorProbability='0.5'/>"),
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "0.5", "priorProbability", "TargetValue")},
    {"PriorsALittleTooFarAboveOne",
     Choice(kDate, "2020-01-01", "2020-02-01",
            "<TargetValue value='2020-01-01' priorProbability='0.75'/>"
            "<TargetValue value='2020-02-01' priorProbability='0.261'/>"),
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "0.261", "priorProbability", "TargetValue")},
};

class FaultyTarget : public testing::TestWithParam<Fault> {};

TEST_P(FaultyTarget, IsRefused) {
    ExpectFailure([] { ReadModel(GetParam().document); }, GetParam().failure);
}

INSTANTIATE_TEST_SUITE_P(TargetValues, FaultyTarget, testing::ValuesIn(kTargetFaults), NameOfRow());

TEST(TargetWithoutAField, IsThatOfTheSchemaWhateverItsName) {
    for (const char* named : {"<MiningSchema><MiningField name='gr\xC3\xB6\xC3\x9F"
                              "e' usageType='target'/>",
                              "<MiningSchema>"}) {
        std::string document =
            "<?xml version='1.0' encoding='UTF-8'?><PMML version='4.4'><DataDictionary><DataField "
            "name='gr\xC3\xB6\xC3\x9F"
            "e' optype='continuous' dataType='double'/><DataField name='x' optype='continuous' dataType='double'/>"
            "</DataDictionary><RegressionModel functionName='regression' targetFieldName='gr\xC3\xB6\xC3\x9F"
            "e'><MiningSchema><MiningField name='x'/></MiningSchema><Targets><Target rescaleFactor='2'/></Targets>"
            "<RegressionTable intercept='0'><NumericPredictor name='x' coefficient='1'/></RegressionTable>"
            "</RegressionModel></PMML>";
        Scored scored(Replaced(document, "<MiningSchema>", named));
        scored.Score({{"x", "3"}});
        EXPECT_EQ(scored.Number(), 6) << named;
    }
}

TEST(Priors, MayBeRounded) {
    Scored scored(Choice(kDate, "2020-01-01", "2020-02-01",
                         "<TargetValue value='2020-01-01' priorProbability='0.67'/>"
                         "<TargetValue value='2020-02-01' priorProbability='0.17'/>"
                         "<TargetValue value='2020-03-01' priorProbability='0.17'/>"));
    ASSERT_TRUE(scored.Score({}).IsOK());
    EXPECT_EQ(scored.Result().GetResultConfidence(), 0.67);
}

struct TypedTruth {
    const char* name;
    const char* type;
    ScoreValue::ValueType kind;
    const char* yes;
    const char* no;
};

class PredictedTruth : public testing::TestWithParam<TypedTruth> {};

TEST_P(PredictedTruth, HasTheTypeOfTheOutputField) {
    Scored scored(Choice("<DataField name='t' optype='categorical' dataType='boolean'/>", "true", "false", "",
                         "<OutputField name='p'" + std::string(GetParam().type) + "/><OutputField name='q' rank='2'" +
                             GetParam().type +
                             "/><OutputField name='not' feature='transformedValue' dataType='boolean'><Apply "
                             "function='not'><FieldRef field='p'/></Apply></OutputField>"));
    const std::pair<const char*, const char*> rows[] = {{"0", GetParam().yes}, {"2", GetParam().no}};
    for (const auto& [x, shown] : rows) {
        ASSERT_TRUE(scored.Score({{"x", x}}).IsOK());
        const ScoreResultField& outputs = *scored.Result().GetResultFields();
        EXPECT_EQ(outputs.GetResultValue("p")->GetType(), GetParam().kind);
        EXPECT_EQ(outputs.GetResultValue("p")->GetString(), shown);
        EXPECT_EQ(outputs.GetResultValue("q")->GetString(), shown == GetParam().yes ? GetParam().no : GetParam().yes);
        EXPECT_EQ(scored.Text("not"), *x == '0' ? "false" : "true");
    }
    scored.Score({{"x", "20"}});
    EXPECT_TRUE(scored.Text("p").empty() || scored.Number("p") == kMissing);
}

constexpr TypedTruth kTruths[] = {
    {"none", "", ScoreValue::STRING_VALUE, "true", "false"},
    {"boolean", " dataType='boolean'", ScoreValue::STRING_VALUE, "true", "false"},
    {"string", " dataType='string'", ScoreValue::STRING_VALUE, "true", "false"},
    {"integer", " dataType='integer'", ScoreValue::NUMERIC_VALUE, "1", "0"},
    {"number", " dataType='double'", ScoreValue::NUMERIC_VALUE, "1", "0"},
};
INSTANTIATE_TEST_SUITE_P(Types, PredictedTruth, testing::ValuesIn(kTruths), NameOfRow());

TEST(ConfidenceInterval, IsMissingWithoutOne) {
    for (const char* feature : {"confidenceIntervalLower", "confidenceIntervalUpper"}) {
        Scored scored(Choice(kDate, "2020-01-01", "2020-02-01", "",
                             "<OutputField name='bound' dataType='double' feature='" + std::string(feature) + "'/>"));
        ASSERT_TRUE(scored.Score({{"x", "0"}}).IsOK());
        EXPECT_EQ(scored.Number("bound"), kMissing) << feature;
    }
}

} // namespace
