// The outline of a document that is told from its bytes, beside that of the parser.
#include "documents/document_outline.h"
#include "documents/model_list.h"
#include "support/folders.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>

namespace veltrane::host {
namespace {

using veltrane::tests::TestsFolder;

DocumentOutline ParsedOutline(const std::string& document) {
    StartLibrary();
    std::istringstream in(document);
    return ReadOutline(in);
}

std::string TextOf(const DocumentOutline& outline) {
    std::string text = outline.root + (outline.hasPrefixes ? " prefixes" : "");
    for (const OutlinedModel& model : outline.models) {
        text += "\n" + model.element + ":" + model.name + (model.isScorable ? "" : "!");
    }
    for (const auto& [field, words] : outline.missingTexts) {
        text += "\n" + field + ":";
        for (const std::string& word : words) {
            text += " " + word;
        }
    }
    return text;
}

/// @return whether a look was enough
bool ExpectTheSame(const std::string& document) {
    const std::optional<DocumentOutline> glance = GlanceAtOutline(document);
    const DocumentOutline parsed = ParsedOutline(document);
    if (glance && !parsed.fault) {
        EXPECT_EQ(TextOf(*glance), TextOf(parsed)) << document.substr(0, 300);
    }
    return glance.has_value();
}

TEST(OutlineGlance, TellsWhatTheParserTells) {
    const std::string dictionary = "<DataDictionary><DataField name='a > b'><Value value='NA' property='missing'/>"
                                   "<Value property=\"missing\" value = '\"'/></DataField></DataDictionary>";
    for (const std::string& document : {
             "<PMML>" + dictionary + "<TreeModel modelName='m' isScorable='0'><Node><Node/></Node></TreeModel></PMML>",
             "<?xml version='1.0'?>\n<PMML\n version='4.4'\n>" + dictionary + "<A modelName=''/><B/></PMML>\n",
             std::string("\xEF\xBB\xBF<?xml version=\"1.0\" encoding='utf-8' standalone='yes'?><PMML/>"),
             std::string("<!-- <PMML><A/> --><?p <PMML>?><PMML><!--<A>--><B><![CDATA[<C></B>]]></B></PMML><!---->"),
             std::string("<PMML><A modelName='\xC3\xB6' b='>' c='/>'/><B c = \"'\" /></PMML>"),
             std::string("<PMML><DataDictionary/><DataField name='c'><Value value='m' property='missing'/></DataField>"
                         "<Header><Application/>text > text</Header></PMML>"),
             std::string("<kord-ml><dictionary/></kord-ml>"),
         }) {
        EXPECT_TRUE(ExpectTheSame(document)) << document;
    }
}

TEST(OutlineGlance, LeavesDoubtsToTheParser) {
    for (const char* document :
         {"", " ", "PMML", "<PMML>", "<PMML></A></PMML></PMML>", "<PMML/><PMML/>", "<!DOCTYPE PMML><PMML/>",
          "<p:PMML xmlns:p='u'/>", "<PMML><a:b xmlns:a='u'/></PMML>", "<PMML><A modelName='&lt;'/></PMML>",
          "<PMML><A modelName='a\nb'/></PMML>", "<?xml version='1.1'?><PMML/>",
          "<?xml version='1.0' encoding='latin1'?><PMML/>", "<PMML a='></PMML>", "<PMML><!-- </PMML>",
          "<PMML><![CDATA[ </PMML>", "<PMML><?p </PMML>", "<PMML", "<"}) {
        EXPECT_FALSE(ExpectTheSame(document)) << document;
    }
}

TEST(OutlineGlance, TellsTheSameOfAllSamplesAndSeeds) {
    std::size_t read = 0;
    std::mt19937 random(7);
    for (const char* folder :
         {"/samples", "/models/samples", "/documents", "/corpus", "/../fuzz/seeds/model", "/../fuzz/seeds/document"}) {
        for (const auto& file : std::filesystem::recursive_directory_iterator(TestsFolder() + folder)) {
            if (!file.is_regular_file()) {
                continue;
            }
            std::ifstream in(file.path(), std::ios::binary);
            std::string document{std::istreambuf_iterator<char>(in), {}};
            read += ExpectTheSame(document) ? 1 : 0;
            for (int i = 0; i < 5 && !document.empty(); ++i) {
                std::string changed = document;
                changed[random() % std::min<std::size_t>(changed.size(), 3000)] = "<>/'\"& xN:!?-"[random() % 13];
                ExpectTheSame(changed);
            }
        }
    }
    EXPECT_GT(read, 300U);
}

} // namespace
} // namespace veltrane::host
