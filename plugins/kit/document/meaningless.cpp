#include "kit/document/meaningless.h"

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMText.hpp>

#include <string>

namespace veltrane_kit {

namespace {

using xercesc::DOMElement;
using xercesc::DOMNode;

bool IsText(const DOMNode* node) {
    return node->getNodeType() == DOMNode::TEXT_NODE || node->getNodeType() == DOMNode::CDATA_SECTION_NODE;
}

/// Whether something that counts stands in the Extensions of an element.
bool NeedsExtensions(const DOMNode* parent) {
    if (Same(parent->getNodeName(), u"BayesInputs")) {
        return true;
    }
    return Same(parent->getNodeName(), u"Apply") &&
           Same(static_cast<const DOMElement*>(parent)->getAttribute(u"function"),
                u"imputeCatFieldMissingAgainstConTarget");
}

bool IsMeaningless(const DOMNode* node) {
    switch (node->getNodeType()) {
    case DOMNode::COMMENT_NODE:
    case DOMNode::PROCESSING_INSTRUCTION_NODE:
        return true;
    case DOMNode::ELEMENT_NODE:
        return Same(node->getNodeName(), u"Extension") && !NeedsExtensions(node->getParentNode());
    default:
        return false;
    }
}

/// Texts that follow each other, of which one is made however many there are.
class TextRun {
public:
    void Add(DOMNode* text) {
        if (fFirst == nullptr) {
            fFirst = text;
            return;
        }
        if (!fIsJoined) {
            fJoined = fFirst->getNodeValue();
            fIsJoined = true;
        }
        fJoined += text->getNodeValue();
        text->getParentNode()->removeChild(text);
    }

    void End() {
        if (fFirst != nullptr && (fIsJoined || fFirst->getNodeType() == DOMNode::CDATA_SECTION_NODE)) {
            const XMLCh* content = fIsJoined ? fJoined.c_str() : fFirst->getNodeValue();
            fFirst->getParentNode()->replaceChild(fFirst->getOwnerDocument()->createTextNode(content), fFirst);
        }
        fFirst = nullptr;
        fIsJoined = false;
    }

private:
    DOMNode* fFirst = nullptr;
    std::u16string fJoined;
    bool fIsJoined = false;
};

/// Puts copies of an entity's content, which can't be changed itself, where it is referred to.
/// @return the first of them, or what comes after the reference
DOMNode* Unfold(DOMNode* reference) {
    DOMNode* parent = reference->getParentNode();
    DOMNode* next = reference->getNextSibling();
    for (const DOMNode* child = reference->getLastChild(); child != nullptr; child = child->getPreviousSibling()) {
        next = parent->insertBefore(child->cloneNode(true), next);
    }
    parent->removeChild(reference);
    return next;
}

/// What is taken out goes with the document's memory: giving it back at once would take a call inside the other for
/// each level of it.
void TidyChildren(DOMElement* parent) {
    TextRun run;
    for (DOMNode* node = parent->getFirstChild(); node != nullptr;) {
        DOMNode* next = node->getNextSibling();
        if (node->getNodeType() == DOMNode::ENTITY_REFERENCE_NODE) {
            next = Unfold(node);
        } else if (IsMeaningless(node)) {
            parent->removeChild(node);
        } else if (IsText(node)) {
            run.Add(node);
        } else {
            run.End();
        }
        node = next;
    }
    run.End();
}

/// The next element in the order of the document; null at its end.
DOMElement* After(DOMElement* element, const DOMElement* root) {
    if (DOMElement* child = element->getFirstElementChild(); child != nullptr) {
        return child;
    }
    for (; element != root; element = static_cast<DOMElement*>(element->getParentNode())) {
        if (DOMElement* next = element->getNextElementSibling(); next != nullptr) {
            return next;
        }
    }
    return nullptr;
}

} // namespace

void DropMeaningless(const Element& root) {
    for (DOMElement* element = root.Dom(); element != nullptr; element = After(element, root.Dom())) {
        TidyChildren(element);
    }
}

} // namespace veltrane_kit
