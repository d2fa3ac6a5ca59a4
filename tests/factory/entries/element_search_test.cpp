#include "factory/documents/xml_faults.h"
#include "factory/entries/factory_support.h"
#include "support/dom.h"

#include <MCVeltrane_900/VTException.h>

#include <gtest/gtest.h>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/sax2/SAX2XMLReader.hpp>
#include <xercesc/sax2/XMLReaderFactory.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/TransService.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLUni.hpp>

#include <array>
#include <memory>
#include <random>

/// Which documents go to the plug-in that reads its document by itself: the search for its element, which most
/// documents are spared, agrees with a plain scan of the document.

using namespace veltrane::tests;

namespace {

const std::string kTag = "NearestNeighborModel";
const Names kNames = {kTag, "TreeModel"};
constexpr std::size_t kBlock = 48 * 1024;

/// Ends the scan by an exception, as soon as the answer stands.
class Search : public xercesc::DefaultHandler {
public:
    void startElement(const XMLCh* const, const XMLCh* const, const XMLCh* const name,
                      const xercesc::Attributes&) override {
        if (std::u16string(name) == u"NearestNeighborModel") {
            throw true;
        }
    }
    void endElement(const XMLCh* const, const XMLCh* const, const XMLCh* const name) override {
        if (std::u16string(name) == u"PMML") {
            throw false;
        }
    }
    void error(const xercesc::SAXParseException&) override { throw false; }
    void fatalError(const xercesc::SAXParseException&) override { throw false; }
};

/// What a scan of the whole document finds.
bool PlainScan(const std::string& document) {
    StartXml();
    using xercesc::XMLUni;
    const std::unique_ptr<xercesc::SAX2XMLReader> reader(xercesc::XMLReaderFactory::createXMLReader());
    reader->setFeature(XMLUni::fgSAX2CoreValidation, false);
    reader->setFeature(XMLUni::fgXercesLoadExternalDTD, false);
    reader->setFeature(XMLUni::fgXercesDynamic, true);
    reader->setFeature(XMLUni::fgSAX2CoreNameSpaces, true);
    reader->setFeature(XMLUni::fgXercesSchema, false);
    reader->setFeature(XMLUni::fgXercesSchemaFullChecking, false);
    reader->setFeature(XMLUni::fgSAX2CoreNameSpacePrefixes, false);
    Search search;
    reader->setContentHandler(&search);
    reader->setErrorHandler(&search);
    try {
        reader->parse(
            xercesc::MemBufInputSource(reinterpret_cast<const XMLByte*>(document.data()), document.size(), "document"));
    } catch (const bool found) {
        return found;
    } catch (const xercesc::XMLException&) {
    }
    return false;
}

bool GoesToTheReaderOfStreams(const std::string& document) {
    try {
        const Record record = Build(document, kNames);
        return !record.empty() && record.at("operation") == "stream+path";
    } catch (const MCVeltrane_900::VTException&) {
        return false;
    }
}

struct SearchRow {
    const char* name;
    bool isThere;
    std::string document;
    const char* encoding = nullptr; ///< that the bytes of the document are brought to
};

void PrintTo(const SearchRow& row, std::ostream* out) {
    *out << row.name;
}

class ElementSearch : public testing::TestWithParam<SearchRow> {};

std::string Encoded(const std::string& document, const char* encoding) {
    StartXml();
    const std::u16string wide(document.begin(), document.end());
    const xercesc::TranscodeToStr bytes(wide.c_str(), encoding);
    return {reinterpret_cast<const char*>(bytes.str()), bytes.length()};
}

TEST_P(ElementSearch, AgreesWithAPlainScan) {
    const SearchRow& row = GetParam();
    const std::string document = row.encoding != nullptr ? Encoded(row.document, row.encoding) : row.document;
    EXPECT_EQ(PlainScan(document), row.isThere);
    EXPECT_EQ(GoesToTheReaderOfStreams(document), row.isThere);
}

std::string Declared(const std::string& encoding, const std::string& content) {
    return "<?xml version='1.0' encoding='" + encoding + "'?><PMML>" + content + "</PMML>";
}

/// A document whose `content` starts a number of bytes ahead of the end of the first block that is read.
std::string AcrossBlocks(std::size_t ahead, const std::string& content) {
    const std::string head = "<PMML a='";
    return head + Repeat("x", kBlock - head.size() - 2 - ahead) + "'>" + content + "</PMML>";
}

std::vector<SearchRow> SearchRows() {
    const std::string element = "<" + kTag + "/>";
    const std::string there = "<PMML>" + element + "</PMML>";
    std::vector<SearchRow> rows = {
        {"Element", true, there},
        {"NestedElement", true, "<PMML><a><b>" + element + "</b></a></PMML>"},
        {"Root", true, element},
        {"WithContent", true, "<PMML><" + kTag + " a='1'>x</" + kTag + "></PMML>"},
        {"BehindTheEnd", false, "<PMML/>" + element},
        {"InTheHeadOfABrokenDocument", true, "<PMML>" + element + "<a></b>"},
        {"BehindAFault", false, "<PMML><a></b>" + element + "</PMML>"},
        {"BehindAnUndeclaredPrefix", false, "<PMML><p:a/>" + element + "</PMML>"},
        {"Prefixed", false, "<PMML xmlns:p='u'><p:" + kTag + "/></PMML>"},
        {"LongerName", false, "<PMML><" + kTag + "s/></PMML>"},
        {"OtherCase", false, "<PMML><nearestNeighborModel/></PMML>"},
        {"InAComment", false, "<PMML><!--" + element + "--></PMML>"},
        {"InASection", false, "<PMML><![CDATA[" + element + "]]></PMML>"},
        {"InAText", false, "<PMML>" + kTag + "</PMML>"},
        {"InAnAttribute", false, "<PMML a='" + kTag + "'/>"},
        {"InAnInstruction", false, "<PMML><?" + kTag + "?></PMML>"},
        {"Nowhere", false, "<PMML><TreeModel/></PMML>"},
        {"InAnEntity", true, "<!DOCTYPE PMML [<!ENTITY e '" + element + "'>]><PMML>&e;</PMML>"},
        {"InAnEntityByNumbers", true, "<!DOCTYPE PMML [<!ENTITY e '<&#78;earestNeighborModel/>'>]><PMML>&e;</PMML>"},
        {"ByNumbersBehindAComment", true,
         "<!--<a>--><!DOCTYPE PMML [<!ENTITY e '<&#78;earestNeighborModel/>'>]><PMML>&e;</PMML>"},
        {"BehindAByteOrderMark", true, "\xEF\xBB\xBF" + there},
        {"BehindBlanks", true, " \n" + there},
        {"BehindBlanksAndADeclaration", false, " <?xml version='1.0'?>" + there},
        {"Empty", false, ""},
        {"BytesBeyondAscii", false, "<PMML a='\xC3\xA4'/>"},
        {"BadBytes", false, "<PMML a='\xFF'>" + element + "</PMML>"},
        {"LongFormsOfLetters", false, "<PMML><\301\216earestNeighborModel/></PMML>"},
    };
    for (const char* const encoding :
         {"UTF-8", "utf-8", "US-ASCII", "ISO-8859-1", "Windows-1252", "UTF-16", "IBM037"}) {
        rows.push_back({"", std::string(encoding) != "IBM037", Declared(encoding, element)});
    }
    for (const char* const encoding : {"UTF-16LE", "UTF-16BE", "IBM037"}) {
        rows.push_back({"", true, Declared(encoding, element), encoding});
    }
    for (std::size_t ahead = 0; ahead <= element.size(); ++ahead) {
        rows.push_back({"", true, AcrossBlocks(ahead, element)});
    }
    return rows;
}

INSTANTIATE_TEST_SUITE_P(Rows, ElementSearch, testing::ValuesIn(SearchRows()), [](const auto& row) {
    return *row.param.name != '\0' ? std::string(row.param.name) : "Row" + std::to_string(row.index);
});

TEST(ElementSearchOfOrdinaryDocuments, NeedsNoScan) {
    const std::string model = Repeat("<a b='1'>&lt;</a>\n", 10000) + "<TreeModel/>"; // several blocks
    EXPECT_EQ(Build(Pmml(model), kNames).at("plugin"), "TreeModel");
    EXPECT_EQ(ScansBegun(), 0);
    EXPECT_EQ(Build(Pmml("<!--" + kTag + "-->" + model), kNames).at("plugin"), "TreeModel");
    EXPECT_EQ(ScansBegun(), 1);
}

TEST(ElementSearchOfLongDocuments, FindsADoctypeAcrossBlocks) {
    const std::string doctype = "<!DOCTYPE PMML [<!ENTITY e '<&#78;earestNeighborModel/>'>]><PMML>&e;</PMML>";
    for (std::size_t ahead = 0; ahead < 12; ++ahead) {
        const std::string document = "<!--" + Repeat("x", kBlock - 7 - ahead) + "-->" + doctype;
        EXPECT_TRUE(GoesToTheReaderOfStreams(document)) << ahead;
    }
}

TEST(ElementSearchOfRandomDocuments, AgreesWithAPlainScan) {
    const auto pieces = std::to_array<std::string>({"<NearestNeighborModel/>",
                                                    "<NearestNeighborModel",
                                                    "<Nearest",
                                                    "NeighborModel/>",
                                                    "NearestNeighborModel",
                                                    "<!--",
                                                    "-->",
                                                    "<![CDATA[",
                                                    "]]>",
                                                    "<a>",
                                                    "</a>",
                                                    "<a/>",
                                                    "<PMML>",
                                                    "</PMML>",
                                                    "&e;",
                                                    "&#78;",
                                                    "<?x ?>",
                                                    " ",
                                                    "\n",
                                                    "'",
                                                    "<!DOCTYPE PMML [<!ENTITY e '<&#78;earestNeighborModel/>'>]>",
                                                    "<?xml version='1.0'?>",
                                                    "<?xml version='1.0' encoding='ISO-8859-1'?>",
                                                    "<?xml version='1.0' encoding='UTF-16'?>",
                                                    "\xEF\xBB\xBF",
                                                    std::string(1, '\0'),
                                                    "\xC3\xA4",
                                                    "x"});
    std::mt19937 random(19);
    int found = 0;
    for (int round = 0; round < 2000; ++round) {
        // Most begin well, so that the scan comes to what stands behind.
        std::string document = round % 4 == 0 ? "" : round % 4 == 1 ? pieces[20] + "<PMML>" : "<PMML>";
        for (std::size_t left = random() % 8; left > 0; --left) {
            document += pieces[random() % pieces.size()];
        }
        const bool expected = PlainScan(document);
        found += expected ? 1 : 0;
        ASSERT_EQ(GoesToTheReaderOfStreams(document), expected) << document;
    }
    EXPECT_GT(found, 100);
}

} // namespace
