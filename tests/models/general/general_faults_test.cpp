// Every element and attribute that the plug-in of general regressions reads missing, empty, wrong, doubled or against
// another one.
#include "models/general/small_general.h"
#include "models/kit/scoring.h"
#include "support/faults/fault.h"
#include "support/folders.h"

#include <gtest/gtest.h>

using namespace veltrane::tests;

namespace {

constexpr const char* kModel = "GeneralRegressionModel";

class GeneralFault : public testing::TestWithParam<FaultyChange> {
protected:
    void Expect(const char* sample) {
        ExpectRefused(ReadFile(ModelSamplesFolder() + "/" + sample + ".pmml"), GetParam());
    }
};

using SeedlingFault = GeneralFault;

TEST_P(SeedlingFault, NamesElementAndAttribute) {
    Expect("seedlings");
}

constexpr FaultyChange kModelFaults[] = {
    {"FunctionOfOthers", "functionName=\"regression\"", "functionName=\"clustering\"",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "clustering", "functionName", kModel)},
    {"TypeMissing", " modelType=\"generalizedLinear\"", "", Failure(MISSING_ATTRIBUTE_OF, "modelType", kModel)},
    {"TypeEmpty", "modelType=\"generalizedLinear\"", "modelType=\"\"", Failure(NULL_ATTRIBUTE, "modelType", kModel)},
    {"TypeWrong", "modelType=\"generalizedLinear\"", "modelType=\"linear\"",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "linear", "modelType", kModel)},
    {"TypeOfCategories", "modelType=\"generalizedLinear\"", "modelType=\"multinomialLogistic\"",
     Failure(UNSUPPORTED_VALUE_IN, "regression", "functionName", kModel, "classification")},
    {"TargetUnknown", "targetVariableName=\"sprouts\"", "targetVariableName=\"leaves\"",
     Failure(MISSING_VARIABLE, "leaves", "DataDictionary")},
    {"TargetOfOthers", "targetVariableName=\"sprouts\"", "targetVariableName=\"water\"",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "water", "targetVariableName", kModel)},
    {"TargetEmpty", "targetVariableName=\"sprouts\"", "targetVariableName=\"\"",
     Failure(NULL_ATTRIBUTE, "targetVariableName", kModel)},
    {"LinkMissing", " linkFunction=\"logit\"", "", Failure(MISSING_ATTRIBUTE_OF, "linkFunction", kModel)},
    {"LinkWrong", "linkFunction=\"logit\"", "linkFunction=\"cauchit\"",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "cauchit", "linkFunction", kModel)},
    {"LinkWithoutParameter", "linkFunction=\"logit\" linkParameter=\"0.75\"", "linkFunction=\"power\"",
     Failure(MISSING_ATTRIBUTE_OF, "linkParameter", kModel)},
    {"LinkParameterWrong", "linkParameter=\"0.75\"", "linkParameter=\"high\"",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "high", "linkParameter", kModel)},
    {"DistributionWrong", "distribution=\"binomial\"", "distribution=\"binomal\"",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "binomal", "distribution", kModel)},
    {"DistributionWithoutParameter", "distParameter=\"1.5\" linkFunction=\"logit\"", "linkFunction=\"negbin\"",
     Failure(MISSING_ATTRIBUTE_OF, "distParameter", kModel)},
    {"DistributionParameterOfNothing", "distParameter=\"1.5\" linkFunction=\"logit\"",
     "distParameter=\"0\" linkFunction=\"negbin\"", Failure(INVALID_ATTRIBUTE_VALUE_IN, "0", "distParameter", kModel)},
    {"DegreesWrong", "modelDF=\"12\"", "modelDF=\"all\"",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "all", "modelDF", kModel)},
    {"TrialsUnknown", "trialsVariable=\"seeds\"", "trialsVariable=\"tries\"",
     Failure(MISSING_VARIABLE_IN_BOTH, "tries", "DataDictionary", "TransformationDictionary")},
    {"TrialsOfTexts", "trialsVariable=\"seeds\"", "trialsVariable=\"soil\"", Failure(REQUIRES_NUMERIC, "soil")},
    {"TrialsTwice", "trialsVariable=\"seeds\"", "trialsVariable=\"seeds\" trialsValue=\"3\"",
     Failure(CONFLICTING_ATTRIBUTES, "trialsValue", "trialsVariable")},
    {"TrialsOfNothing", "trialsVariable=\"seeds\"", "trialsValue=\"0\"",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "0", "trialsValue", kModel)},
    {"OffsetClosed", "offsetVariable=\"start\"", "offsetVariable=\"sprouts\"", Failure(NO_PREDICTOR, "sprouts")},
    {"OffsetTwice", "offsetVariable=\"start\"", "offsetVariable=\"start\" offsetValue=\"3\"",
     Failure(CONFLICTING_ATTRIBUTES, "offsetValue", "offsetVariable")},
    {"OffsetWrong", "offsetVariable=\"start\"", "offsetValue=\"x\"",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "x", "offsetValue", kModel)},
    {"NotScorable", "isScorable=\"true\"", "isScorable=\"false\"",
     Failure(UNSUPPORTED_VALUE_IN, "false", "isScorable", kModel, "true")},
    {"ChildWrong", "<ParameterList>", "<RegressionTable/><ParameterList>",
     Failure(INVALID_NODE, "RegressionTable", kModel)},
    {"EventsDoubled", "<ParameterList>", "<EventValues/><EventValues/><ParameterList>",
     Failure(MORE_THAN_ONE, "EventValues", kModel)},
};

