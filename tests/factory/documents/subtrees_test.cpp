#include "factory/entries/factory_support.h"

#include <MCVeltrane_900/Messages.h>
#include <MCVeltrane_900/VTException.h>

#include <gtest/gtest.h>

using namespace veltrane::tests;
using MCVeltrane_900::ModelFactory;

namespace {

const std::string kBranch = "<SubtreeModel><Branch k='v'><e z='1' a='&lt;'>x&amp;y</e> <b/></Branch></SubtreeModel>";
const std::string kRecord = "<Branch:<e z=1 a=<:'x&y'>' '<b:>>";

/// Elements and attributes alone.
std::string TreeOf(const std::string& document) {
    return Build(document, {"SubtreeModel"}).at("tree");
}

std::string RecordsOf(const std::string& document, const Names& names = {"SubtreeModel"}) {
    return Build(document, names).at("records");
}

class Subtrees : public testing::Test {
protected:
    Subtrees() { ModelFactory::Initialize(""); }
};

TEST_F(Subtrees, AreRecordsBesideTheirFirstElement) {
    EXPECT_EQ(RecordsOf(Pmml(kBranch)), kRecord);
    const std::string tree = TreeOf(Pmml(kBranch));
    EXPECT_NE(tree.find("'Branch'"), std::string::npos);
    EXPECT_NE(tree.find("'k'"), std::string::npos);
    EXPECT_EQ(tree.find("(1 'e'"), std::string::npos);
}

TEST_F(Subtrees, OfSeveralModelsAreThoseOfTheirOutermostOne) {
    const std::string inner =
        "<Inner><Grove><twig>t</twig><twig/></Grove><SubtreeModel><Branch> </Branch></SubtreeModel></Inner>";
    EXPECT_EQ(RecordsOf(Pmml("<SubtreeModel>" + inner + "</SubtreeModel>")), "<twig:'t'><Branch:' '>");
    EXPECT_EQ(RecordsOf(Pmml("<SubtreeModel/><OtherModel>" + inner + "</OtherModel>")), "");
}

TEST_F(Subtrees, StandBelowTheNamedParentAlone) {
    EXPECT_EQ(RecordsOf(Pmml("<SubtreeModel><x><Branch><e/></Branch></x></SubtreeModel>")), "");
    EXPECT_EQ(RecordsOf(Pmml("<SubtreeModel/><Branch><e/></Branch>")), "");
}

TEST_F(Subtrees, WithoutContentAreElementsOfTheTree) {
    EXPECT_EQ(RecordsOf(Pmml("<SubtreeModel><Branch/><Branch></Branch></SubtreeModel>")), "");
}

struct ContentRow {
    const char* name;
    const char* content;
};

void PrintTo(const ContentRow& row, std::ostream* out) {
    *out << row.name;
}

class NoRecord : public Subtrees, public testing::WithParamInterface<ContentRow> {};

/// What no record can hold makes the subtree one of the tree, and that one alone.
TEST_P(NoRecord, HoldsIt) {
    const std::string content = GetParam().content;
    const std::string declarations = "<!DOCTYPE PMML [<!ENTITY m 'a<b/>'><!ATTLIST fixed f CDATA 'd' i ID #IMPLIED>]>";
    const std::string document = declarations + "<PMML><SubtreeModel><Branch><e/>" + content +
                                 "<e/></Branch><Branch>t</Branch></SubtreeModel></PMML>";
    EXPECT_EQ(RecordsOf(document), "<Branch:'t'>");
    EXPECT_NE(TreeOf(document).find("(1 'e'"), std::string::npos);
}

const ContentRow kContents[] = {
    {"Comment", "<!--c-->"},          {"Instruction", "<?p i?>"},
    {"Section", "<![CDATA[x]]>"},     {"Entity", "&m;"},
    {"OtherElement", "<other/>"},     {"DeclaredDefault", "<fixed/>"},
    {"Identifier", "<fixed i='x'/>"}, {"OtherDeeper", "<e><other/></e>"},
};

INSTANTIATE_TEST_SUITE_P(Rows, NoRecord, testing::ValuesIn(kContents),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(Subtrees, OfAnotherPluginAreNodesAgain) {
    const std::string document = Pmml("<DumpModel/>" + kBranch);
    EXPECT_EQ(Build(document, {"DumpModel", "SubtreeModel"}).at("tree"), Build(document, {"DumpModel"}).at("tree"));
}

TEST_F(Subtrees, AreNodesAgainWhereTheListAsksForAnElementInThem) {
    const std::string document = Pmml("<SubtreeModel><Branch><Listed/></Branch></SubtreeModel>");
    EXPECT_EQ(RecordsOf(document), "<Branch:<Listed:>>");
    EXPECT_EQ(RecordsOf(document, {"SubtreeModel", "Listed"}), "");
    EXPECT_EQ(RecordsOf(document, {"SubtreeModel", "*"}), "");
    try {
        static_cast<void>(Build(document, {"Listed", "SubtreeModel"}));
        ADD_FAILURE() << "read";
    } catch (const MCVeltrane_900::VTException& failure) {
        EXPECT_EQ(failure.GetErrorCode(), static_cast<int>(MCVeltrane_900::Message::NO_MODEL_LIBRARY));
    }
}

TEST_F(Subtrees, AreNodesAgainForAPluginThatAnElementIsHandedTo) {
    const std::string document = "<PMML hand-over='1'>" + kBranch + "</PMML>";
    const Record handed = Build(document, {"SubtreeModel"});
    EXPECT_EQ(handed.at("records"), "");
    EXPECT_NE(handed.at("tree").find("(1 'e'"), std::string::npos);
}

TEST_F(Subtrees, StandInPmmlDocumentsAlone) {
    EXPECT_EQ(Build("<kord-ml>" + kBranch + "</kord-ml>", {"SubtreeModel"}).at("records"), "");
}

/// Texts that come once, that come again at once, late or seldom, and that begin alike.
TEST_F(Subtrees, KeepEachTextWhicheverWereThereBefore) {
    std::string content;
    std::string expected;
    for (int i = 0; i < 20000; ++i) {
        const std::string own = std::to_string(i);
        const std::string some = std::to_string(i % 1000) + ".5";
        const std::string late = i < 10000 ? own : "w" + std::to_string(i % 3);
        const std::string text = i % 7 == 0 ? "t" + std::string(static_cast<std::size_t>(i % 40), 'x') : " ";
        content += "<e a='" + own + "' b='" + some + "' c='" + late + "' d=''/>" + text;
        expected += "<e a=" + own + " b=" + some + " c=" + late + " d=:>'" + text + "'";
    }
    EXPECT_EQ(RecordsOf(Pmml("<SubtreeModel><Branch>" + content + "</Branch></SubtreeModel>")),
              "<Branch:" + expected + ">");
}

/// Indentations of every depth, and texts that are alike at both ends.
TEST_F(Subtrees, KeepBlanksAndTextsThatDifferInTheMiddle) {
    std::string content;
    std::string expected;
    for (int i = 0; i < 3000; ++i) {
        const std::string blanks(static_cast<std::size_t>(i * 7 % 100 + 1), ' ');
        const std::string text = blanks + (i % 5 == 0 ? "b" : "");
        const std::string alike = "12345678" + std::to_string(i * 3 % 11) + "12345678";
        content += "<e a='" + alike + "'/>" + text;
        expected += "<e a=" + alike + ":>'" + text + "'";
    }
    EXPECT_EQ(RecordsOf(Pmml("<SubtreeModel><Branch>" + content + "</Branch></SubtreeModel>")),
              "<Branch:" + expected + ">");
}

/// More attributes than have lists of their own.
TEST_F(Subtrees, KeepAnyNumberOfAttributes) {
    std::string content;
    std::string expected;
    for (int element = 0; element < 50; ++element) {
        content += "<e";
        expected += "<e";
        for (int i = 0; i < 40; ++i) {
            const std::string value = std::to_string((element + i) % 9);
            const std::string name = std::string(1, static_cast<char>('a' + i % 26)) + std::to_string(i);
            content += " " + name + "='" + value + "'";
            expected += " " + name + "=" + value;
        }
        content += "/>";
        expected += ":>";
    }
    EXPECT_EQ(RecordsOf(Pmml("<SubtreeModel><Branch>" + content + "</Branch></SubtreeModel>")),
              "<Branch:" + expected + ">");
}

std::string Numbered(int count, const std::string& before, const std::string& after) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += before + std::to_string(i) + after;
    }
    return text;
}

