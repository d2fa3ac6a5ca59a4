// Every element and attribute that the kit and the plug-in read missing, empty, wrong or doubled.
#include "models/kit/scoring.h"
#include "models/kit/small_documents.h"
#include "support/faults/fault.h"

#include <gtest/gtest.h>

using namespace veltrane::tests;

namespace {

class RegressionFault : public testing::TestWithParam<FaultyChange> {};

TEST_P(RegressionFault, NamesElementAndAttribute) {
    ExpectRefused(kSmallRegression, GetParam());
}

constexpr FaultyChange kModelFaults[] = {
    {"FunctionMissing", " functionName='regression'", "",
     Failure(MISSING_ATTRIBUTE_OF, "functionName", "RegressionModel")},
    {"FunctionEmpty", "functionName='regression'", "functionName=''",
     Failure(NULL_ATTRIBUTE, "functionName", "RegressionModel")},
    {"FunctionWrong", "functionName='regression'", "functionName='clustering'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "clustering", "functionName", "RegressionModel")},
    {"FunctionDoubled", "functionName='regression'", "functionName='regression' functionName='regression'",
     Failure(CANNOT_OPEN_DOCUMENT)},
    {"MethodEmpty", "normalizationMethod='none'", "normalizationMethod=''",
     Failure(NULL_ATTRIBUTE, "normalizationMethod", "RegressionModel")},
    {"MethodWrong", "normalizationMethod='none'", "normalizationMethod='max'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "max", "normalizationMethod", "RegressionModel")},
    {"MethodOfOtherFunction", "normalizationMethod='none'", "normalizationMethod='simplemax'",
     Failure(UNSUPPORTED_VALUE_IN, "simplemax", "normalizationMethod", "RegressionModel",
             "none, softmax, logit, probit, cloglog, loglog, cauchit, exp")},
    {"NotScorable", "isScorable='true'", "isScorable='false'",
     Failure(UNSUPPORTED_VALUE_IN, "false", "isScorable", "RegressionModel", "true")},
    {"ScorableWrong", "isScorable='true'", "isScorable='maybe'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "maybe", "isScorable", "RegressionModel")},
    {"ChildWrong", "<MiningSchema>", "<Segmentation/><MiningSchema>",
     Failure(INVALID_NODE, "Segmentation", "RegressionModel")},
    {"DictionaryDoubled", "<Header/>", "<DataDictionary/>", Failure(MORE_THAN_ONE, "DataDictionary", "PMML")},
};

constexpr FaultyChange kSchemaFaults[] = {
    {"SchemaDoubled", "<MiningSchema>", "<MiningSchema/><MiningSchema>",
     Failure(MORE_THAN_ONE, "MiningSchema", "RegressionModel")},
    {"SchemaChildWrong", "<MiningField name='z'/>", "<Field name='z'/>",
     Failure(INVALID_NODE, "Field", "MiningSchema")},
    {"NameMissing", "<MiningField name='z'/>", "<MiningField/>", Failure(MISSING_ATTRIBUTE_OF, "name", "MiningField")},
    {"NameEmpty", "<MiningField name='z'/>", "<MiningField name=''/>", Failure(NULL_ATTRIBUTE, "name", "MiningField")},
    {"NameUnknown", "<MiningField name='z'/>", "<MiningField name='w'/>",
     Failure(MISSING_VARIABLE, "w", "DataDictionary")},
    {"NameDoubled", "<MiningField name='z'/>", "<MiningField name='z'/><MiningField name='z'/>",
     Failure(DUPLICATE_VARIABLE_IN, "z", "MiningSchema")},
    {"UsageEmpty", "usageType='active'", "usageType=''", Failure(NULL_ATTRIBUTE, "usageType", "MiningField")},
    {"UsageWrong", "usageType='active'", "usageType='input'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "input", "usageType", "MiningField")},
    {"LevelWrong", "optype='continuous' outliers", "optype='nominal' outliers",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "nominal", "optype", "MiningField")},
    {"LevelOfText", "<MiningField name='c'/>", "<MiningField name='c' optype='continuous'/>",
     Failure(CONFLICTING_VALUES_IN, "continuous", "optype", "MiningField", "string", "dataType", "DataField")},
    {"OutliersEmpty", "outliers='asIs'", "outliers=''", Failure(NULL_ATTRIBUTE, "outliers", "MiningField")},
    {"OutliersWrong", "outliers='asIs'", "outliers='asMissing'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "asMissing", "outliers", "MiningField")},
    {"OutliersWithoutBounds", "outliers='asIs' lowValue='1' highValue='50'", "outliers='asExtremeValues'",
     Failure(MISSING_VALUES_OF_BOTH, "lowValue", "highValue", "MiningField")},
    {"LowEmpty", "lowValue='1'", "lowValue=''", Failure(NULL_ATTRIBUTE, "lowValue", "MiningField")},
    {"LowWrong", "lowValue='1'", "lowValue='one'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "one", "lowValue", "MiningField")},
    {"HighEmpty", "highValue='50'", "highValue=''", Failure(NULL_ATTRIBUTE, "highValue", "MiningField")},
    {"HighWrong", "highValue='50'", "highValue='NaN'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "NaN", "highValue", "MiningField")},
    {"MissingTreatmentEmpty", "missingValueTreatment='asIs'", "missingValueTreatment=''",
     Failure(NULL_ATTRIBUTE, "missingValueTreatment", "MiningField")},
    {"MissingTreatmentWrong", "missingValueTreatment='asIs'", "missingValueTreatment='drop'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "drop", "missingValueTreatment", "MiningField")},
    {"MissingReplacementEmpty", "missingValueTreatment='asIs'", "missingValueReplacement=''",
     Failure(NULL_ATTRIBUTE, "missingValueReplacement", "MiningField")},
    {"MissingReplacementWrong", "missingValueTreatment='asIs'", "missingValueReplacement='none'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "none", "missingValueReplacement", "MiningField")},
    {"InvalidTreatmentEmpty", "invalidValueTreatment='returnInvalid'", "invalidValueTreatment=''",
     Failure(NULL_ATTRIBUTE, "invalidValueTreatment", "MiningField")},
    {"InvalidTreatmentWrong", "invalidValueTreatment='returnInvalid'", "invalidValueTreatment='refuse'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "refuse", "invalidValueTreatment", "MiningField")},
    {"InvalidReplacementMissing", "invalidValueTreatment='returnInvalid'", "invalidValueTreatment='asValue'",
     Failure(MISSING_ATTRIBUTE_OF, "invalidValueReplacement", "MiningField")},
    {"InvalidReplacementEmpty", "invalidValueTreatment='returnInvalid'",
     "invalidValueTreatment='asValue' invalidValueReplacement=''",
     Failure(NULL_ATTRIBUTE, "invalidValueReplacement", "MiningField")},
    {"InvalidReplacementWrong", "invalidValueTreatment='returnInvalid'",
     "invalidValueTreatment='asValue' invalidValueReplacement='1,5'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "1,5", "invalidValueReplacement", "MiningField")},
};

constexpr FaultyChange kValidityFaults[] = {
    {"IntervalWithoutMargins", " leftMargin='0' rightMargin='100'", "",
     Failure(MISSING_VALUES_OF_BOTH, "leftMargin", "rightMargin", "Interval")},
    {"ClosureMissing", "closure='closedOpen' ", "", Failure(MISSING_ATTRIBUTE_OF, "closure", "Interval")},
    {"ClosureEmpty", "closure='closedOpen'", "closure=''", Failure(NULL_ATTRIBUTE, "closure", "Interval")},
    {"ClosureWrong", "closure='closedOpen'", "closure='open'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "open", "closure", "Interval")},
    {"LeftMarginEmpty", "leftMargin='0'", "leftMargin=''", Failure(NULL_ATTRIBUTE, "leftMargin", "Interval")},
    {"LeftMarginWrong", "leftMargin='0'", "leftMargin='zero'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "zero", "leftMargin", "Interval")},
    {"RightMarginEmpty", "rightMargin='100'", "rightMargin=''", Failure(NULL_ATTRIBUTE, "rightMargin", "Interval")},
    {"RightMarginWrong", "rightMargin='100'", "rightMargin='1e999'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "1e999", "rightMargin", "Interval")},
    {"ValueMissing", "<Value value='a'/>", "<Value/>", Failure(MISSING_ATTRIBUTE_OF, "value", "Value")},
};

constexpr FaultyChange kOutputFaults[] = {
    {"OutputDoubled", "<Output>", "<Output/><Output>", Failure(MORE_THAN_ONE, "Output", "RegressionModel")},
    {"OutputChildWrong", "<OutputField name='p'", "<ResultField/><OutputField name='p'",
     Failure(INVALID_NODE, "ResultField", "Output")},
    {"NameMissing", "<OutputField name='p'", "<OutputField", Failure(MISSING_ATTRIBUTE_OF, "name", "OutputField")},
    {"NameEmpty", "<OutputField name='p'", "<OutputField name=''", Failure(NULL_ATTRIBUTE, "name", "OutputField")},
    {"NameDoubled", "<Output>", "<Output><OutputField name='p'/>",
     Failure(DUPLICATE_DEFINITION, "OutputField", "p", "Output")},
    {"LevelEmpty", "optype='continuous' dataType='double' feature", "optype='' dataType='double' feature",
     Failure(NULL_ATTRIBUTE, "optype", "OutputField")},
    {"LevelWrong", "optype='continuous' dataType='double' feature", "optype='real' dataType='double' feature",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "real", "optype", "OutputField")},
    {"FeatureEmpty", "feature='predictedValue'", "feature=''", Failure(NULL_ATTRIBUTE, "feature", "OutputField")},
    {"FeatureWrong", "feature='predictedValue'", "feature='predicted'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "predicted", "feature", "OutputField")},
    {"TransformedWithoutExpression", "feature='predictedValue'", "feature='transformedValue'",
     Failure(MISSING_NODE_IN, "EXPRESSION", "OutputField")},
};

constexpr FaultyChange kTargetFaults[] = {
    {"TargetsDoubled", "<Targets>", "<Targets/><Targets>", Failure(MORE_THAN_ONE, "Targets", "RegressionModel")},
    {"FieldUnknown", "<Target field='y'", "<Target field='w'", Failure(MISSING_VARIABLE, "w", "DataDictionary")},
    {"FieldEmpty", "<Target field='y'", "<Target field=''", Failure(NULL_ATTRIBUTE, "field", "Target")},
    {"CastEmpty", "castInteger='round'", "castInteger=''", Failure(NULL_ATTRIBUTE, "castInteger", "Target")},
    {"CastWrong", "castInteger='round'", "castInteger='trunc'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "trunc", "castInteger", "Target")},
    {"MinEmpty", "min='-1000'", "min=''", Failure(NULL_ATTRIBUTE, "min", "Target")},
    {"MinWrong", "min='-1000'", "min='low'", Failure(INVALID_ATTRIBUTE_VALUE_IN, "low", "min", "Target")},
    {"MaxEmpty", "max='100000'", "max=''", Failure(NULL_ATTRIBUTE, "max", "Target")},
    {"MaxWrong", "max='100000'", "max='high'", Failure(INVALID_ATTRIBUTE_VALUE_IN, "high", "max", "Target")},
    {"FactorEmpty", "rescaleFactor='1'", "rescaleFactor=''", Failure(NULL_ATTRIBUTE, "rescaleFactor", "Target")},
    {"FactorWrong", "rescaleFactor='1'", "rescaleFactor='x'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "x", "rescaleFactor", "Target")},
    {"ConstantEmpty", "rescaleConstant='0'", "rescaleConstant=''",
     Failure(NULL_ATTRIBUTE, "rescaleConstant", "Target")},
    {"ConstantWrong", "rescaleConstant='0'", "rescaleConstant='x'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "x", "rescaleConstant", "Target")},
    {"DefaultWrong", "defaultValue='-7'", "defaultValue='seven'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "seven", "defaultValue", "TargetValue")},
};

constexpr FaultyChange kTableFaults[] = {
    {"TableDoubled", "<RegressionTable intercept='1'>",
     "<RegressionTable intercept='0'/><RegressionTable intercept='1'>",
     Failure(MORE_THAN_ONE, "RegressionTable", "RegressionModel")},
    {"InterceptMissing", "<RegressionTable intercept='1'>", "<RegressionTable>",
     Failure(MISSING_ATTRIBUTE_OF, "intercept", "RegressionTable")},
    {"InterceptEmpty", "intercept='1'", "intercept=''", Failure(NULL_ATTRIBUTE, "intercept", "RegressionTable")},
    {"InterceptWrong", "intercept='1'", "intercept='1;5'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "1;5", "intercept", "RegressionTable")},
    {"TableChildWrong", "<NumericPredictor name='x' exponent='2' coefficient='3'/>", "<Predictor/>",
     Failure(INVALID_NODE, "Predictor", "RegressionTable")},
    {"NumericNameMissing", "<NumericPredictor name='x'", "<NumericPredictor",
     Failure(MISSING_ATTRIBUTE_OF, "name", "NumericPredictor")},
    {"NumericNameEmpty", "<NumericPredictor name='x'", "<NumericPredictor name=''",
     Failure(NULL_ATTRIBUTE, "name", "NumericPredictor")},
    {"NumericFieldUnknown", "<NumericPredictor name='x'", "<NumericPredictor name='u'",
     Failure(MISSING_VARIABLE_IN_BOTH, "u", "DataDictionary", "TransformationDictionary")},
    {"NumericFieldNotActive", "<NumericPredictor name='x'", "<NumericPredictor name='y'", Failure(NO_PREDICTOR, "y")},
    {"NumericFieldOfText", "<NumericPredictor name='x'", "<NumericPredictor name='c'", Failure(REQUIRES_NUMERIC, "c")},
    {"NumericDoubled", "<CategoricalPredictor",
     "<NumericPredictor name='x' exponent='2' coefficient='1'/><CategoricalPredictor",
     Failure(DUPLICATE_DEFINITION, "NumericPredictor", "x", "RegressionTable")},
    {"ExponentEmpty", "exponent='2'", "exponent=''", Failure(NULL_ATTRIBUTE, "exponent", "NumericPredictor")},
    {"ExponentBroken", "exponent='2'", "exponent='1.5'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "1.5", "exponent", "NumericPredictor")},
    {"ExponentWrong", "exponent='2'", "exponent='two'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "two", "exponent", "NumericPredictor")},
    {"NumericCoefficientMissing", " coefficient='3'", "",
     Failure(MISSING_ATTRIBUTE_OF, "coefficient", "NumericPredictor")},
    {"NumericCoefficientEmpty", "coefficient='3'", "coefficient=''",
     Failure(NULL_ATTRIBUTE, "coefficient", "NumericPredictor")},
    {"NumericCoefficientWrong", "coefficient='3'", "coefficient='Inf'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "Inf", "coefficient", "NumericPredictor")},
    {"CategoricalNameMissing", "<CategoricalPredictor name='c'", "<CategoricalPredictor",
     Failure(MISSING_ATTRIBUTE_OF, "name", "CategoricalPredictor")},
    {"CategoricalNameEmpty", "<CategoricalPredictor name='c'", "<CategoricalPredictor field=''",
     Failure(NULL_ATTRIBUTE, "field", "CategoricalPredictor")},
    {"CategoricalFieldUnknown", "<CategoricalPredictor name='c'", "<CategoricalPredictor name='u'",
     Failure(MISSING_VARIABLE_IN_BOTH, "u", "DataDictionary", "TransformationDictionary")},
    {"CategoricalValueMissing", "name='c' value='a'", "name='c'",
     Failure(MISSING_ATTRIBUTE_OF, "value", "CategoricalPredictor")},
    {"CategoricalValueWrong", "<CategoricalPredictor name='c'", "<CategoricalPredictor name='z'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "a", "value", "CategoricalPredictor")},
    {"CategoricalDoubled", "<PredictorTerm", "<CategoricalPredictor name='c' value='a' coefficient='1'/><PredictorTerm",
     Failure(DUPLICATE_DEFINITION, "CategoricalPredictor", "a", "RegressionTable")},
    {"CategoricalCoefficientMissing", " coefficient='4'", "",
     Failure(MISSING_ATTRIBUTE_OF, "coefficient", "CategoricalPredictor")},
    {"CategoricalCoefficientEmpty", "coefficient='4'", "coefficient=''",
     Failure(NULL_ATTRIBUTE, "coefficient", "CategoricalPredictor")},
    {"CategoricalCoefficientWrong", "coefficient='4'", "coefficient='4,0'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "4,0", "coefficient", "CategoricalPredictor")},
    {"TermCoefficientMissing", " coefficient='5'", "", Failure(MISSING_ATTRIBUTE_OF, "coefficient", "PredictorTerm")},
    {"TermCoefficientEmpty", "coefficient='5'", "coefficient=''",
     Failure(NULL_ATTRIBUTE, "coefficient", "PredictorTerm")},
    {"TermCoefficientWrong", "coefficient='5'", "coefficient='-'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "-", "coefficient", "PredictorTerm")},
    {"TermWithoutFields", "<FieldRef field='x'/><FieldRef field='z'/>", "",
     Failure(MISSING_NODE_IN, "FieldRef", "PredictorTerm")},
    {"TermChildWrong", "<FieldRef field='x'/>", "<Field name='x'/>", Failure(INVALID_NODE, "Field", "PredictorTerm")},
    {"TermFieldMissing", "<FieldRef field='x'/>", "<FieldRef/>", Failure(MISSING_ATTRIBUTE_OF, "field", "FieldRef")},
    {"TermFieldEmpty", "<FieldRef field='x'/>", "<FieldRef field=''/>", Failure(NULL_ATTRIBUTE, "field", "FieldRef")},
    {"TermFieldUnknown", "<FieldRef field='x'/>", "<FieldRef field='u'/>",
     Failure(MISSING_VARIABLE_IN_BOTH, "u", "DataDictionary", "TransformationDictionary")},
    {"TermFieldOfText", "<FieldRef field='x'/>", "<FieldRef field='c'/>", Failure(REQUIRES_NUMERIC, "c")},
};

INSTANTIATE_TEST_SUITE_P(Model, RegressionFault, testing::ValuesIn(kModelFaults), NameOfRow());
INSTANTIATE_TEST_SUITE_P(Schema, RegressionFault, testing::ValuesIn(kSchemaFaults), NameOfRow());
INSTANTIATE_TEST_SUITE_P(Validity, RegressionFault, testing::ValuesIn(kValidityFaults), NameOfRow());
INSTANTIATE_TEST_SUITE_P(Output, RegressionFault, testing::ValuesIn(kOutputFaults), NameOfRow());
INSTANTIATE_TEST_SUITE_P(Target, RegressionFault, testing::ValuesIn(kTargetFaults), NameOfRow());
INSTANTIATE_TEST_SUITE_P(Table, RegressionFault, testing::ValuesIn(kTableFaults), NameOfRow());

class ClassificationFault : public testing::TestWithParam<FaultyChange> {};

TEST_P(ClassificationFault, NamesElementAndAttribute) {
    ExpectRefused(kSmallClassification, GetParam());
}

constexpr FaultyChange kClassificationFaults[] = {
    {"MethodOfOtherFunction", "normalizationMethod='logit'", "normalizationMethod='exp'",
     Failure(UNSUPPORTED_VALUE_IN, "exp", "normalizationMethod", "RegressionModel",
             "none, simplemax, softmax, logit, probit, cloglog, loglog, cauchit")},
    {"CategoryMissing", "targetCategory='no' ", "", Failure(MISSING_ATTRIBUTE_OF, "targetCategory", "RegressionTable")},
    {"CategoryEmpty", "targetCategory='no'", "targetCategory=''",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "", "targetCategory", "RegressionTable")},
    {"CategoryWrong", "targetCategory='no'", "targetCategory='perhaps'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "perhaps", "targetCategory", "RegressionTable")},
    {"CategoryDoubled", "targetCategory='no'", "targetCategory='yes'",
     Failure(DUPLICATE_DEFINITION, "targetCategory", "yes", "RegressionModel")},
    {"OutputCategoryWrong", "feature='probability' value='yes'", "feature='probability' value='perhaps'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "perhaps", "value", "OutputField")},
    {"TwoTargets", "<MiningField name='x'/>", "<MiningField name='x' usageType='predicted'/>",
     Failure(MULTIPLE_TARGETS, "t", "x")},
    {"DictionaryCountWrong", "numberOfFields='2'", "numberOfFields='3'",
     Failure(NUMBER_MISMATCH, "3", "numberOfFields", "2", "DataField", "DataDictionary")},
};

INSTANTIATE_TEST_SUITE_P(Classification, ClassificationFault, testing::ValuesIn(kClassificationFaults), NameOfRow());

TEST(ModelFault, MissingElementsAreNamed) {
    ExpectFailure([] { ReadModel("<PMML><RegressionModel functionName='regression'/></PMML>"); },
                  {MISSING_NODE_IN, "DataDictionary", "PMML"});
    ExpectFailure([] { ReadModel("<PMML><DataDictionary/><RegressionModel functionName='regression'/></PMML>"); },
                  {MISSING_NODE_IN, "MiningSchema", "RegressionModel"});
    ExpectFailure(
        [] {
            ReadModel("<PMML><DataDictionary/><RegressionModel functionName='regression'><MiningSchema/>"
                      "</RegressionModel></PMML>");
        },
        {MISSING_NODE_IN, "RegressionTable", "RegressionModel"});
}

TEST(ModelFault, OneTableNeedsATargetOfTwoCategories) {
    std::string document = Replaced(kSmallClassification, "<RegressionTable targetCategory='no' intercept='0'/>", "");
    document = Replaced(document, "<Value value='no'/>", "<Value value='no'/><Value value='perhaps'/>");
    ExpectFailure([&document] { ReadModel(document); }, {REQUIRES_MORE_THAN_ONE, "RegressionTable", "RegressionModel"});
}

TEST(ModelFault, ATargetThatOnlyTheModelNamesHasToBeInTheDictionary) {
    std::string document = Replaced(kSmallRegression, "<MiningField name='y' usageType='target'/>", "");
    document = Replaced(document, "targetFieldName='y'", "targetFieldName='u'");
    ExpectFailure([&document] { ReadModel(document); }, {MISSING_VARIABLE, "u", "DataDictionary"});
}

TEST(ModelFault, AModelInsideOfAnotherOneIsNotScoredAlone) {
    const std::string document = "<PMML><DataDictionary/><TextModel><Segment>"
                                 "<RegressionModel functionName='regression'/>"
                                 "</Segment></TextModel></PMML>";
    ExpectFailure([&document] { ReadModel(document); }, {UNSUPPORTED_MODEL, "RegressionModel"});
}

TEST(ModelFault, AFaultLeavesTheNextDocumentReadable) {
    ExpectFailure([] { ReadModel(Replaced(kSmallRegression, "intercept='1'", "intercept=''")); },
                  {NULL_ATTRIBUTE, "intercept", "RegressionTable"});
    Scored scored(kSmallRegression);
    ASSERT_TRUE(scored.Score({{"x", "2"}, {"z", "3"}, {"c", "a"}}).IsOK());
    EXPECT_EQ(scored.Number(), 1 + 3 * 4 + 4 + 5 * 6);
}

} // namespace
