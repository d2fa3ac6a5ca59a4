#include "support/dom.h"
#include "support/faults/failure.h"
#include "translators/frame/test_translator.h"

#include <MCVeltrane_900/DOMElemUtility.h>
#include <MCVeltrane_900/SmartTranscoder.h>

#include <gtest/gtest.h>
#include <xercesc/dom/impl/DOMDeepNodeListImpl.hpp>

#include <cstdlib>
#include <dlfcn.h>
#include <string>

namespace {

/// How many steps lists of elements have gone, from one element of the document to the next that is in the list.
unsigned long long gListSteps = 0;

using ListStep = xercesc::DOMNode* (*)(xercesc::DOMDeepNodeListImpl*, xercesc::DOMNode*);

/// The list's own step.
ListStep FindListStep() {
    const std::string space =
        "xercesc_" + std::to_string(XERCES_VERSION_MAJOR) + "_" + std::to_string(XERCES_VERSION_MINOR);
    void* address = dlsym(RTLD_NEXT, ("_ZN" + std::to_string(space.size()) + space +
                                      "19DOMDeepNodeListImpl24nextMatchingElementAfterEPNS_7DOMNodeE")
                                         .c_str());
    if (address == nullptr) {
        std::abort();
    }
    return reinterpret_cast<ListStep>(address);
}

} // namespace

// Stands in front of the list's own step.
__attribute__((visibility("default"))) xercesc::DOMNode*
xercesc::DOMDeepNodeListImpl::nextMatchingElementAfter(DOMNode* current) {
    static const ListStep step = FindListStep();
    ++gListSteps;
    return step(this, current);
}

