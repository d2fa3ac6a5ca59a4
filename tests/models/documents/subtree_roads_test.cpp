// Documents whose trees are read from records, beside the same ones with all in the tree of the document: the same
// failure, or the same model with the same answers to the last bit.
#include "models/columns/model_rows.h"
#include "models/forest/random_forest.h"
#include "models/kit/scoring.h"
#include "support/folders.h"

#include <MCVeltrane_900/Messages.h>
#include <MCVeltrane_900/ModelFactory.h>
#include <MCVeltrane_900/VTException.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <random>
#include <set>
#include <sstream>

using namespace veltrane::tests;
using MCVeltrane_900::ModelFactory;
using MCVeltrane_900::ScoreModel;

namespace {

using Names = std::vector<std::string>;

const Names kByRecords = {"MiningModel",  "RegressionModel", "TreeModel", "Scorecard",
                          "RuleSetModel", "BaselineModel",   "TermModel"};

/// A list that asks for an element in the records has them made nodes.
Names ByNodes() {
    Names names = kByRecords;
    names.emplace_back("Node");
    return names;
}

std::unique_ptr<ScoreModel> Read(const std::string& document, const Names& names) {
    std::istringstream in(document);
    return std::unique_ptr<ScoreModel>(ModelFactory::MakeModelFromXML(in, names, "UTF-8"));
}

/// What comes of a document by one road, and the cases that it answers.
/// @param inUtf8 the same document, from which the values of the cases are taken
std::string OutcomeOf(const std::string& document, const Names& names, std::size_t cases, const std::string& inUtf8) {
    try {
        std::ostringstream out;
        std::unique_ptr<ScoreModel> model = Read(document, names);
        model->Display(out);
        std::mt19937_64 random(7);
        ModelRows rows(inUtf8, std::move(model));
        rows.Fill(random, cases);
        const auto state = rows.Scorer().NewState();
        for (const std::string& answer : rows.InBlocks(*state, veltrane::ColumnScorer::kMostRows, 0, false)) {
            out << answer << '\n';
        }
        return out.str();
    } catch (const MCVeltrane_900::VTException& failure) {
        return std::to_string(failure.GetErrorCode()) + ' ' + failure.GetErrorMessage();
    }
}

std::string OutcomeOf(const std::string& document, const Names& names, std::size_t cases) {
    return OutcomeOf(document, names, cases, document);
}

/// A document without a model of the list, in which "Node" then is one.
bool IsWithoutModel(const std::string& outcome) {
    const auto code = static_cast<int>(MCVeltrane_900::Message::NO_MODEL_LIBRARY);
    return outcome.starts_with(std::to_string(code)) && outcome.find("Node") != std::string::npos;
}

void ExpectTheSame(const std::string& document, std::size_t cases) {
    const std::string expected = OutcomeOf(document, ByNodes(), cases);
    if (!IsWithoutModel(expected)) {
        EXPECT_EQ(OutcomeOf(document, kByRecords, cases), expected);
    }
}

std::string WithBehind(const std::string& document, std::size_t from, char end, const std::string& piece) {
    const std::size_t at = document.find(end, from);
    return at == std::string::npos ? document : document.substr(0, at + 1) + piece + document.substr(at + 1);
}

/// Where a node of a tree begins, not the first one.
std::size_t SomeNode(const std::string& document) {
    const std::size_t first = document.find("<Node");
    const std::size_t second = first == std::string::npos ? first : document.find("<Node", first + 1);
    return second == std::string::npos ? first : second;
}

/// The document as its bytes are in UTF-16, of what is plain ASCII.
std::string Wide(const std::string& document) {
    std::string wide = "\xFF\xFE";
    const std::size_t declaration = document.starts_with("<?xml") ? document.find("?>") + 2 : 0;
    for (const char c : document.substr(declaration)) {
        wide += c;
        wide += '\0';
    }
    return wide;
}

bool IsAscii(const std::string& document) {
    return std::all_of(document.begin(), document.end(), [](char c) { return static_cast<signed char>(c) > 0; });
}

/// The document, and what it becomes with something in a node that no record holds, in another encoding and cut off.
void CheckDocument(const std::string& document, std::size_t cases) {
    ExpectTheSame(document, cases);
    constexpr std::size_t kSmall = 50000;
    const std::size_t node = SomeNode(document);
    if (node == std::string::npos || document.size() > kSmall) {
        return;
    }
    for (const char* piece :
         {"<!--c-->", "<?p i?>", "<![CDATA[ ]]>", "<Extension name='x'><a/></Extension>", "<a/>", "&#32;"}) {
        ExpectTheSame(WithBehind(document, node, '>', piece), cases / 10);
    }
    if (IsAscii(document)) {
        ExpectTheSame(Wide(document), cases / 10);
        ExpectTheSame(
            WithBehind(document, document.find("<PMML"), 'L', " xmlns='http://www.dmg.org/PMML-4_4' xmlns:p='urn:p'"),
            cases / 10);
    }
    std::mt19937_64 random(document.size());
    for (int i = 0; i < 5; ++i) {
        ExpectTheSame(document.substr(0, node + random() % (document.size() - node)), 0);
        std::string changed = document;
        changed[node + random() % (document.size() - node)] = "<>/'\"& xN0"[random() % 10];
        ExpectTheSame(changed, cases / 10);
    }
}

/// @return how many documents were read
std::size_t CheckFolder(const std::filesystem::path& folder, std::size_t cases) {
    constexpr std::uintmax_t kLongest = 1000000;
    static const std::set<std::string> kOthers{".csv", ".py", ".tsv", ".txt"};
    std::size_t count = 0;
    for (const auto& file : std::filesystem::recursive_directory_iterator(folder)) {
        if (file.is_regular_file() && file.file_size() < kLongest &&
            !kOthers.contains(file.path().extension().string())) {
            SCOPED_TRACE(file.path().filename().string());
            CheckDocument(ReadFile(file.path().string()), cases);
            ++count;
        }
    }
    return count;
}

class SubtreeRoads : public testing::Test {
protected:
    SubtreeRoads() { ModelFactory::Initialize(""); }
};

/// A tree of words with other letters than those of ASCII, in every place of a node that holds one.
std::string Words(const std::string& encoding, const std::string& word, const std::string& other) {
    return "<?xml version='1.0' encoding='" + encoding +
           "'?><PMML version='4.4'><DataDictionary><DataField name='t' optype='categorical' dataType='string'>"
           "<Value value='" +
           word + "'/><Value value='" + other +
           "'/></DataField><DataField name='c' optype='categorical' dataType='string'><Value value='" + word +
           "'/><Value value='" + other +
           "'/><Value value='plain'/></DataField></DataDictionary><TreeModel functionName='classification'>"
           "<MiningSchema><MiningField name='t' usageType='target'/><MiningField name='c'/></MiningSchema><Output>"
           "<OutputField name='node' feature='entityId'/></Output><Node id='" +
           word + "'><True/><Node id='1" + other + "'><SimplePredicate field='c' operator='equal' value='" + word +
           "'/><ScoreDistribution value='" + other + "' recordCount='3'/><ScoreDistribution value='" + word +
           "' recordCount='1'/></Node><Node id='2" + word + "' score='" + word +
           "'><SimpleSetPredicate field='c' booleanOperator='isIn'><Array n='1' type='string'>&quot;" + other +
           "&quot;</Array></SimpleSetPredicate></Node></Node></TreeModel></PMML>";
}

TEST_F(SubtreeRoads, AgreeForTheLettersOfOneByte) {
    struct Letters {
        const char* encoding;
        const char* word;
        const char* other;
        const char* wide;
        const char* otherWide;
    };
    static constexpr Letters kLetters[] = {
        {"ISO-8859-1", "\xE9t\xE9", "\xFC", "\u00E9t\u00E9", "\u00FC"},
        {"ISO-8859-15", "\xA4", "z\xBD", "\u20AC", "z\u0153"},
        {"windows-1252", "\x80", "\x9C", "\u20AC", "\u0153"},
    };
    for (const Letters& letters : kLetters) {
        const std::string narrow = Words(letters.encoding, letters.word, letters.other);
        const std::string wide = Words("UTF-8", letters.wide, letters.otherWide);
        const std::string expected = OutcomeOf(wide, kByRecords, 100, wide);
        EXPECT_NE(expected.find(letters.wide), std::string::npos) << expected;
        EXPECT_NE(expected.find(letters.otherWide), std::string::npos) << expected;
        EXPECT_EQ(OutcomeOf(narrow, kByRecords, 100, wide), expected) << letters.encoding;
        EXPECT_EQ(OutcomeOf(narrow, ByNodes(), 100, wide), expected) << letters.encoding;
    }
    // What is no UTF-8 is refused by either road.
    ExpectTheSame(Words("UTF-8", "\xE9t\xE9", "\xFC"), 100);
}

TEST_F(SubtreeRoads, AgreeForAForestOfManyTrees) {
    ForestOptions options;
    options.isClassification = true;
    options.hasShares = true;
    options.method = "average";
    options.trees = 200;
    options.depth = 8;
    const std::string document = RandomForest(options, 15).Document();
    EXPECT_GT(document.size(), 3000000U);
    ExpectTheSame(document, 1000);
}

TEST_F(SubtreeRoads, AgreeForTheSeedsOfTheFuzzer) {
    EXPECT_GT(CheckFolder(TestsFolder() + "/../fuzz/seeds/model", 30), 300U);
}

TEST_F(SubtreeRoads, AgreeForTheSamples) {
    EXPECT_GT(CheckFolder(ModelSamplesFolder(), 100), 5U);
    EXPECT_GT(CheckFolder(OwnDocumentsFolder(), 100), 1U);
}

TEST_F(SubtreeRoads, AgreeForTheDocumentsOfProducers) {
    EXPECT_GT(CheckFolder(TestsFolder() + "/corpus", 100), 20U);
}

TEST_F(SubtreeRoads, AgreeForRealDocuments) {
    if (!std::filesystem::exists(CasesFolder() + "/models")) {
        GTEST_SKIP() << "the real documents stand outside the tree";
    }
    EXPECT_GT(CheckFolder(CasesFolder() + "/models", 100), 10U);
}

} // namespace
