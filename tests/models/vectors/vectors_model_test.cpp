// What support vectors predict where the standard leaves it open, and what they can't predict.
#include "models/columns/hostile_rows.h"
#include "models/columns/model_rows.h"
#include "models/kit/answers.h"
#include "models/kit/scoring.h"
#include "models/vectors/small_vectors.h"
#include "support/faults/failure.h"
#include "support/folders.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <sstream>

using namespace veltrane::tests;

namespace {

/// A machine of two categories of t, whose sum is x.
std::string Pair(const std::string& category, const std::string& alternate) {
    return "<SupportVectorMachine targetCategory='" + category + "' alternateTargetCategory='" + alternate +
           "'><SupportVectors><SupportVector vectorId='v'/></SupportVectors><Coefficients><Coefficient value='1'/>"
           "</Coefficients></SupportVectorMachine>";
}

/// The small document with other machines.
std::string WithMachines(const std::string& machines, const std::string& method) {
    const std::size_t first = kSmallVectors.find("<SupportVectorMachine targetCategory='a'");
    const std::size_t end = kSmallVectors.find("</SupportVectorMachineModel>");
    return Replaced(kSmallVectors.substr(0, first) + machines + kSmallVectors.substr(end),
                    " classificationMethod='OneAgainstAll'", method);
}

TEST(SupportVectors, TheGreatestSumWinsAgainstAll) {
    Scored scored(kSmallVectors);
    for (const auto& [x, category] : Case{{"2", "a"}, {"0", "b"}, {"-3", "c"}, {"1", "a"}, {"-1", "b"}}) {
        ASSERT_TRUE(scored.Score({{"x", x}}).IsOK()) << x;
        EXPECT_EQ(scored.Text(), category) << x;
    }
    EXPECT_EQ(scored.Number("p"), kMissing);
    EXPECT_EQ(scored.Text("second"), "");
    Scored smallest(Replaced(kSmallVectors, "maxWins='true'", ""));
    for (const auto& [x, category] : Case{{"2", "c"}, {"0", "a"}, {"-3", "a"}}) {
        ASSERT_TRUE(smallest.Score({{"x", x}}).IsOK()) << x;
        EXPECT_EQ(smallest.Text(), category) << x << ", the first of equal ones";
    }
}

TEST(SupportVectors, EqualSumsGoByTheDictionaryAndNotByTheMachines) {
    const std::string single = "<SupportVectors><SupportVector vectorId='v'/></SupportVectors><Coefficients>"
                               "<Coefficient value='1'/></Coefficients></SupportVectorMachine>";
    Scored scored(WithMachines("<SupportVectorMachine targetCategory='c'>" + single +
                                   "<SupportVectorMachine targetCategory='b'>" + single,
                               " classificationMethod='OneAgainstAll'"));
    ASSERT_TRUE(scored.Score({{"x", "1"}}).IsOK());
    EXPECT_EQ(scored.Text(), "b");
}

TEST(SupportVectors, TwoAndTwoVote) {
    for (const char* method : {" classificationMethod='OneAgainstOne'", ""}) {
        Scored scored(WithMachines(Pair("b", "a") + Pair("b", "c") + Pair("c", "a"), method));
        ASSERT_TRUE(scored.Score({{"x", "1"}}).IsOK());
        EXPECT_EQ(scored.Text(), "b");
        ASSERT_TRUE(scored.Score({{"x", "0"}}).IsOK());
        EXPECT_EQ(scored.Text(), "a") << "a sum at the threshold is not above it";
        Scored equal(WithMachines(Pair("b", "a") + Pair("c", "b") + Pair("a", "c"), method));
        ASSERT_TRUE(equal.Score({{"x", "1"}}).IsOK());
        EXPECT_EQ(equal.Text(), "a") << "the first of equal votes";
    }
}

TEST(SupportVectors, AStatedMethodGoesBeforeAlternates) {
    Scored scored(WithMachines(Pair("b", "a") + Pair("c", "a"), " classificationMethod='OneAgainstAll'"));
    ASSERT_TRUE(scored.Score({{"x", "-1"}}).IsOK());
    EXPECT_EQ(scored.Text(), "b");
}

TEST(SupportVectors, OneMachineTellsTwoCategoriesApart) {
    Scored scored(WithMachines(Pair("c", "b"), " classificationMethod='OneAgainstAll'"));
    ASSERT_TRUE(scored.Score({{"x", "0.5"}}).IsOK());
    EXPECT_EQ(scored.Text(), "c");
    ASSERT_TRUE(scored.Score({{"x", "-0.5"}}).IsOK());
    EXPECT_EQ(scored.Text(), "b");
    ExpectFailure([] { ReadModel(Replaced(WithMachines(Pair("c", "b"), ""), " alternateTargetCategory='b'", "")); },
                  {MISSING_ATTRIBUTE_OF, "alternateTargetCategory", "SupportVectorMachine"});
}

TEST(SupportVectors, MachinesOfTwoCategoriesHaveOneOpinion) {
    ExpectFailure([] { ReadModel(WithMachines(Pair("c", "b") + Pair("b", "c"), "")); },
                  {DUPLICATE_DEFINITION, "SupportVectorMachine", "b", "SupportVectorMachineModel"});
    const std::string partly = Replaced(Pair("c", "a"), " alternateTargetCategory='a'", "");
    ExpectFailure([&] { ReadModel(WithMachines(Pair("c", "b") + partly, "")); },
                  {ATTRIBUTE_NOT_EVERYWHERE, "SupportVectorMachine", "alternateTargetCategory"});
}

/// Votes that a category can't get would decide against it without a word. A category that no machine has is another
/// matter.
TEST(SupportVectors, AllThatHaveMachinesAreAgainstOneAnother) {
    const std::string machines = Pair("b", "a") + Pair("c", "b");
    for (const char* method : {" classificationMethod='OneAgainstOne'", ""}) {
        ExpectFailure([&] { ReadModel(WithMachines(machines, method)); },
                      {MISSING_ELEMENT_WITH_VALUE, "a, c", "targetCategory, alternateTargetCategory",
                       "SupportVectorMachineModel"});
    }
    ReadModel(WithMachines(machines, " classificationMethod='OneAgainstAll'"));
    ReadModel(Replaced(WithMachines(machines + Pair("a", "c"), ""), "<Value value='c'/>",
                       "<Value value='c'/><Value value='d'/>"));
}

TEST(SupportVectors, AMissingCategoryCountsNothingAndAMissingNumberEverything) {
    Scored scored(Replaced(kSmallVectors, "1 0</Array>", "1 5</Array>"));
    ASSERT_TRUE(scored.Score({{"x", "0"}, {"k", "u"}}).IsOK());
    EXPECT_EQ(scored.Text(), "a");
    ASSERT_TRUE(scored.Score({{"x", "0"}}).IsOK());
    EXPECT_EQ(scored.Text(), "b");
    EXPECT_EQ(scored.Score({{"k", "u"}}).GetErrorCode(), kNoPrediction);
    EXPECT_EQ(scored.Text(), "");
    Scored replaced(Replaced(kSmallVectors, "<FieldRef field='x'/>", "<FieldRef field='x' mapMissingTo='-9'/>"));
    ASSERT_TRUE(replaced.Score({}).IsOK());
    EXPECT_EQ(replaced.Text(), "c");
}

TEST(SupportVectors, TakeWholeNumbersWithAPoint) {
    Scored scored(Replaced(Replaced(kSmallVectors, "<REAL-SparseArray n='2'", "<REAL-SparseArray n='2.0'"),
                           "<Indices>1<", "<Indices> 1.0 <"));
    ASSERT_TRUE(scored.Score({{"x", "-3"}}).IsOK());
    EXPECT_EQ(scored.Text(), "c");
}

TEST(SupportVectors, TakeTheNewerNameOfACategoricalField) {
    Scored scored(Replaced(Replaced(kSmallVectors, "1 0</Array>", "1 5</Array>"), "CategoricalPredictor name='k'",
                           "CategoricalPredictor field='k'"));
    ASSERT_TRUE(scored.Score({{"x", "0"}, {"k", "u"}}).IsOK());
    EXPECT_EQ(scored.Text(), "a");
}

TEST(SupportVectors, HaveNoPredictionWhereANumberOverflows) {
    for (const char* kernel : {"<LinearKernelType/>", "<PolynomialKernelType degree='3'/>"}) {
        Scored scored(Replaced(Replaced(kSmallNumberVectors, "<LinearKernelType/>", kernel), "Coefficient value='2'",
                               "Coefficient value='1e300'"));
        EXPECT_EQ(scored.Score({{"x", "1e200"}}).GetErrorCode(), kNoPrediction) << kernel;
        EXPECT_EQ(scored.Number(), kMissing) << kernel;
        EXPECT_TRUE(scored.Score({{"x", "2"}}).IsOK()) << kernel;
    }
    Scored power(Replaced(kSmallNumberVectors, "<LinearKernelType/>", "<PolynomialKernelType degree='0.5'/>"));
    EXPECT_EQ(power.Score({{"x", "-5"}}).GetErrorCode(), kNoPrediction) << "the root of a number below 0";
    Scored far(Replaced(kSmallNumberVectors, "<LinearKernelType/>", "<RadialBasisKernelType/>"));
    ASSERT_TRUE(far.Score({{"x", "1e200"}}).IsOK());
    EXPECT_EQ(far.Number(), 1.0) << "nothing of a vector that is far away";
}

TEST(SupportVectors, ShowTheirMachines) {
    std::ostringstream out;
    ReadModel(WithMachines(Pair("c", "b"), ""))->Display(out);
    EXPECT_NE(out.str().find("fields: 2, vectors: 2\nmachine of c against b: coefficients 1\n"), std::string::npos)
        << out.str();
}

/// Every variant of the samples, and the small documents.
TEST(VectorsColumns, HoldTheBitsOfCases) {
    std::vector<std::string> documents{kSmallVectors, kSmallNumberVectors, kSmallPair, kSmallCoefficients};
    for (const SampleVariant& variant : ReadVariants(TestsFolder() + "/models/vectors/variants.tsv")) {
        documents.push_back(DocumentOf(variant));
    }
    std::mt19937_64 random(9);
    for (const std::string& document : documents) {
        ModelRows rows(document);
        rows.Fill(random, 300);
        const auto state = rows.Scorer().NewState();
        EXPECT_EQ(rows.InBlocks(*state, 256, 0, false), rows.CaseByCase()) << document;
        EXPECT_EQ(rows.InBlocks(*state, 19, 5, true), rows.CaseByCase()) << document;
        ExpectFinite(rows, random);
    }
}

/// A regression over many fields, of which all but the first are a category, and as many vectors.
/// @param array of the vectors
std::string Many(int count, const std::string& kernel, const std::string& array) {
    std::string document =
        "<PMML version='4.4'><DataDictionary><DataField name='y' optype='continuous' dataType='double'/><DataField "
        "name='x' optype='continuous' dataType='double'/><DataField name='k' optype='categorical' dataType='string'/>"
        "</DataDictionary><SupportVectorMachineModel functionName='regression'><MiningSchema><MiningField name='y' "
        "usageType='target'/><MiningField name='x'/><MiningField name='k'/></MiningSchema>" +
        kernel + "<VectorDictionary><VectorFields><FieldRef field='x'/>";
    for (int i = 1; i < count; ++i) {
        document += "<CategoricalPredictor name='k' value='" + std::to_string(i) + "' coefficient='1'/>";
    }
    document += "</VectorFields>";
    std::string machine;
    for (int i = 0; i < count; ++i) {
        const std::string id = std::to_string(i);
        document += "<VectorInstance id='" + id + "'>" + array + "</VectorInstance>";
        machine += "<SupportVector vectorId='" + id + "'/>";
    }
    document +=
        "</VectorDictionary><SupportVectorMachine><SupportVectors>" + machine + "</SupportVectors><Coefficients>";
    for (int i = 0; i < count; ++i) {
        document += "<Coefficient value='0.5'/>";
    }
    return document + "</Coefficients></SupportVectorMachine></SupportVectorMachineModel></PMML>";
}

/// The number of the model for x and the category 1, in a case and in columns.
void ExpectNumberOfMany(const std::string& document, double expected) {
    Scored scored(document);
    ASSERT_TRUE(scored.Score({{"x", "2"}, {"k", "1"}}).IsOK());
    EXPECT_NEAR(scored.Number(), expected, 1e-9 * std::abs(expected));
    ModelRows rows(document);
    std::mt19937_64 random(3);
    rows.Fill(random, 20);
    const auto state = rows.Scorer().NewState();
    EXPECT_EQ(rows.InBlocks(*state, 20, 0, false), rows.CaseByCase());
}

constexpr int kMany = 20000;
const std::string kFewEntries = "<REAL-SparseArray><Indices>3 1</Indices><REAL-Entries>1.5 0.5</REAL-Entries>"
                                "</REAL-SparseArray>";

TEST(HostileVectors, AreManyOfManyFieldsWithFewEntries) {
    ExpectNumberOfMany(Many(kMany, "<LinearKernelType/>", kFewEntries), kMany * 0.5);
    ExpectNumberOfMany(Many(kMany, "<RadialBasisKernelType gamma='0.25'/>", kFewEntries),
                       kMany * 0.5 * std::exp(-0.25 * (1.5 * 1.5 + 1 + 1.5 * 1.5)));
}

/// The same numbers as those of the vectors written out.
TEST(HostileVectors, WithFewEntriesGiveWhatWholeOnesGive) {
    for (const char* kernel : {"<LinearKernelType/>", "<RadialBasisKernelType gamma='0.01'/>"}) {
        Scored few(Many(2500, kernel, kFewEntries));
        Scored whole(Many(1500, kernel, kFewEntries));
        for (const char* x : {"-3", "0.5", "7.25"}) {
            ASSERT_TRUE(few.Score({{"x", x}, {"k", "2"}}).IsOK());
            ASSERT_TRUE(whole.Score({{"x", x}, {"k", "2"}}).IsOK());
            EXPECT_NEAR(few.Number() / 2500, whole.Number() / 1500, 1e-12) << kernel << " " << x;
        }
    }
}

TEST(HostileVectors, OfOtherDefaultsAreRefused) {
    ExpectFailure([] { ReadModel(Many(kMany, "<LinearKernelType/>", "<REAL-SparseArray defaultValue='1'/>")); },
                  {PROCESSING_VALUE_FAILED, std::to_string(kMany).c_str(), "VectorInstance"});
}

/// A few vectors of another default among many are spread.
TEST(HostileVectors, AFewOfOtherDefaultsAreSpread) {
    const std::string document = Many(3000, "<RadialBasisKernelType gamma='0.001'/>", "<REAL-SparseArray/>");
    const std::string first = "<VectorInstance id='0'><REAL-SparseArray";
    const std::size_t at = document.find(first) + first.size();
    Scored scored(document.substr(0, at) +
                  " defaultValue='1'><Indices>1</Indices><REAL-Entries>2</REAL-Entries></REAL-SparseArray>" +
                  document.substr(at + 2));
    ASSERT_TRUE(scored.Score({{"x", "2"}}).IsOK());
    EXPECT_NEAR(scored.Number(), 0.5 * (2999 * std::exp(-0.004) + std::exp(-2.999)), 1e-9);
}

} // namespace
