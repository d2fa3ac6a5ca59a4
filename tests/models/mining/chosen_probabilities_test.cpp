// Probabilities under the methods that go by what single segments say, worked out by hand, and what segments of no
// weight and of negative weights count for.
#include "models/mining/small_ensemble.h"
#include "support/faults/fault.h"

#include <gtest/gtest.h>

#include <sstream>
#include <vector>

using namespace veltrane::tests;

namespace {

/// A tree of one leaf with the shares of a, b and c.
std::string Shares(double a, double b, double c) {
    const auto share = [](const char* value, double probability) {
        return std::string("<ScoreDistribution value='") + value + "' recordCount='1' probability='" +
               std::to_string(probability) + "'/>";
    };
    return "<TreeModel functionName='classification'>" + Schema("u", Fields("x")) + "<Node><True/>" + share("a", a) +
           share("b", b) + share("c", c) + "</Node></TreeModel>";
}

std::string Document(const std::string& method, const std::string& segments) {
    return "<PMML version='4.4'><DataDictionary><DataField name='u' optype='categorical' dataType='string'>"
           "<Value value='a'/><Value value='b'/><Value value='c'/></DataField>" +
           NumberField("x") + "</DataDictionary><MiningModel functionName='classification'>" +
           Schema("u", Fields("x")) + "<Segmentation multipleModelMethod='" + method + "'>" + segments +
           "</Segmentation></MiningModel></PMML>";
}

struct Choice {
    const char* name;
    const char* method;
    std::string segments;
    const char* winner;
    std::vector<double> probabilities;
};

void PrintTo(const Choice& choice, std::ostream* out) {
    *out << choice.name;
}

class ChosenProbabilities : public testing::TestWithParam<Choice> {};

TEST_P(ChosenProbabilities, AreThoseOfTheSegmentsThatTheWinnersComesFrom) {
    const Choice& choice = GetParam();
    Scored scored(Document(choice.method, choice.segments));
    ASSERT_TRUE(scored.Score({{"x", "1"}}).IsOK());
    EXPECT_EQ(scored.Text(), choice.winner);
    EXPECT_NEAR(scored.Probability("a"), choice.probabilities[0], 1e-15);
    EXPECT_NEAR(scored.Probability("b"), choice.probabilities[1], 1e-15);
    EXPECT_NEAR(scored.Probability("c"), choice.probabilities[2], 1e-15);
}

const std::string kFirst = SegmentOf(Shares(0.6, 0.3, 0.1), "weight='1'");
const std::string kSecond = SegmentOf(Shares(0.1, 0.8, 0.1), "weight='2'");
const std::string kThird = SegmentOf(Shares(0.5, 0.2, 0.3), "weight='3'");
const std::string kFourth = SegmentOf(Shares(0.2, 0.75, 0.05), "weight='4'");

const Choice kChoices[] = {
    {"Max", "max", kFirst + kSecond + kThird, "b", {0.1, 0.8, 0.1}},
    {"MaxOfTwoSegments", "max", kFirst + kSecond + SegmentOf(Shares(0.2, 0.8, 0.0)), "b", {0.15, 0.8, 0.05}},
    {"MaxOfTwoCategories",
     "max",
     SegmentOf(Shares(0.1, 0.8, 0.1)) + SegmentOf(Shares(0.8, 0.1, 0.1)),
     "a",
     {0.8, 0.1, 0.1}},
    {"Median", "median", kFirst + kSecond + kThird, "a", {0.5, 0.2, 0.3}},
    {"MedianBetweenTwo", "median", kFirst + kSecond + kThird + kFourth, "b", {0.4, 0.525, 0.075}},
    // 0.3 twice and 0.75: the mean of the first two for one half.
    {"MedianBetweenTwoAndOne",
     "median",
     kFirst + SegmentOf(Shares(0.3, 0.3, 0.4)) + SegmentOf(Shares(0.2, 0.8, 0.0)) + kFourth,
     "b",
     {0.325, 0.525, 0.15}},
    {"MedianThatIsNotTheHighest",
     "median",
     SegmentOf(Shares(0.35, 0.6, 0.05)) + SegmentOf(Shares(0.36, 0.3, 0.34)) + SegmentOf(Shares(0.34, 0.26, 0.4)),
     "a",
     {0.35, 0.6, 0.05}},
    {"WeightedMedian", "weightedMedian", kFirst + kSecond + kThird, "a", {0.5, 0.2, 0.3}},
    {"WeightedMedianByWeights",
     "weightedMedian",
     SegmentOf(Shares(0.7, 0.3, 0.0), "weight='3'") + SegmentOf(Shares(0.7, 0.1, 0.2), "weight='1'") +
         SegmentOf(Shares(0.0, 1.0, 0.0), "weight='1'"),
     "a",
     {0.7, 0.25, 0.05}},
};

INSTANTIATE_TEST_SUITE_P(Methods, ChosenProbabilities, testing::ValuesIn(kChoices),
                         [](const auto& info) { return std::string(info.param.name); });

const std::string kUnlessMissing = "<TreeModel functionName='regression' missingValueStrategy='nullPrediction'>" +
                                   Schema("y", Fields("x")) +
                                   "<Node><True/><Node score='4'><SimplePredicate field='x' operator='greaterThan' "
                                   "value='0'/></Node></Node></TreeModel>";

std::string Weighted(const std::string& method, const std::string& weight) {
    return EnsembleDocument(Mining(method, SegmentOf(Line("z", 1.0, 1.0), "weight='3'") +
                                               SegmentOf(kUnlessMissing, "weight='" + weight + "'")));
}

TEST(SegmentWeights, AMissingPredictionOfNoWeightIsMissingAllTheSame) {
    for (const char* method : {"weightedSum", "weightedAverage", "weightedMedian"}) {
        Scored scored(Weighted(method, "0"));
        EXPECT_TRUE(scored.Score({{"x", "1"}, {"z", "2"}}).IsOK()) << method;
        EXPECT_FALSE(scored.Score({{"x", ""}, {"z", "2"}}).IsOK()) << method;
    }
}

TEST(SegmentWeights, AMissingPredictionOfANegativeWeightIsMissing) {
    Scored scored(Weighted("weightedSum", "-2"));
    ASSERT_TRUE(scored.Score({{"x", "1"}, {"z", "2"}}).IsOK());
    EXPECT_EQ(scored.Number(), 3.0 * 3.0 - 2.0 * 4.0);
    EXPECT_FALSE(scored.Score({{"x", ""}, {"z", "2"}}).IsOK());
}

TEST(SegmentWeights, CountWithoutTheirSignsForTheShareOfMissingPredictions) {
    const auto document = [](const std::string& threshold) {
        return Replaced(Weighted("weightedSum", "-2"), "'weightedSum'",
                        "'weightedSum' missingPredictionTreatment='skipSegment' missingThreshold='" + threshold + "'");
    };
    Scored within(document("0.4"));
    ASSERT_TRUE(within.Score({{"x", ""}, {"z", "2"}}).IsOK());
    EXPECT_EQ(within.Number(), 9.0);
    EXPECT_FALSE(Scored(document("0.39")).Score({{"x", ""}, {"z", "2"}}).IsOK());
}

TEST(SegmentWeights, CountUnderTheOlderWordsOfProducersToo) {
    const Case row = {{"x", "1"}, {"z", "2"}};
    Scored sum(Weighted("x-weightedSum", "-2"));
    ASSERT_TRUE(sum.Score(row).IsOK());
    EXPECT_EQ(sum.Number(), 1.0);
    Scored median(Weighted("x-weightedMedian", "4"));
    ASSERT_TRUE(median.Score(row).IsOK());
    EXPECT_EQ(median.Number(), 4.0);
    std::ostringstream shown;
    sum.Model().Display(shown);
    EXPECT_NE(shown.str().find("method: weightedSum\n"), std::string::npos) << shown.str();
}

TEST(SegmentWeights, AreNotNegativeForProbabilities) {
    ExpectFailure([] { ReadModel(Document("weightedSum", SegmentOf(Shares(0.5, 0.5, 0.0), "weight='-1'"))); },
                  {INVALID_ATTRIBUTE_VALUE_IN, "-1", "weight", "Segment"});
}

} // namespace
