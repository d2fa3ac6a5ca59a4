#include "columns/opening/element_text.h"

#include "diagnostics/raise.h"
#include "factory/documents/document_limits.h"
#include "factory/documents/subtree_nodes.h"
#include "factory/documents/xml_text.h"

#include <xercesc/dom/DOM.hpp>

#include <string_view>

namespace veltrane::columns {

namespace {

using xercesc::DOMElement;
using xercesc::DOMNode;

/// Whether a parser would take a character for markup, for a line's end of another kind, or for none.
bool IsEscaped(char16_t character) {
    constexpr std::u16string_view kMarkup = u"&<>\"";
    const bool isControl = character < 0x20 || (character >= 0x7F && character < 0xA0) || character == 0x2028;
    return isControl || kMarkup.find(character) != std::u16string_view::npos;
}

void Write(std::u16string_view text, std::string& out) {
    while (!text.empty()) {
        std::size_t plain = 0;
        while (plain < text.size() && !IsEscaped(text[plain])) {
            ++plain;
        }
        out += factory::ToUtf8(std::u16string(text.substr(0, plain)).c_str());
        if (plain < text.size()) {
            out += "&#" + std::to_string(static_cast<unsigned>(text[plain])) + ';';
            ++plain;
        }
        text.remove_prefix(plain);
    }
}

void Begin(const DOMElement& element, std::string& out) {
    out += '<' + factory::ToUtf8(element.getTagName());
    const xercesc::DOMNamedNodeMap* attributes = element.getAttributes();
    for (XMLSize_t i = 0; i < attributes->getLength(); ++i) {
        const DOMNode* attribute = attributes->item(i);
        out += ' ' + factory::ToUtf8(attribute->getNodeName()) + "=\"";
        Write(attribute->getNodeValue(), out);
        out += '"';
    }
    out += '>';
}

/// What an element holds, at every depth: no recursion goes by a document.
const DOMNode* WriteAndGoOn(const DOMNode* node, const DOMNode* last, std::string& out) {
    const DOMNode::NodeType type = node->getNodeType();
    if (type == DOMNode::ELEMENT_NODE) {
        Begin(*static_cast<const DOMElement*>(node), out);
    } else if (type == DOMNode::TEXT_NODE || type == DOMNode::CDATA_SECTION_NODE) {
        Write(node->getNodeValue(), out);
    }
    const DOMNode* next = node->getFirstChild();
    while (next == nullptr) {
        if (node->getNodeType() == DOMNode::ELEMENT_NODE) {
            out += "</" + factory::ToUtf8(node->getNodeName()) + '>';
        }
        if (node == last) {
            return nullptr;
        }
        next = node->getNextSibling();
        node = node->getParentNode();
    }
    return next;
}

} // namespace

std::string TextOf(DOMElement& element) {
    try {
        factory::RestoreSubtrees(element);
    } catch (const factory::DocumentRefused&) {
        diagnostics::Raise<diagnostics::Message::CANNOT_OPEN_DOCUMENT>();
    }
    // References to control characters are known to version 1.1 alone.
    const XMLCh* version = element.getOwnerDocument()->getXmlVersion();
    const bool isNewer = version != nullptr && std::u16string_view(version) == u"1.1";
    std::string text = isNewer ? "<?xml version=\"1.1\"?>" : "";
    for (const DOMNode* node = &element; node != nullptr;) {
        node = WriteAndGoOn(node, &element, text);
    }
    return text;
}

} // namespace veltrane::columns