constexpr FaultyChange kListFaults[] = {
    {"ParametersDoubled", "<ParameterList>", "<ParameterList/><ParameterList>",
     Failure(MORE_THAN_ONE, "ParameterList", kModel)},
    {"ParameterWithoutName", "<Parameter name=\"p3\" label=\"P3\"/>", "<Parameter label=\"P3\"/>",
     Failure(MISSING_ATTRIBUTE_OF, "name", "Parameter")},
    {"ParameterNameEmpty", "<Parameter name=\"p3\" label=\"P3\"/>", "<Parameter name=\"\"/>",
     Failure(NULL_ATTRIBUTE, "name", "Parameter")},
    {"ParameterTwice", "<Parameter name=\"p3\" label=\"P3\"/>", "<Parameter name=\"p2\" label=\"P3\"/>",
     Failure(DUPLICATE_DEFINITION, "Parameter", "p2", "ParameterList")},
    {"ReferenceWrong", "<Parameter name=\"p3\" label=\"P3\"/>", "<Parameter name=\"p3\" referencePoint=\"r\"/>",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "r", "referencePoint", "Parameter")},
    {"ChildOfParametersWrong", "<Parameter name=\"p3\" label=\"P3\"/>", "<Predictor name=\"sun\"/>",
     Failure(INVALID_NODE, "Predictor", "ParameterList")},
    {"FactorsDoubled", "<FactorList>", "<FactorList/><FactorList>", Failure(MORE_THAN_ONE, "FactorList", kModel)},
    {"FactorWithoutName", "<Predictor name=\"sun\"/>", "<Predictor/>",
     Failure(MISSING_ATTRIBUTE_OF, "name", "Predictor")},
    {"FactorUnknown", "<Predictor name=\"sun\"/>", "<Predictor name=\"moon\"/>",
     Failure(MISSING_VARIABLE_IN_BOTH, "moon", "DataDictionary", "TransformationDictionary")},
    {"FactorClosed", "<Predictor name=\"sun\"/>", "<Predictor name=\"sprouts\"/>", Failure(NO_PREDICTOR, "sprouts")},
    {"FactorIsACovariate", "<Predictor name=\"water\"/>",
     "<Predictor name=\"water\"/><Predictor name=\"seeds\"/>"
     "<Predictor name=\"seeds\"/>",
     Failure(DUPLICATE_DEFINITION, "Predictor", "seeds", "CovariateList")},
    {"CovariateOfTexts", "<Predictor name=\"water\"/>", "<Predictor name=\"sun\"/>", Failure(REQUIRES_NUMERIC, "sun")},
    {"ChildOfPredictorWrong", "<Predictor name=\"sun\"/>", "<Predictor name=\"sun\"><Array/></Predictor>",
     Failure(INVALID_NODE, "Array", "Predictor")},
    {"CategoriesEmpty", "<Predictor name=\"sun\"/>", "<Predictor name=\"sun\"><Categories/></Predictor>",
     Failure(NO_CHILD_ELEMENT, "Categories")},
    {"CategoryWithoutValue", "<Category value=\"loam\"/>", "<Category/>",
     Failure(MISSING_ATTRIBUTE_OF, "value", "Category")},
    {"CategoryTwice", "<Category value=\"loam\"/>", "<Category value=\"clay\"/>",
     Failure(DUPLICATE_DEFINITION, "Category", "clay", "Categories")},
    {"CategoriesDoubled", "<Categories>", "<Categories><Category value=\"clay\"/></Categories><Categories>",
     Failure(MORE_THAN_ONE, "Categories", "Predictor")},
};

