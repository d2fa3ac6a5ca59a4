#include "factory/documents/subtree_nodes.h"

#include "factory/documents/tree_links.h"

namespace veltrane::factory {

namespace {

using xercesc::DOMDocument;
using xercesc::DOMElement;
using xercesc::DOMNode;

/// On a document that has records. Any text does as data that isn't null.
constexpr char16_t kDocumentKey[] = u"veltrane:subtrees";

DOMElement* MakeElement(DOMDocument& document, const SubtreeRecords& records, const SubtreeNode& node) {
    DOMElement* element = document.createElement(records.names[node.tag]);
    if (node.attributeCount > 0) {
        ReserveAttributes(element, node.attributeCount);
    }
    const SubtreeAttribute* const first = records.attributes + node.first;
    for (const SubtreeAttribute* at = first; at != first + node.attributeCount; ++at) {
        xercesc::DOMAttr* attribute = document.createAttribute(records.names[at->name]);
        AddAttribute(element, attribute);
        SetValue(attribute, document.createTextNode(records.texts + at->value), true);
    }
    return element;
}

/// The element behind another one in the order of the document, and within a third one.
DOMElement* NextWithin(DOMElement* element, const DOMElement* root) {
    if (DOMElement* child = element->getFirstElementChild(); child != nullptr) {
        return child;
    }
    while (element != root) {
        if (DOMElement* next = element->getNextElementSibling(); next != nullptr) {
            return next;
        }
        // between two elements there may be references to entities
        DOMNode* parent = element->getParentNode();
        while (parent->getNodeType() != DOMNode::ELEMENT_NODE) {
            parent = parent->getParentNode();
        }
        element = static_cast<DOMElement*>(parent);
    }
    return nullptr;
}

} // namespace

TreePlace MakeNodes(DOMElement& element, const SubtreeRecords& records, std::uint32_t root, std::uint32_t end,
                    std::uint32_t open) {
    DOMDocument& document = *element.getOwnerDocument();
    TreePlace place{&element, &element};
    std::uint32_t at = root;
    const auto leave = [&](std::uint32_t parent) {
        for (; at != parent; at = records.nodes[at].parent) {
            place = {place.parent->getParentNode(), place.parent};
        }
    };
    for (std::uint32_t i = root + 1; i < end; ++i) {
        const SubtreeNode& node = records.nodes[i];
        leave(node.parent);
        if (node.tag == SubtreeNode::kText) {
            xercesc::DOMText* text = document.createTextNode(records.texts + node.first);
            AppendText(place.parent, text);
            place.last = text;
        } else {
            DOMElement* made = MakeElement(document, records, node);
            AppendElement(place.parent, made);
            place = {made, made};
            at = i;
        }
    }
    leave(open);
    return place;
}

void RestoreSubtrees(DOMElement& element) {
    const DOMDocument* document = element.getOwnerDocument();
    if (document == nullptr || document->getUserData(kDocumentKey) == nullptr) {
        return;
    }
    for (DOMElement* at = &element; at != nullptr;) {
        const Subtree* subtree = SubtreeOf(*at);
        DOMElement* next = NextWithin(at, &element);
        if (subtree != nullptr) {
            at->setUserData(kSubtreeKey, nullptr, nullptr);
            const SubtreeRecords& records = *subtree->records;
            MakeNodes(*at, records, subtree->root, records.nodes[subtree->root].end, subtree->root);
        }
        at = next;
    }
}

void MarkDocument(DOMDocument& document) {
    document.setUserData(kDocumentKey, const_cast<char16_t*>(kDocumentKey), nullptr);
}

void MarkSubtree(DOMElement& element, const Subtree& subtree) {
    element.setUserData(kSubtreeKey, const_cast<Subtree*>(&subtree), nullptr);
}

} // namespace veltrane::factory
