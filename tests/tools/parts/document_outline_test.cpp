#include "documents/document_outline.h"
#include "documents/model_choice.h"
#include "documents/model_list.h"

#include <gtest/gtest.h>

#include <sstream>

namespace veltrane::host {
namespace {

DocumentOutline OutlineOf(const std::string& document) {
    StartLibrary();
    std::istringstream in(document);
    return ReadOutline(in);
}

std::string OneModelOf(const std::string& document, std::size_t place) {
    StartLibrary();
    std::istringstream in(document);
    return DocumentOfOneModel(in, place);
}

std::string ElementsOf(const DocumentOutline& outline) {
    std::string text;
    for (const OutlinedModel& model : outline.models) {
        text += model.element + ":" + model.name + (model.isScorable ? " " : "! ");
    }
    return text;
}

TEST(DocumentOutlineTest, HasTheModelsBelowTheRoot) {
    const DocumentOutline outline =
        OutlineOf("<PMML><Header/><MiningBuildTask/><DataDictionary/><TransformationDictionary/><A modelName='&#246;'/>"
                  "<B isScorable='false'><C modelName='inner'/></B><Extension><D/></Extension><E isScorable='0'/>"
                  "<F isScorable='true'/></PMML>");
    EXPECT_EQ(outline.root, "PMML");
    EXPECT_EQ(ElementsOf(outline), "A:\xC3\xB6 B:! E:! F: ");
    EXPECT_TRUE(outline.elements.contains("C"));
    EXPECT_TRUE(outline.elements.contains("D"));
    EXPECT_FALSE(outline.elements.contains("PMML"));
    EXPECT_FALSE(outline.fault.has_value());
}

TEST(DocumentOutlineTest, HasTheTextsForMissingValues) {
    const DocumentOutline outline = OutlineOf(
        "<PMML><DataDictionary><DataField name='a'><Extension><Value value='e' property='missing'/></Extension>"
        "<Value value='1'/><Value value='NA' property='missing'/><Value value='&#246;' property='missing'/>"
        "<Value value='x' property='invalid'/></DataField><Taxonomy><Value value='t' property='missing'/></Taxonomy>"
        "<DataField name='b'><Value value='-' property='missing'/></DataField></DataDictionary><M><DataField name='c'>"
        "<Value value='m' property='missing'/></DataField></M></PMML>");
    EXPECT_EQ(outline.missingTexts, (MissingTexts{{"a", {"NA", "\xC3\xB6"}}, {"b", {"-"}}}));
    EXPECT_EQ(MissingTextsIn("latin1", outline), (MissingTexts{{"a", {"NA", "\xF6"}}, {"b", {"-"}}}));
}

TEST(DocumentOutlineTest, HasNoModelsBelowOtherRoots) {
    EXPECT_EQ(ElementsOf(OutlineOf("<kord-ml><A/></kord-ml>")), "");
    EXPECT_EQ(ElementsOf(OutlineOf("<p:PMML><A/></p:PMML>")), "");
    EXPECT_EQ(OutlineOf("<p:PMML/>").root, "p:PMML");
}

TEST(DocumentOutlineTest, TellsTheFirstFaultAndWhatCameBefore) {
    const DocumentOutline outline = OutlineOf("<PMML>\n<A/></B></PMML>");
    EXPECT_EQ(ElementsOf(outline), "A: ");
    ASSERT_TRUE(outline.fault.has_value());
    EXPECT_EQ(outline.fault->line, 2U);
    EXPECT_EQ(outline.fault->column, 7U);
    EXPECT_EQ(outline.fault->text, "expected end of tag 'PMML'");
    EXPECT_TRUE(OutlineOf("").fault.has_value());
    EXPECT_EQ(OutlineOf("").root, "");
}

TEST(DocumentOutlineTest, BoundsTheNestingOfEntities) {
    std::string entities = "<!DOCTYPE a [<!ENTITY e0 'x'>";
    for (int at = 1; at < 40; ++at) {
        entities += "<!ENTITY e" + std::to_string(at) + " '&e" + std::to_string(at - 1) + ";'>";
    }
    EXPECT_FALSE(OutlineOf(entities + "]><a>&e31;</a>").fault.has_value());
    const DocumentOutline outline = OutlineOf(entities + "]><a>&e32;</a>");
    ASSERT_TRUE(outline.fault.has_value());
    EXPECT_EQ(outline.fault->text, "entities are nested too deeply");
}

TEST(DocumentOutlineTest, BoundsWhatDeclaredAttributesMultiply) {
    const std::string value(4000, 'x');
    std::string document = "<!DOCTYPE a [<!ATTLIST b c CDATA '" + value + "'>]><a>";
    for (int at = 0; at < 100'000; ++at) {
        document += "<b/>";
    }
    const DocumentOutline outline = OutlineOf(document + "</a>");
    ASSERT_TRUE(outline.fault.has_value());
    EXPECT_EQ(outline.fault->text, "entities or declared attributes multiply the document too far");
}

TEST(DocumentOfOneModelTest, KeepsThatModelAndWhatBelongsToAll) {
    const std::string document =
        "<PMML><Header/><A n='1'><B/></A>\n<A n='2'>t<B/></A> <C/><Extension><A/></Extension></PMML>";
    EXPECT_EQ(OneModelOf(document, 0),
              "<PMML><Header></Header><A n=\"1\"><B></B></A>\n <Extension><A></A></Extension></PMML>");
    EXPECT_EQ(OneModelOf(document, 1),
              "<PMML><Header></Header>\n<A n=\"2\">t<B></B></A> <Extension><A></A></Extension></PMML>");
    EXPECT_EQ(OneModelOf(document, 2), "<PMML><Header></Header>\n <C></C><Extension><A></A></Extension></PMML>");
}

TEST(DocumentOfOneModelTest, KeepsTextsAsAReaderSeesThem) {
    EXPECT_EQ(OneModelOf("<PMML a='&lt;&amp;\"&#9;&#10;&#13;x\ny'/>", 0),
              "<PMML a=\"&#60;&#38;&#34;&#9;&#10;&#13;x y\"></PMML>");
    EXPECT_EQ(OneModelOf("<PMML>&#13;\r\n\t&gt;<![CDATA[<&]]>\xF0\x9D\x92\xB3<!-- c --><?p i?></PMML>", 0),
              "<PMML>&#13;\n\t&#62;&#60;&#38;\xF0\x9D\x92\xB3</PMML>");
}

TEST(DocumentOfOneModelTest, PutsEntitiesAndDeclaredAttributesInTheirPlaces) {
    EXPECT_EQ(
        OneModelOf("<!DOCTYPE PMML [<!ENTITY e '<A>&#38;amp;</A>'><!ATTLIST A d CDATA 'v'>]><PMML>&e;<B/></PMML>", 0),
        "<PMML><A d=\"v\">&#38;</A></PMML>");
    EXPECT_EQ(OneModelOf("<!DOCTYPE PMML [<!ENTITY e '<A/>'>]><PMML>&e;<B/></PMML>", 1), "<PMML><B></B></PMML>");
}

TEST(DocumentOfOneModelTest, IsTheSameTwice) {
    const std::string once = OneModelOf("<PMML b=' x '><A c='&#10;'>a&#13;&lt;</A><B/></PMML>", 0);
    EXPECT_EQ(OneModelOf(once, 0), once);
}

TEST(DocumentOfOneModelTest, KeepsCharactersThatEndInAnotherPieceOfText) {
    for (const std::size_t size : {16'383U, 16'384U, 32'767U, 49'151U}) {
        const std::string text = std::string(size, 'x') + "\xF0\x9D\x92\xB3" + std::string(70'000, 'y');
        EXPECT_EQ(OneModelOf("<PMML>" + text + "</PMML>", 0), "<PMML>" + text + "</PMML>") << size;
    }
}

} // namespace
} // namespace veltrane::host
