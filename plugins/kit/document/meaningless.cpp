#include "kit/document/meaningless.h"

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMText.hpp>

#include <string>
#include <vector>

namespace veltrane_kit {

namespace {

using xercesc::DOMElement;
using xercesc::DOMNode;

/// Whether something that counts stands in the Extensions of an element.
bool NeedsExtensions(const DOMNode* parent) {
    return Same(parent->getNodeName(), u"BayesInputs");
}

bool IsMeaningless(const DOMElement* element) {
    return Same(element->getTagName(), u"Extension") && !NeedsExtensions(element->getParentNode());
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

/// A way through a document. What is taken out goes with the document's memory: giving it back at once would take a
/// call inside the other for each level of it.
class Sweep {
public:
    Sweep(ElementVisitor* visitor, const DocumentText& text) : fVisitor(visitor), fText(text) {}

    void Run(DOMElement* root) {
        DOMNode* node = Enter(root);
        while (!fPath.empty()) {
            node = node == nullptr ? Leave() : Pass(node);
        }
    }

private:
    /// @return the first node in an element
    DOMNode* Enter(DOMElement* element) {
        fTexts.End();
        fPath.push_back(element);
        if (fVisitor != nullptr) {
            fVisitor->Enter(Element(element, fText));
        }
        DOMNode* child = element->getFirstChild();
        if (child == nullptr && fVisitor != nullptr) {
            PassRecords(Element(element, fText));
        }
        return child;
    }

    /// @return the node behind the element that was entered last
    DOMNode* Leave() {
        fTexts.End();
        DOMElement* element = fPath.back();
        fPath.pop_back();
        if (fVisitor != nullptr) {
            fVisitor->Leave(Element(element, fText));
        }
        return fPath.empty() ? nullptr : element->getNextSibling();
    }

    /// @return the node that comes next
    DOMNode* Pass(DOMNode* node) {
        if (node->getNodeType() == DOMNode::ELEMENT_NODE) {
            auto* element = static_cast<DOMElement*>(node);
            return IsMeaningless(element) ? Remove(node) : Enter(element);
        }
        DOMNode* next = node->getNextSibling();
        switch (node->getNodeType()) {
        case DOMNode::TEXT_NODE:
        case DOMNode::CDATA_SECTION_NODE:
            fTexts.Add(node);
            return next;
        case DOMNode::ENTITY_REFERENCE_NODE:
            return Unfold(node);
        default:
            return Remove(node);
        }
    }

    /// Goes through what an element of the tree holds as records.
    void PassRecords(const Element& element) {
        std::vector<Element> path;
        Element at = element.FirstChild();
        while (at || !path.empty()) {
            if (at) {
                fVisitor->Enter(at);
                path.push_back(at);
                at = at.FirstChild();
            } else {
                const Element left = path.back();
                path.pop_back();
                fVisitor->Leave(left);
                at = left.NextSibling();
            }
        }
    }

    DOMNode* Remove(DOMNode* node) {
        DOMNode* next = node->getNextSibling();
        fPath.back()->removeChild(node);
        return next;
    }

    ElementVisitor* fVisitor;
    const DocumentText& fText;
    std::vector<DOMElement*> fPath; ///< the elements that are entered and not left
    TextRun fTexts;                 ///< at the end of what was passed in the last of them
};

} // namespace

void DropMeaningless(const Element& root, ElementVisitor* visitor) {
    Sweep(visitor, root.Reader()).Run(root.Dom());
}

} // namespace veltrane_kit
