#include "support/dom.h"
#include "support/folders.h"
#include "translators/frame/test_translator.h"

#include <MCVeltrane_900/Messages.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/ScorePredicate.h>
#include <MCVeltrane_900/SetPredicate.h>
#include <MCVeltrane_900/SimplePredicate.h>
#include <MCVeltrane_900/VTException.h>

#include <gtest/gtest.h>
#include <xercesc/util/XMLString.hpp>

#include <fstream>
#include <memory>
#include <set>
#include <sstream>

// Every attribute and every array of the conditions in the sample documents, changed one at a time: each change is read
// or refused with a catalogued message, and whatever was read by then is freed.

namespace veltrane::tests {
namespace {

using namespace MCVeltrane_900;
using enum MCVeltrane_900::Message;

const char16_t* const kTexts[] = {u"",       u" ",         u"x",         u"1",       u"-1e400",
                                  u"Grade",  u"Burden",    u"isMissing", u"isNotIn", u"equal",
                                  u"and",    u"xor",       u"own",       u"\"own",   u"own own",
                                  u"string", u"real",      u"int",       u"9",       u"rent \"own\" rent",
                                  u"\\\"",   u"surrogate", u"\u00e4",    u"D D D"};

std::string ReadSample(const std::string& name) {
    std::ifstream in(TestsFolder() + "/../examples/predicates/" + name, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

std::vector<xercesc::DOMElement*> Elements(const ParsedXml& document, const char16_t* tag) {
    const xercesc::DOMNodeList* found = document->getElementsByTagName(tag);
    std::vector<xercesc::DOMElement*> elements;
    for (XMLSize_t i = 0; i < found->getLength(); ++i) {
        elements.push_back(static_cast<xercesc::DOMElement*>(found->item(i)));
    }
    return elements;
}

class PredicateMutation : public testing::TestWithParam<const char*> {
protected:
    PredicateMutation() : document(ReadSample(GetParam())) {
        for (const char16_t* tag : {u"SimplePredicate", u"SimpleSetPredicate", u"CompoundPredicate"}) {
            for (xercesc::DOMElement* element : Elements(document, tag)) {
                conditions.push_back(element);
            }
        }
    }

    /// Reads every condition over fields of its own; counts those that are refused.
    void ReadAll() {
        const std::unique_ptr<ScoreDictionary> fields(
            translator.ParseDictionary(document.Find("DataDictionary"), ++reads % 2 == 0));
        const std::unique_ptr<TransformationDictionary> derived(
            translator.HandleTransformationDictionary(document.Root(), fields.get()));
        for (xercesc::DOMElement* element : conditions) {
            try {
                const std::unique_ptr<ScorePredicate> predicate(Read(element, *fields, derived.get()));
            } catch (const VTException& failure) {
                EXPECT_TRUE(kMessages.contains(Message{failure.GetErrorCode()})) << failure.GetErrorMessage();
                refused.insert(Message{failure.GetErrorCode()});
            }
        }
    }

    ScorePredicate* Read(xercesc::DOMElement* element, const ScoreDictionary& fields, const ScoreDictionary* derived) {
        const std::string tag = translator.ToString(element->getTagName());
        if (tag == "SimplePredicate") {
            return translator.ParsePredicate(element, &fields, derived, reads % 3 == 0);
        }
        if (tag == "SimpleSetPredicate") {
            return translator.ParseSetPredicate(element, &fields, derived);
        }
        return translator.ParseCompoundPredicate(element, &fields, derived, reads % 3 == 0);
    }

    static inline const std::set<Message> kMessages{MISSING_NODE_IN,
                                                    MISSING_ATTRIBUTE,
                                                    MISSING_ATTRIBUTE_OF,
                                                    MISSING_VARIABLE_IN_BOTH,
                                                    INVALID_VALUE_OF_TYPE,
                                                    INVALID_ATTRIBUTE_VALUE,
                                                    INVALID_ATTRIBUTE_VALUE_IN,
                                                    INVALID_CONTENT,
                                                    VALUE_NOT_IN_RANGE,
                                                    ATTRIBUTE_NEEDS_NULL_TEXT,
                                                    CONFLICTING_ATTRIBUTES,
                                                    PROCESSING_ATTRIBUTE_FAILED,
                                                    ARRAY_SIZE_MISMATCH,
                                                    EMPTY_IN,
                                                    NO_VALID_VALUE,
                                                    UNSUPPORTED_VALUE};

    ParsedXml document;
    TestTranslator translator{"UTF-8"};
    std::vector<xercesc::DOMElement*> conditions;
    std::set<Message> refused;
    int reads = 0;
};

TEST_P(PredicateMutation, TheSampleItselfIsRead) {
    ReadAll();
    EXPECT_TRUE(refused.empty());
    EXPECT_GE(conditions.size(), 8u);
}

TEST_P(PredicateMutation, EveryAttributeMayBeAnything) {
    for (const char16_t* name : {u"field", u"operator", u"value", u"booleanOperator"}) {
        for (xercesc::DOMElement* element : conditions) {
            const bool wasThere = element->hasAttribute(name);
            const std::u16string text = element->getAttribute(name);
            for (const char16_t* other : kTexts) {
                element->setAttribute(name, other);
                ReadAll();
            }
            element->removeAttribute(name);
            ReadAll();
            if (wasThere) {
                element->setAttribute(name, text.c_str());
            }
        }
    }
    for (const Message message :
         {MISSING_ATTRIBUTE_OF, MISSING_VARIABLE_IN_BOTH, INVALID_ATTRIBUTE_VALUE_IN, ATTRIBUTE_NEEDS_NULL_TEXT,
          CONFLICTING_ATTRIBUTES, NO_VALID_VALUE, UNSUPPORTED_VALUE}) {
        EXPECT_TRUE(refused.contains(message)) << static_cast<int>(message);
    }
    refused.clear();
    ReadAll();
    EXPECT_TRUE(refused.empty());
}

TEST_P(PredicateMutation, EveryArrayMayHoldAnything) {
    for (xercesc::DOMElement* array : Elements(document, u"Array")) {
        const std::u16string content = array->getTextContent();
        for (const char16_t* name : {u"n", u"type"}) {
            const std::u16string text = array->getAttribute(name);
            for (const char16_t* other : kTexts) {
                array->setAttribute(name, other);
                for (const char16_t* items : kTexts) {
                    array->setTextContent(items);
                    ReadAll();
                }
            }
            array->setAttribute(name, text.c_str());
        }
        array->setTextContent(content.c_str());
    }
    for (const Message message :
         {INVALID_VALUE_OF_TYPE, INVALID_CONTENT, PROCESSING_ATTRIBUTE_FAILED, ARRAY_SIZE_MISMATCH, EMPTY_IN}) {
        EXPECT_TRUE(refused.contains(message)) << static_cast<int>(message);
    }
    refused.clear();
    ReadAll();
    EXPECT_TRUE(refused.empty());
}

std::string SampleName(const testing::TestParamInfo<const char*>& sample) {
    return std::string(sample.param) == "approval-tree.pmml" ? "Tree" : "Rules";
}

INSTANTIATE_TEST_SUITE_P(Samples, PredicateMutation, testing::Values("approval-tree.pmml", "review-rules.pmml"),
                         SampleName);

} // namespace
} // namespace veltrane::tests