constexpr const char* kLastRow = "<Array n=\"2\" type=\"real\">0 -0.5</Array>";

constexpr FaultyChange kMatrixFaults[] = {
    {"KindWrong", "kind=\"any\"", "kind=\"square\"", Failure(INVALID_ATTRIBUTE_VALUE_IN, "square", "kind", "Matrix")},
    {"RowsOfNothing", "nbRows=\"3\"", "nbRows=\"0\"", Failure(INVALID_ATTRIBUTE_VALUE_IN, "0", "nbRows", "Matrix")},
    {"RowsOfOthers", "nbRows=\"3\"", "nbRows=\"4\"",
     Failure(NUMBERS_MISMATCH, "3", "Array", "Matrix", "4", "nbRows", "Matrix")},
    {"ColumnsOfOthers", "nbCols=\"2\"", "nbCols=\"3\"",
     Failure(NUMBERS_MISMATCH, "2", "value", "Array", "3", "column", "Matrix")},
    {"ColumnsWrong", "nbCols=\"2\"", "nbCols=\"two\"", Failure(INVALID_ATTRIBUTE_VALUE_IN, "two", "nbCols", "Matrix")},
    {"RowTooShort", kLastRow, "<Array n=\"1\" type=\"real\">0</Array>",
     Failure(NUMBERS_MISMATCH, "1", "value", "Array", "2", "column", "Matrix")},
    {"RowTooLong", kLastRow, "<Array type=\"real\">0 -0.5 1</Array>",
     Failure(NUMBERS_MISMATCH, "3", "value", "Array", "2", "column", "Matrix")},
    {"CountOfOthers", kLastRow, "<Array n=\"3\" type=\"real\">0 -0.5</Array>",
     Failure(ARRAY_SIZE_MISMATCH, "3", "n", "2")},
    {"ContentWrong", kLastRow, "<Array n=\"2\" type=\"real\">0 half</Array>",
     Failure(INVALID_CONTENT, "half", "Array")},
    {"RowMissing", kLastRow, "", Failure(NUMBERS_MISMATCH, "2", "Array", "Matrix", "3", "nbRows", "Matrix")},
    {"DefaultWrong", "kind=\"any\"", "kind=\"any\" diagDefault=\"d\"",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "d", "diagDefault", "Matrix")},
    {"OffDefaultWrong", "kind=\"any\"", "kind=\"any\" offDiagDefault=\"o\"",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "o", "offDiagDefault", "Matrix")},
    {"SymmetricOfWholeRows", "kind=\"any\"", "kind=\"symmetric\"",
     Failure(NUMBERS_MISMATCH, "2", "value", "Array", "1", "column", "Matrix")},
    {"DiagonalOfRows", "kind=\"any\"", "kind=\"diagonal\"", Failure(MORE_THAN_ONE, "Array", "Matrix")},
    {"CellsAmongArrays", kLastRow, "<MatCell row=\"1\" col=\"1\">2</MatCell>",
     Failure(INVALID_NODE, "MatCell", "Matrix")},
    {"MatrixDoubled", "</Matrix>", "</Matrix><Matrix nbRows=\"1\" nbCols=\"1\"/>",
     Failure(MORE_THAN_ONE, "Matrix", "Predictor")},
    {"FewerCategories", "<Category value=\"sand\"/>", "", Failure(ARRAY_CATEGORIES_MISMATCH, "3", "nbRows", "2")},
};

