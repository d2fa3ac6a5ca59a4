#include "diagnostics/raise.h"
#include "translators/arrays/array_scan.h"
#include "translators/arrays/white_space_tokens.h"
#include "translators/frame/document_text.h"
#include "translators/frame/element_walk.h"

#include <MCVeltrane_900/PMMLModelTags.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/ScoreBinningEncoder.h>
#include <MCVeltrane_900/ScoreCatNumericEncoder.h>
#include <MCVeltrane_900/ScoreCatStringEncoder.h>

#include <xercesc/dom/DOM.hpp>

#include <typeinfo>

using veltrane::diagnostics::Message;
using veltrane::diagnostics::Raise;
using veltrane::translators::ArrayItem;
using veltrane::translators::DocumentText;
using veltrane::translators::Equals;
using veltrane::translators::ScanArray;
using veltrane::translators::UnescapeQuotes;
using veltrane::translators::WhiteSpaceTokens;

namespace MCVeltrane_900 {

namespace {

using Tags = PMMLModelTags;

constexpr const char* kBackslash = "\\";

/// Whether one of an encoder's categories decodes to a single backslash. The library's own encoders know at once, so
/// that a document may have as many arrays as categories; any other is asked for all of them.
bool HasBackslashCategory(const ScoreEncoder& encoder) {
    if (typeid(encoder) == typeid(ScoreCatStringEncoder)) {
        return encoder.EncodeConst(std::string(kBackslash)) >= 0;
    }
    if (typeid(encoder) == typeid(ScoreCatNumericEncoder) || typeid(encoder) == typeid(ScoreBinningEncoder)) {
        return false; // they decode to no text
    }
    for (int code = 0; code < encoder.GetNumberOfCategories(); ++code) {
        if (encoder.Decode(code) == kBackslash) {
            return true;
        }
    }
    return false;
}

/// A variable with a category that is a single backslash can't have escaped quotes in its arrays.
bool HasEscapedQuotes(const ScoreDictVar* var) {
    const ScoreEncoder* encoder = var != nullptr ? var->GetEncoder() : nullptr;
    return encoder == nullptr || !HasBackslashCategory(*encoder);
}

/// The item count that the attribute "n" states; 0 when it says nothing.
int StatedSize(const xercesc::DOMNode* array) {
    const auto* element = dynamic_cast<const xercesc::DOMElement*>(array);
    const XMLCh* text = element != nullptr ? BaseTranslator::GetAttribute(element, Tags::XML_ATT_ARRAY_N) : nullptr;
    return text != nullptr && *text != 0 ? BaseTranslator::VerifyInt(text) : 0;
}

bool IsBlank(const XMLCh* text) {
    return WhiteSpaceTokens(text).Next() == nullptr;
}

void Verify(const std::string& item, const XMLCh* type) {
    if (Equals(type, Tags::XML_VAL_ARRAY_TYPE_REAL)) {
        BaseTranslator::VerifyDouble(item);
    } else if (Equals(type, Tags::XML_VAL_ARRAY_TYPE_INT)) {
        BaseTranslator::VerifyInt(item);
    }
}

/// The size that an array of numbers has to have; nothing when it isn't checked.
std::optional<int> RequiredSize(const xercesc::DOMElement* array, int count, const DocumentText& text) {
    const XMLCh* tag = array->getTagName();
    if (Equals(tag, Tags::XML_ELE_XBASISROW) || Equals(tag, Tags::XML_ELE_UPERXBASISROW)) {
        return count;
    }
    if (!Equals(tag, Tags::XML_ELE_ARRAY)) {
        Raise<Message::UNEXPECTED_VALUE>(text(tag), Tags::XML_ELE_ARRAY);
    }
    const XMLCh* stated = BaseTranslator::GetAttribute(array, Tags::XML_ATT_ARRAY_N);
    return *stated != 0 ? std::optional<int>(BaseTranslator::VerifyInt(stated)) : std::nullopt;
}

/// The text of an array of numbers, once its element is what it has to be.
const XMLCh* NumbersText(const xercesc::DOMElement* array) {
    const xercesc::DOMNode* child = array->getFirstChild();
    if (child == nullptr) {
        Raise<Message::NO_CHILD_ELEMENT>(Tags::XML_ELE_ARRAY);
    }
    const XMLCh* text = child->getNodeValue();
    if (text == nullptr || IsBlank(text)) {
        Raise<Message::EMPTY_IN>(Tags::XML_ELE_VALUE, Tags::XML_ELE_ARRAY);
    }
    return text;
}

/// The tokens of an array of numbers, each converted by `convert`.
template <typename Number>
std::vector<Number> ReadNumbers(const xercesc::DOMElement* array, int count, const DocumentText& text,
                                Number (*convert)(const XMLCh*)) {
    if (array == nullptr) {
        Raise<Message::MISSING_NODE>("Array, x-BasisRow,X-BasisRow");
    }
    const std::optional<int> required = RequiredSize(array, count, text);
    WhiteSpaceTokens tokens(NumbersText(array));
    const std::size_t found = tokens.Count();
    if (required && (*required < 0 || static_cast<std::size_t>(*required) != found)) {
        Raise<Message::ARRAY_SIZE_MISMATCH>(std::to_string(*required), Tags::XML_ATT_ARRAY_N, std::to_string(found));
    }
    std::vector<Number> numbers;
    numbers.reserve(found);
    while (const XMLCh* token = tokens.Next()) {
        numbers.push_back(convert(token));
    }
    return numbers;
}

} // namespace

xercesc::DOMNode* PMMLTranslator::GetArrayNode(xercesc::DOMNode* node) {
    xercesc::DOMNode* child = node != nullptr ? node->getFirstChild() : nullptr;
    while (child != nullptr && !Equals(child->getNodeName(), Tags::XML_ELE_ARRAY)) {
        child = child->getNextSibling();
    }
    if (child == nullptr) {
        Raise<Message::MISSING_NODE_IN>(Tags::XML_ELE_ARRAY, Tags::XML_ELE_SETPREDICATE);
    }
    return child;
}

std::vector<std::string> PMMLTranslator::GetArrayElements(xercesc::DOMNode* array, const XMLCh* type,
                                                          const ScoreDictVar* var) {
    const bool escapes = HasEscapedQuotes(var);
    const int expected = StatedSize(array);
    const xercesc::DOMNode* child = array != nullptr ? array->getFirstChild() : nullptr;
    if (child == nullptr) {
        Raise<Message::MISSING_NODE_IN>(Tags::XML_ELE_ARRAY, Tags::XML_ELE_SETPREDICATE);
    }
    const XMLCh* value = child->getNodeValue();
    if (value == nullptr || IsBlank(value)) {
        Raise<Message::EMPTY_IN>(Tags::XML_ELE_VALUE, Tags::XML_ELE_ARRAY);
    }
    const std::string text = ToString(value);
    const std::optional<std::vector<ArrayItem>> items = ScanArray(text, escapes);
    if (!items) {
        Raise<Message::INVALID_CONTENT>(text, Tags::XML_ELE_ARRAY);
    }
    std::vector<std::string> elements;
    elements.reserve(items->size());
    for (const ArrayItem& item : *items) {
        Verify(item.text, type);
        elements.push_back(item.escapedQuotes ? UnescapeQuotes(item.text) : item.text);
    }
    if (expected != 0 && static_cast<std::size_t>(expected) != elements.size()) {
        Raise<Message::ARRAY_SIZE_MISMATCH>(std::to_string(elements.size()), Tags::XML_ATT_ARRAY_N,
                                            std::to_string(expected));
    }
    return elements;
}

std::vector<std::string> PMMLTranslator::ParseStrArray(xercesc::DOMElement* array) {
    if (array == nullptr) {
        return {};
    }
    return GetArrayElements(array, GetAttribute(array, Tags::XML_ATT_ARRAY_TYPE), nullptr);
}

std::vector<double> PMMLTranslator::VerifyDoubleArray(xercesc::DOMElement* array, int count) {
    return ReadNumbers<double>(array, count, DocumentText(*this, &PMMLTranslator::ToString), VerifyDouble);
}

std::vector<int> PMMLTranslator::VerifyIntArray(xercesc::DOMElement* array, int count) {
    return ReadNumbers<int>(array, count, DocumentText(*this, &PMMLTranslator::ToString), VerifyInt);
}

} // namespace MCVeltrane_900
