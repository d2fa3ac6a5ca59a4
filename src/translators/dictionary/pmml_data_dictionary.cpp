#include "diagnostics/raise.h"
#include "translators/dictionary/data_field_reader.h"
#include "translators/frame/element_walk.h"
#include "translators/frame/hand_over.h"

#include <MCVeltrane_900/BaseDictionary.h>
#include <MCVeltrane_900/PMMLModelTags.h>
#include <MCVeltrane_900/PMMLTranslator.h>

#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/util/NumberFormatException.hpp>
#include <xercesc/util/XMLString.hpp>

#include <memory>
#include <optional>

namespace MCVeltrane_900 {
namespace {

using veltrane::diagnostics::Message;
using veltrane::diagnostics::Raise;
using veltrane::translators::ChildElements;
using veltrane::translators::DataFieldReader;
using veltrane::translators::DocumentText;
using veltrane::translators::Equals;
using veltrane::translators::HasTag;

std::optional<int> ReadCount(const XMLCh* text) {
    try {
        return xercesc::XMLString::parseInt(text);
    } catch (const xercesc::NumberFormatException&) {
        return std::nullopt;
    }
}

/// A text that is no number matches no count either.
void CheckNumberOfFields(const xercesc::DOMElement* dataDictionary, int count, const DocumentText& text) {
    const XMLCh* declared =
        BaseTranslator::GetAttributeForced(dataDictionary, PMMLModelTags::XML_ATT_DATADICT_NUMBEROFFIELDS);
    if (Equals(declared, "")) {
        Raise<Message::NULL_ATTRIBUTE>("numberOfFields", "DataDictionary");
    }
    const std::optional<int> number = ReadCount(declared);
    if (number != count) {
        Raise<Message::NUMBER_MISMATCH>(number ? std::to_string(*number) : text(declared), "numberOfFields",
                                        std::to_string(count), "DataField", "DataDictionary");
    }
}

} // namespace

ScoreDictionary* PMMLTranslator::ParseDictionary(xercesc::DOMNode* dataDictionary, bool withEncoders) {
    if (!dataDictionary || dataDictionary->getNodeType() != xercesc::DOMNode::ELEMENT_NODE) {
        Raise<Message::MISSING_NODE_IN>("DataDictionary", "PMML");
    }
    if (!GetTranscoder()) {
        CreateTranscoder(fEncoding);
    }

    const DocumentText text(*this, &PMMLTranslator::ToString);
    DataFieldReader reader(*this, text);
    auto dictionary = std::make_unique<BaseDictionary>();
    int count = 0;
    for (xercesc::DOMElement* child : ChildElements(dataDictionary)) {
        if (HasTag(child, PMMLModelTags::XML_ELE_EXTENSION)) {
            continue;
        }
        if (!HasTag(child, PMMLModelTags::XML_ELE_DATAFIELD)) {
            Raise<Message::UNEXPECTED_NODE_IN>(text.Tag(child), "DataDictionary", "Extension");
        }
        ++count;
        veltrane::translators::AddVar(*dictionary, reader.Read(child, *dictionary, withEncoders));
    }
    CheckNumberOfFields(static_cast<const xercesc::DOMElement*>(dataDictionary), count, text);
    return dictionary.release();
}

} // namespace MCVeltrane_900
