// Output fields and the adjustment of predicted numbers.
#include "models/kit/scoring.h"
#include "models/kit/small_documents.h"
#include "support/faults/failure.h"

#include <MCVeltrane_900/CaseRecord.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ResultVar.h>
#include <MCVeltrane_900/ScoreDictionary.h>

#include <gtest/gtest.h>

#include <cmath>
#include <stdexcept>

using namespace veltrane::tests;

namespace {

const Case kComplete = {{"x", "2"}, {"z", "3"}, {"c", "a"}};
constexpr double kCompleteAnswer = 1 + 3 * 4 + 4 + 5 * 6;

std::string WithOutput(const std::string& fields) {
    return Replaced(kSmallRegression,
                    "<OutputField name='p' displayName='prediction' optype='continuous' dataType='double' "
                    "feature='predictedValue'/>",
                    fields);
}

std::string WithClassOutput(const std::string& fields) {
    return Replaced(kSmallClassification, "<OutputField name='P' feature='probability' value='yes'/>", fields);
}

double Adjusted(const std::string& attributes, double x) {
    std::string document = Replaced(kSmallRegression,
                                    "castInteger='round' min='-1000' max='100000' rescaleFactor='1' "
                                    "rescaleConstant='0'",
                                    attributes);
    document = Replaced(document, "<NumericPredictor name='x' exponent='2' coefficient='3'/>",
                        "<NumericPredictor name='x' coefficient='1'/>");
    document = Replaced(document, "<RegressionTable intercept='1'>", "<RegressionTable intercept='0'>");
    document = Replaced(document,
                        "<PredictorTerm name='xz' coefficient='5'><FieldRef field='x'/><FieldRef "
                        "field='z'/></PredictorTerm>",
                        "");
    Scored scored(document);
    scored.Score({{"x", std::to_string(x)}, {"c", "b"}});
    return scored.Number();
}

TEST(Adjustment, IsNoneWithoutAttributes) {
    EXPECT_EQ(Adjusted("", 2.5), 2.5);
}

TEST(Adjustment, RescalesByFactorThenConstant) {
    EXPECT_EQ(Adjusted("rescaleFactor='3' rescaleConstant='10'", 2.5), 17.5);
    EXPECT_EQ(Adjusted("rescaleConstant='10'", 2.5), 12.5);
}

TEST(Adjustment, MakesWholeNumbers) {
    EXPECT_EQ(Adjusted("castInteger='round'", 2.5), 3);
    EXPECT_EQ(Adjusted("castInteger='ceiling'", 2.25), 3);
    EXPECT_EQ(Adjusted("castInteger='floor'", 2.75), 2);
}

TEST(Adjustment, KeepsWithinBoundsBeforeItRescales) {
    EXPECT_EQ(Adjusted("min='3' max='5'", 2.5), 3);
    EXPECT_EQ(Adjusted("min='3' max='5'", 7), 5);
    EXPECT_EQ(Adjusted("min='3' max='5'", 4), 4);
    EXPECT_EQ(Adjusted("max='5' rescaleFactor='2' castInteger='floor' rescaleConstant='0.75'", 7), 10);
}

TEST(Adjustment, LeavesTheDefaultAlone) {
    Scored scored(Replaced(kSmallRegression, "rescaleFactor='1'", "rescaleFactor='100'"));
    scored.Score({});
    EXPECT_EQ(scored.Number(), -7);
}

TEST(Output, WithoutAFeatureIsThePredictedValue) {
    Scored scored(WithOutput("<OutputField name='v'/>"));
    scored.Score(kComplete);
    EXPECT_EQ(scored.Number("v"), kCompleteAnswer);
}

TEST(Output, DisplaysANumberAsItsText) {
    Scored scored(WithOutput("<OutputField name='v' feature='predictedDisplayValue'/>"));
    scored.Score(kComplete);
    EXPECT_EQ(scored.Text("v"), "47");
}

TEST(Output, DisplaysACategoryByItsLabel) {
    std::string document = WithClassOutput("<OutputField name='v' feature='predictedDisplayValue'/>");
    document = Replaced(document, "<Value value='yes'/>", "<Value value='yes' displayValue='certainly'/>");
    Scored scored(document);
    scored.Score({{"x", "1"}});
    EXPECT_EQ(scored.Text("v"), "certainly");
    scored.Score({{"x", "-1"}});
    EXPECT_EQ(scored.Text("v"), "no");
    scored.Score({});
    EXPECT_EQ(scored.Text("v"), "");
}

TEST(Output, GivesProbabilitiesAndConfidences) {
    Scored scored(WithClassOutput("<OutputField name='yes' feature='probability' value='yes'/>"
                                  "<OutputField name='no' feature='confidence' value='no'/>"
                                  "<OutputField name='best' feature='probability'/>"));
    scored.Score({{"x", "-1"}});
    const double yes = 1 / (1 + std::exp(1.0));
    EXPECT_DOUBLE_EQ(scored.Number("yes"), yes);
    EXPECT_DOUBLE_EQ(scored.Number("no"), 1 - yes);
    EXPECT_DOUBLE_EQ(scored.Number("best"), 1 - yes);
}

TEST(Output, ARegressionHasNoProbability) {
    Scored scored(WithOutput("<OutputField name='v' feature='probability'/>"));
    scored.Score(kComplete);
    EXPECT_EQ(scored.Number("v"), kMissing);
}

TEST(Output, TheResidualIsWhatThePredictionFallsShort) {
    Scored scored(WithOutput("<OutputField name='v' feature='residual'/>"));
    Case row = kComplete;
    row["y"] = "50";
    scored.Score(row);
    EXPECT_EQ(scored.Number("v"), 50 - kCompleteAnswer);
    scored.Score(kComplete);
    EXPECT_EQ(scored.Number("v"), kMissing);
    EXPECT_EQ(scored.Model().GetInputNames(), (std::vector<std::string>{"x", "z", "c"}));
}

/// The probability of "yes" for x = 1.
const double kYes = 1 / (1 + std::exp(-1.0));

TEST(Output, TheResidualOfACategoryIsWhetherTheCaseHasItLessItsProbability) {
    Scored scored(WithClassOutput("<OutputField name='yes' feature='residual' value='yes'/>"
                                  "<OutputField name='no' feature='residual' value='no'/>"
                                  "<OutputField name='best' feature='residual'/>"));
    scored.Score({{"x", "1"}, {"t", "yes"}});
    EXPECT_DOUBLE_EQ(scored.Number("yes"), 1 - kYes);
    EXPECT_DOUBLE_EQ(scored.Number("no"), 0 - (1 - kYes));
    EXPECT_DOUBLE_EQ(scored.Number("best"), 1 - kYes);
    scored.Score({{"x", "1"}, {"t", "no"}});
    EXPECT_DOUBLE_EQ(scored.Number("yes"), 0 - kYes);
    EXPECT_DOUBLE_EQ(scored.Number("no"), 1 - (1 - kYes));
    EXPECT_DOUBLE_EQ(scored.Number("best"), 0 - kYes);
    scored.Score({{"x", "1"}});
    EXPECT_EQ(scored.Number("yes"), kMissing);
    EXPECT_EQ(scored.Number("best"), kMissing);
    scored.Score({{"t", "yes"}});
    EXPECT_EQ(scored.Number("yes"), kMissing);
    EXPECT_EQ(scored.Number("best"), kMissing);
    EXPECT_EQ(scored.Model().GetInputNames(), std::vector<std::string>{"x"});
}

TEST(Output, TheResidualOfANumberThatIsACategoryIsNoDifferenceOfNumbers) {
    std::string document = WithClassOutput("<OutputField name='v' feature='residual'/>");
    for (const auto& [from, to] :
         {std::pair("<Value value='no'/>", "<Value value='10'/>"),
          std::pair("<Value value='yes'/>", "<Value value='20'/>"),
          std::pair("targetCategory='no'", "targetCategory='10'"),
          std::pair("targetCategory='yes'", "targetCategory='20'"),
          std::pair("optype='categorical' dataType='string'", "optype='categorical' dataType='integer'")}) {
        document = Replaced(document, from, to);
    }
    Scored scored(document);
    scored.Score({{"x", "1"}, {"t", "20"}});
    EXPECT_DOUBLE_EQ(scored.Number("v"), 1 - kYes);
    scored.Score({{"x", "1"}, {"t", "10"}});
    EXPECT_DOUBLE_EQ(scored.Number("v"), 0 - kYes);
}

TEST(Output, TheResidualOfAnUnknownCategoryIsRefused) {
    ExpectFailure([] { ReadModel(WithClassOutput("<OutputField name='v' feature='residual' value='maybe'/>")); },
                  {INVALID_ATTRIBUTE_VALUE_IN, "maybe", "value", "OutputField"});
}

const char* const kDecisions = "<Decisions businessProblem='credit' description='what to do'><Decision value='accept' "
                               "displayValue='give it' description='low risk'/><Decision value='refuse'/>"
                               "</Decisions>";

TEST(Decision, IsComputedByItsExpression) {
    const std::string expression = "<Apply function='if'><Apply function='greaterThan'><FieldRef field='P'/>"
                                   "<Constant>0.5</Constant></Apply><Constant>accept</Constant><Constant>refuse"
                                   "</Constant></Apply>";
    for (const std::string& decisions : {std::string(kDecisions), std::string()}) {
        Scored scored(WithClassOutput("<OutputField name='P' feature='probability' value='yes'/>"
                                      "<OutputField name='v' feature='decision' dataType='string' "
                                      "optype='categorical'>" +
                                      decisions + expression + "</OutputField>"));
        scored.Score({{"x", "1"}});
        EXPECT_EQ(scored.Text("v"), "accept");
        scored.Score({{"x", "-1"}});
        EXPECT_EQ(scored.Text("v"), "refuse");
        const auto& var = dynamic_cast<const ResultVar&>(*scored.Model().GetResultDictionary()->GetVar("v"));
        EXPECT_EQ(var.GetVarType(), ScoreDictVar::STRING_VAR);
        EXPECT_EQ(var.GetFeature(), ScoreResultField::RF_NONE);
    }
}

TEST(Decision, CanBeABooleanOrANumber) {
    Scored scored(WithOutput("<OutputField name='p'/><OutputField name='v' feature='decision' "
                             "dataType='boolean' optype='categorical'>" +
                             std::string(kDecisions) +
                             "<Apply function='greaterThan'><FieldRef field='p'/><Constant>40</Constant></Apply>"
                             "</OutputField>"));
    scored.Score(kComplete);
    EXPECT_EQ(scored.Text("v"), "true");
}

TEST(Decision, WithoutAnExpressionIsMissing) {
    Scored scored(WithOutput("<OutputField name='v' feature='decision'>" + std::string(kDecisions) + "</OutputField>"));
    ASSERT_TRUE(scored.Score(kComplete).IsOK());
    EXPECT_EQ(scored.Number("v"), kMissing);
}

TEST(Output, TheEntityOfATableIsNone) {
    Scored scored(WithOutput("<OutputField name='v' feature='entityId'/>"));
    scored.Score(kComplete);
    EXPECT_EQ(scored.Text("v"), "");
}

TEST(Output, FeaturesOfOtherModelsStayMissing) {
    for (const char* feature : {"standardError", "standardDeviation", "clusterId", "clusterAffinity", "affinity",
                                "entityAffinity", "warning", "ruleValue", "reasonCode", "decision", "antecedent",
                                "consequent", "rule", "ruleId", "support", "lift", "leverage"}) {
        Scored scored(WithOutput("<OutputField name='v' feature='" + std::string(feature) + "'/>"));
        ASSERT_TRUE(scored.Score(kComplete).IsOK()) << feature;
        EXPECT_EQ(scored.Number("v"), kMissing) << feature;
    }
}

TEST(Output, HasTheKindOfThePredictedCategory) {
    Scored scored(WithClassOutput("<OutputField name='v'/>"));
    const auto& var = dynamic_cast<const ResultVar&>(*scored.Model().GetResultDictionary()->GetVar("v"));
    EXPECT_EQ(var.GetVarType(), ScoreDictVar::STRING_VAR);
    EXPECT_EQ(var.GetMLevel(), ScoreDictVar::LEVEL_NOMINAL);
    scored.Score({{"x", "1"}});
    EXPECT_EQ(scored.Text("v"), "yes");
}

TEST(Output, CategoriesCanBeNumbers) {
    std::string document = WithClassOutput("<OutputField name='v'/><OutputField name='P' feature='probability' "
                                           "value='1'/>");
    for (const auto& [from, to] :
         {std::pair("<Value value='no'/>", "<Value value='0'/>"),
          std::pair("<Value value='yes'/>", "<Value value='1'/>"),
          std::pair("targetCategory='no'", "targetCategory='0'"),
          std::pair("targetCategory='yes'", "targetCategory='1.0'"),
          std::pair("optype='categorical' dataType='string'", "optype='categorical' dataType='integer'")}) {
        document = Replaced(document, from, to);
    }
    Scored scored(document);
    ASSERT_TRUE(scored.Score({{"x", "1"}}).IsOK());
    EXPECT_EQ(scored.Number(), 1);
    EXPECT_EQ(scored.Number("v"), 1);
    EXPECT_DOUBLE_EQ(scored.Number("P"), 1 / (1 + std::exp(-1.0)));
}

TEST(TransformedValue, SeesOutputsInputsAndDerivedFields) {
    std::string document =
        WithOutput("<OutputField name='p' feature='predictedValue'/>"
                   "<OutputField name='half' feature='transformedValue' optype='continuous' dataType='double'>"
                   "<Apply function='/'><FieldRef field='p'/><Constant>2</Constant></Apply></OutputField>"
                   "<OutputField name='sum' feature='transformedValue'>"
                   "<Apply function='sum'><FieldRef field='half'/><FieldRef field='z'/><FieldRef field='d'/></Apply>"
                   "</OutputField>"
                   "<OutputField name='word' feature='transformedValue' dataType='string' optype='categorical'>"
                   "<Discretize field='p'><DiscretizeBin binValue='low'><Interval closure='openOpen' rightMargin='40'/>"
                   "</DiscretizeBin><DiscretizeBin binValue='high'><Interval closure='closedOpen' leftMargin='40'/>"
                   "</DiscretizeBin></Discretize></OutputField>"
                   "<OutputField name='isA' feature='transformedValue' dataType='double' optype='continuous'>"
                   "<NormDiscrete field='c' value='a'/></OutputField>");
    document =
        Replaced(document, "<RegressionTable intercept='1'>",
                 "<LocalTransformations><DerivedField name='d' optype='continuous' dataType='double'>"
                 "<Constant>1000</Constant></DerivedField></LocalTransformations><RegressionTable intercept='1'>");
    Scored scored(document);
    ASSERT_TRUE(scored.Score(kComplete).IsOK());
    EXPECT_EQ(scored.Number("half"), kCompleteAnswer / 2);
    EXPECT_EQ(scored.Number("sum"), kCompleteAnswer / 2 + 3 + 1000);
    EXPECT_EQ(scored.Text("word"), "high");
    EXPECT_EQ(scored.Number("isA"), 1);
    ASSERT_TRUE(scored.Score({{"z", "3"}}).IsOK());
    EXPECT_EQ(scored.Number("half"), -3.5);
    EXPECT_EQ(scored.Text("word"), "low");
    EXPECT_EQ(scored.Number("isA"), kMissing);
    const auto& var = *scored.Model().GetResultDictionary()->GetVar("word");
    EXPECT_EQ(var.GetVarType(), ScoreDictVar::STRING_VAR);
}

TEST(TransformedValue, OfARefusedCaseSeesNothingOfTheCaseBefore) {
    std::string document = WithOutput("<OutputField name='v' feature='transformedValue' dataType='double' "
                                      "optype='continuous'><FieldRef field='twice'/></OutputField>");
    document = Replaced(document, "<RegressionTable intercept='1'>",
                        "<LocalTransformations><DerivedField name='twice' optype='continuous' dataType='double'>"
                        "<Apply function='*'><FieldRef field='x'/><Constant>2</Constant></Apply></DerivedField>"
                        "</LocalTransformations><RegressionTable intercept='1'>");
    Scored scored(document);
    ASSERT_TRUE(scored.Score(kComplete).IsOK());
    EXPECT_EQ(scored.Number("v"), 4);
    Case refused = kComplete;
    refused["x"] = "100";
    ASSERT_TRUE(scored.Score(refused).IsOK());
    EXPECT_EQ(scored.Number(), -7);
    EXPECT_EQ(scored.Number("v"), kMissing);
}

/// The library's own functions mean nothing to PMML.
TEST(OutputExpression, KnowsNoFunctionsButThoseOfPmml) {
    ExpectFailure(
        [] {
            ReadModel(WithOutput("<OutputField name='i' feature='transformedValue'>"
                                 "<Apply function='rtrim'><FieldRef field='c'/></Apply></OutputField>"));
        },
        {INVALID_ATTRIBUTE_VALUE_IN, "rtrim", "function", "Apply"});
}

/// A record whose host fails while it is read.
class FailingRecord : public CaseRecord {
public:
    FailingRecord() : CaseRecord(1) { Add("x", new NumericValue(2)); }
    const ScoreValue* Get(int /*index*/) const override { throw std::runtime_error("the host's own"); }
    const ScoreValue* Get(const std::string& /*name*/) const override { throw std::runtime_error("the host's own"); }
};

TEST(Score, PassesOnWhatTheCaseIsNotToBlameFor) {
    Scored scored(kSmallRegression);
    const FailingRecord record;
    EXPECT_THROW(scored.Model().Score(&record, &scored.Result()), std::runtime_error);
}

} // namespace
