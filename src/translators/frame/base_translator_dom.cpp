#include "diagnostics/raise.h"
#include "translators/frame/local_text.h"

#include <MCVeltrane_900/BaseTranslator.h>
#include <MCVeltrane_900/SmartString.h>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/XMLString.hpp>

#include <memory>

namespace MCVeltrane_900 {
namespace {

using veltrane::diagnostics::Message;
using veltrane::diagnostics::Raise;
using veltrane::translators::WideName;

/// The node itself or the first of its following siblings that is an element.
xercesc::DOMNode* ElementFrom(xercesc::DOMNode* node) {
    while (node && node->getNodeType() != xercesc::DOMNode::ELEMENT_NODE) {
        node = node->getNextSibling();
    }
    return node;
}

xercesc::DOMNode* FindChild(xercesc::DOMNode* node, const XMLCh* tag) {
    xercesc::DOMNode* child = BaseTranslator::GetFirstChildElt(node);
    while (child && !xercesc::XMLString::equals(child->getNodeName(), tag)) {
        child = BaseTranslator::GetNextSiblingElt(child);
    }
    return child;
}

/// Text of the document for a message that no transcoder is at hand for.
std::string MessageText(const XMLCh* text) {
    return SmartString(text).toUTF8();
}

/// The value of an attribute, which nearly always is one text. The attribute itself gives it by way of casts that cost
/// more than finding it.
const XMLCh* ValueOf(const xercesc::DOMAttr& attribute) {
    const xercesc::DOMNode* text = attribute.getFirstChild();
    const bool isOneText =
        text != nullptr && text->getNodeType() == xercesc::DOMNode::TEXT_NODE && text->getNextSibling() == nullptr;
    return isOneText ? text->getNodeValue() : attribute.getValue();
}

struct ReleaseText {
    void operator()(XMLCh* text) const { xercesc::XMLString::release(&text); }
};
using OwnedText = std::unique_ptr<XMLCh, ReleaseText>;

} // namespace

xercesc::DOMNode* BaseTranslator::GetFirstChildElt(xercesc::DOMNode* node) {
    return node ? ElementFrom(node->getFirstChild()) : nullptr;
}

xercesc::DOMNode* BaseTranslator::GetNextSiblingElt(xercesc::DOMNode* node) {
    return node ? ElementFrom(node->getNextSibling()) : nullptr;
}

const XMLCh* BaseTranslator::GetAttribute(const xercesc::DOMElement* element, const std::string& name) {
    const xercesc::DOMAttr* attribute = element->getAttributeNode(WideName(name).Get());
    return attribute == nullptr ? u"" : ValueOf(*attribute);
}

const XMLCh* BaseTranslator::GetAttributeForced(const xercesc::DOMElement* element, const std::string& name) {
    const xercesc::DOMAttr* attribute = element->getAttributeNode(WideName(name).Get());
    if (!attribute) {
        Raise<Message::MISSING_ATTRIBUTE_OF>(name, MessageText(element->getTagName()));
    }
    return ValueOf(*attribute);
}

xercesc::DOMNode* BaseTranslator::GetChildByTag(xercesc::DOMNode* node, const std::string& tag) {
    return FindChild(node, WideName(tag).Get());
}

xercesc::DOMNode* BaseTranslator::GetChildTag(xercesc::DOMNode* node, XMLCh* tag) {
    const OwnedText owner(tag);
    return FindChild(node, tag);
}

xercesc::DOMNode* BaseTranslator::GetChildByTagForced(xercesc::DOMNode* node, const std::string& tag) {
    xercesc::DOMNode* child = GetChildByTag(node, tag);
    if (!child) {
        Raise<Message::MISSING_NODE>(tag);
    }
    return child;
}

xercesc::DOMNode* BaseTranslator::GetChildTagForced(xercesc::DOMNode* node, XMLCh* tag) {
    const OwnedText owner(tag);
    xercesc::DOMNode* child = FindChild(node, tag);
    if (!child) {
        Raise<Message::MISSING_NODE>(MessageText(tag));
    }
    return child;
}

xercesc::DOMNodeList* BaseTranslator::GetElementsByTagName(const xercesc::DOMDocument* document,
                                                           const std::string& tag) {
    if (!document) {
        Raise<Message::MISSING_NODE>(tag);
    }
    return document->getElementsByTagName(WideName(tag).Get());
}

xercesc::DOMNodeList* BaseTranslator::GetElementsByTagName(const xercesc::DOMElement* element, const std::string& tag) {
    if (!element) {
        Raise<Message::MISSING_NODE>(tag);
    }
    return element->getElementsByTagName(WideName(tag).Get());
}

} // namespace MCVeltrane_900
