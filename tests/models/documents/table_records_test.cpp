// Tables that are read from records, beside the same ones in the tree of the document.
#include "kit/document/parsed_document.h"
#include "models/kit/scoring.h"
#include "models/neighbours/small_neighbours.h"

#include <gtest/gtest.h>

#include <random>
#include <sstream>

using namespace veltrane::tests;
using veltrane_kit::Element;
using veltrane_kit::ParsedDocument;

namespace {

/// The elements in an element with what they hold.
/// @param depth of those whose text is told
void Tell(const Element& element, int depth, std::ostringstream& out) {
    for (const Element child : element.Children()) {
        out << '<' << child.Tag() << '>';
        if (depth <= 0) {
            out << '{' << child.Content() << '}';
        }
        Tell(child, depth - 1, out);
        out << "</>";
    }
}

struct Reading {
    std::string told;
    bool hasRecords;
};

Reading ReadTables(const std::string& text, bool asRecords) {
    std::istringstream in(text);
    const ParsedDocument document(in, "UTF-8", asRecords ? u"TrainingInstances" : nullptr, u"InlineTable");
    std::ostringstream out;
    bool hasRecords = false;
    for (const Element part : document.Root().Children()) {
        out << part.Tag() << ' ' << part.Has(u"isTransformed");
        for (const Element table : part.Children()) {
            out << " [" << table.Tag();
            hasRecords = hasRecords || table.FirstChild().Record() != nullptr;
            Tell(table, 1, out);
            out << ']';
        }
        out << '\n';
    }
    return {out.str(), hasRecords};
}

void ExpectSame(const std::string& text) {
    const Reading nodes = ReadTables(text, false);
    const Reading records = ReadTables(text, true);
    EXPECT_FALSE(nodes.hasRecords);
    EXPECT_EQ(records.told, nodes.told) << text.substr(0, 500);
}

std::string InTable(const std::string& rows) {
    return "<TrainingInstances isTransformed='true'><InstanceFields><InstanceField field='x'/></InstanceFields>"
           "<InlineTable>" +
           rows + "</InlineTable></TrainingInstances>";
}

TEST(TableRecords, HoldWhatTheTreeHolds) {
    const char* const tables[] = {
        "<row><x>1</x><y>two</y></row><row><x>3</x></row>",
        "\n <row>\n  <x> 1\n</x>\t<y/>\n </row>\n<row></row><row/>",
        "<!-- a --><row><?p q?><x>1<!-- b -->2</x><y><?p?></y><!-- c --></row>",
        "<row><x><![CDATA[<1>]]></x><y>a<![CDATA[&]]>b</y><z><![CDATA[]]></z></row>",
        "<row a='1'><x b='2' c='3'>1</x></row>",
        "<row><p:x>1</p:x><q-r.s>2</q-r.s></row>",
        "<row><x>1<b>2<c>3</c>4</b>5</x><y><InlineTable><row><x>6</x></row></InlineTable></y></row>",
        "<row><x>&amp;&lt;&#233;&#x1F600;</x><y>\xC3\xA9\xF0\x9F\x98\x80</y></row>",
        "text<row>text<x>1</x>text</row>text",
        "<other><x>1</x></other>",
        "",
    };
    for (const char* table : tables) {
        ExpectSame("<PMML>" + InTable(table) + "</PMML>");
        ExpectSame("<?xml version='1.1'?><PMML>" + InTable(table) + InTable(table) + "</PMML>");
    }
    EXPECT_TRUE(ReadTables("<PMML>" + InTable(tables[0]) + "</PMML>", true).hasRecords);
}

TEST(TableRecords, HoldWhatEntitiesStandFor) {
    const std::string declared = "<!DOCTYPE PMML [<!ENTITY e 'te&#120;t'><!ENTITY cell '<x>1</x>'><!ENTITY rows "
                                 "'<row><x>&e;</x>&cell;</row><row>&cell;</row>'><!ENTITY all '" +
                                 std::string("<TrainingInstances><InlineTable><row>&#38;cell;</row></InlineTable>"
                                             "</TrainingInstances>") +
                                 "'><!ATTLIST x k CDATA 'v'><!ATTLIST TrainingInstances isTransformed CDATA 'true'>]>";
    for (const char* table : {"<row><x>&e;</x><y>a&e;b&e;</y></row>", "<row>&cell;</row>", "&rows;<row><x>2</x></row>",
                              "<row><x><b>&e;</b>&cell;</x></row>"}) {
        ExpectSame(declared + "<PMML>" + InTable(table) + "</PMML>");
    }
    ExpectSame(declared + "<PMML>&all;" + InTable("<row><x>3</x></row>") + "&all;</PMML>");
}

/// What a document type says of an element's content makes blanks in it ones that don't count.
TEST(TableRecords, HoldBlanksThatDontCount) {
    ExpectSame("<!DOCTYPE PMML [<!ELEMENT row (x*)><!ELEMENT x (b*)><!ELEMENT b (#PCDATA)>]><PMML>" +
               InTable("<row> <x> <b>1</b> </x> </row>") + "</PMML>");
}

TEST(TableRecords, AreOfTheTablesOfInstancesAlone) {
    const std::string other = "<PMML><MapValues><InlineTable><row><x>1</x></row></InlineTable></MapValues></PMML>";
    ExpectSame(other);
    EXPECT_FALSE(ReadTables(other, true).hasRecords);
}

/// A table with more names than records have numbers for is read into the tree.
TEST(TableRecords, HaveRoomForSoManyNames) {
    std::string row = "<row>";
    for (int i = 0; i < 66000; ++i) {
        const std::string name = "c" + std::to_string(i);
        row += "<" + name + ">" + std::to_string(i) + "</" + name + ">";
    }
    const std::string text = "<PMML>" + InTable(row + "</row>") + "</PMML>";
    const Reading reading = ReadTables(text, true);
    EXPECT_FALSE(reading.hasRecords);
    EXPECT_NE(reading.told.find("<c65999>{65999}</>"), std::string::npos);
}

TEST(TableRecords, HoldRandomTables) {
    std::mt19937_64 random(17);
    const char* const pieces[] = {"<x>",   "<y>",  "<row>",    "text",          " \n", "<!-- -->", "<![CDATA[<a>]]>",
                                  "&#10;", "<z/>", "\xC3\xA9", "<InlineTable>", "</>", "</>",      "</>"};
    for (int i = 0; i < 300; ++i) {
        std::string table;
        std::vector<std::string> open;
        for (std::size_t count = random() % 60; count > 0; --count) {
            const std::string piece = pieces[random() % std::size(pieces)];
            if (piece == "</>") {
                if (!open.empty()) {
                    table += "</" + open.back() + ">";
                    open.pop_back();
                }
                continue;
            }
            table += piece;
            if (piece[0] == '<' && piece[1] != '!' && piece[piece.size() - 2] != '/') {
                open.push_back(piece.substr(1, piece.size() - 2));
            }
        }
        for (; !open.empty(); open.pop_back()) {
            table += "</" + open.back() + ">";
        }
        ExpectSame("<PMML>" + InTable("<row>" + table + "</row>") + "</PMML>");
    }
}

TEST(TableRecords, PassOverExtensions) {
    Scored scored(Replaced(Replaced(kSmallNeighbours, "<c4>8</c4>", "<c4>8<Extension>9</Extension></c4><Extension/>"),
                           "<InlineTable>", "<InlineTable><Extension><row/></Extension>"));
    ASSERT_TRUE(scored.Score({{"x", "8"}, {"k", "v"}}).IsOK());
    EXPECT_EQ(scored.Number("far"), 0.0);
}

} // namespace
