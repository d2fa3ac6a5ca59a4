// Extensions, comments and processing instructions, and the texts that they part.
#include "kit/document/meaningless.h"
#include "models/kit/scoring.h"
#include "models/kit/small_documents.h"
#include "support/dom.h"
#include "support/rows.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace veltrane::tests;
using veltrane_kit::DropMeaningless;
using veltrane_kit::Element;
using xercesc::DOMNode;

namespace {

/// Each node on its own: an element as (tag children), a text in quotes.
std::string Nodes(const DOMNode* node) {
    if (node->getNodeType() != DOMNode::ELEMENT_NODE) {
        return "'" + veltrane_kit::Narrow(node->getNodeValue()) + "'" +
               (node->getNodeType() == DOMNode::TEXT_NODE ? "" : "!");
    }
    std::string nodes = "(" + veltrane_kit::Narrow(node->getNodeName());
    for (const DOMNode* child = node->getFirstChild(); child != nullptr; child = child->getNextSibling()) {
        nodes += " " + Nodes(child);
    }
    return nodes + ")";
}

struct Sweep {
    const char* name;
    const char* document;
    const char* nodes;
};

class Meaningless : public testing::TestWithParam<Sweep> {};

TEST_P(Meaningless, LeavesWhatCounts) {
    const ParsedXml xml = ParseXml(GetParam().document);
    const veltrane_kit::DocumentText text("");
    DropMeaningless(Element(xml.Root(), text));
    EXPECT_EQ(Nodes(xml.Root()), GetParam().nodes);
}

constexpr Sweep kSweeps[] = {
    {"Nothing", "<a/>", "(a)"},
    {"AllCounts", "<a>1<b>2</b>3<b/></a>", "(a '1' (b '2') '3' (b))"},
    {"Comment", "<a>1<!-- x -->2</a>", "(a '12')"},
    {"Comments", "<a><!-- x -->1<!-- y --><!-- z -->2<!-- x -->3<!----></a>", "(a '123')"},
    {"Instruction", "<a>1<?note x?>2</a>", "(a '12')"},
    {"Section", "<a><![CDATA[<&>]]></a>", "(a '<&>')"},
    {"Sections", "<a>1<![CDATA[<]]><![CDATA[&]]>2</a>", "(a '1<&2')"},
    {"Extension", "<a><Extension name='n'>5</Extension></a>", "(a)"},
    {"ExtensionInText", "<a>1<Extension>5<b/></Extension>2</a>", "(a '12')"},
    {"ExtensionFirstAndLast", "<a><Extension/><b/><Extension/></a>", "(a (b))"},
    {"ExtensionDeep", "<a><b><c><Extension/></c></b><d><Extension/><c/></d></a>", "(a (b (c)) (d (c)))"},
    {"ExtensionInExtension", "<a><Extension><Extension/><b/></Extension></a>", "(a)"},
    {"TextsOfElementsApart", "<a>1<!-- x --><b/><!-- x -->2</a>", "(a '1' (b) '2')"},
    {"RootStays", "<Extension><b/></Extension>", "(Extension (b))"},
    {"OtherCase", "<a><extension/><Extensions/></a>", "(a (extension) (Extensions))"},
    {"InputsOfBayes", "<BayesInputs><Extension><BayesInput><Extension/></BayesInput></Extension></BayesInputs>",
     "(BayesInputs (Extension (BayesInput)))"},
    {"ArraysOfAFunction",
     "<a><Apply function='imputeCatFieldMissingAgainstConTarget'><Extension><Array/></Extension></Apply></a>",
     "(a (Apply))"},
};

INSTANTIATE_TEST_SUITE_P(Kit, Meaningless, testing::ValuesIn(kSweeps), NameOfRow());

std::string Repeated(const std::string& text, int count) {
    std::string repeated;
    for (int i = 0; i < count; ++i) {
        repeated += text;
    }
    return repeated;
}

/// Each level within another would be a call within another, and each text a copy of those before.
TEST(Meaningless, IsTakenOutOfDeepAndOfBrokenUpDocuments) {
    constexpr int kMany = 100000;
    const ParsedXml deep =
        ParseXml("<a>" + Repeated("<b><Extension>", kMany) + "<c/>" + Repeated("</Extension></b>", kMany) + "</a>");
    const veltrane_kit::DocumentText text("");
    DropMeaningless(Element(deep.Root(), text));
    EXPECT_EQ(Nodes(deep.Root()), "(a (b))");

    const ParsedXml elements =
        ParseXml("<a>" + Repeated("<b>", kMany) + "<!-- x -->" + Repeated("</b>", kMany) + "</a>");
    DropMeaningless(Element(elements.Root(), text));
    EXPECT_EQ(elements.Document()->getElementsByTagName(u"b")->getLength(), static_cast<XMLSize_t>(kMany));

    const ParsedXml broken = ParseXml("<a>" + Repeated("1<!-- x -->", kMany) + "</a>");
    DropMeaningless(Element(broken.Root(), text));
    EXPECT_EQ(Nodes(broken.Root()), "(a '" + std::string(kMany, '1') + "')");
}

/// What a model makes of a document with this change.
double NumberOf(const char* from, const std::string& to) {
    Scored scored(Replaced(kSmallRegression, from, to));
    scored.Score({{"x", "2"}, {"z", "3"}, {"c", "a"}});
    return scored.Number();
}

TEST(Meaningless, MeansNothingToAModel) {
    const double plain = NumberOf("<Header/>", "<Header/>");
    const std::string extension = "<Extension name='n' value='1'><Foo>5</Foo></Extension>";
    for (const char* before : {"<Header/>", "<DataField name='y'", "<Interval", "<Value value='a'/>", "<MiningSchema>",
                               "<MiningField name='z'/>", "<OutputField", "<Target ", "<TargetValue",
                               "<RegressionTable", "<NumericPredictor", "<FieldRef field='x'/>"}) {
        EXPECT_EQ(NumberOf(before, extension + before), plain) << before;
        EXPECT_EQ(NumberOf(before, "<!-- x --><?note y?>" + std::string(before)), plain) << before;
    }
}

TEST(Meaningless, EntitiesStandForTheirContent) {
    const std::string document =
        "<!DOCTYPE PMML [<!ENTITY two '2'><!ENTITY more '<Extension/>&two;<!-- x -->0'>"
        "<!ENTITY z '<MiningField name=\"z\"/>'>]>" +
        Replaced(Replaced(kSmallRegression, "</MiningSchema>",
                          "</MiningSchema><LocalTransformations><DerivedField name='d' optype='continuous' "
                          "dataType='double'><Apply function='+'><FieldRef field='x'/><Constant>1&more;</Constant>"
                          "</Apply></DerivedField></LocalTransformations>"),
                 "<MiningField name='z'/>", "&z;");
    Scored scored(Replaced(document, "<NumericPredictor name='x' exponent='2' coefficient='3'/>",
                           "<NumericPredictor name='d' coefficient='1'/>"));
    scored.Score({{"x", "2"}, {"z", "0"}, {"c", "b"}});
    EXPECT_EQ(scored.Number(), 1 + 122);
}

} // namespace