std::string Nested(int levels) {
    std::string text;
    for (int i = 0; i < levels; ++i) {
        text += "<e>";
    }
    for (int i = 0; i < levels; ++i) {
        text += "</e>";
    }
    return text;
}

/// What a document is refused for in the tree, it is refused for in a subtree that is written as records.
TEST(SubtreeBounds, AreThoseOfTheTree) {
    const std::string contents[] = {
        Numbered(30000, "<e a", "=''/>"),            // names of attributes
        "<e " + Numbered(70000, " a", "=''") + "/>", // of one element
        "<b/>" + Nested(1100),                       // depth
        "<e>&amp;" + Nested(2000) + "<!--c--></e>",  // made nodes again behind it
        "<e/>" + std::string("<e k='&unknown;'/>"),  // an entity that isn't declared
        "<e k='1' k='2'/>",                          // the same attribute again
        "<e></b>",                                   // another end
    };
    for (const std::string& content : contents) {
        const std::string document = Pmml("<SubtreeModel><Branch>" + content + "</Branch></SubtreeModel>");
        const auto codeOf = [&](const Names& names) {
            try {
                static_cast<void>(Build(document, names));
                return 0;
            } catch (const MCVeltrane_900::VTException& failure) {
                return failure.GetErrorCode();
            }
        };
        const int expected = codeOf({"SubtreeModel", "*"});
        EXPECT_NE(expected, 0);
        EXPECT_EQ(codeOf({"SubtreeModel"}), expected) << content.substr(0, 60);
        EXPECT_EQ(codeOf({"DumpModel"}), expected) << content.substr(0, 60);
    }
}

/// A document that ends in a subtree, wherever that is.
TEST(SubtreeBounds, HoldForDocumentsThatAreCutOff) {
    const std::string document = Pmml(kBranch);
    for (std::size_t length = document.find("<Branch"); length < document.size() - 1; ++length) {
        try {
            static_cast<void>(Build(document.substr(0, length), {"SubtreeModel"}));
            ADD_FAILURE() << "read " << length;
        } catch (const MCVeltrane_900::VTException& failure) {
            EXPECT_EQ(failure.GetErrorCode(), static_cast<int>(MCVeltrane_900::Message::CANNOT_OPEN_DOCUMENT));
        }
    }
}

} // namespace
