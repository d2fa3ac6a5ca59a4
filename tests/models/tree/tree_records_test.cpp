// Trees that are read from records beside the same ones read from the tree of the document: the same failure, or the
// same model with the same scores.
#include "models/kit/scoring.h"
#include "models/tree/small_tree.h"

#include <MCVeltrane_900/ModelFactory.h>
#include <MCVeltrane_900/VTException.h>

#include <gtest/gtest.h>

#include <sstream>

using namespace veltrane::tests;
using MCVeltrane_900::ModelFactory;
using MCVeltrane_900::ScoreModel;

namespace {

/// A list that asks for elements in the records has them made nodes.
const std::vector<std::string> kByRecords = {"TreeModel"};
const std::vector<std::string> kByNodes = {"TreeModel", "Node", "True", "False", "SimplePredicate", "Array"};

std::string ScoresOf(std::unique_ptr<ScoreModel> model) {
    std::ostringstream out;
    model->Display(out);
    Scored scored(std::move(model));
    for (const Case& row : {Case{}, Case{{"x", "0"}}, Case{{"x", "2.5"}, {"c", "u"}}, Case{{"x", "-1e300"}, {"c", "v"}},
                            Case{{"x", "1"}, {"c", "w"}, {"o", "low"}}, Case{{"c", "v"}, {"o", "high"}}}) {
        out << scored.Score(row).GetErrorCode() << ' ' << scored.Text() << ' ' << scored.Number("p") << ' '
            << scored.Number("conf") << ' ' << scored.Text("node") << '\n';
    }
    return out.str();
}

const std::string kRefused = "refused: ";

std::string Outcome(const std::string& document, const std::vector<std::string>& names) {
    std::istringstream in(document);
    try {
        return ScoresOf(std::unique_ptr<ScoreModel>(ModelFactory::MakeModelFromXML(in, names, "UTF-8")));
    } catch (const MCVeltrane_900::VTException& failure) {
        return kRefused + failure.GetErrorMessage();
    }
}

bool AreSame(const std::string& document) {
    const std::string expected = Outcome(document, kByNodes);
    EXPECT_EQ(Outcome(document, kByRecords), expected) << document;
    return expected == Outcome(document, kByRecords);
}

class TreeRecords : public testing::Test {
protected:
    TreeRecords() { ModelFactory::Initialize(""); }
};

TEST_F(TreeRecords, ScoreAsNodesDo) {
    EXPECT_TRUE(AreSame(kSmallTree));
    EXPECT_NE(Outcome(kSmallTree, kByRecords).find("0.4"), std::string::npos);
}

/// Each tag and each quoted text taken out, doubled, emptied or put in another place.
TEST_F(TreeRecords, FailAsNodesDo) {
    const std::string content = kSmallTree;
    const char* const pieces[] = {"<Extension name='a'><b/></Extension>",
                                  "<Extension name='a' value='c'/>",
                                  "<True/>",
                                  "<Node/>",
                                  "<Node><False/></Node>",
                                  "text",
                                  "<!--c-->",
                                  "<![CDATA[w]]>",
                                  "<ScoreDistribution value='a' recordCount='1'/>",
                                  "<Array n='1' type='string'>u</Array>",
                                  "<Partition name='p'/>",
                                  "<SimplePredicate field='x' operator='equal' value='1'/>",
                                  "<SimplePredicate value='' operator='' field=''/>",
                                  "<DecisionTree/>"};
    const std::size_t start = content.find("<Node");
    int refused = 0;
    for (std::size_t at = content.find('<', start); at < content.find("</TreeModel>"); at = content.find('<', at + 1)) {
        for (const char* piece : pieces) {
            std::string document = content;
            document.insert(at, piece);
            ASSERT_TRUE(AreSame(document));
            refused += Outcome(document, kByRecords).starts_with(kRefused) ? 1 : 0;
        }
        const std::size_t end = content.find('>', at) + 1;
        std::string document = content;
        ASSERT_TRUE(AreSame(document.erase(at, end - at)));
    }
    for (std::size_t at = content.find('\'', start); at < content.find("</TreeModel>");) {
        const std::size_t end = content.find('\'', at + 1);
        for (const char* value : {"", "x", "-1", "2", "u", "&amp;", "1e999"}) {
            std::string document = content;
            document.replace(at + 1, end - at - 1, value);
            ASSERT_TRUE(AreSame(document));
            refused += Outcome(document, kByRecords).starts_with(kRefused) ? 1 : 0;
        }
        at = content.find('\'', end + 1);
    }
    EXPECT_GT(refused, 100);
}

/// Of two attributes that are wrong, the message names the same one.
TEST_F(TreeRecords, OfSeveralWrongAttributesTheSameOneIsTold) {
    for (const char* attributes :
         {"recordCount='x' value='a' probability='2'", "value='a' confidence='9' recordCount='x'",
          "probability='' confidence='' recordCount=''", "confidence='0.5'"}) {
        std::string document = kSmallTree;
        const std::string share = "value='a' recordCount='4' probability='0.4' confidence='0.3'";
        document.replace(document.find(share), share.size(), attributes);
        EXPECT_TRUE(AreSame(document));
        EXPECT_NE(Outcome(document, kByRecords), Outcome(kSmallTree, kByRecords));
    }
}

TEST_F(TreeRecords, PassOverExtensionsAndJoinTheTextAroundThem) {
    const std::string list = "<Array n='2' type='string'>u v</Array>";
    std::string document = kSmallTree;
    document.replace(document.find(list), list.size(),
                     "<Array n='2' type='string'>u<Extension name='n'/> <Extension name='n' value='w'/>v</Array>");
    EXPECT_EQ(Outcome(document, kByRecords), Outcome(kSmallTree, kByRecords));
    EXPECT_TRUE(AreSame(document));
}

/// A tree in which the same few names, words, categories and numbers come again and again.
std::string RepeatingTree() {
    const char* const predicates[] = {
        "<SimplePredicate field='x' operator='lessThan' value='2.5'/>",
        "<SimplePredicate field='x' operator='greaterOrEqual' value='-1'/>",
        "<SimplePredicate field='c' operator='equal' value='u'/>",
        "<SimplePredicate operator='greaterThan' value='low' field='o'/>",
        "<SimplePredicate field='o' operator='isMissing'/>",
        "<SimpleSetPredicate field='c' booleanOperator='isNotIn'><Array n='2' type='string'>u w</Array>"
        "</SimpleSetPredicate>",
        "<CompoundPredicate booleanOperator='and'><SimplePredicate field='x' operator='notEqual' value='1'/>"
        "<SimplePredicate field='c' operator='notEqual' value='v'/></CompoundPredicate>"};
    std::string nodes;
    for (int i = 0; i < 140; ++i) {
        nodes += "<Node id='" + std::to_string(i) + "' score='" + (i % 3 == 0 ? "a" : "b") + "' recordCount='3'>" +
                 predicates[i % 7] + "<ScoreDistribution value='a' recordCount='1'/>" +
                 "<ScoreDistribution value='b' recordCount='2'/></Node>";
    }
    std::string document = kSmallTree;
    return document.insert(document.find(" </Node>\n</TreeModel>"), nodes);
}

TEST_F(TreeRecords, OfTheSameWordsAgainAndAgainScoreAsNodesDo) {
    const std::string document = RepeatingTree();
    EXPECT_TRUE(AreSame(document));
    EXPECT_FALSE(Outcome(document, kByRecords).starts_with(kRefused));
}

/// What was right many times before is refused where it is wrong.
TEST_F(TreeRecords, OfTheSameWordsFailWhereOneIsWrongOrInTheWrongPlace) {
    const std::string document = RepeatingTree();
    const std::size_t last = document.rfind("<Node");
    const std::size_t end = document.find("</TreeModel>");
    int refused = 0;
    for (std::size_t at = document.rfind('\'', end); at > last;) {
        const std::size_t start = document.rfind('\'', at - 1);
        for (const char* word : {"x", "c", "t", "z", "lessThan", "isIn", "and", "a", "u", "3", "2.5", "", "false"}) {
            std::string changed = document;
            ASSERT_TRUE(AreSame(changed.replace(start + 1, at - start - 1, word)));
            refused += Outcome(changed, kByRecords).starts_with(kRefused) ? 1 : 0;
        }
        at = document.rfind('\'', start - 1);
    }
    EXPECT_GT(refused, 50);
}

TEST_F(TreeRecords, OfDeepAndBroadTreesScoreAsNodesDo) {
    std::string deep;
    for (int i = 0; i < 300; ++i) {
        deep += "<Node id='" + std::to_string(i) + "' score='a' recordCount='1'><True/>";
    }
    for (int i = 0; i < 300; ++i) {
        deep += "</Node>";
    }
    std::string broad;
    for (int i = 0; i < 3000; ++i) {
        broad += "<Node score='" + std::string(i % 2 == 0 ? "a" : "b") + "' recordCount='" + std::to_string(i) +
                 "'><SimplePredicate field='x' operator='lessThan' value='" + std::to_string(i) + "'/></Node>\n";
    }
    for (const std::string& nodes : {deep, broad}) {
        std::string document = kSmallTree;
        document.insert(document.find(" </Node>\n</TreeModel>"), nodes);
        EXPECT_TRUE(AreSame(document));
    }
}

} // namespace