constexpr FaultyChange kCellFaults[] = {
    {"PredictionsMissing", "<PPMatrix>", "<PPMatrix/><PPMatrix>", Failure(MORE_THAN_ONE, "PPMatrix", kModel)},
    {"ChildOfPredictionsWrong", "<PPMatrix>", "<PPMatrix><PCell parameterName=\"p1\" beta=\"1\"/>",
     Failure(INVALID_NODE, "PCell", "PPMatrix")},
    {"PredictorMissing", "value=\"some\" predictorName=\"sun\"", "value=\"some\"",
     Failure(MISSING_ATTRIBUTE_OF, "predictorName", "PPCell")},
    {"PredictorUnknown", "value=\"some\" predictorName=\"sun\"", "value=\"some\" predictorName=\"moon\"",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "moon", "predictorName", "PPCell")},
    {"ParameterUnknown", "predictorName=\"sun\" parameterName=\"p3\"", "predictorName=\"sun\" parameterName=\"q\"",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "q", "parameterName", "PPCell")},
    {"ParameterEmpty", "predictorName=\"sun\" parameterName=\"p3\"", "predictorName=\"sun\" parameterName=\"\"",
     Failure(NULL_ATTRIBUTE, "parameterName", "PPCell")},
    {"ValueMissing", "<PPCell value=\"some\"", "<PPCell", Failure(MISSING_ATTRIBUTE_OF, "value", "PPCell")},
    {"PowerWrong", "value=\"0.5\" predictorName=\"water\"", "value=\"half\" predictorName=\"water\"",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "half", "value", "PPCell")},
    {"CategoryWithoutColumn", "value=\"loam\" predictorName=\"soil\"", "value=\"sand\" predictorName=\"soil\"",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "sand", "value", "PPCell")},
    {"CategoryUnknown", "value=\"loam\" predictorName=\"soil\"", "value=\"peat\" predictorName=\"soil\"",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "peat", "value", "PPCell")},
    {"CellTwice", "value=\"0.5\" predictorName=\"water\" parameterName=\"p6\"",
     "value=\"0.5\" predictorName=\"water\" parameterName=\"p5\"",
     Failure(DUPLICATE_DEFINITION, "PPCell", "p5, water", "PPMatrix")},
    {"TargetOfANumber", "value=\"0.5\" predictorName", "value=\"0.5\" targetCategory=\"many\" predictorName",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "many", "targetCategory", "PPCell")},
    {"CoefficientsDoubled", "<ParamMatrix>", "<ParamMatrix/><ParamMatrix>",
     Failure(MORE_THAN_ONE, "ParamMatrix", kModel)},
    {"CoefficientMissing", " beta=\"0.35\"", "", Failure(MISSING_ATTRIBUTE_OF, "beta", "PCell")},
    {"CoefficientEmpty", "beta=\"0.35\"", "beta=\"\"", Failure(NULL_ATTRIBUTE, "beta", "PCell")},
    {"CoefficientWrong", "beta=\"0.35\"", "beta=\"1e999\"",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "1e999", "beta", "PCell")},
    {"CoefficientTwice", "parameterName=\"p0\" beta=\"0.35\"", "parameterName=\"p1\" beta=\"0.35\"",
     Failure(DUPLICATE_DEFINITION, "PCell", "p1", "ParamMatrix")},
    {"CoefficientOfNobody", "parameterName=\"p0\" beta=\"0.35\"", "parameterName=\"p9\" beta=\"0.35\"",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "p9", "parameterName", "PCell")},
    {"CoefficientOfACategory", "parameterName=\"p0\" beta=\"0.35\"",
     "parameterName=\"p0\" targetCategory=\"a\" beta=\"0.35\"",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "a", "targetCategory", "PCell")},
    {"FreedomWrong", "beta=\"0.35\" df=\"1\"", "beta=\"0.35\" df=\"one\"",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "one", "df", "PCell")},
    {"CovarianceTypeWrong", "type=\"model\"", "type=\"exact\"",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "exact", "type", "PCovMatrix")},
    {"CovarianceOfNobody", "pRow=\"p6\"", "pRow=\"p8\"", Failure(INVALID_ATTRIBUTE_VALUE_IN, "p8", "pRow", "PCovCell")},
    {"CovarianceWithoutColumn", " pCol=\"p6\"", "", Failure(MISSING_ATTRIBUTE_OF, "pCol", "PCovCell")},
    {"CovarianceWithoutValue", " value=\"0.25\"/>", "/>", Failure(MISSING_ATTRIBUTE_OF, "value", "PCovCell")},
    {"CovarianceTwice", "pRow=\"p6\" pCol=\"p6\"", "pRow=\"p7\" pCol=\"p7\"",
     Failure(DUPLICATE_DEFINITION, "PCovCell", "p7, p7", "PCovMatrix")},
    {"CovariancesDisagree", "pRow=\"p1\" pCol=\"p2\" value=\"0.003\"", "pRow=\"p1\" pCol=\"p2\" value=\"0.004\"",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "0.004", "value", "PCovCell")},
    {"CovariancesDoubled", "<PCovMatrix type=\"model\">", "<PCovMatrix/><PCovMatrix type=\"model\">",
     Failure(MORE_THAN_ONE, "PCovMatrix", kModel)},
};

