#include "kit/document/element.h"

#include "kit/document/raise.h"

namespace veltrane_kit {

namespace {

constexpr Word<bool> kFlags[] = {{u"true", true}, {u"1", true}, {u"false", false}, {u"0", false}};

} // namespace

const XMLCh* ValueOf(const xercesc::DOMAttr& attribute) {
    const xercesc::DOMNode* text = attribute.getFirstChild();
    const bool isOneText =
        text != nullptr && text->getNodeType() == xercesc::DOMNode::TEXT_NODE && text->getNextSibling() == nullptr;
    return isOneText ? text->getNodeValue() : attribute.getValue();
}

std::string Element::Tag() const {
    return Narrow(fElement->getTagName());
}

bool Element::Is(const XMLCh* tag) const {
    return fElement != nullptr && Same(fElement->getTagName(), tag);
}

bool Element::Has(const XMLCh* name) const {
    return fElement->getAttributeNode(name) != nullptr;
}

const XMLCh* Element::Find(const XMLCh* name) const {
    const xercesc::DOMAttr* attribute = fElement->getAttributeNode(name);
    return attribute == nullptr ? nullptr : ValueOf(*attribute);
}

const XMLCh* Element::Raw(const XMLCh* name) const {
    const XMLCh* text = Find(name);
    return text == nullptr ? u"" : text;
}

const XMLCh* Element::Filled(const XMLCh* name) const {
    const XMLCh* text = Find(name);
    if (text == nullptr) {
        Raise<Message::MISSING_ATTRIBUTE_OF>(Narrow(name), Tag());
    }
    if (*text == 0) {
        Raise<Message::NULL_ATTRIBUTE>(Narrow(name), Tag());
    }
    return text;
}

std::string Element::Text(const XMLCh* name) const {
    return (*fText)(Filled(name));
}

std::string Element::AnyText(const XMLCh* name) const {
    const XMLCh* text = Find(name);
    if (text == nullptr) {
        Raise<Message::MISSING_ATTRIBUTE_OF>(Narrow(name), Tag());
    }
    return (*fText)(text);
}

std::string Element::TextOr(const XMLCh* name, const std::string& fallback) const {
    const XMLCh* text = Find(name);
    return text != nullptr ? (*fText)(text) : fallback;
}

double Element::Number(const XMLCh* name) const {
    double number = 0.0;
    if (!ReadNumber(Filled(name), number)) {
        RaiseInvalid(name);
    }
    return number;
}

double Element::NumberOr(const XMLCh* name, double fallback) const {
    return Has(name) ? Number(name) : fallback;
}

int Element::IntegerOr(const XMLCh* name, int fallback) const {
    if (Has(name) && !ReadInteger(Filled(name), fallback)) {
        RaiseInvalid(name);
    }
    return fallback;
}

bool Element::FlagOr(const XMLCh* name, bool fallback) const {
    return OneOfOr(name, kFlags, fallback);
}

Element Element::Child(const XMLCh* tag) const {
    Element found;
    for (const Element child : Children()) {
        if (!child.Is(tag)) {
            continue;
        }
        if (found) {
            Raise<Message::MORE_THAN_ONE>(Narrow(tag), Tag());
        }
        found = child;
    }
    return found;
}

Element Element::RequireChild(const XMLCh* tag) const {
    const Element child = Child(tag);
    if (!child) {
        Raise<Message::MISSING_NODE_IN>(Narrow(tag), Tag());
    }
    return child;
}

Element Element::FirstChild() const {
    xercesc::DOMElement* child = fElement == nullptr ? nullptr : fElement->getFirstElementChild();
    return child == nullptr ? Element() : Element(child, *fText);
}

Element Element::NextSibling() const {
    xercesc::DOMElement* next = fElement == nullptr ? nullptr : fElement->getNextElementSibling();
    return next == nullptr ? Element() : Element(next, *fText);
}

std::string Element::Content() const {
    return (*fText)(fElement->getTextContent());
}

void Element::RaiseInvalid(const XMLCh* name) const {
    Raise<Message::INVALID_ATTRIBUTE_VALUE_IN>((*fText)(Raw(name)), Narrow(name), Tag());
}

void Element::RaiseMisplaced() const {
    Raise<Message::INVALID_NODE>(Tag(), Narrow(fElement->getParentNode()->getNodeName()));
}

} // namespace veltrane_kit
