// General regressions and naive Bayes models of sizes that nobody writes by hand.
#include "models/bayes/small_bayes.h"
#include "models/general/small_general.h"
#include "models/kit/scoring.h"
#include "support/faults/failure.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

using namespace veltrane::tests;

namespace {

/// A text with every '#' replaced by a number, for each number below a count.
std::string Numbered(int count, const std::string& text) {
    std::ostringstream numbered;
    for (int i = 0; i < count; ++i) {
        for (const char c : text) {
            if (c == '#') {
                numbered << i;
            } else {
                numbered << c;
            }
        }
    }
    return numbered.str();
}

/// With more parameters, cells of the PPMatrix and coefficients.
std::string WithMore(std::string document, const std::string& parameters, const std::string& cells,
                     const std::string& coefficients) {
    document = Replaced(std::move(document), "</ParameterList>", parameters + "</ParameterList>");
    document = Replaced(std::move(document), "</PPMatrix>", cells + "</PPMatrix>");
    return Replaced(std::move(document), "</ParamMatrix>", coefficients + "</ParamMatrix>");
}

/// The field c lists nothing, so that it has any category.
std::string Open(const std::string& document) {
    return Replaced(document, "<Value value='a'/><Value value='b'/>", "");
}

TEST(HostileGeneralRegression, HasACoefficientForEachOfManyCategories) {
    constexpr int kMany = 100000;
    Scored scored(WithMore(Open(Linear("")), Numbered(kMany, "<Parameter name='m#'/>"),
                           Numbered(kMany, "<PPCell value='v#' predictorName='c' parameterName='m#'/>"),
                           Numbered(kMany, "<PCell parameterName='m#' beta='#'/>")));
    for (const int category : {0, 70000, kMany - 1}) {
        ASSERT_TRUE(scored.Score({{"c", "v" + std::to_string(category)}}).IsOK());
        EXPECT_EQ(scored.Number(), category);
    }
    ASSERT_TRUE(scored.Score({{"c", "other"}}).IsOK());
    EXPECT_EQ(scored.Number(), 0.0);
}

TEST(HostileGeneralRegression, TakesTurnsBetweenFactors) {
    constexpr int kMany = 20000;
    Scored scored(
        WithMore(Open(Linear("")), Numbered(kMany, "<Parameter name='m#'/><Parameter name='n#'/>"),
                 Numbered(kMany, "<PPCell value='v#' predictorName='c' parameterName='m#'/>"
                                 "<PPCell value='1' predictorName='x' parameterName='n#'/>"),
                 Numbered(kMany, "<PCell parameterName='m#' beta='#'/><PCell parameterName='n#' beta='1'/>")));
    ASSERT_TRUE(scored.Score({{"c", "v7"}, {"x", "2"}}).IsOK());
    EXPECT_EQ(scored.Number(), 7.0 + 2.0 * kMany);
}

TEST(HostileGeneralRegression, HasManyCategoriesToPredict) {
    constexpr int kMany = 20000;
    const std::string document = General("functionName='classification' modelType='multinomialLogistic' "
                                         "targetReferenceCategory='low'",
                                         "g", "", "");
    Scored scored(WithMore(Replaced(document, "<Value value='low'/><Value value='mid'/><Value value='high'/>", ""), "",
                           "",
                           "<PCell parameterName='p1' beta='0'/>" +
                               Numbered(kMany, "<PCell targetCategory='k#' parameterName='p0' beta='0'/>")));
    ASSERT_TRUE(scored.Score({{"x", "1"}, {"c", "a"}}).IsOK());
    EXPECT_DOUBLE_EQ(scored.Probability("low"), 1.0 / (kMany + 1));
}

TEST(HostileGeneralRegression, BoundsTheTermsThatSharedParametersCome) {
    constexpr int kMany = 2000;
    const std::string document = General("functionName='classification' modelType='multinomialLogistic' "
                                         "targetReferenceCategory='low'",
                                         "g", "", "");
    const std::string large =
        WithMore(Replaced(document, "<Value value='low'/><Value value='mid'/><Value value='high'/>", ""),
                 Numbered(kMany, "<Parameter name='m#'/>"),
                 Numbered(kMany, "<PPCell value='1' predictorName='x' parameterName='m#' targetCategory='k0'/>"),
                 Numbered(kMany, "<PCell parameterName='m#' beta='1'/><PCell targetCategory='k#' parameterName='p0' "
                                 "beta='0'/>"));
    ExpectFailure([&] { ReadModel(large); }, {PROCESSING_VARIABLE_FAILED, "ParamMatrix", "g"});
}

TEST(HostileGeneralRegression, HasContrastsInTheRoomOfTheirDocument) {
    constexpr int kMany = 20000;
    const std::string predictor =
        "<Predictor name='c'><Categories><Category value='a'/>" + Numbered(kMany - 1, "<Category value='v#'/>") +
        "</Categories><Matrix kind='diagonal'><Array>" + Numbered(kMany, "# ") + "</Array></Matrix></Predictor>";
    Scored scored(Replaced(Open(WithMore(Linear(""), "", "", "<PCell parameterName='p2' beta='1'/>")),
                           "<Predictor name='c'/>", predictor));
    ASSERT_TRUE(scored.Score({{"c", "v5"}}).IsOK());
    EXPECT_EQ(scored.Number(), 0.0);
}

TEST(HostileNaiveBayes, HasManyInputsAndValues) {
    constexpr int kMany = 5000;
    const std::string counts = "<TargetValueCounts><TargetValueCount value='no' count='1'/><TargetValueCount "
                               "value='yes' count='1'/></TargetValueCounts>";
    std::string document = Replaced(kSmallBayes, "</DataDictionary>",
                                    Numbered(kMany, "<DataField name='f#' optype='categorical' dataType='string'/>") +
                                        "</DataDictionary>");
    document = Replaced(document, "</MiningSchema>", Numbered(kMany, "<MiningField name='f#'/>") + "</MiningSchema>");
    document = Replaced(document, "<BayesInputs>",
                        "<BayesInputs>" + Numbered(kMany, "<BayesInput fieldName='f#'><PairCounts value='a'>" + counts +
                                                              "</PairCounts></BayesInput>"));
    document =
        Replaced(document, "<PairCounts value='b'>",
                 Numbered(20 * kMany, "<PairCounts value='v#'>" + counts + "</PairCounts>") + "<PairCounts value='b'>");
    Scored scored(document);
    ASSERT_TRUE(scored.Score({{"f7", "a"}, {"c", "v70000"}}).IsOK());
    EXPECT_NEAR(scored.Probability("yes"), 2.0 / (100000 + 2.5) / (2.0 / (100000 + 2.5) + 6.0 / (100000 + 3)), 1e-12);
}

} // namespace
