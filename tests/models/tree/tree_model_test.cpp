// What a tree answers beside its strategies: categories, confidences, names of nodes, and trees of every size.
#include "models/kit/scoring.h"
#include "models/tree/small_tree.h"
#include "support/allocations.h"
#include "support/faults/failure.h"
#include "support/folders.h"

#include <gtest/gtest.h>

#include <sstream>
#include <thread>

using namespace veltrane::tests;

namespace {

TEST(TreeModel, AnswersWithTheScoreOfTheLeaf) {
    Scored scored(kSmallTree);
    scored.Score({{"x", "2"}, {"c", "w"}});
    EXPECT_EQ(scored.Text(), "a");
    EXPECT_EQ(scored.Text("node"), "2");
}

TEST(TreeModel, WithoutSharesKnowsNoProbability) {
    Scored scored(kSmallTree);
    scored.Score({{"x", "2"}, {"c", "w"}});
    EXPECT_EQ(scored.Number("p"), kMissing);
    EXPECT_EQ(scored.Probability("a"), kMissing);
}

TEST(TreeModel, TellsProbabilityAndConfidenceApart) {
    Scored scored(kSmallTree);
    scored.Score({{"x", "0"}, {"c", "w"}});
    EXPECT_EQ(scored.Text(), "b");
    EXPECT_EQ(scored.Number("p"), 0.4);
    EXPECT_EQ(scored.Number("conf"), 0.5);
    EXPECT_EQ(scored.Result().GetResultConfidence(), 0.6);
}

TEST(TreeModel, TakesTheMostProbableCategoryWithoutAScore) {
    Scored scored(Replaced(kSmallTree, " score='b'", ""));
    scored.Score({{"x", "0"}, {"c", "w"}});
    EXPECT_EQ(scored.Text(), "b");
}

TEST(TreeModel, ANodeThatSaysNothingPredictsNothing) {
    std::string document = Replaced(kSmallTree, "<Node id='2' score='a'", "<Node id='2'");
    Scored scored(document);
    EXPECT_EQ(scored.Score({{"x", "2"}}).GetErrorCode(), kNoPrediction);
    EXPECT_EQ(scored.Text(), "");
}

TEST(TreeModel, ARootThatDoesNotHoldPredictsNothing) {
    Scored scored(Replaced(kSmallTree, "  <True/>\n", "<False/>"));
    EXPECT_EQ(scored.Score({{"x", "2"}}).GetErrorCode(), kNoPrediction);
}

TEST(TreeModel, NodesWithoutAnIdAreCalledByTheirPlace) {
    std::string document = Replaced(kSmallTree, "<Node id='2'", "<Node");
    Scored scored(Replaced(document, " defaultChild='2'", ""));
    scored.Score({{"x", "2"}});
    EXPECT_EQ(scored.Text("node"), "2");
    scored.Score({{"x", "0"}, {"c", "w"}});
    EXPECT_EQ(scored.Text("node"), "1");
}

TEST(TreeModel, SharesWithoutRecordsHaveNoProbability) {
    std::string document =
        Replaced(kSmallTree, "recordCount='4' probability='0.4' confidence='0.3'", "recordCount='0'");
    document = Replaced(document, "recordCount='6' probability='0.6' confidence='0.5'", "recordCount='0'");
    Scored scored(document);
    scored.Score({{"x", "0"}, {"c", "w"}});
    EXPECT_EQ(scored.Text(), "b");
    EXPECT_EQ(scored.Number("p"), kMissing);
}

TEST(TreeModel, ANodeCanShareThousandsOfCategories) {
    constexpr int kCategories = 50000;
    std::string shares;
    for (int i = 0; i < kCategories; ++i) {
        shares += "<ScoreDistribution value='c" + std::to_string(i) + "' recordCount='1'/>";
    }
    Scored scored("<PMML><DataDictionary><DataField name='t' optype='categorical' dataType='string'/></DataDictionary>"
                  "<TreeModel functionName='classification'><MiningSchema><MiningField name='t' usageType='target'/>"
                  "</MiningSchema><Node><True/>" +
                  shares + "</Node></TreeModel></PMML>");
    scored.Score({});
    EXPECT_EQ(scored.Text(), "c0");
    EXPECT_DOUBLE_EQ(scored.Probability("c49999"), 1.0 / kCategories);
}

TEST(TreeModel, ExtensionsAndPartitionsAreSkipped) {
    Scored scored(Replaced(kSmallTree, "  <True/>\n", "<Extension/><True/><Partition name='p'/>"));
    scored.Score({{"x", "2"}});
    EXPECT_EQ(scored.Text(), "a");
}

TEST(TreeModel, DisplaysItsSize) {
    const auto model = ReadModel(kSmallTree);
    std::ostringstream out;
    model->Display(out);
    EXPECT_NE(out.str().find("missing values: defaultChild\nnodes: 2, bytes: "), std::string::npos) << out.str();
}

/// A path of nested nodes, each with a leaf beside it.
std::string PathTree(int depth) {
    std::string document = kSmallTree.substr(0, kSmallTree.find(" <Node id='1'"));
    document += "<Node score='b'><True/>";
    for (int i = 1; i < depth; ++i) {
        document += "<Node score='a'><SimplePredicate field='x' operator='lessThan' value='" + std::to_string(i) +
                    "'/></Node><Node score='b'><True/>";
    }
    for (int i = 0; i < depth; ++i) {
        document += "</Node>";
    }
    return document + "</TreeModel></PMML>";
}

TEST(TreeSize, APathAsDeepAsDocumentsMayBe) {
    Scored scored(PathTree(990));
    scored.Score({{"x", "1000"}});
    EXPECT_EQ(scored.Text(), "b");
    EXPECT_EQ(scored.Text("node"), std::to_string(2 * 989 + 1));
    scored.Score({{"x", "988.5"}});
    EXPECT_EQ(scored.Text("node"), std::to_string(2 * 989));
}

TEST(TreeSize, APathBeyondTheBoundIsRefused) {
    const std::string document = PathTree(1100);
    ExpectFailure([&document] { ReadModel(document); }, {CANNOT_OPEN_DOCUMENT});
}

TEST(TreeSize, ManyChildrenSideBySide) {
    constexpr int kChildren = 20000;
    std::string document = kSmallTree.substr(0, kSmallTree.find(" <Node id='1'")) + "<Node><True/>";
    for (int i = 0; i < kChildren; ++i) {
        document += "<Node score='" + std::string(i % 2 == 0 ? "a" : "b") +
                    "'><SimplePredicate field='x' operator='equal' value='" + std::to_string(i) + "'/></Node>";
    }
    Scored scored(document + "</Node></TreeModel></PMML>");
    scored.Score({{"x", "19999"}});
    EXPECT_EQ(scored.Text(), "b");
    EXPECT_EQ(scored.Text("node"), "20001");
}

TEST(TreeSpeed, NothingIsAllocatedForACase) {
    Scored scored(kSmallTree);
    std::vector<std::unique_ptr<MCVeltrane_900::CaseRecord>> records;
    for (const Case& values : {Case{{"x", "2"}, {"c", "u"}, {"o", "low"}}, Case{{"x", "0"}, {"c", "w"}, {"o", "low"}},
                               Case{{"x", ""}, {"c", "w"}, {"o", "low"}}}) {
        records.push_back(
            MakeRecord(scored.Model(), {{"t", "a"}, {"x", values.at("x")}, {"c", values.at("c")}, {"o", "low"}}));
    }
    const auto scoreAll = [&] {
        for (const auto& record : records) {
            scored.Model().Score(record.get(), &scored.Result());
        }
    };
    scoreAll();
    EXPECT_EQ(AllocationsOf(scoreAll), 0U);
}

/// Ids are told as they are written, be they numbers or not.
TEST(TreeModel, CallsANodeByItsId) {
    for (const std::string id : {"3", "0", "007", "00", "-1", "+1", "1.0", " 1", "999999999", "1234567890",
                                 "4294967298", "left", "a node with a long name, longer than others", "\xC3\xB6"}) {
        const std::string document = Replaced(kSmallTree, "<Node id='2'", "<Node id='" + id + "'");
        Scored scored(Replaced(document, "defaultChild='2'", "defaultChild='" + id + "'"));
        for (int i = 0; i < 2; ++i) {
            scored.Score({{"x", "2"}, {"c", "w"}});
            EXPECT_EQ(scored.Text("node"), id);
            scored.Score({{"x", "0"}, {"c", "w"}});
            EXPECT_EQ(scored.Text("node"), "1");
        }
    }
    Scored unnamed(Replaced(Replaced(kSmallTree, "<Node id='2'", "<Node id=''"), " defaultChild='2'", ""));
    unnamed.Score({{"x", "2"}, {"c", "w"}});
    EXPECT_EQ(unnamed.Text("node"), "");
}

std::size_t BytesOf(const std::string& document) {
    std::ostringstream out;
    ReadModel(document)->Display(out);
    const std::string told = "bytes: ";
    return std::stoul(out.str().substr(out.str().find(told) + told.size()));
}

TEST(TreeModel, TakesSixtyBytesForANodeAtMost) {
    constexpr std::size_t kNodes = 5000;
    std::string document = R"(<PMML version='4.3'><DataDictionary>
<DataField name='y' optype='continuous' dataType='double'/><DataField name='x' optype='continuous' dataType='double'/>
</DataDictionary><TreeModel functionName='regression'><MiningSchema><MiningField name='y' usageType='target'/>
<MiningField name='x'/></MiningSchema><Node score='0'><True/>)";
    for (std::size_t i = 1; i < kNodes; ++i) {
        const std::string number = std::to_string(i);
        document += "<Node id='N" + number + "' score='" + number + ".5' recordCount='" + number +
                    "'><SimplePredicate field='x' operator='lessThan' value='" + number + "'/></Node>";
    }
    document += "</Node></TreeModel></PMML>";
    EXPECT_LE(BytesOf(document), 60 * kNodes);
    const std::size_t named = BytesOf(document);
    for (std::size_t at = document.find("'N"); at != std::string::npos; at = document.find("'N", at)) {
        document.erase(at + 1, 1);
    }
    EXPECT_LE(BytesOf(document), 40 * kNodes);
    EXPECT_LT(BytesOf(document), named);
}

TEST(TreeThreads, EightModelsGiveTheSameAnswers) {
    std::string document = ReadFile(ModelSamplesFolder() + "/play.pmml");
    document = Replaced(Replaced(document, "STRATEGY\" noTrue", "weightedConfidence\" noTrue"), "NOCHILD",
                        "returnLastPrediction");
    const std::vector<Case> rows = ReadRows(ModelSamplesFolder() + "/play.answers.csv");
    std::vector<std::vector<double>> answers(8);
    std::vector<std::thread> threads;
    for (std::vector<double>& mine : answers) {
        threads.emplace_back([&mine, &document, &rows] {
            Scored scored(document);
            for (std::size_t i = 0; i < 60; ++i) {
                scored.Score(rows[i]);
                mine.push_back(scored.Number("p_yes"));
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (const std::vector<double>& mine : answers) {
        EXPECT_EQ(mine, answers.front());
    }
    EXPECT_EQ(answers.front().size(), 60U);
}

} // namespace
