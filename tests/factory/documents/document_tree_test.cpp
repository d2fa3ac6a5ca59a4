#include "factory/documents/hostile_documents.h"
#include "factory/entries/factory_support.h"
#include "support/dom.h"
#include "support/dom_dump.h"
#include "support/rows.h"

#include <MCVeltrane_900/Messages.h>
#include <MCVeltrane_900/VTException.h>

#include <gtest/gtest.h>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/ErrorHandler.hpp>
#include <xercesc/sax/SAXParseException.hpp>

#include <array>
#include <cctype>
#include <random>

using namespace veltrane::tests;
using MCVeltrane_900::ModelFactory;
using enum MCVeltrane_900::Message;

namespace {

const std::string kNoTree = "none";

/// Ends a parse at a fatal error.
class Strict : public xercesc::ErrorHandler {
public:
    void warning(const xercesc::SAXParseException&) override {}
    void error(const xercesc::SAXParseException&) override {}
    void fatalError(const xercesc::SAXParseException& failure) override { throw xercesc::SAXParseException(failure); }
    void resetErrors() override {}
};

/// The tree that the XML parser makes by itself.
std::string PlainTree(const std::string& document) {
    xercesc::XercesDOMParser parser;
    parser.setLoadExternalDTD(false);
    parser.setValidationScheme(xercesc::XercesDOMParser::Val_Never);
    Strict handler;
    parser.setErrorHandler(&handler);
    try {
        parser.parse(
            xercesc::MemBufInputSource(reinterpret_cast<const XMLByte*>(document.data()), document.size(), "document"));
    } catch (const xercesc::SAXParseException&) {
        return kNoTree;
    }
    return DomDump::Of(parser.getDocument());
}

/// The tree that a plug-in is given.
/// @param names with SubtreeModel behind its own, what is in the branches of that model was records before
std::string TreeForAPlugin(const std::string& document, const Names& names = {"DumpModel"}) {
    try {
        return Build(document, names).at("tree");
    } catch (const MCVeltrane_900::VTException& failure) {
        EXPECT_EQ(failure.GetErrorCode(), static_cast<int>(CANNOT_OPEN_DOCUMENT)) << document;
        return kNoTree;
    }
}

/// A document with this content where the plug-in of another model reads records.
std::string InABranch(const std::string& content) {
    return "<PMML><DumpModel/><SubtreeModel><Branch x='1'>" + content + "</Branch> <Branch>" + content +
           "</Branch></SubtreeModel></PMML>";
}

const Names kBesideRecords = {"DumpModel", "SubtreeModel"};

const std::string kDeclarations =
    "<!DOCTYPE PMML [<!ENTITY t 'text'><!ENTITY q '&#34;'><!ENTITY n '&t;&t;'><!ENTITY m 'a<b/>c&t;'><!ENTITY v ''>"
    "<!ENTITY c '<![CDATA[in]]>'><!ENTITY k '<!--in-->'><!ELEMENT list (b)*><!ATTLIST b d CDATA 'x&q;y'>"
    "<!ATTLIST fixed a CDATA #FIXED '1' c CDATA #IMPLIED><!ATTLIST named i ID #IMPLIED c NMTOKENS #IMPLIED>]>";

class DocumentTree : public testing::Test {
protected:
    DocumentTree() { ModelFactory::Initialize(""); }
};

struct TextRow {
    const char* name;
    const char* content;
};

void PrintTo(const TextRow& row, std::ostream* out) {
    *out << row.name;
}

class TreeOfText : public DocumentTree, public testing::WithParamInterface<TextRow> {};

TEST_P(TreeOfText, IsThePlainOne) {
    const std::string document = kDeclarations + "<PMML><DumpModel/>" + GetParam().content + "</PMML>";
    const std::string expected = PlainTree(document);
    ASSERT_NE(expected, kNoTree);
    EXPECT_EQ(TreeForAPlugin(document), expected);
}

TEST_P(TreeOfText, IsThePlainOneWhereRecordsWere) {
    const std::string document = kDeclarations + InABranch(GetParam().content);
    const std::string expected = PlainTree(document);
    ASSERT_NE(expected, kNoTree);
    EXPECT_EQ(TreeForAPlugin(document, kBesideRecords), expected);
}

const TextRow kTexts[] = {
    {"Empty", ""},
    {"Plain", "a"},
    {"Quoted", "&quot;a b&quot; &quot;c&quot;"},
    {"ReferenceAlone", "&amp;"},
    {"Characters", "&#65;&#x42;c&#x1F600;"},
    {"BetweenElements", "a&lt;b<b/>c&gt;d<b>e&amp;f</b>g"},
    {"BeforeAComment", "a&lt;b<!--x-->c&gt;d"},
    {"BeforeAnInstruction", "a&lt;b<?x y?>c&gt;d"},
    {"BeforeASection", "a&lt;b<![CDATA[x]]>c&gt;d"},
    {"SectionsInARow", "<![CDATA[x]]><![CDATA[y]]><![CDATA[]]>"},
    {"Entity", "a&t;b"},
    {"EntitiesInARow", "&t;&t;&q;&amp;&t;"},
    {"NestedEntity", "a&n;b"},
    {"EntityOfElements", "a&m;b&m;"},
    {"EntityOfNothing", "a&v;b"},
    {"EntityOfASection", "a&c;b"},
    {"EntityOfAComment", "a&k;b"},
    {"IgnorableWhitespace", "<list> <b/>\n<b/> &#32; </list>"},
    {"LineEnds", "a\r\nb\rc&#13;&#10;d"},
    {"OnlyWhitespace", " \n\t &#32; "},
    {"Brackets", "a]]&gt;b] ]"},
    {"Attributes", "<e z='1' a='' m='&lt;&t;&#65;' xmlns:q='u' q:x='y'/>"},
    {"AttributesWithLineEnds", "<e a='1\r\n2\t3'/><named c=' a  b '/>"},
    {"DefaultAttributes", "<b/><b d='1'/><b e='2'/><fixed/><fixed c='2'/><fixed a='1' c='2'/>"},
    {"Identifiers", "<named i='x'/><named c='y'/><other i='z'/>"},
    {"ElementsInAnEntity", "&m;<e a='1'>&m;</e>"},
    {"NestedElements", "<e><e>a<e/>b</e><e b='1'><e/></e></e>"},
    {"Prefixes", "<q:e xmlns:q='u'><q:f q:a='1'/></q:e>"},
};

INSTANTIATE_TEST_SUITE_P(Rows, TreeOfText, testing::ValuesIn(kTexts), NameOfRow());

TEST_F(DocumentTree, OfLongTextsIsThePlainOne) {
    // Longer than the buffers of the scanner, of a text node and of the parser's blocks.
    for (const std::size_t count : {200u, 1000u, 5000u, 20000u}) {
        const std::string document = "<PMML><DumpModel>" + Repeat("&quot;a \xC3\xA4&quot; ", count) + "</DumpModel>" +
                                     Repeat("abcdefg\n", count) + "<b/>" + Repeat("&#65;", count) + "</PMML>";
        EXPECT_TRUE(TreeForAPlugin(document) == PlainTree(document)) << count;
        const std::string branches = InABranch(Repeat("<e a='" + Repeat("x", count) + "'>&lt;y</e>\n", count / 40));
        EXPECT_TRUE(TreeForAPlugin(branches, kBesideRecords) == PlainTree(branches)) << count;
    }
}

TEST_F(DocumentTree, HasOneNodeForATextOfManyReferences) {
    const std::string tree = "(9 '#document'=null(1 'PMML'=null(1 'DumpModel'=null(3 '#text'='\"a\"\\32;b'))))";
    EXPECT_EQ(TreeForAPlugin("<PMML><DumpModel>&quot;a&quot; &#98;</DumpModel></PMML>"), tree + tree);
}

TEST_F(DocumentTree, OfRandomContentIsThePlainOne) {
    const auto pieces = std::to_array<std::string>({"a",
                                                    "some text ",
                                                    " ",
                                                    "\n  ",
                                                    "&amp;",
                                                    "&quot;",
                                                    "&#65;",
                                                    "&#x10FFFF;",
                                                    "&t;",
                                                    "&q;",
                                                    "&n;",
                                                    "&m;",
                                                    "&v;",
                                                    "&c;",
                                                    "&k;",
                                                    "<b/>",
                                                    "<b d='1&lt;&t;'>",
                                                    "</b>",
                                                    "<list>",
                                                    "</list>",
                                                    "<![CDATA[&t;<]]>",
                                                    "<!--x-->",
                                                    "<?x y?>",
                                                    "\r\n",
                                                    "]]",
                                                    Repeat("long ", 1000),
                                                    Repeat("&lt;", 500),
                                                    "\xE2\x82\xAC",
                                                    "\xF0\x9F\x98\x80"});
    std::mt19937 random(20);
    int wellFormed = 0;
    for (int round = 0; round < 800; ++round) {
        std::string content;
        std::vector<std::string> open;
        for (std::size_t left = random() % 30; left > 0; --left) {
            std::string piece = pieces[random() % pieces.size()];
            if (piece.starts_with("</")) {
                // Mostly the end tag that stands there.
                if (open.empty() && random() % 50 != 0) {
                    continue;
                }
                if (!open.empty()) {
                    piece = open.back();
                    open.pop_back();
                }
            } else if (piece.starts_with('<') && piece.ends_with('>') && !piece.ends_with("/>") &&
                       std::isalpha(piece[1]) != 0) {
                open.push_back("</" + piece.substr(1, piece.find_first_of(" >") - 1) + ">");
            }
            content += piece;
        }
        for (; !open.empty(); open.pop_back()) {
            content += open.back();
        }
        const std::string document = kDeclarations + "<PMML><DumpModel/>" + content + "</PMML>";
        const std::string expected = PlainTree(document);
        wellFormed += expected != kNoTree ? 1 : 0;
        ASSERT_EQ(TreeForAPlugin(document), expected) << document;
        const std::string branches = kDeclarations + InABranch(content);
        ASSERT_EQ(TreeForAPlugin(branches, kBesideRecords), PlainTree(branches)) << branches;
    }
    EXPECT_GT(wellFormed, 500);
}

TEST_F(DocumentTree, OfHostileDocumentsIsThePlainOne) {
    constexpr std::size_t kLongest = 2000000; // the plain parser takes its time for longer ones
    for (const HostileDocument& hostile : HostileDocuments()) {
        if (hostile.refused) {
            continue;
        }
        std::string document = hostile.make();
        const std::size_t end = document.rfind("</PMML>");
        if (end == std::string::npos || document.size() > kLongest) {
            continue;
        }
        document.insert(end, "<DumpModel/>");
        EXPECT_TRUE(TreeForAPlugin(document) == PlainTree(document)) << hostile.name;
    }
}

} // namespace