INSTANTIATE_TEST_SUITE_P(Models, SeedlingFault, testing::ValuesIn(kModelFaults), NameOfRow());
INSTANTIATE_TEST_SUITE_P(Lists, SeedlingFault, testing::ValuesIn(kListFaults), NameOfRow());
INSTANTIATE_TEST_SUITE_P(Matrices, SeedlingFault, testing::ValuesIn(kMatrixFaults), NameOfRow());
INSTANTIATE_TEST_SUITE_P(Cells, SeedlingFault, testing::ValuesIn(kCellFaults), NameOfRow());

class PumpFault : public GeneralFault {};

TEST_P(PumpFault, NamesElementAndAttribute) {
    Expect("pumps");
}

constexpr FaultyChange kPumpFaults[] = {
    {"Categories", "functionName=\"regression\"", "functionName=\"classification\"",
     Failure(UNSUPPORTED_VALUE_IN, "classification", "functionName", kModel, "regression")},
    {"EndMissing", " endTimeVariable=\"until\"", "", Failure(MISSING_ATTRIBUTE_OF, "endTimeVariable", kModel)},
    {"EndEmpty", "endTimeVariable=\"until\"", "endTimeVariable=\"\"",
     Failure(NULL_ATTRIBUTE, "endTimeVariable", kModel)},
    {"EndUnknown", "endTimeVariable=\"until\"", "endTimeVariable=\"end\"",
     Failure(MISSING_VARIABLE_IN_BOTH, "end", "DataDictionary", "TransformationDictionary")},
    {"EndIsATargetOfTexts", "endTimeVariable=\"until\"", "endTimeVariable=\"broken\"",
     Failure(REQUIRES_NUMERIC, "broken")},
    {"EndOfTexts", "endTimeVariable=\"until\"", "endTimeVariable=\"hands\"", Failure(REQUIRES_NUMERIC, "hands")},
    {"StartUnknown", "startTimeVariable=\"since\"", "startTimeVariable=\"begin\"",
     Failure(MISSING_VARIABLE_IN_BOTH, "begin", "DataDictionary", "TransformationDictionary")},
    {"StatusUnknown", "statusVariable=\"broken\"", "statusVariable=\"state\"",
     Failure(MISSING_VARIABLE_IN_BOTH, "state", "DataDictionary", "TransformationDictionary")},
    {"SubjectUnknown", "subjectIDVariable=\"pump\"", "subjectIDVariable=\"id\"",
     Failure(MISSING_VARIABLE_IN_BOTH, "id", "DataDictionary", "TransformationDictionary")},
    {"StrataUnknown", "baselineStrataVariable=\"works\"", "baselineStrataVariable=\"place\"",
     Failure(MISSING_VARIABLE_IN_BOTH, "place", "DataDictionary", "TransformationDictionary")},
    {"StrataWithoutField", " baselineStrataVariable=\"works\"", "",
     Failure(MISSING_ATTRIBUTE_OF, "maxTime", "BaseCumHazardTables")},
    {"TablesDoubled", "<BaseCumHazardTables>", "<BaseCumHazardTables/><BaseCumHazardTables>",
     Failure(MORE_THAN_ONE, "BaseCumHazardTables", kModel)},
    {"CellsAmongStrata", "</BaseCumHazardTables>", "<BaselineCell time=\"1\" cumHazard=\"1\"/></BaseCumHazardTables>",
     Failure(INVALID_NODE, "BaselineCell", "BaseCumHazardTables")},
    {"StratumWithoutValue", "value=\"south\" label", "label",
     Failure(MISSING_ATTRIBUTE_OF, "value", "BaselineStratum")},
    {"StratumTwice", "value=\"south\" label", "value=\"north\" label",
     Failure(DUPLICATE_DEFINITION, "BaselineStratum", "north", "BaseCumHazardTables")},
    {"LastTimeMissing", " maxTime=\"5\"", "", Failure(MISSING_ATTRIBUTE_OF, "maxTime", "BaselineStratum")},
    {"LastTimeWrong", "maxTime=\"5\"", "maxTime=\"late\"",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "late", "maxTime", "BaselineStratum")},
    {"TimeMissing", "time=\"2\" ", "", Failure(MISSING_ATTRIBUTE_OF, "time", "BaselineCell")},
    {"TimeTwice", "time=\"9.5\"", "time=\"16\"",
     Failure(DUPLICATE_DEFINITION, "BaselineCell", "16", "BaselineStratum")},
    {"HazardMissing", " cumHazard=\"0.125\"", "", Failure(MISSING_ATTRIBUTE_OF, "cumHazard", "BaselineCell")},
    {"HazardEmpty", "cumHazard=\"0.125\"", "cumHazard=\"\"", Failure(NULL_ATTRIBUTE, "cumHazard", "BaselineCell")},
    {"HazardNegative", "cumHazard=\"0.125\"", "cumHazard=\"-1\"",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "-1", "cumHazard", "BaselineCell")},
    {"HazardFalls", "cumHazard=\"0.2\"", "cumHazard=\"0.04\"",
     Failure(VALUE_NOT_ASCENDING, "0.04", "cumHazard", "BaselineCell", "0.05")},
    {"EventsOfOthers", "<EventValues>", "<EventValues><Event/>", Failure(INVALID_NODE, "Event", "EventValues")},
};