namespace {

using namespace veltrane::tests;

constexpr const char* kDocument = "<root n='12' d='1.5' s='\xC3\xA4' bad='x'><a><b i='0'/></a><b i='1'/></root>";
constexpr Failure kBadInteger{INVALID_VALUE_OF_TYPE, "x", "integer"};
constexpr Failure kBadDouble{INVALID_VALUE_OF_TYPE, "x", "double"};

class ElementReader : public testing::Test {
protected:
    const ParsedXml document = ParseXml(kDocument);
    xercesc::DOMElement* const root = document.Root();
    TestTranslator translator;
    SmartTranscoder transcoder{"UTF-8"};
    DOMElemUtility reader{&translator, &transcoder};
    DOMElemUtility lacking{nullptr, nullptr};
};

TEST_F(ElementReader, GivesListsThatAreNotEmpty) {
    EXPECT_EQ(reader.GetDOMNodeList(root, "b", true)->getLength(), 2u);
    EXPECT_EQ(reader.GetDOMNodeList(root, "none", true), nullptr);
    EXPECT_EQ(reader.GetDOMNodeList(root, "", true), nullptr);
    EXPECT_EQ(reader.GetDOMNodeList(nullptr, "b", true), nullptr);
}

TEST_F(ElementReader, GivesAListWithoutATranslator) {
    EXPECT_NE(lacking.GetDOMNodeList(root, "b", true), nullptr);
}

TEST_F(ElementReader, GivesAnElementOfAList) {
    EXPECT_EQ(reader.GetElemFromNodeList(root, "b", 0, true), document.Find("b"));
    EXPECT_EQ(reader.GetAttributeToInt(reader.GetElemFromNodeList(root, "b", 1, true), "i", true), 1);
}

TEST_F(ElementReader, GivesNoElementBehindTheListOrWithoutInputs) {
    EXPECT_EQ(reader.GetElemFromNodeList(root, "b", 2, true), nullptr);
    EXPECT_EQ(reader.GetElemFromNodeList(root, "b", ~0ULL, true), nullptr);
    EXPECT_EQ(reader.GetElemFromNodeList(root, "none", 0, true), nullptr);
    EXPECT_EQ(reader.GetElemFromNodeList(root, "", 0, true), nullptr);
    EXPECT_EQ(reader.GetElemFromNodeList(nullptr, "b", 0, true), nullptr);
    EXPECT_EQ(lacking.GetElemFromNodeList(root, "b", 0, true), nullptr);
}

// Every element of a list, each by its position: one step of the list for each, not a walk from its beginning.
TEST_F(ElementReader, GoesThroughALongListInOneWalk) {
    constexpr unsigned long long kCount = 2000;
    std::string text = "<root>";
    for (unsigned long long i = 0; i < kCount; ++i) {
        text += "<b/>";
    }
    const ParsedXml many = ParseXml(text + "</root>");
    const xercesc::DOMElement* expected = many.Root()->getFirstElementChild();
    gListSteps = 0;
    for (unsigned long long i = 0; i < kCount; ++i) {
        ASSERT_EQ(reader.GetElemFromNodeList(many.Root(), "b", i, true), expected);
        expected = expected->getNextElementSibling();
    }
    EXPECT_EQ(reader.GetElemFromNodeList(many.Root(), "b", kCount, true), nullptr);
    EXPECT_EQ(gListSteps, kCount + 1);
}

TEST_F(ElementReader, KnowsAListThatHasChanged) {
    EXPECT_EQ(reader.GetAttributeToInt(reader.GetElemFromNodeList(root, "b", 1, true), "i", true), 1);
    xercesc::DOMNode* first = root->getFirstChild();
    root->removeChild(first)->release();
    EXPECT_EQ(reader.GetAttributeToInt(reader.GetElemFromNodeList(root, "b", 0, true), "i", true), 1);
    EXPECT_EQ(reader.GetElemFromNodeList(root, "b", 1, true), nullptr);
}

TEST_F(ElementReader, CountsAList) {
    EXPECT_EQ(reader.GetNodeListLength(root, "b", true), 2u);
    EXPECT_EQ(reader.GetNodeListLength(root, "none", true), 0u);
    EXPECT_EQ(reader.GetNodeListLength(root, "", true), 0u);
    EXPECT_EQ(reader.GetNodeListLength(nullptr, "b", true), 0u);
    EXPECT_EQ(lacking.GetNodeListLength(root, "b", true), 0u);
}

TEST_F(ElementReader, ReadsAttributes) {
    EXPECT_EQ(reader.GetAttributeToDouble(root, "d", true), 1.5);
    EXPECT_EQ(reader.GetAttributeToInt(root, "n", true), 12);
    EXPECT_EQ(reader.GetAttributeToString(root, "s", true), "\xC3\xA4");
}

TEST_F(ElementReader, MissingInputsGiveDefaultsEvenWhenThrowing) {
    EXPECT_EQ(reader.GetAttributeToDouble(nullptr, "d", true), -1.0);
    EXPECT_EQ(reader.GetAttributeToDouble(root, "", true), -1.0);
    EXPECT_EQ(lacking.GetAttributeToDouble(root, "d", true), -1.0);
    EXPECT_EQ(reader.GetAttributeToInt(nullptr, "n", true), -1);
    EXPECT_EQ(reader.GetAttributeToInt(root, "", true), -1);
    EXPECT_EQ(lacking.GetAttributeToInt(root, "n", true), -1);
    EXPECT_EQ(reader.GetAttributeToString(nullptr, "s", true), "");
    EXPECT_EQ(reader.GetAttributeToString(root, "", true), "");
    EXPECT_EQ(reader.GetChildElemByName(nullptr, "a", true), nullptr);
    EXPECT_EQ(reader.GetChildElemByName(root, "", true), nullptr);
    EXPECT_EQ(lacking.GetChildElemByName(root, "a", true), nullptr);
}

TEST_F(ElementReader, AStringNeedsBothTranslatorAndTranscoder) {
    DOMElemUtility noTranscoder(&translator, nullptr);
    DOMElemUtility noTranslator(nullptr, &transcoder);
    EXPECT_EQ(noTranscoder.GetAttributeToString(root, "s", true), "");
    EXPECT_EQ(noTranslator.GetAttributeToString(root, "s", true), "");
    EXPECT_EQ(noTranscoder.GetAttributeToInt(root, "n", true), 12);
}

TEST_F(ElementReader, AFailureBecomesTheDefault) {
    EXPECT_EQ(reader.GetAttributeToInt(root, "bad", false), -1);
    EXPECT_EQ(reader.GetAttributeToDouble(root, "bad", false), -1.0);
    EXPECT_EQ(reader.GetAttributeToInt(root, "none", false), -1);
    EXPECT_EQ(reader.GetAttributeToDouble(root, "none", false), -1.0);
    EXPECT_EQ(reader.GetAttributeToString(root, "none", false), "");
    EXPECT_EQ(reader.GetChildElemByName(root, "none", false), nullptr);
}

TEST_F(ElementReader, AFailureIsThrownOnWhenAsked) {
    ExpectFailure([&] { reader.GetAttributeToInt(root, "bad", true); }, kBadInteger);
    ExpectFailure([&] { reader.GetAttributeToDouble(root, "bad", true); }, kBadDouble);
    ExpectFailure([&] { reader.GetAttributeToInt(root, "none", true); }, {MISSING_ATTRIBUTE_OF, "none", "root"});
    ExpectFailure([&] { reader.GetAttributeToDouble(root, "none", true); }, {MISSING_ATTRIBUTE_OF, "none", "root"});
    ExpectFailure([&] { reader.GetAttributeToString(root, "none", true); }, {MISSING_ATTRIBUTE_OF, "none", "root"});
    ExpectFailure([&] { reader.GetChildElemByName(root, "none", true); }, {MISSING_NODE, "none"});
}

TEST_F(ElementReader, FindsADirectChild) {
    EXPECT_EQ(reader.GetChildElemByName(root, "a", true), document.Find("a"));
    ExpectFailure([&] { reader.GetChildElemByName(document.Find("a"), "a", true); }, {MISSING_NODE, "a"});
}

} // namespace
