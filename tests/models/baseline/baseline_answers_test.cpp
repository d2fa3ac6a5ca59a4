// Every test against a baseline, case after case, against the answers that baseline_answers.py computes apart from the
// plug-in.
#include "models/kit/scoring.h"
#include "support/folders.h"
#include "support/rows.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

using namespace veltrane::tests;

namespace {

/// The tails of the chi-square distribution have so many digits; sums of numbers have more.
constexpr double kTolerance = 1e-11;

struct Variant {
    const char* name;
    const char* test; ///< in the place of TestDistributions; null for that of the sample
};

#define KINDS                                                                                                          \
    "<FieldValueCount field='kind' value='car' count='60'/><FieldValueCount field='kind' value='truck' count='30'/>"   \
    "<FieldValueCount field='kind' value='bike' count='10'/>"
#define SHARES                                                                                                         \
    "<FieldValueCount field='kind' value='car' count='0.6'/><FieldValueCount field='kind' value='truck' "              \
    "count='0.25'/><FieldValueCount field='kind' value='bike' count='0.15'/><FieldValueCount field='kind' "            \
    "value='boat' count='0'/>"
#define LANES                                                                                                          \
    "<CountTable sample='100'><FieldValue field='lane' value='1'><FieldValueCount field='kind' value='car' "           \
    "count='40'/><FieldValueCount field='kind' value='truck' count='28'/><FieldValueCount field='kind' value='bike' "  \
    "count='10'/></FieldValue><FieldValue field='kind' value='car'><FieldValueCount field='lane' value='2' "           \
    "count='20'/></FieldValue><FieldValue field='kind' value='truck'><FieldValueCount field='lane' value='2' "         \
    "count='2'/></FieldValue><FieldValue field='kind' value='bike'><FieldValueCount field='lane' value='2.0' "         \
    "count='0'/></FieldValue></CountTable>"

constexpr Variant kVariants[] = {
    {"cusum", nullptr},
    {"z", "field='speed' testStatistic='zValue'><Baseline><GaussianDistribution mean='50' variance='64'/></Baseline>"},
    {"zAny", "field='speed' testStatistic='zValue' windowSize='5'><Baseline><AnyDistribution mean='50' variance='64'/>"
             "</Baseline>"},
    {"zPoisson", "field='axles' testStatistic='zValue'><Baseline><PoissonDistribution mean='2.5'/></Baseline>"},
    {"zUniform",
     "field='speed' testStatistic='zValue' windowSize='3' weightField='load'><Baseline><UniformDistribution lower='20' "
     "upper='90'/></Baseline>"},
    {"cusumReset",
     "field='axles' testStatistic='CUSUM' resetValue='-1.5'><Baseline><PoissonDistribution mean='2.5'/></Baseline>"
     "<Alternate><PoissonDistribution mean='4'/></Alternate>"},
    {"cusumWindow",
     "field='speed' testStatistic='CUSUM' resetValue='0.25' windowSize='4'><Baseline><UniformDistribution lower='20' "
     "upper='90'/></Baseline><Alternate><GaussianDistribution mean='60' variance='64'/></Alternate>"},
    {"cusumWeight",
     "field='speed' testStatistic='CUSUM' weightField='load'><Baseline><GaussianDistribution mean='50' variance='64'/>"
     "</Baseline><Alternate><UniformDistribution lower='30' upper='80'/></Alternate>"},
    {"distribution",
     "field='kind' testStatistic='chiSquareDistribution'><Baseline><CountTable>" KINDS "</CountTable></Baseline>"},
    {"distributionWindow",
     "field='kind' testStatistic='chiSquareDistribution' windowSize='6' weightField='load'><Baseline>"
     "<NormalizedCountTable>" SHARES "</NormalizedCountTable></Baseline>"},
    {"distributionOfTwo",
     "field='kind' testStatistic='chiSquareDistribution' windowSize='12'><Baseline>" LANES "</Baseline>"},
    {"independence",
     "field='kind' testStatistic='chiSquareIndependence'><Baseline><FieldRef field='kind'/><FieldRef field='lane'/>"
     "</Baseline>"},
    {"independenceOfTable",
     "field='lane' testStatistic='chiSquareIndependence' windowSize='5' weightField='load'><Baseline>" LANES
     "</Baseline>"},
    {"independenceOfOne",
     "field='kind' testStatistic='chiSquareIndependence'><Baseline><CountTable>" KINDS "</CountTable></Baseline>"},
    {"independenceOfShares",
     "field='kind' testStatistic='chiSquareIndependence' windowSize='10'><Baseline><NormalizedCountTable "
     "sample='80'>" SHARES "</NormalizedCountTable></Baseline>"},
    {"product", "field='kind' testStatistic='scalarProduct'><Baseline><CountTable>" KINDS "</CountTable></Baseline>"},
    {"productWindow",
     "field='kind' testStatistic='scalarProduct' windowSize='4' weightField='load' normalizationScheme='Independent'>"
     "<Baseline>" LANES "</Baseline>"},
};

std::string DocumentOf(const Variant& variant) {
    std::string document = ReadFile(ModelSamplesFolder() + "/traffic.pmml");
    if (variant.test != nullptr) {
        const std::string tag = "<TestDistributions ";
        const std::size_t begin = document.find(tag) + tag.size();
        document.replace(begin, document.find("</TestDistributions>") - begin, variant.test);
    }
    return document;
}

class BaselineAnswers : public testing::TestWithParam<Variant> {};

TEST_P(BaselineAnswers, AreThoseComputedApart) {
    Scored scored(DocumentOf(GetParam()));
    const std::vector<Case> rows = ReadRows(ModelSamplesFolder() + "/traffic.csv");
    const std::vector<Case> answers = ReadRows(ModelSamplesFolder() + "/traffic.answers.csv");
    ASSERT_EQ(rows.size(), answers.size());
    ASSERT_GT(rows.size(), 100U);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const std::string& answer = answers[i].at(GetParam().name);
        EXPECT_EQ(scored.Score(rows[i]).IsOK(), !answer.empty()) << "row " << i;
        const double expected = answer.empty() ? kMissing : ToNumber(answer);
        const double actual = scored.Number();
        EXPECT_LE(std::abs(actual - expected), kTolerance * std::max(std::abs(expected), 1e-3))
            << "row " << i << ": " << actual << " in place of " << answer;
    }
}

INSTANTIATE_TEST_SUITE_P(Samples, BaselineAnswers, testing::ValuesIn(kVariants), NameOfRow());

} // namespace
