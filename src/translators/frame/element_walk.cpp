#include "translators/frame/element_walk.h"

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

DescendantsByTag::DescendantsByTag(const DOMElement* root, const char* tag) : fCurrent(root), fTag(tag) {}

DOMElement* DescendantsByTag::Next() {
    while (fCurrent != nullptr) {
        Step();
        if (fCurrent != nullptr && fCurrent->getNodeType() == DOMNode::ELEMENT_NODE) {
            const auto* element = static_cast<const DOMElement*>(fCurrent);
            if (HasTag(element, fTag)) {
                return const_cast<DOMElement*>(element);
            }
        }
    }
    return nullptr;
}

// To the node behind the current one: its first child, else the next sibling of it or of the nearest ancestor that has
// one. The root has no ancestors here, so its siblings are never reached.
void DescendantsByTag::Step() {
    if (const DOMNode* child = fCurrent->getFirstChild()) {
        fAncestors.push_back(fCurrent);
        fCurrent = child;
        return;
    }
    while (!fAncestors.empty()) {
        if (const DOMNode* sibling = fCurrent->getNextSibling()) {
            fCurrent = sibling;
            return;
        }
        fCurrent = fAncestors.back();
        fAncestors.pop_back();
    }
    fCurrent = nullptr;
}

bool HasDescendants(const DOMElement* root, const char* tag, int count) {
    DescendantsByTag walk(root, tag);
    while (count > 0 && walk.Next() != nullptr) {
        --count;
    }
    return count <= 0;
}

} // namespace veltrane::translators
