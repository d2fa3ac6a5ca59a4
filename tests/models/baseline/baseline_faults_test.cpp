// Every element and attribute that the plug-in of baselines reads missing, empty, wrong or doubled.
#include "models/baseline/small_baseline.h"
#include "models/kit/scoring.h"
#include "support/faults/fault.h"

#include <gtest/gtest.h>

using namespace veltrane::tests;

namespace {

class SumFault : public testing::TestWithParam<FaultyChange> {};

TEST_P(SumFault, NamesElementAndAttribute) {
    ExpectRefused(kSmallSum, GetParam());
}

constexpr const char* kGaussian = "<GaussianDistribution mean='1' variance='4'/>";
constexpr const char* kUniform = "<UniformDistribution lower='-2' upper='6'/>";

constexpr FaultyChange kModelFaults[] = {
    {"FunctionMissing", " functionName='regression'", "",
     Failure(MISSING_ATTRIBUTE_OF, "functionName", "BaselineModel")},
    {"FunctionOfOtherModels", "functionName='regression'", "functionName='classification'",
     Failure(UNSUPPORTED_VALUE_IN, "classification", "functionName", "BaselineModel", "regression")},
    {"NotScorable", "isScorable='true'", "isScorable='false'",
     Failure(UNSUPPORTED_VALUE_IN, "false", "isScorable", "BaselineModel", "true")},
    {"ChildWrong", "<MiningSchema>", "<Baseline/><MiningSchema>", Failure(INVALID_NODE, "Baseline", "BaselineModel")},
    {"TestDoubled", "</BaselineModel>",
     "<TestDistributions field='x' testStatistic='zValue'><Baseline><PoissonDistribution mean='1'/></Baseline>"
     "</TestDistributions></BaselineModel>",
     Failure(MORE_THAN_ONE, "TestDistributions", "BaselineModel")},
    {"FieldMissing", "field='x' testStatistic", "testStatistic",
     Failure(MISSING_ATTRIBUTE_OF, "field", "TestDistributions")},
    {"FieldEmpty", "field='x' testStatistic", "field='' testStatistic",
     Failure(NULL_ATTRIBUTE, "field", "TestDistributions")},
    {"FieldUnknown", "field='x' testStatistic", "field='z' testStatistic",
     Failure(MISSING_VARIABLE_IN_BOTH, "z", "DataDictionary", "TransformationDictionary")},
    {"FieldClosed", "field='x' testStatistic", "field='y' testStatistic", Failure(NO_PREDICTOR, "y")},
    {"FieldOfTexts", "field='x' testStatistic", "field='c' testStatistic", Failure(REQUIRES_NUMERIC, "c")},
    {"StatisticMissing", " testStatistic='CUSUM'", "",
     Failure(MISSING_ATTRIBUTE_OF, "testStatistic", "TestDistributions")},
    {"StatisticEmpty", "testStatistic='CUSUM'", "testStatistic=''",
     Failure(NULL_ATTRIBUTE, "testStatistic", "TestDistributions")},
    {"StatisticWrong", "testStatistic='CUSUM'", "testStatistic='cusum'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "cusum", "testStatistic", "TestDistributions")},
    {"StatisticOfTables", "testStatistic='CUSUM'", "testStatistic='scalarProduct'",
     Failure(UNSUPPORTED_VALUE_IN, "scalarProduct", "testStatistic", "TestDistributions",
             "zValue, CUSUM (GaussianDistribution)")},
    {"ResetEmpty", "resetValue='0.5'", "resetValue=''", Failure(NULL_ATTRIBUTE, "resetValue", "TestDistributions")},
    {"ResetWrong", "resetValue='0.5'", "resetValue='low'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "low", "resetValue", "TestDistributions")},
    {"WindowEmpty", "windowSize='10'", "windowSize=''", Failure(NULL_ATTRIBUTE, "windowSize", "TestDistributions")},
    {"WindowWrong", "windowSize='10'", "windowSize='1.5'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "1.5", "windowSize", "TestDistributions")},
    {"WindowNegative", "windowSize='10'", "windowSize='-1'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "-1", "windowSize", "TestDistributions")},
    {"WindowTooLong", "windowSize='10'", "windowSize='1000001'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "1000001", "windowSize", "TestDistributions")},
    {"WeightEmpty", "weightField='w'", "weightField=''", Failure(NULL_ATTRIBUTE, "weightField", "TestDistributions")},
    {"WeightUnknown", "weightField='w'", "weightField='z'",
     Failure(MISSING_VARIABLE_IN_BOTH, "z", "DataDictionary", "TransformationDictionary")},
    {"WeightOfTexts", "weightField='w'", "weightField='d'", Failure(REQUIRES_NUMERIC, "d")},
    {"ChildOfTestWrong", "<Baseline>", "<CountTable/><Baseline>",
     Failure(INVALID_NODE, "CountTable", "TestDistributions")},
};

constexpr FaultyChange kDistributionFaults[] = {
    {"BaselineMissing", "<Baseline><GaussianDistribution mean='1' variance='4'/></Baseline>", "",
     Failure(MISSING_NODE_IN, "Baseline", "TestDistributions")},
    {"BaselineEmpty", kGaussian, "", Failure(NO_CHILD_ELEMENT, "Baseline")},
    {"BaselineDoubled", "<Baseline>", "<Baseline><PoissonDistribution mean='1'/></Baseline><Baseline>",
     Failure(MORE_THAN_ONE, "Baseline", "TestDistributions")},
    {"BaselineOfTwo", "<Baseline>", "<Baseline><PoissonDistribution mean='1'/>",
     Failure(MORE_THAN_ONE, "distribution", "Baseline")},
    {"ChildOfBaselineWrong", "<Baseline>", "<Baseline><True/>", Failure(INVALID_NODE, "True", "Baseline")},
    {"BaselineIsATable", kGaussian, "<CountTable><FieldValueCount field='c' value='u' count='1'/></CountTable>",
     Failure(UNSUPPORTED_VALUE_IN, "CUSUM", "testStatistic", "TestDistributions",
             "chiSquareIndependence, chiSquareDistribution, scalarProduct (CountTable)")},
    {"BaselineWithoutDensity", kGaussian, "<AnyDistribution mean='1' variance='4'/>",
     Failure(UNSUPPORTED_VALUE_IN, "CUSUM", "testStatistic", "TestDistributions", "zValue (AnyDistribution)")},
    {"AlternateMissing", "<Alternate><UniformDistribution lower='-2' upper='6'/></Alternate>", "",
     Failure(MISSING_NODE_IN, "Alternate", "TestDistributions")},
    {"AlternateEmpty", kUniform, "", Failure(NO_CHILD_ELEMENT, "Alternate")},
    {"AlternateOfTwo", "<Alternate>", "<Alternate><PoissonDistribution mean='1'/>",
     Failure(MORE_THAN_ONE, "distribution", "Alternate")},
    {"AlternateIsATable", kUniform, "<CountTable><FieldValueCount field='c' value='u' count='1'/></CountTable>",
     Failure(INVALID_NODE, "CountTable", "Alternate")},
    {"AlternateWithoutDensity", kUniform, "<AnyDistribution mean='1' variance='4'/>",
     Failure(UNSUPPORTED_VALUE_IN, "CUSUM", "testStatistic", "TestDistributions", "zValue (AnyDistribution)")},
    {"MeanMissing", "mean='1' ", "", Failure(MISSING_ATTRIBUTE_OF, "mean", "GaussianDistribution")},
    {"MeanEmpty", "mean='1'", "mean=''", Failure(NULL_ATTRIBUTE, "mean", "GaussianDistribution")},
    {"MeanWrong", "mean='1'", "mean='one'", Failure(INVALID_ATTRIBUTE_VALUE_IN, "one", "mean", "GaussianDistribution")},
    {"VarianceMissing", " variance='4'", "", Failure(MISSING_ATTRIBUTE_OF, "variance", "GaussianDistribution")},
    {"VarianceOfNothing", "variance='4'", "variance='0'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "0", "variance", "GaussianDistribution")},
    {"VarianceNegative", "variance='4'", "variance='-4'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "-4", "variance", "GaussianDistribution")},
    {"PoissonOfNothing", kGaussian, "<PoissonDistribution mean='0'/>",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "0", "mean", "PoissonDistribution")},
    {"LowerMissing", "lower='-2' ", "", Failure(MISSING_ATTRIBUTE_OF, "lower", "UniformDistribution")},
    {"UpperEmpty", "upper='6'", "upper=''", Failure(NULL_ATTRIBUTE, "upper", "UniformDistribution")},
    {"LowerAboveUpper", "lower='-2'", "lower='7'",
     Failure(VALUE_ABOVE_OTHER, "7", "lower", "6", "upper", "UniformDistribution")},
    {"LowerIsUpper", "lower='-2'", "lower='6'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "6", "upper", "UniformDistribution")},
};

INSTANTIATE_TEST_SUITE_P(Model, SumFault, testing::ValuesIn(kModelFaults), NameOfRow());
INSTANTIATE_TEST_SUITE_P(Distributions, SumFault, testing::ValuesIn(kDistributionFaults), NameOfRow());

class TableFault : public testing::TestWithParam<FaultyChange> {};

TEST_P(TableFault, NamesElementAndAttribute) {
    ExpectRefused(kSmallTable, GetParam());
}

constexpr const char* kFirst =
    "<FieldValue field='c' value='u'><FieldValueCount field='d' value='a' count='4'/></FieldValue>";

constexpr FaultyChange kTableFaults[] = {
    {"SchemeEmpty", "normalizationScheme='Independent'", "normalizationScheme=''",
     Failure(NULL_ATTRIBUTE, "normalizationScheme", "TestDistributions")},
    {"SchemeUnknown", "normalizationScheme='Independent'", "normalizationScheme='Other'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "Other", "normalizationScheme", "TestDistributions")},
    {"TestedFieldIsNotInTheTable", "field='c' testStatistic", "field='x' testStatistic",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "x", "field", "TestDistributions")},
    {"SampleEmpty", "sample='7'", "sample=''", Failure(NULL_ATTRIBUTE, "sample", "CountTable")},
    {"SampleWrong", "sample='7'", "sample='all'", Failure(INVALID_ATTRIBUTE_VALUE_IN, "all", "sample", "CountTable")},
    {"SampleOfNothing", "sample='7'", "sample='0'", Failure(INVALID_ATTRIBUTE_VALUE_IN, "0", "sample", "CountTable")},
    {"TableDoubled", "<Baseline>",
     "<Baseline><CountTable><FieldValueCount field='c' value='u' count='1'/></CountTable>",
     Failure(MORE_THAN_ONE, "distribution", "Baseline")},
    {"ChildOfTableWrong", "<CountTable sample='7'>", "<CountTable sample='7'><FieldRef field='c'/>",
     Failure(INVALID_NODE, "FieldRef", "CountTable")},
    {"FieldMissing", "<FieldValue field='c' value='u'>", "<FieldValue value='u'>",
     Failure(MISSING_ATTRIBUTE_OF, "field", "FieldValue")},
    {"FieldEmpty", "<FieldValue field='c' value='u'>", "<FieldValue field='' value='u'>",
     Failure(NULL_ATTRIBUTE, "field", "FieldValue")},
    {"FieldUnknown", "<FieldValue field='c' value='u'>", "<FieldValue field='z' value='u'>",
     Failure(MISSING_VARIABLE_IN_BOTH, "z", "DataDictionary", "TransformationDictionary")},
    {"ValueMissing", "<FieldValue field='c' value='u'>", "<FieldValue field='c'>",
     Failure(MISSING_ATTRIBUTE_OF, "value", "FieldValue")},
    {"ValueOfAnotherType", "<FieldValue field='c' value='u'>", "<FieldValue field='x' value='u'>",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "u", "value", "FieldValue")},
    {"ChildOfValueWrong", "<FieldValue field='c' value='u'>", "<FieldValue field='c' value='u'><Baseline/>",
     Failure(INVALID_NODE, "Baseline", "FieldValue")},
    {"ValueWithoutCounts", kFirst, "<FieldValue field='c' value='u'/>", Failure(NO_CHILD_ELEMENT, "FieldValue")},
    {"CountMissing", " count='4'", "", Failure(MISSING_ATTRIBUTE_OF, "count", "FieldValueCount")},
    {"CountEmpty", "count='4'", "count=''", Failure(NULL_ATTRIBUTE, "count", "FieldValueCount")},
    {"CountWrong", "count='4'", "count='four'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "four", "count", "FieldValueCount")},
    {"CountsBeyondAllDoubles", "count='4'", "count='1.5e308'/><FieldValueCount field='d' value='b' count='1e308'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "3", "count", "FieldValueCount")},
    {"CountNegative", "count='4'", "count='-4'", Failure(INVALID_ATTRIBUTE_VALUE_IN, "-4", "count", "FieldValueCount")},
    {"CountedFieldMissing", "<FieldValueCount field='d' value='a' count='4'/>",
     "<FieldValueCount value='a' count='4'/>", Failure(MISSING_ATTRIBUTE_OF, "field", "FieldValueCount")},
    {"CountedValueMissing", "<FieldValueCount field='d' value='a' count='4'/>",
     "<FieldValueCount field='d' count='4'/>", Failure(MISSING_ATTRIBUTE_OF, "value", "FieldValueCount")},
    {"ChildOfCount", "value='a' count='4'/>", "value='a' count='4'><FieldRef field='c'/></FieldValueCount>",
     Failure(INVALID_NODE, "FieldRef", "FieldValueCount")},
    {"FieldTwiceOnAWay", "<FieldValueCount field='d' value='a' count='4'/>",
     "<FieldValueCount field='c' value='u' count='4'/>",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "c", "field", "FieldValueCount")},
    {"OtherFields", "<FieldValue field='c' value='v'><FieldValueCount field='d'",
     "<FieldValue field='c' value='v'><FieldValueCount field='x'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "a", "value", "FieldValueCount")},
    {"FewerFields", kFirst,
     "<FieldValue field='c' value='u'><FieldValueCount field='d' value='a' count='4'/></FieldValue>"
     "<FieldValueCount field='c' value='v' count='1'/>",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "c", "field", "FieldValueCount")},
    {"CellDoubled", kFirst,
     "<FieldValue field='c' value='u'><FieldValueCount field='d' value='a' count='4'/><FieldValueCount field='d' "
     "value='a' count='4'/></FieldValue>",
     Failure(DUPLICATE_DEFINITION, "FieldValueCount", "a", "CountTable")},
};

INSTANTIATE_TEST_SUITE_P(Tables, TableFault, testing::ValuesIn(kTableFaults), NameOfRow());

std::string WithBaseline(const std::string& statistic, const std::string& baseline) {
    return BaselineDocument("field='c' testStatistic='" + statistic + "'><Baseline>" + baseline + "</Baseline>");
}

TEST(BaselineFault, NeedsATest) {
    std::string document = kSmallSum;
    const std::size_t begin = document.find(" <TestDistributions");
    document.erase(begin, document.find("</BaselineModel>") - begin);
    ExpectFailure([&] { ReadModel(document); }, {MISSING_NODE_IN, "TestDistributions", "BaselineModel"});
}

TEST(BaselineFault, OfTables) {
    ExpectFailure([] { ReadModel(WithBaseline("scalarProduct", "<CountTable/>")); }, {NO_CHILD_ELEMENT, "CountTable"});
    const std::string nothing = "<FieldValueCount field='c' value='u' count='0'/>";
    ExpectFailure([&] { ReadModel(WithBaseline("scalarProduct", "<CountTable>" + nothing + "</CountTable>")); },
                  {INVALID_ATTRIBUTE_VALUE_IN, "0", "count", "FieldValueCount"});
    const std::string shares = "<NormalizedCountTable><FieldValueCount field='c' value='u' count='1'/>"
                               "</NormalizedCountTable>";
    EXPECT_NO_THROW(ReadModel(WithBaseline("scalarProduct", shares)));
    ExpectFailure([&] { ReadModel(WithBaseline("chiSquareIndependence", shares)); },
                  {MISSING_ATTRIBUTE_OF, "sample", "NormalizedCountTable"});
}

TEST(BaselineFault, OfFields) {
    const std::string c = "<FieldRef field='c'/>";
    ExpectFailure([&] { ReadModel(WithBaseline("chiSquareIndependence", c)); },
                  {REQUIRES_MORE_THAN_ONE, "FieldRef", "Baseline"});
    ExpectFailure([&] { ReadModel(WithBaseline("chiSquareIndependence", c + c)); },
                  {DUPLICATE_DEFINITION, "FieldRef", "c", "Baseline"});
    ExpectFailure([&] { ReadModel(WithBaseline("chiSquareIndependence", c + "<FieldRef field='d'/>")); },
                  {MISSING_VALUE_LIST, "d"});
    ExpectFailure([&] { ReadModel(WithBaseline("chiSquareIndependence", c + "<FieldRef/>")); },
                  {MISSING_ATTRIBUTE_OF, "field", "FieldRef"});
    ExpectFailure([&] { ReadModel(WithBaseline("scalarProduct", c + "<FieldRef field='d'/>")); },
                  {UNSUPPORTED_VALUE_IN, "scalarProduct", "testStatistic", "TestDistributions",
                   "chiSquareIndependence (FieldRef)"});
}

} // namespace