INSTANTIATE_TEST_SUITE_P(Hazards, PumpFault, testing::ValuesIn(kPumpFaults), NameOfRow());

class MarkFault : public GeneralFault {};

TEST_P(MarkFault, NamesElementAndAttribute) {
    Expect("marks");
}

constexpr FaultyChange kMarkFaults[] = {
    {"LinkMissing", " cumulativeLink=\"logit\"", "", Failure(MISSING_ATTRIBUTE_OF, "cumulativeLink", kModel)},
    {"LinkWrong", "cumulativeLink=\"logit\"", "cumulativeLink=\"log\"",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "log", "cumulativeLink", kModel)},
    {"CategoryUnknown", "targetCategory=\"fair\"", "targetCategory=\"fine\"",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "fine", "targetCategory", "PCell")},
    {"CategoryTwice", "targetCategory=\"fair\"", "targetCategory=\"poor\"",
     Failure(DUPLICATE_DEFINITION, "PCell", "p0", "ParamMatrix")},
    {"AllHaveCells", "<PCell parameterName=\"p1\"", "<PCell targetCategory=\"best\" parameterName=\"p1\"",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "best", "targetCategory", "PCell")},
    {"ReferenceNotTold", "<PCell targetCategory=\"fair\" parameterName=\"p0\" beta=\"0.5\" df=\"1\"/>", "",
     Failure(MISSING_ATTRIBUTE_OF, "targetReferenceCategory", kModel)},
    {"ReferenceUnknown", "cumulativeLink", "targetReferenceCategory=\"worst\" cumulativeLink",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "worst", "targetReferenceCategory", kModel)},
    {"ReferenceHasCells", "cumulativeLink", "targetReferenceCategory=\"fair\" cumulativeLink",
     Failure(MISSING_ELEMENT_WITH_VALUE, "best", "targetCategory", "ParamMatrix")},
    {"GeneralizedLinear", "modelType=\"ordinalMultinomial\"", "modelType=\"generalizedLinear\" linkFunction=\"logit\"",
     Failure(UNSUPPORTED_VALUE_IN, "generalizedLinear", "modelType", kModel,
             "multinomialLogistic, ordinalMultinomial")},
};

INSTANTIATE_TEST_SUITE_P(Categories, MarkFault, testing::ValuesIn(kMarkFaults), NameOfRow());

/// Of a target whose categories the dictionary doesn't list, too.
TEST(GeneralRegression, HasNoCovariancesOfOtherCategories) {
    const std::string open =
        Replaced(kSmallOrdinal, "<Value value='low'/><Value value='mid'/><Value value='high'/>", "");
    for (const std::string& document : {kSmallOrdinal, open}) {
        ReadModel(document);
        for (const char* name : {"tRow", "tCol", "targetCategory"}) {
            const std::string attribute = std::string(name) + "='low'";
            const std::size_t at = document.find(attribute, document.find("<PCovCell"));
            std::string changed = document;
            changed.replace(at, attribute.size(), std::string(name) + "='worst'");
            ExpectFailure([&] { ReadModel(changed); }, {INVALID_ATTRIBUTE_VALUE_IN, "worst", name, "PCovCell"});
        }
    }
}

