#include "support/dom.h"
#include "support/faults/failure.h"

#include <MCVeltrane_900/BaseTranslator.h>

#include <gtest/gtest.h>
#include <xercesc/util/XMLString.hpp>

namespace {

using namespace veltrane::tests;

std::string Narrow(const XMLCh* text) {
    char* bytes = xercesc::XMLString::transcode(text);
    std::string result = bytes;
    xercesc::XMLString::release(&bytes);
    return result;
}

std::string Name(const xercesc::DOMNode* node) {
    return node ? Narrow(node->getNodeName()) : "none";
}

XMLCh* NewTag(const char* tag) {
    return xercesc::XMLString::transcode(tag);
}

class DomHelpers : public testing::Test {
protected:
    const ParsedXml document = ParseXml("<root plain='p' empty=''>text<!-- c --><a><deep n='1'/></a> <?pi?><b/>"
                                        "<b second='y'/>text</root>");
    xercesc::DOMElement* const root = document.Root();
};

TEST_F(DomHelpers, FirstChildElementSkipsTextAndComments) {
    EXPECT_EQ(Name(BaseTranslator::GetFirstChildElt(root)), "a");
}

TEST_F(DomHelpers, FirstChildElementOfALeafOrOfNullIsNull) {
    EXPECT_EQ(BaseTranslator::GetFirstChildElt(document.Find("b")), nullptr);
    EXPECT_EQ(BaseTranslator::GetFirstChildElt(nullptr), nullptr);
}

TEST_F(DomHelpers, NextSiblingElementSkipsTextAndInstructions) {
    xercesc::DOMNode* second = BaseTranslator::GetNextSiblingElt(document.Find("a"));
    EXPECT_EQ(second, document.Find("b"));
    xercesc::DOMNode* third = BaseTranslator::GetNextSiblingElt(second);
    EXPECT_EQ(Name(third), "b");
    EXPECT_EQ(BaseTranslator::GetNextSiblingElt(third), nullptr);
    EXPECT_EQ(BaseTranslator::GetNextSiblingElt(nullptr), nullptr);
}

TEST_F(DomHelpers, AttributeGivesItsText) {
    EXPECT_EQ(Narrow(BaseTranslator::GetAttribute(root, "plain")), "p");
    EXPECT_EQ(Narrow(BaseTranslator::GetAttributeForced(root, "plain")), "p");
}

TEST_F(DomHelpers, AbsentAttributeIsEmptyAndForcedThrows) {
    EXPECT_EQ(Narrow(BaseTranslator::GetAttribute(root, "other")), "");
    ExpectFailure([&] { BaseTranslator::GetAttributeForced(root, "other"); }, {MISSING_ATTRIBUTE_OF, "other", "root"});
}

TEST_F(DomHelpers, AttributeWithAnEmptyValuePassesTheForcedForm) {
    EXPECT_EQ(Narrow(BaseTranslator::GetAttributeForced(root, "empty")), "");
}

TEST_F(DomHelpers, LongAttributeNamesAreFound) {
    const std::string name(100, 'n');
    const ParsedXml other = ParseXml("<root " + name + "='v'/>");
    EXPECT_EQ(Narrow(BaseTranslator::GetAttribute(other.Root(), name)), "v");
}

TEST_F(DomHelpers, ChildByTagFindsTheFirstDirectChildOnly) {
    EXPECT_EQ(BaseTranslator::GetChildByTag(root, "b"), document.Find("b"));
    EXPECT_EQ(BaseTranslator::GetChildByTag(root, "deep"), nullptr);
    EXPECT_EQ(BaseTranslator::GetChildByTag(root, "root"), nullptr);
    EXPECT_EQ(BaseTranslator::GetChildByTag(nullptr, "b"), nullptr);
    EXPECT_EQ(BaseTranslator::GetChildByTag(document.Document(), "root"), root);
}

TEST_F(DomHelpers, ChildTagReleasesItsTag) {
    EXPECT_EQ(BaseTranslator::GetChildTag(root, NewTag("b")), document.Find("b"));
    EXPECT_EQ(BaseTranslator::GetChildTag(root, NewTag("deep")), nullptr);
    EXPECT_EQ(BaseTranslator::GetChildTag(nullptr, NewTag("b")), nullptr);
    EXPECT_EQ(BaseTranslator::GetChildTag(root, nullptr), nullptr);
}

TEST_F(DomHelpers, ForcedChildIsFoundOrNamedInTheFailure) {
    EXPECT_EQ(BaseTranslator::GetChildByTagForced(root, "a"), document.Find("a"));
    ExpectFailure([&] { BaseTranslator::GetChildByTagForced(root, "deep"); }, {MISSING_NODE, "deep"});
    ExpectFailure([] { BaseTranslator::GetChildByTagForced(nullptr, "a"); }, {MISSING_NODE, "a"});
}

TEST_F(DomHelpers, ForcedChildTagKeepsTheTextForTheMessage) {
    EXPECT_EQ(BaseTranslator::GetChildTagForced(root, NewTag("a")), document.Find("a"));
    ExpectFailure([&] { BaseTranslator::GetChildTagForced(root, NewTag("deep")); }, {MISSING_NODE, "deep"});
}

TEST_F(DomHelpers, ElementsByTagNameFindsAnyDescendant) {
    EXPECT_EQ(BaseTranslator::GetElementsByTagName(root, "deep")->getLength(), 1u);
    EXPECT_EQ(BaseTranslator::GetElementsByTagName(root, "b")->getLength(), 2u);
    EXPECT_EQ(BaseTranslator::GetElementsByTagName(document.Document(), "deep")->getLength(), 1u);
    EXPECT_EQ(BaseTranslator::GetElementsByTagName(document.Document(), "root")->item(0), root);
    EXPECT_EQ(BaseTranslator::GetElementsByTagName(root, "none")->getLength(), 0u);
}

TEST_F(DomHelpers, ElementsByTagNameOfNullThrows) {
    const xercesc::DOMDocument* noDocument = nullptr;
    const xercesc::DOMElement* noElement = nullptr;
    ExpectFailure([=] { BaseTranslator::GetElementsByTagName(noDocument, "x"); }, {MISSING_NODE, "x"});
    ExpectFailure([=] { BaseTranslator::GetElementsByTagName(noElement, "y"); }, {MISSING_NODE, "y"});
}

TEST_F(DomHelpers, FailuresKeepTheBytesOfATagOutsideAscii) {
    const ParsedXml other = ParseXml("<r\xC3\xA4um/>");
    ExpectFailure([&] { BaseTranslator::GetAttributeForced(other.Root(), "n"); },
                  {MISSING_ATTRIBUTE_OF, "n", "r\xC3\xA4um"});
}

} // namespace
