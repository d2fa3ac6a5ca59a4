#include "factory/documents/tree_links.h"

#include <xercesc/dom/impl/DOMAttrImpl.hpp>
#include <xercesc/dom/impl/DOMAttrMapImpl.hpp>
#include <xercesc/dom/impl/DOMCasts.hpp>
#include <xercesc/dom/impl/DOMElementImpl.hpp>
#include <xercesc/dom/impl/DOMTextImpl.hpp>

namespace veltrane::factory {

namespace {

using xercesc::DOMAttrImpl;
using xercesc::DOMChildNode;
using xercesc::DOMElementImpl;
using xercesc::DOMNode;
using xercesc::DOMParentNode;
using xercesc::DOMTextImpl;

/// The document makes no elements, texts and attributes of other types.
DOMElementImpl& ElementPart(DOMNode* node) {
    return *static_cast<DOMElementImpl*>(static_cast<xercesc::DOMElement*>(node));
}

DOMTextImpl& TextPart(DOMNode* node) {
    return *static_cast<DOMTextImpl*>(static_cast<xercesc::DOMText*>(node));
}

DOMAttrImpl& AttributePart(DOMNode* node) {
    return *static_cast<DOMAttrImpl*>(static_cast<xercesc::DOMAttr*>(node));
}

DOMChildNode& ChildPart(DOMNode* node) {
    switch (node->getNodeType()) {
    case DOMNode::ELEMENT_NODE:
        return ElementPart(node).fChild;
    case DOMNode::TEXT_NODE:
        return TextPart(node).fChild;
    default:
        return *xercesc::castToChildImpl(node);
    }
}

/// The last child is kept as the previous sibling of the first one, which is marked as being that.
template <typename Child>
void Append(DOMParentNode& parent, DOMNode* owner, Child& child) {
    child.fNode.fOwnerNode = owner;
    child.fNode.isOwned(true);
    if (parent.fFirstChild == nullptr) {
        parent.fFirstChild = &child;
        child.fNode.isFirstChild(true);
        child.fChild.previousSibling = &child;
        return;
    }
    DOMChildNode& first = ChildPart(parent.fFirstChild);
    DOMNode* last = first.previousSibling;
    ChildPart(last).nextSibling = &child;
    child.fChild.previousSibling = last;
    first.previousSibling = &child;
}

} // namespace

void AppendElement(DOMNode* parent, xercesc::DOMElement* child) {
    Append(ElementPart(parent).fParent, parent, ElementPart(child));
}

void AppendText(DOMNode* parent, xercesc::DOMText* child) {
    Append(ElementPart(parent).fParent, parent, TextPart(child));
}

void SetValue(xercesc::DOMAttr* attribute, xercesc::DOMText* value, bool isSpecified) {
    Append(AttributePart(attribute).fParent, attribute, TextPart(value));
    AttributePart(attribute).setSpecified(isSpecified);
}

void ReserveAttributes(xercesc::DOMElement* element, XMLSize_t count) {
    ElementPart(element).fAttributes->reserve(count);
}

void AddAttribute(xercesc::DOMElement* element, xercesc::DOMAttr* attribute) {
    ElementPart(element).fAttributes->setNamedItemFast(attribute);
}

} // namespace veltrane::factory
