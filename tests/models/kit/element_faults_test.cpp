// Every element and attribute that the kit and the plug-in read missing, empty, wrong or doubled.
#include "models/kit/fault.h"
#include "models/kit/scoring.h"
#include "models/kit/small_documents.h"
#include "support/failure.h"

#include <gtest/gtest.h>

using namespace veltrane::tests;

namespace {

class RegressionFault : public testing::TestWithParam<Fault> {};

TEST_P(RegressionFault, NamesElementAndAttribute) {
    const std::string document = Replaced(kSmallRegression, GetParam().from, GetParam().to);
    ExpectFailure([&document] { ReadModel(document); }, GetParam().id, GetParam().text);
}

constexpr Fault kModelFaults[] = {
    {"FunctionMissing", " functionName=\"regression\"", "", 260120,
     "Missing the attribute 'functionName' of 'RegressionModel'."},
    {"FunctionEmpty", "functionName=\"regression\"", "functionName=\"\"", 260285,
     "The 'functionName' of element 'RegressionModel' is null."},
    {"FunctionWrong", "functionName=\"regression\"", "functionName=\"clustering\"", 260153,
     "Invalid value: 'clustering' of attribute 'functionName' in 'RegressionModel'."},
    {"FunctionDoubled", "functionName=\"regression\"", "functionName=\"regression\" functionName=\"regression\"",
     260105, "Unexpected error in opening PMML file."},
    {"MethodEmpty", "normalizationMethod=\"none\"", "normalizationMethod=\"\"", 260285,
     "The 'normalizationMethod' of element 'RegressionModel' is null."},
    {"MethodWrong", "normalizationMethod=\"none\"", "normalizationMethod=\"max\"", 260153,
     "Invalid value: 'max' of attribute 'normalizationMethod' in 'RegressionModel'."},
    {"MethodOfOtherFunction", "normalizationMethod=\"none\"", "normalizationMethod=\"simplemax\"", 260179,
     "Unsupported value 'simplemax' of attribute 'normalizationMethod' in 'RegressionModel, expect 'none, softmax, "
     "logit, "
     "probit, cloglog, loglog, cauchit, exp'."},
    {"NotScorable", "isScorable=\"true\"", "isScorable=\"false\"", 260179,
     "Unsupported value 'false' of attribute 'isScorable' in 'RegressionModel, expect 'true'."},
    {"ScorableWrong", "isScorable=\"true\"", "isScorable=\"maybe\"", 260153,
     "Invalid value: 'maybe' of attribute 'isScorable' in 'RegressionModel'."},
    {"ChildWrong", "<MiningSchema>", "<Segmentation/><MiningSchema>", 260159,
     "Invalid node 'Segmentation' in 'RegressionModel'."},
    {"DictionaryDoubled", "<Header/>", "<DataDictionary/>", 260272,
     "More than one 'DataDictionary' defined in 'PMML'."},
};

constexpr Fault kSchemaFaults[] = {
    {"SchemaDoubled", "<MiningSchema>", "<MiningSchema/><MiningSchema>", 260272,
     "More than one 'MiningSchema' defined in 'RegressionModel'."},
    {"SchemaChildWrong", "<MiningField name=\"z\"/>", "<Field name=\"z\"/>", 260159,
     "Invalid node 'Field' in 'MiningSchema'."},
    {"NameMissing", "<MiningField name=\"z\"/>", "<MiningField/>", 260120,
     "Missing the attribute 'name' of 'MiningField'."},
    {"NameEmpty", "<MiningField name=\"z\"/>", "<MiningField name=\"\"/>", 260285,
     "The 'name' of element 'MiningField' is null."},
    {"NameUnknown", "<MiningField name=\"z\"/>", "<MiningField name=\"w\"/>", 260124,
     "Missing variable:'w' definition in the 'DataDictionary'."},
    {"NameDoubled", "<MiningField name=\"z\"/>", "<MiningField name=\"z\"/><MiningField name=\"z\"/>", 260202,
     "Duplicate definition of variable 'z', already in 'MiningSchema'."},
    {"UsageEmpty", "usageType=\"active\"", "usageType=\"\"", 260285,
     "The 'usageType' of element 'MiningField' is null."},
    {"UsageWrong", "usageType=\"active\"", "usageType=\"input\"", 260153,
     "Invalid value: 'input' of attribute 'usageType' in 'MiningField'."},
    {"LevelWrong", "optype=\"continuous\" outliers", "optype=\"nominal\" outliers", 260153,
     "Invalid value: 'nominal' of attribute 'optype' in 'MiningField'."},
    {"LevelOfText", "<MiningField name=\"c\"/>", "<MiningField name=\"c\" optype=\"continuous\"/>", 260211,
     "Conflict setting between the value 'continuous' of attribute 'optype' and the value 'string' of attribute "
     "'dataType'."},
    {"OutliersEmpty", "outliers=\"asIs\"", "outliers=\"\"", 260285, "The 'outliers' of element 'MiningField' is null."},
    {"OutliersWrong", "outliers=\"asIs\"", "outliers=\"asMissing\"", 260153,
     "Invalid value: 'asMissing' of attribute 'outliers' in 'MiningField'."},
    {"OutliersWithoutBounds", "outliers=\"asIs\" lowValue=\"1\" highValue=\"50\"", "outliers=\"asExtremeValues\"",
     260188, "Missing the values of attribute 'lowValue' and 'highValue' in 'MiningField'."},
    {"LowEmpty", "lowValue=\"1\"", "lowValue=\"\"", 260285, "The 'lowValue' of element 'MiningField' is null."},
    {"LowWrong", "lowValue=\"1\"", "lowValue=\"one\"", 260153,
     "Invalid value: 'one' of attribute 'lowValue' in 'MiningField'."},
    {"HighEmpty", "highValue=\"50\"", "highValue=\"\"", 260285, "The 'highValue' of element 'MiningField' is null."},
    {"HighWrong", "highValue=\"50\"", "highValue=\"NaN\"", 260153,
     "Invalid value: 'NaN' of attribute 'highValue' in 'MiningField'."},
    {"MissingTreatmentEmpty", "missingValueTreatment=\"asIs\"", "missingValueTreatment=\"\"", 260285,
     "The 'missingValueTreatment' of element 'MiningField' is null."},
    {"MissingTreatmentWrong", "missingValueTreatment=\"asIs\"", "missingValueTreatment=\"drop\"", 260153,
     "Invalid value: 'drop' of attribute 'missingValueTreatment' in 'MiningField'."},
    {"MissingReplacementEmpty", "missingValueTreatment=\"asIs\"", "missingValueReplacement=\"\"", 260285,
     "The 'missingValueReplacement' of element 'MiningField' is null."},
    {"MissingReplacementWrong", "missingValueTreatment=\"asIs\"", "missingValueReplacement=\"none\"", 260153,
     "Invalid value: 'none' of attribute 'missingValueReplacement' in 'MiningField'."},
    {"InvalidTreatmentEmpty", "invalidValueTreatment=\"returnInvalid\"", "invalidValueTreatment=\"\"", 260285,
     "The 'invalidValueTreatment' of element 'MiningField' is null."},
    {"InvalidTreatmentWrong", "invalidValueTreatment=\"returnInvalid\"", "invalidValueTreatment=\"refuse\"", 260153,
     "Invalid value: 'refuse' of attribute 'invalidValueTreatment' in 'MiningField'."},
    {"InvalidReplacementMissing", "invalidValueTreatment=\"returnInvalid\"", "invalidValueTreatment=\"asValue\"",
     260120, "Missing the attribute 'invalidValueReplacement' of 'MiningField'."},
    {"InvalidReplacementEmpty", "invalidValueTreatment=\"returnInvalid\"",
     "invalidValueTreatment=\"asValue\" invalidValueReplacement=\"\"", 260285,
     "The 'invalidValueReplacement' of element 'MiningField' is null."},
    {"InvalidReplacementWrong", "invalidValueTreatment=\"returnInvalid\"",
     "invalidValueTreatment=\"asValue\" invalidValueReplacement=\"1,5\"", 260153,
     "Invalid value: '1,5' of attribute 'invalidValueReplacement' in 'MiningField'."},
};

constexpr Fault kValidityFaults[] = {
    {"IntervalWithoutMargins", " leftMargin=\"0\" rightMargin=\"100\"", "", 260175,
     "Require one of 'rightMargin' or 'leftMargin'."},
    {"ClosureMissing", "closure=\"closedOpen\" ", "", 260120, "Missing the attribute 'closure' of 'Interval'."},
    {"ClosureEmpty", "closure=\"closedOpen\"", "closure=\"\"", 260285, "The 'closure' of element 'Interval' is null."},
    {"ClosureWrong", "closure=\"closedOpen\"", "closure=\"open\"", 260153,
     "Invalid value: 'open' of attribute 'closure' in 'Interval'."},
    {"LeftMarginEmpty", "leftMargin=\"0\"", "leftMargin=\"\"", 260285,
     "The 'leftMargin' of element 'Interval' is null."},
    {"LeftMarginWrong", "leftMargin=\"0\"", "leftMargin=\"zero\"", 260153,
     "Invalid value: 'zero' of attribute 'leftMargin' in 'Interval'."},
    {"RightMarginEmpty", "rightMargin=\"100\"", "rightMargin=\"\"", 260285,
     "The 'rightMargin' of element 'Interval' is null."},
    {"RightMarginWrong", "rightMargin=\"100\"", "rightMargin=\"1e999\"", 260153,
     "Invalid value: '1e999' of attribute 'rightMargin' in 'Interval'."},
    {"ValueMissing", "<Value value=\"a\"/>", "<Value/>", 260120, "Missing the attribute 'value' of 'Value'."},
};

constexpr Fault kOutputFaults[] = {
    {"OutputDoubled", "<Output>", "<Output/><Output>", 260272, "More than one 'Output' defined in 'RegressionModel'."},
    {"OutputChildWrong", "<OutputField name=\"p\"", "<ResultField/><OutputField name=\"p\"", 260159,
     "Invalid node 'ResultField' in 'Output'."},
    {"NameMissing", "<OutputField name=\"p\"", "<OutputField", 260120,
     "Missing the attribute 'name' of 'OutputField'."},
    {"NameEmpty", "<OutputField name=\"p\"", "<OutputField name=\"\"", 260285,
     "The 'name' of element 'OutputField' is null."},
    {"NameDoubled", "<Output>", "<Output><OutputField name=\"p\"/>", 260203,
     "Duplicate definition of 'OutputField': 'p', already in 'Output'."},
    {"LevelEmpty", "optype=\"continuous\" dataType=\"double\" feature", "optype=\"\" dataType=\"double\" feature",
     260285, "The 'optype' of element 'OutputField' is null."},
    {"LevelWrong", "optype=\"continuous\" dataType=\"double\" feature", "optype=\"real\" dataType=\"double\" feature",
     260153, "Invalid value: 'real' of attribute 'optype' in 'OutputField'."},
    {"FeatureEmpty", "feature=\"predictedValue\"", "feature=\"\"", 260285,
     "The 'feature' of element 'OutputField' is null."},
    {"FeatureWrong", "feature=\"predictedValue\"", "feature=\"predicted\"", 260153,
     "Invalid value: 'predicted' of attribute 'feature' in 'OutputField'."},
    {"TransformedWithoutExpression", "feature=\"predictedValue\"", "feature=\"transformedValue\"", 260115,
     "Missing node of 'EXPRESSION' element  in 'OutputField'."},
};

constexpr Fault kTargetFaults[] = {
    {"TargetsDoubled", "<Targets>", "<Targets/><Targets>", 260272,
     "More than one 'Targets' defined in 'RegressionModel'."},
    {"FieldUnknown", "<Target field=\"y\"", "<Target field=\"w\"", 260124,
     "Missing variable:'w' definition in the 'DataDictionary'."},
    {"FieldEmpty", "<Target field=\"y\"", "<Target field=\"\"", 260285, "The 'field' of element 'Target' is null."},
    {"CastEmpty", "castInteger=\"round\"", "castInteger=\"\"", 260285,
     "The 'castInteger' of element 'Target' is null."},
    {"CastWrong", "castInteger=\"round\"", "castInteger=\"trunc\"", 260153,
     "Invalid value: 'trunc' of attribute 'castInteger' in 'Target'."},
    {"MinEmpty", "min=\"-1000\"", "min=\"\"", 260285, "The 'min' of element 'Target' is null."},
    {"MinWrong", "min=\"-1000\"", "min=\"low\"", 260153, "Invalid value: 'low' of attribute 'min' in 'Target'."},
    {"MaxEmpty", "max=\"100000\"", "max=\"\"", 260285, "The 'max' of element 'Target' is null."},
    {"MaxWrong", "max=\"100000\"", "max=\"high\"", 260153, "Invalid value: 'high' of attribute 'max' in 'Target'."},
    {"FactorEmpty", "rescaleFactor=\"1\"", "rescaleFactor=\"\"", 260285,
     "The 'rescaleFactor' of element 'Target' is null."},
    {"FactorWrong", "rescaleFactor=\"1\"", "rescaleFactor=\"x\"", 260153,
     "Invalid value: 'x' of attribute 'rescaleFactor' in 'Target'."},
    {"ConstantEmpty", "rescaleConstant=\"0\"", "rescaleConstant=\"\"", 260285,
     "The 'rescaleConstant' of element 'Target' is null."},
    {"ConstantWrong", "rescaleConstant=\"0\"", "rescaleConstant=\"x\"", 260153,
     "Invalid value: 'x' of attribute 'rescaleConstant' in 'Target'."},
    {"DefaultWrong", "defaultValue=\"-7\"", "defaultValue=\"seven\"", 260151,
     "The value: 'seven' is invalid of type: 'double'."},
};

constexpr Fault kTableFaults[] = {
    {"TableDoubled", "<RegressionTable intercept=\"1\">",
     "<RegressionTable intercept=\"0\"/><RegressionTable intercept=\"1\">", 260272,
     "More than one 'RegressionTable' defined in 'RegressionModel'."},
    {"InterceptMissing", "<RegressionTable intercept=\"1\">", "<RegressionTable>", 260120,
     "Missing the attribute 'intercept' of 'RegressionTable'."},
    {"InterceptEmpty", "intercept=\"1\"", "intercept=\"\"", 260285,
     "The 'intercept' of element 'RegressionTable' is null."},
    {"InterceptWrong", "intercept=\"1\"", "intercept=\"1;5\"", 260153,
     "Invalid value: '1;5' of attribute 'intercept' in 'RegressionTable'."},
    {"TableChildWrong", "<NumericPredictor name=\"x\" exponent=\"2\" coefficient=\"3\"/>", "<Predictor/>", 260159,
     "Invalid node 'Predictor' in 'RegressionTable'."},
    {"NumericNameMissing", "<NumericPredictor name=\"x\"", "<NumericPredictor", 260120,
     "Missing the attribute 'name' of 'NumericPredictor'."},
    {"NumericNameEmpty", "<NumericPredictor name=\"x\"", "<NumericPredictor name=\"\"", 260285,
     "The 'name' of element 'NumericPredictor' is null."},
    {"NumericFieldUnknown", "<NumericPredictor name=\"x\"", "<NumericPredictor name=\"u\"", 260125,
     "Missing variable:'u' definition in the 'DataDictionary' and 'TransformationDictionary'."},
    {"NumericFieldNotActive", "<NumericPredictor name=\"x\"", "<NumericPredictor name=\"y\"", 260161,
     "Variable: 'y' is not defined as predictor."},
    {"NumericFieldOfText", "<NumericPredictor name=\"x\"", "<NumericPredictor name=\"c\"", 260187,
     "Variable: 'c' should be numeric."},
    {"NumericDoubled", "<CategoricalPredictor",
     "<NumericPredictor name=\"x\" exponent=\"2\" coefficient=\"1\"/><CategoricalPredictor", 260203,
     "Duplicate definition of 'NumericPredictor': 'x', already in 'RegressionTable'."},
    {"ExponentEmpty", "exponent=\"2\"", "exponent=\"\"", 260285,
     "The 'exponent' of element 'NumericPredictor' is null."},
    {"ExponentWrong", "exponent=\"2\"", "exponent=\"two\"", 260153,
     "Invalid value: 'two' of attribute 'exponent' in 'NumericPredictor'."},
    {"NumericCoefficientMissing", " coefficient=\"3\"", "", 260120,
     "Missing the attribute 'coefficient' of 'NumericPredictor'."},
    {"NumericCoefficientEmpty", "coefficient=\"3\"", "coefficient=\"\"", 260285,
     "The 'coefficient' of element 'NumericPredictor' is null."},
    {"NumericCoefficientWrong", "coefficient=\"3\"", "coefficient=\"Inf\"", 260153,
     "Invalid value: 'Inf' of attribute 'coefficient' in 'NumericPredictor'."},
    {"CategoricalNameMissing", "<CategoricalPredictor name=\"c\"", "<CategoricalPredictor", 260120,
     "Missing the attribute 'name' of 'CategoricalPredictor'."},
    {"CategoricalNameEmpty", "<CategoricalPredictor name=\"c\"", "<CategoricalPredictor field=\"\"", 260285,
     "The 'field' of element 'CategoricalPredictor' is null."},
    {"CategoricalFieldUnknown", "<CategoricalPredictor name=\"c\"", "<CategoricalPredictor name=\"u\"", 260125,
     "Missing variable:'u' definition in the 'DataDictionary' and 'TransformationDictionary'."},
    {"CategoricalValueMissing", "name=\"c\" value=\"a\"", "name=\"c\"", 260120,
     "Missing the attribute 'value' of 'CategoricalPredictor'."},
    {"CategoricalValueWrong", "<CategoricalPredictor name=\"c\"", "<CategoricalPredictor name=\"z\"", 260153,
     "Invalid value: 'a' of attribute 'value' in 'CategoricalPredictor'."},
    {"CategoricalDoubled", "<PredictorTerm",
     "<CategoricalPredictor name=\"c\" value=\"a\" coefficient=\"1\"/><PredictorTerm", 260203,
     "Duplicate definition of 'CategoricalPredictor': 'a', already in 'RegressionTable'."},
    {"CategoricalCoefficientMissing", " coefficient=\"4\"", "", 260120,
     "Missing the attribute 'coefficient' of 'CategoricalPredictor'."},
    {"CategoricalCoefficientEmpty", "coefficient=\"4\"", "coefficient=\"\"", 260285,
     "The 'coefficient' of element 'CategoricalPredictor' is null."},
    {"CategoricalCoefficientWrong", "coefficient=\"4\"", "coefficient=\"4,0\"", 260153,
     "Invalid value: '4,0' of attribute 'coefficient' in 'CategoricalPredictor'."},
    {"TermCoefficientMissing", " coefficient=\"5\"", "", 260120,
     "Missing the attribute 'coefficient' of 'PredictorTerm'."},
    {"TermCoefficientEmpty", "coefficient=\"5\"", "coefficient=\"\"", 260285,
     "The 'coefficient' of element 'PredictorTerm' is null."},
    {"TermCoefficientWrong", "coefficient=\"5\"", "coefficient=\"-\"", 260153,
     "Invalid value: '-' of attribute 'coefficient' in 'PredictorTerm'."},
    {"TermWithoutFields", "<FieldRef field=\"x\"/><FieldRef field=\"z\"/>", "", 260115,
     "Missing node of 'FieldRef' element  in 'PredictorTerm'."},
    {"TermChildWrong", "<FieldRef field=\"x\"/>", "<Field name=\"x\"/>", 260159,
     "Invalid node 'Field' in 'PredictorTerm'."},
    {"TermFieldMissing", "<FieldRef field=\"x\"/>", "<FieldRef/>", 260120,
     "Missing the attribute 'field' of 'FieldRef'."},
    {"TermFieldEmpty", "<FieldRef field=\"x\"/>", "<FieldRef field=\"\"/>", 260285,
     "The 'field' of element 'FieldRef' is null."},
    {"TermFieldUnknown", "<FieldRef field=\"x\"/>", "<FieldRef field=\"u\"/>", 260125,
     "Missing variable:'u' definition in the 'DataDictionary' and 'TransformationDictionary'."},
    {"TermFieldOfText", "<FieldRef field=\"x\"/>", "<FieldRef field=\"c\"/>", 260187,
     "Variable: 'c' should be numeric."},
};

INSTANTIATE_TEST_SUITE_P(Model, RegressionFault, testing::ValuesIn(kModelFaults), NameOf);
INSTANTIATE_TEST_SUITE_P(Schema, RegressionFault, testing::ValuesIn(kSchemaFaults), NameOf);
INSTANTIATE_TEST_SUITE_P(Validity, RegressionFault, testing::ValuesIn(kValidityFaults), NameOf);
INSTANTIATE_TEST_SUITE_P(Output, RegressionFault, testing::ValuesIn(kOutputFaults), NameOf);
INSTANTIATE_TEST_SUITE_P(Target, RegressionFault, testing::ValuesIn(kTargetFaults), NameOf);
INSTANTIATE_TEST_SUITE_P(Table, RegressionFault, testing::ValuesIn(kTableFaults), NameOf);

class ClassificationFault : public testing::TestWithParam<Fault> {};

TEST_P(ClassificationFault, NamesElementAndAttribute) {
    const std::string document = Replaced(kSmallClassification, GetParam().from, GetParam().to);
    ExpectFailure([&document] { ReadModel(document); }, GetParam().id, GetParam().text);
}

constexpr Fault kClassificationFaults[] = {
    {"MethodOfOtherFunction", "normalizationMethod=\"logit\"", "normalizationMethod=\"exp\"", 260179,
     "Unsupported value 'exp' of attribute 'normalizationMethod' in 'RegressionModel, expect 'none, simplemax, "
     "softmax, "
     "logit, probit, cloglog, loglog, cauchit'."},
    {"CategoryMissing", "targetCategory=\"no\" ", "", 260120,
     "Missing the attribute 'targetCategory' of 'RegressionTable'."},
    {"CategoryEmpty", "targetCategory=\"no\"", "targetCategory=\"\"", 260153,
     "Invalid value: '' of attribute 'targetCategory' in 'RegressionTable'."},
    {"CategoryWrong", "targetCategory=\"no\"", "targetCategory=\"perhaps\"", 260153,
     "Invalid value: 'perhaps' of attribute 'targetCategory' in 'RegressionTable'."},
    {"CategoryDoubled", "targetCategory=\"no\"", "targetCategory=\"yes\"", 260203,
     "Duplicate definition of 'targetCategory': 'yes', already in 'RegressionModel'."},
    {"OutputCategoryWrong", "feature=\"probability\" value=\"yes\"", "feature=\"probability\" value=\"perhaps\"",
     260153, "Invalid value: 'perhaps' of attribute 'value' in 'OutputField'."},
    {"TwoTargets", "<MiningField name=\"x\"/>", "<MiningField name=\"x\" usageType=\"predicted\"/>", 260273,
     "Definition of multiple targe variables: 't' and 'x'."},
    {"DictionaryCountWrong", "numberOfFields=\"2\"", "numberOfFields=\"3\"", 260242,
     "The value: '3' of attribute 'numberOfFields' does not match the number: '2' of 'DataField' in 'DataDictionary'."},
};

INSTANTIATE_TEST_SUITE_P(Classification, ClassificationFault, testing::ValuesIn(kClassificationFaults), NameOf);

TEST(ModelFault, MissingElementsAreNamed) {
    ExpectFailure([] { ReadModel("<PMML><RegressionModel functionName=\"regression\"/></PMML>"); }, 260115,
                  "Missing node of 'DataDictionary' element  in 'PMML'.");
    ExpectFailure([] { ReadModel("<PMML><DataDictionary/><RegressionModel functionName=\"regression\"/></PMML>"); },
                  260115, "Missing node of 'MiningSchema' element  in 'RegressionModel'.");
    ExpectFailure(
        [] {
            ReadModel("<PMML><DataDictionary/><RegressionModel functionName=\"regression\"><MiningSchema/>"
                      "</RegressionModel></PMML>");
        },
        260115, "Missing node of 'RegressionTable' element  in 'RegressionModel'.");
}

TEST(ModelFault, OneTableNeedsATargetOfTwoCategories) {
    std::string document =
        Replaced(kSmallClassification, "<RegressionTable targetCategory=\"no\" intercept=\"0\"/>", "");
    document = Replaced(document, "<Value value=\"no\"/>", "<Value value=\"no\"/><Value value=\"perhaps\"/>");
    ExpectFailure([&document] { ReadModel(document); }, 260176,
                  "More than one element 'RegressionTable' are required in 'RegressionModel'.");
}

TEST(ModelFault, ATargetThatOnlyTheModelNamesHasToBeInTheDictionary) {
    std::string document = Replaced(kSmallRegression, "<MiningField name=\"y\" usageType=\"target\"/>", "");
    document = Replaced(document, "targetFieldName=\"y\"", "targetFieldName=\"u\"");
    ExpectFailure([&document] { ReadModel(document); }, 260124,
                  "Missing variable:'u' definition in the 'DataDictionary'.");
}

TEST(ModelFault, AModelInsideOfAnotherOneIsNotScoredAlone) {
    const std::string document = "<PMML><DataDictionary/><MiningModel><Segmentation><Segment>"
                                 "<RegressionModel functionName=\"regression\"/>"
                                 "</Segment></Segmentation></MiningModel></PMML>";
    ExpectFailure([&document] { ReadModel(document); }, 260301, "Unsupported model: 'RegressionModel'.");
}

TEST(ModelFault, AFaultLeavesTheNextDocumentReadable) {
    ExpectFailure([] { ReadModel(Replaced(kSmallRegression, "intercept=\"1\"", "intercept=\"\"")); }, 260285,
                  "The 'intercept' of element 'RegressionTable' is null.");
    Scored scored(kSmallRegression);
    ASSERT_TRUE(scored.Score({{"x", "2"}, {"z", "3"}, {"c", "a"}}).IsOK());
    EXPECT_EQ(scored.Number(), 1 + 3 * 4 + 4 + 5 * 6);
}

} // namespace
