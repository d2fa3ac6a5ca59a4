#ifndef VELTRANE_TESTS_SUPPORT_DOM_DUMP_H
#define VELTRANE_TESTS_SUPPORT_DOM_DUMP_H

#include <xercesc/dom/DOM.hpp>

#include <string>

/// Everything of a tree that its readers can ask for, as one line of text. Test programs and test plug-ins have it as a
/// header alone.
namespace veltrane::tests {

class DomDump {
public:
    /// The tree below a document, as it is and when all attributes have been taken away from it.
    static std::string Of(xercesc::DOMDocument* document) {
        DomDump dump;
        dump.Append(document);
        Strip(document);
        dump.Append(document);
        return dump.fText;
    }

private:
    using Type = xercesc::DOMNode::NodeType;

    /// The letters of a text as they are, all else as a number.
    void Append(const XMLCh* text) {
        if (text == nullptr) {
            fText += "null";
            return;
        }
        fText += '\'';
        for (; *text != 0; ++text) {
            if (*text > u' ' && *text < 127 && *text != u'\'' && *text != u'\\') {
                fText.push_back(static_cast<char>(*text));
            } else {
                fText += '\\' + std::to_string(*text) + ';';
            }
        }
        fText += '\'';
    }

    void Append(const xercesc::DOMNode* node) {
        fText += '(' + std::to_string(node->getNodeType()) + ' ';
        Append(node->getNodeName());
        fText += '=';
        Append(node->getNodeValue());
        AppendAttributes(node);
        if (node->getNodeType() == Type::TEXT_NODE) {
            fText += static_cast<const xercesc::DOMText*>(node)->isIgnorableWhitespace() ? " ignorable" : "";
        } else if (node->getNodeType() == Type::DOCUMENT_TYPE_NODE) {
            AppendDeclarations(static_cast<const xercesc::DOMDocumentType*>(node));
        }
        AppendChildren(node);
        fText += ')';
    }

    /// A link that doesn't lead back to where it should is told as broken.
    void AppendChildren(const xercesc::DOMNode* node) {
        const xercesc::DOMNode* before = nullptr;
        for (const xercesc::DOMNode* child = node->getFirstChild(); child != nullptr; child = child->getNextSibling()) {
            Append(child);
            if (child->getPreviousSibling() != before ||
                (node->getNodeType() != Type::ATTRIBUTE_NODE && child->getParentNode() != node)) {
                fText += "broken";
            }
            before = child;
        }
        fText += node->getLastChild() != before || node->hasChildNodes() != (before != nullptr) ? "broken" : "";
    }

    void AppendAttributes(const xercesc::DOMNode* node) {
        const xercesc::DOMNamedNodeMap* attributes = node->getAttributes();
        for (XMLSize_t i = 0; attributes != nullptr && i < attributes->getLength(); ++i) {
            const auto* attribute = static_cast<const xercesc::DOMAttr*>(attributes->item(i));
            fText += attribute->getSpecified() ? " @" : " default @";
            fText += attribute->isId() ? "id " : "";
            Append(attribute);
            fText += attribute->getOwnerElement() != node || attributes->getNamedItem(attribute->getName()) != attribute
                         ? "broken"
                         : "";
        }
    }

    /// Takes all attributes away. The declared ones come back with their defaults.
    static void Strip(xercesc::DOMNode* node) {
        const xercesc::DOMNamedNodeMap* attributes = node->getAttributes();
        for (XMLSize_t i = attributes != nullptr ? attributes->getLength() : 0; i > 0; --i) {
            static_cast<xercesc::DOMElement*>(node)->removeAttribute(attributes->item(i - 1)->getNodeName());
        }
        for (xercesc::DOMNode* child = node->getFirstChild(); child != nullptr; child = child->getNextSibling()) {
            if (child->getNodeType() == Type::ELEMENT_NODE) {
                Strip(child);
            }
        }
    }

    void AppendDeclarations(const xercesc::DOMDocumentType* declarations) {
        Append(declarations->getInternalSubset());
        for (const xercesc::DOMNamedNodeMap* map : {declarations->getEntities(), declarations->getNotations()}) {
            for (XMLSize_t i = 0; map != nullptr && i < map->getLength(); ++i) {
                Append(map->item(i));
            }
        }
    }

    std::string fText;
};

} // namespace veltrane::tests

#endif
