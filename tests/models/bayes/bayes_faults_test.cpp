// Every element and attribute that the plug-in of naive Bayes models reads missing, empty, wrong, doubled or against
// another one.
#include "models/bayes/small_bayes.h"
#include "models/kit/scoring.h"
#include "support/faults/fault.h"

#include <gtest/gtest.h>

using namespace veltrane::tests;

namespace {

constexpr const char* kModel = "NaiveBayesModel";

class BayesFault : public testing::TestWithParam<FaultyChange> {};

TEST_P(BayesFault, NamesElementAndAttribute) {
    ExpectRefused(kSmallBayes, GetParam());
}

constexpr FaultyChange kModelFaults[] = {
    {"FunctionMissing", " functionName='classification'", "", Failure(MISSING_ATTRIBUTE_OF, "functionName", kModel)},
    {"FunctionOfOthers", "functionName='classification'", "functionName='regression'",
     Failure(UNSUPPORTED_VALUE_IN, "regression", "functionName", kModel, "classification")},
    {"ThresholdMissing", " threshold='0.25'", "", Failure(MISSING_ATTRIBUTE_OF, "threshold", kModel)},
    {"ThresholdEmpty", "threshold='0.25'", "threshold=''", Failure(NULL_ATTRIBUTE, "threshold", kModel)},
    {"ThresholdWrong", "threshold='0.25'", "threshold='low'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "low", "threshold", kModel)},
    {"ThresholdNegative", "threshold='0.25'", "threshold='-0.25'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "-0.25", "threshold", kModel)},
    {"ThresholdAboveOne", "threshold='0.25'", "threshold='1.5'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "1.5", "threshold", kModel)},
    {"NotScorable", "threshold='0.25'", "threshold='0.25' isScorable='false'",
     Failure(UNSUPPORTED_VALUE_IN, "false", "isScorable", kModel, "true")},
    {"ChildWrong", "<BayesInputs>", "<PairCounts value='a'/><BayesInputs>",
     Failure(INVALID_NODE, "PairCounts", kModel)},
    {"InputsDoubled", "<BayesInputs>", "<BayesInputs/><BayesInputs>", Failure(MORE_THAN_ONE, "BayesInputs", kModel)},
    {"OutputDoubled", "</BayesInputs>",
     "</BayesInputs><BayesOutput fieldName='t'><TargetValueCounts><TargetValueCount value='no' count='6'/>"
     "</TargetValueCounts></BayesOutput>",
     Failure(MORE_THAN_ONE, "BayesOutput", kModel)},
};

constexpr FaultyChange kOutputFaults[] = {
    {"FieldMissing", "<BayesOutput fieldName='t'>", "<BayesOutput>",
     Failure(MISSING_ATTRIBUTE_OF, "fieldName", "BayesOutput")},
    {"FieldEmpty", "<BayesOutput fieldName='t'>", "<BayesOutput fieldName=''>",
     Failure(NULL_ATTRIBUTE, "fieldName", "BayesOutput")},
    {"FieldIsNotTheTarget", "<BayesOutput fieldName='t'>", "<BayesOutput fieldName='c'>",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "c", "fieldName", "BayesOutput")},
    {"ChildWrong", "<BayesOutput fieldName='t'>", "<BayesOutput fieldName='t'><TargetValueStats/>",
     Failure(INVALID_NODE, "TargetValueStats", "BayesOutput")},
    {"CountsDoubled", "<BayesOutput fieldName='t'>", "<BayesOutput fieldName='t'><TargetValueCounts/>",
     Failure(MORE_THAN_ONE, "TargetValueCounts", "BayesOutput")},
    {"ValueMissing", "value='no' count='6'", "count='6'", Failure(MISSING_ATTRIBUTE_OF, "value", "TargetValueCount")},
    {"ValueUnknown", "value='no' count='6'", "value='maybe' count='6'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "maybe", "value", "TargetValueCount")},
    {"ValueTwice", "value='yes' count='2'", "value='no' count='2'",
     Failure(DUPLICATE_DEFINITION, "TargetValueCount", "no", "TargetValueCounts")},
    {"CountMissing", "value='no' count='6'", "value='no'", Failure(MISSING_ATTRIBUTE_OF, "count", "TargetValueCount")},
    {"CountEmpty", "count='6'", "count=''", Failure(NULL_ATTRIBUTE, "count", "TargetValueCount")},
    {"CountWrong", "count='6'", "count='six'", Failure(INVALID_ATTRIBUTE_VALUE_IN, "six", "count", "TargetValueCount")},
    {"CountNegative", "count='6'", "count='-6'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "-6", "count", "TargetValueCount")},
    {"CategoryOfInputsIsNotCounted", "<TargetValueCount value='yes' count='2'/>", "",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "yes", "value", "TargetValueCount")},
};

constexpr const char* kCounts =
    "<PairCounts value='b'><TargetValueCounts><TargetValueCount value='yes' count='1.5'/></TargetValueCounts>"
    "</PairCounts>";
constexpr const char* kGaussian = "<GaussianDistribution mean='1' variance='4'/>";
constexpr const char* kUniform = "<UniformDistribution lower='0' upper='2'/>";
constexpr const char* kStat = "<TargetValueStat value='no'>";

constexpr FaultyChange kInputFaults[] = {
    {"FieldMissing", "<BayesInput fieldName='c'>", "<BayesInput>",
     Failure(MISSING_ATTRIBUTE_OF, "fieldName", "BayesInput")},
    {"FieldEmpty", "<BayesInput fieldName='c'>", "<BayesInput fieldName=''>",
     Failure(NULL_ATTRIBUTE, "fieldName", "BayesInput")},
    {"FieldUnknown", "<BayesInput fieldName='c'>", "<BayesInput fieldName='z'>",
     Failure(MISSING_VARIABLE_IN_BOTH, "z", "DataDictionary", "TransformationDictionary")},
    {"SumOfCountsInfinite", "value='yes' count='1.5'",
     "value='yes' count='1.5'/></TargetValueCounts></PairCounts><PairCounts value='d'><TargetValueCounts>"
     "<TargetValueCount value='yes' count='1.7e308'/></TargetValueCounts></PairCounts><PairCounts value='e'>"
     "<TargetValueCounts><TargetValueCount value='yes' count='1.6e308'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "1.6e308", "count", "TargetValueCount")},
    {"FieldClosed", "<BayesInput fieldName='c'>", "<BayesInput fieldName='t'>", Failure(NO_PREDICTOR, "t")},
    {"FieldTwice", "<BayesInput fieldName='c'>", "<BayesInput fieldName='x'>",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "a", "value", "PairCounts")},
    {"InputTwice", "</BayesInputs>",
     "<BayesInput fieldName='c'><PairCounts value='a'><TargetValueCounts><TargetValueCount value='no' count='1'/>"
     "</TargetValueCounts></PairCounts></BayesInput></BayesInputs>",
     Failure(DUPLICATE_DEFINITION, "BayesInput", "c", "BayesInputs")},
    {"ChildOfInputsWrong", "<BayesInputs>", "<BayesInputs><PairCounts value='a'/>",
     Failure(INVALID_NODE, "PairCounts", "BayesInputs")},
    {"ChildWrong", "<BayesInput fieldName='c'>", "<BayesInput fieldName='c'><BayesOutput/>",
     Failure(INVALID_NODE, "BayesOutput", "BayesInput")},
    {"NothingInIt", "</BayesInputs>", "<BayesInput fieldName='y'/></BayesInputs>",
     Failure(MISSING_NODE_IN, "PairCounts", "BayesInput")},
    {"CountsAndStats", "<TargetValueStats>", "<PairCounts value='1'/><TargetValueStats>",
     Failure(CONFLICTING_ELEMENTS, "TargetValueStats", "PairCounts")},
    {"StatsOfADerivedField", "<TargetValueStats>",
     "<DerivedField optype='continuous' dataType='double'><FieldRef field='x'/></DerivedField><TargetValueStats>",
     Failure(CONFLICTING_ELEMENTS, "TargetValueStats", "DerivedField")},
    {"StatsDoubled", "<TargetValueStats>", "<TargetValueStats/><TargetValueStats>",
     Failure(MORE_THAN_ONE, "TargetValueStats", "BayesInput")},
    {"DerivedDoubled", "<BayesInput fieldName='c'>",
     "<BayesInput fieldName='c'><DerivedField optype='categorical' dataType='string'><FieldRef field='c'/>"
     "</DerivedField><DerivedField optype='categorical' dataType='string'><FieldRef field='c'/></DerivedField>",
     Failure(MORE_THAN_ONE, "DerivedField", "BayesInput")},
    {"DerivedOfNobody", "<BayesInput fieldName='c'>",
     "<BayesInput fieldName='c'><DerivedField optype='categorical' dataType='string'><FieldRef field='z'/>"
     "</DerivedField>",
     Failure(MISSING_VARIABLE_IN_BOTH, "z", "DataDictionary", "TransformationDictionary")},
    {"ValueMissing", "<PairCounts value='a'>", "<PairCounts>", Failure(MISSING_ATTRIBUTE_OF, "value", "PairCounts")},
    {"ValueTwice", "<PairCounts value='b'>", "<PairCounts value='a'>",
     Failure(DUPLICATE_DEFINITION, "PairCounts", "a", "BayesInput")},
    {"CountsMissing", kCounts, "<PairCounts value='b'/>", Failure(MISSING_NODE_IN, "TargetValueCounts", "PairCounts")},
    {"CountsEmpty", kCounts, "<PairCounts value='b'><TargetValueCounts/></PairCounts>",
     Failure(NO_CHILD_ELEMENT, "TargetValueCounts")},
    {"ChildOfCountsWrong", kCounts,
     "<PairCounts value='b'><TargetValueCounts><PairCounts/></TargetValueCounts></PairCounts>",
     Failure(INVALID_NODE, "PairCounts", "TargetValueCounts")},
    {"CategoryUnknown", "value='yes' count='1.5'", "value='maybe' count='1.5'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "maybe", "value", "TargetValueCount")},
    {"CountNegative", "count='1.5'", "count='-1'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "-1", "count", "TargetValueCount")},
};

constexpr FaultyChange kStatFaults[] = {
    {"FieldOfTexts", "<BayesInput fieldName='x'>", "<BayesInput fieldName='c2'>",
     Failure(MISSING_VARIABLE_IN_BOTH, "c2", "DataDictionary", "TransformationDictionary")},
    {"ValueMissing", kStat, "<TargetValueStat>", Failure(MISSING_ATTRIBUTE_OF, "value", "TargetValueStat")},
    {"ValueUnknown", kStat, "<TargetValueStat value='maybe'>",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "maybe", "value", "TargetValueStat")},
    {"ValueTwice", kStat, "<TargetValueStat value='yes'>",
     Failure(DUPLICATE_DEFINITION, "TargetValueStat", "yes", "TargetValueStats")},
    {"ChildOfStatsWrong", "<TargetValueStats>", "<TargetValueStats><PoissonDistribution mean='1'/>",
     Failure(INVALID_NODE, "PoissonDistribution", "TargetValueStats")},
    {"NoDistribution", kGaussian, "", Failure(NO_CHILD_ELEMENT, "TargetValueStat")},
    {"TwoDistributions", kGaussian, "<PoissonDistribution mean='1'/><PoissonDistribution mean='2'/>",
     Failure(MORE_THAN_ONE, "distribution", "TargetValueStat")},
    {"NoneOfTheDistributions", kGaussian, "<PairCounts/>", Failure(INVALID_NODE, "PairCounts", "TargetValueStat")},
    {"MeanMissing", "mean='1' ", "", Failure(MISSING_ATTRIBUTE_OF, "mean", "GaussianDistribution")},
    {"MeanWrong", "mean='1'", "mean='one'", Failure(INVALID_ATTRIBUTE_VALUE_IN, "one", "mean", "GaussianDistribution")},
    {"VarianceMissing", " variance='4'", "", Failure(MISSING_ATTRIBUTE_OF, "variance", "GaussianDistribution")},
    {"VarianceOfNothing", "variance='4'", "variance='0'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "0", "variance", "GaussianDistribution")},
    {"VarianceTooSmall", "variance='4'", "variance='1e-310'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "1e-310", "variance", "GaussianDistribution")},
    {"AnyVarianceNegative", kGaussian, "<AnyDistribution mean='1' variance='-1'/>",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "-1", "variance", "AnyDistribution")},
    {"PoissonNegative", kGaussian, "<PoissonDistribution mean='-1'/>",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "-1", "mean", "PoissonDistribution")},
    {"LowerMissing", "lower='0' ", "", Failure(MISSING_ATTRIBUTE_OF, "lower", "UniformDistribution")},
    {"UpperEmpty", "upper='2'", "upper=''", Failure(NULL_ATTRIBUTE, "upper", "UniformDistribution")},
    {"LowerAboveUpper", "lower='0'", "lower='3'",
     Failure(VALUE_ABOVE_OTHER, "3", "lower", "2", "upper", "UniformDistribution")},
    {"LowerIsUpper", kUniform, "<UniformDistribution lower='2' upper='2'/>",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "2", "upper", "UniformDistribution")},
};

INSTANTIATE_TEST_SUITE_P(Models, BayesFault, testing::ValuesIn(kModelFaults), NameOfRow());
INSTANTIATE_TEST_SUITE_P(Outputs, BayesFault, testing::ValuesIn(kOutputFaults), NameOfRow());
INSTANTIATE_TEST_SUITE_P(Inputs, BayesFault, testing::ValuesIn(kInputFaults), NameOfRow());
INSTANTIATE_TEST_SUITE_P(Stats, BayesFault, testing::ValuesIn(kStatFaults), NameOfRow());

/// Takes the only element of a name out of the document.
std::string Without(const std::string& tag) {
    std::string document = kSmallBayes;
    const std::string end = "</" + tag + ">";
    const std::size_t begin = document.find("<" + tag);
    return document.erase(begin, document.find(end) + end.size() - begin);
}

TEST(NaiveBayes, NeedsInputsAndOutput) {
    ExpectFailure([] { ReadModel(Without("BayesInputs")); }, {MISSING_NODE_IN, "BayesInputs", kModel});
    ExpectFailure([] { ReadModel(Without("BayesOutput")); }, {MISSING_NODE_IN, "BayesOutput", kModel});
}

TEST(NaiveBayes, NeedsACategoryThatComes) {
    const std::string document = Replaced(Replaced(kSmallBayes, "count='6'", "count='0'"), "count='2'", "count='0'");
    ExpectFailure([&] { ReadModel(document); }, {REQUIRES_ABOVE_ZERO, "0", "count"});
}

TEST(NaiveBayes, NeedsNumbersForDistributions) {
    const std::string document =
        Replaced(Replaced(kSmallBayes, "fieldName='c'", "fieldName='d'"), "fieldName='x'", "fieldName='c'");
    ExpectFailure(
        [&] {
            ReadModel(Replaced(document, "<BayesInput fieldName='d'>",
                               "<BayesInput fieldName='d'><DerivedField name='d' optype='categorical' "
                               "dataType='string'><FieldRef field='c'/></DerivedField>"));
        },
        {REQUIRES_NUMERIC, "c"});
}

TEST(NaiveBayes, RefusesExtensionsWithDamagedInputs) {
    const std::string document =
        Replaced(kSmallBayes, "<BayesInputs>", "<BayesInputs><Extension><BayesInput fieldName='q'/></Extension>");
    ExpectFailure([&] { ReadModel(document); }, {MISSING_NODE_IN, "PairCounts", "BayesInput"});
}

TEST(NaiveBayes, BoundsTheMemoryOfCountsThatStandNowhere) {
    std::string categories;
    std::string pairs;
    for (int i = 0; i < 3000; ++i) {
        const std::string name = std::to_string(i);
        categories += "<TargetValueCount value='" + name + "' count='1'/>";
        pairs += "<PairCounts value='" + name +
                 "'><TargetValueCounts><TargetValueCount value='1' count='1'/>"
                 "</TargetValueCounts></PairCounts>";
    }
    const std::string document =
        "<PMML version='4.4'><Header/><DataDictionary><DataField name='t' optype='categorical' dataType='string'/>"
        "<DataField name='c' optype='categorical' dataType='string'/></DataDictionary><NaiveBayesModel "
        "functionName='classification' threshold='0.1'><MiningSchema><MiningField name='t' usageType='target'/>"
        "<MiningField name='c'/></MiningSchema><BayesInputs><BayesInput fieldName='c'>" +
        pairs + "</BayesInput></BayesInputs><BayesOutput fieldName='t'><TargetValueCounts>" + categories +
        "</TargetValueCounts></BayesOutput></NaiveBayesModel></PMML>";
    ExpectFailure([&] { ReadModel(document); }, {PROCESSING_VARIABLE_FAILED, "BayesInput", "c"});
}

} // namespace
