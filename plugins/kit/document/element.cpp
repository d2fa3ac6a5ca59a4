#include "kit/document/element.h"

#include "kit/document/raise.h"

#include <algorithm>

namespace veltrane_kit {

namespace {

using veltrane::SubtreeAttribute;
using veltrane::SubtreeNode;
using veltrane::SubtreeRecords;

/// Most names differ in their first characters.
bool Equal(const XMLCh* a, const XMLCh* b) {
    for (; *a == *b; ++a, ++b) {
        if (*a == 0) {
            return true;
        }
    }
    return false;
}

constexpr Word<bool> kFlags[] = {{u"true", true}, {u"1", true}, {u"false", false}, {u"0", false}};

} // namespace

const XMLCh* ValueOf(const xercesc::DOMAttr& attribute) {
    const xercesc::DOMNode* text = attribute.getFirstChild();
    const bool isOneText =
        text != nullptr && text->getNodeType() == xercesc::DOMNode::TEXT_NODE && text->getNextSibling() == nullptr;
    return isOneText ? text->getNodeValue() : attribute.getValue();
}

std::string Element::Tag() const {
    return Narrow(TagText());
}

bool Element::Is(const XMLCh* tag) const {
    return *this && Equal(TagText(), tag);
}

bool Element::Has(const XMLCh* name) const {
    return fRecords != nullptr ? Find(name) != nullptr : fElement->getAttributeNode(name) != nullptr;
}

const XMLCh* Element::Find(const XMLCh* name) const {
    if (fRecords == nullptr) {
        const xercesc::DOMAttr* attribute = fElement->getAttributeNode(name);
        return attribute == nullptr ? nullptr : ValueOf(*attribute);
    }
    const SubtreeNode& node = *Record();
    const SubtreeAttribute* const first = fRecords->attributes + node.first;
    for (const SubtreeAttribute* at = first; at != first + node.attributeCount; ++at) {
        if (Equal(fRecords->names[at->name], name)) {
            return fRecords->texts + at->value;
        }
    }
    return nullptr;
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
    if (fRecords != nullptr) {
        return FirstRecord(fNode + 1, Record()->end);
    }
    xercesc::DOMElement* child = fElement == nullptr ? nullptr : fElement->getFirstElementChild();
    if (child != nullptr || fElement == nullptr) {
        return child == nullptr ? Element() : Element(child, *fText);
    }
    const veltrane::Subtree* subtree = veltrane::SubtreeOf(*fElement);
    return subtree == nullptr ? Element() : Element(*subtree->records, subtree->root, *fText).FirstChild();
}

Element Element::NextSibling() const {
    if (fRecords != nullptr) {
        const SubtreeNode& node = *Record();
        return FirstRecord(node.end, fRecords->nodes[node.parent].end);
    }
    xercesc::DOMElement* next = fElement == nullptr ? nullptr : fElement->getNextElementSibling();
    return next == nullptr ? Element() : Element(next, *fText);
}

/// The first element among siblings.
Element Element::FirstRecord(std::uint32_t from, std::uint32_t end) const {
    while (from != end) {
        const SubtreeNode& node = fRecords->nodes[from];
        if (node.tag != SubtreeNode::kText && !Equal(TagOf(node), u"Extension")) {
            return Element(*fRecords, from, *fText);
        }
        from = node.end;
    }
    return {};
}

std::string Element::Content() const {
    if (fRecords != nullptr) {
        return RecordedContent(fNode + 1, Record()->end);
    }
    if (const veltrane::Subtree* subtree = veltrane::SubtreeOf(*fElement); subtree != nullptr) {
        return Element(*subtree->records, subtree->root, *fText).Content();
    }
    return (*fText)(fElement->getTextContent());
}

std::string Element::RecordedContent(std::uint32_t from, std::uint32_t end) const {
    if (from + 1 == end && fRecords->nodes[from].tag == SubtreeNode::kText) {
        return (*fText)(fRecords->texts + fRecords->nodes[from].first);
    }
    std::u16string content;
    while (from != end) {
        const SubtreeNode& node = fRecords->nodes[from];
        if (node.tag == SubtreeNode::kText) {
            content += fRecords->texts + node.first;
        } else if (Equal(TagOf(node), u"Extension")) {
            from = node.end;
            continue;
        }
        ++from; // what stands in it comes next
    }
    return (*fText)(content.c_str());
}

std::size_t Element::CountRecordedLike() const {
    const veltrane::Subtree* subtree = fElement == nullptr ? nullptr : veltrane::SubtreeOf(*fElement);
    if (subtree == nullptr) {
        return 0;
    }
    const SubtreeNode* const root = subtree->records->nodes + subtree->root;
    return static_cast<std::size_t>(std::count_if(root + 1, subtree->records->nodes + root->end,
                                                  [=](const SubtreeNode& node) { return node.tag == root->tag; }));
}

void Element::RaiseInvalid(const XMLCh* name) const {
    Raise<Message::INVALID_ATTRIBUTE_VALUE_IN>((*fText)(Raw(name)), Narrow(name), Tag());
}

const XMLCh* Element::ParentTag() const {
    return fRecords != nullptr ? TagOf(fRecords->nodes[Record()->parent]) : fElement->getParentNode()->getNodeName();
}

void Element::RaiseMisplaced() const {
    Raise<Message::INVALID_NODE>(Tag(), Narrow(ParentTag()));
}

} // namespace veltrane_kit
