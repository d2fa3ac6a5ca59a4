#include "translators/element_walk.h"

#include <xercesc/dom/DOMElement.hpp>

namespace veltrane::translators {

using xercesc::DOMElement;
using xercesc::DOMNode;

namespace {

DOMElement* ElementFrom(DOMNode* node) {
    while (node != nullptr && node->getNodeType() != DOMNode::ELEMENT_NODE) {
        node = node->getNextSibling();
    }
    return static_cast<DOMElement*>(node);
}

} // namespace

bool Equals(const XMLCh* text, const char* literal) {
    if (text == nullptr) {
        return *literal == '\0';
    }
    while (*literal != '\0' && *text == static_cast<unsigned char>(*literal)) {
        ++text;
        ++literal;
    }
    return *text == 0 && *literal == '\0';
}

bool HasTag(const DOMElement* element, const char* tag) {
    return Equals(element->getTagName(), tag);
}

DOMElement* FirstChildElement(const DOMNode* node) {
    return ElementFrom(node->getFirstChild());
}

DOMElement* NextElement(const DOMNode* node) {
    return ElementFrom(node->getNextSibling());
}

ChildElements::Iterator& ChildElements::Iterator::operator++() {
    fElement = NextElement(fElement);
    return *this;
}

DescendantsByTag::DescendantsByTag(const DOMElement* root, const char* tag) : fRoot(root), fCurrent(root), fTag(tag) {}

DOMElement* DescendantsByTag::Next() {
    while (fCurrent != nullptr) {
        fCurrent = Step();
        if (fCurrent != nullptr && fCurrent->getNodeType() == DOMNode::ELEMENT_NODE) {
            const auto* element = static_cast<const DOMElement*>(fCurrent);
            if (HasTag(element, fTag)) {
                return const_cast<DOMElement*>(element);
            }
        }
    }
    return nullptr;
}

// The node behind the current one: its first child, else the next sibling of it or of the nearest ancestor that has
// one. The root bounds the climb.
const DOMNode* DescendantsByTag::Step() const {
    if (const DOMNode* child = fCurrent->getFirstChild()) {
        return child;
    }
    for (const DOMNode* node = fCurrent; node != fRoot; node = node->getParentNode()) {
        if (const DOMNode* sibling = node->getNextSibling()) {
            return sibling;
        }
    }
    return nullptr;
}

bool HasDescendants(const DOMElement* root, const char* tag, int count) {
    DescendantsByTag walk(root, tag);
    while (count > 0 && walk.Next() != nullptr) {
        --count;
    }
    return count <= 0;
}

} // namespace veltrane::translators