TEST(GeneralRegression, RefusesLaterRowsThatAreLonger) {
    const std::string document = Replaced(Linear("<PCell parameterName='p0' beta='1'/>"), "<Predictor name='c'/>",
                                          "<Predictor name='c'><Matrix><Array>1</Array><Array>1 2</Array></Matrix>"
                                          "</Predictor>");
    ExpectFailure([&] { ReadModel(document); }, {NUMBERS_MISMATCH, "2", "value", "Array", "1", "column", "Matrix"});
}

TEST(GeneralRegression, RefusesCellsOfItsReference) {
    const std::string document = Replaced(Binary("<PCell targetCategory='no' parameterName='p0' beta='0.5'/>"
                                                 "<PCell targetCategory='yes' parameterName='p0' beta='0.5'/>"),
                                          "linkFunction", "targetReferenceCategory='yes' linkFunction");
    ExpectFailure([&] { ReadModel(document); }, {INVALID_ATTRIBUTE_VALUE_IN, "yes", "targetCategory", "PCell"});
}

TEST(GeneralRegression, NeedsTwoCategories) {
    const std::string document = Replaced(Binary("<PCell parameterName='p0' beta='0.5'/>"), "<Value value='yes'/>", "");
    ExpectFailure([&] { ReadModel(document); }, {MISSING_VALUE_LIST, "t"});
}

TEST(GeneralRegression, NeedsItsMatricesAndParameters) {
    for (const char* tag : {"ParameterList", "PPMatrix", "ParamMatrix"}) {
        std::string document = Linear("<PCell parameterName='p0' beta='1'/>");
        const std::string end = std::string("</") + tag + ">";
        const std::size_t begin = document.find(std::string("<") + tag + ">");
        document.erase(begin, document.find(end) + end.size() - begin);
        ExpectFailure([&] { ReadModel(document); }, {MISSING_NODE_IN, tag, kModel});
    }
}

TEST(GeneralRegression, RefusesContrastsWithoutCategories) {
    const std::string open =
        Replaced(Linear("<PCell parameterName='p0' beta='1'/>"), "<Value value='a'/><Value value='b'/>", "");
    ExpectFailure(
        [&] {
            ReadModel(Replaced(open, "<Predictor name='c'/>",
                               "<Predictor name='c'><Matrix nbRows='1' nbCols='1'/></Predictor>"));
        },
        {MISSING_VALUE_LIST, "c"});
}

constexpr FaultyChange kSparseFaults[] = {
    {"SizeMissing", " nbRows='2'", "", Failure(MISSING_ATTRIBUTE_OF, "nbRows", "Matrix")},
    {"NotSquare", "nbRows='2'", "nbRows='3'",
     Failure(NUMBERS_MISMATCH, "3", "nbRows", "Matrix", "2", "nbCols", "Matrix")},
    {"RowMissing", "row='2' ", "", Failure(MISSING_ATTRIBUTE_OF, "row", "MatCell")},
    {"RowBeyond", "row='2'", "row='3'", Failure(INVALID_ATTRIBUTE_VALUE_IN, "3", "row", "MatCell")},
    {"ColumnOfNothing", "col='1'", "col='0'", Failure(INVALID_ATTRIBUTE_VALUE_IN, "0", "col", "MatCell")},
    {"ContentEmpty", ">4<", "><", Failure(INVALID_CONTENT, "", "MatCell")},
    {"ContentWrong", ">4<", ">four<", Failure(INVALID_CONTENT, "four", "MatCell")},
    {"CellTwice", "</MatCell>", "</MatCell><MatCell row='1' col='2'>5</MatCell>",
     Failure(DUPLICATE_DEFINITION, "MatCell", "1, 2", "Matrix")},
    {"ArrayAmongCells", "</MatCell>", "</MatCell><Array>1</Array>", Failure(INVALID_NODE, "Array", "Matrix")},
};

class SparseFault : public testing::TestWithParam<FaultyChange> {};

TEST_P(SparseFault, NamesElementAndAttribute) {
    ExpectRefused(Replaced(Linear("<PCell parameterName='p0' beta='1'/>"), "<Predictor name='c'/>",
                           "<Predictor name='c'><Matrix kind='symmetric' nbRows='2' nbCols='2'><MatCell row='2' "
                           "col='1'>4</MatCell></Matrix></Predictor>"),
                  GetParam());
}

INSTANTIATE_TEST_SUITE_P(Matrices, SparseFault, testing::ValuesIn(kSparseFaults), NameOfRow());

} // namespace
