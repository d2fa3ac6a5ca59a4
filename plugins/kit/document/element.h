#ifndef VELTRANE_PLUGINS_KIT_ELEMENT_H
#define VELTRANE_PLUGINS_KIT_ELEMENT_H

#include "kit/document/document_text.h"

#include <veltrane/subtrees.h>

#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMElement.hpp>

#include <cstddef>
#include <cstdint>
#include <string>

namespace veltrane_kit {

/// One word of a vocabulary and what it stands for.
template <typename Meaning>
struct Word {
    const XMLCh* text;
    Meaning meaning;
};

/// The value of an attribute, which nearly always is one text. The attribute itself gives it by way of casts that cost
/// more than finding it.
const XMLCh* ValueOf(const xercesc::DOMAttr& attribute);

/// An element of the document, as the readers of models see it: every operation that fails throws a VTException whose
/// message names the element and the attribute. A plain value, valid while the document is read. Names are UTF-16
/// literals: element.Number(u"intercept").
///
/// It stands in the DOM, or in one of the subtrees that the plug-in has named as its own, which are records. There an
/// Extension isn't among the children, nor its text in the content: in the DOM it is taken out before anybody reads.
///
/// The factory bounds the nesting of documents at 1100 levels, and all recursion over elements rests on that.
class Element {
public:
    /// No element.
    Element() = default;
    Element(xercesc::DOMElement* element, const DocumentText& text) : fElement(element), fText(&text) {}

    /// An element of a subtree that is held in records.
    Element(const veltrane::SubtreeRecords& records, std::uint32_t node, const DocumentText& text)
        : fText(&text), fRecords(&records), fNode(node) {}

    explicit operator bool() const { return fElement != nullptr || fRecords != nullptr; }

    /// Whether both are the same element of one document, or no element.
    bool operator==(const Element& other) const {
        return fElement == other.fElement && fRecords == other.fRecords && fNode == other.fNode;
    }

    /// Null for an element among records.
    xercesc::DOMElement* Dom() const { return fElement; }

    /// Null for an element in the DOM.
    const veltrane::SubtreeNode* Record() const { return fRecords == nullptr ? nullptr : fRecords->nodes + fNode; }
    const veltrane::SubtreeRecords* Records() const { return fRecords; }

    /// The name. The elements of one document that have the same name share its text.
    const XMLCh* TagText() const { return fRecords != nullptr ? TagOf(*Record()) : fElement->getTagName(); }
    const DocumentText& Reader() const { return *fText; }

    std::string Tag() const;
    bool Is(const XMLCh* tag) const;

    /// Whether the attribute is there, be it empty.
    bool Has(const XMLCh* name) const;

    /// The attribute as the parser has it; empty when it is absent.
    const XMLCh* Raw(const XMLCh* name) const;

    /// An attribute that has to be there and to hold something.
    /// @throws VTException 260120 when it is absent, 260285 when it is empty
    std::string Text(const XMLCh* name) const;

    /// An attribute that has to be there and may be empty.
    /// @throws VTException 260120
    std::string AnyText(const XMLCh* name) const;

    /// An attribute that may be absent or empty.
    std::string TextOr(const XMLCh* name, const std::string& fallback) const;

    /// A number. The forms with a fallback give it for an absent attribute only.
    /// @throws VTException 260120, 260285, or 260153 for what is no finite number
    double Number(const XMLCh* name) const;
    double NumberOr(const XMLCh* name, double fallback) const;
    int IntegerOr(const XMLCh* name, int fallback) const;

    /// "true" or "1", "false" or "0".
    bool FlagOr(const XMLCh* name, bool fallback) const;

    /// The meaning of a word of a vocabulary.
    /// @throws VTException 260120, 260285, or 260153 for a word that isn't in the vocabulary
    template <typename Meaning, std::size_t N>
    Meaning OneOf(const XMLCh* name, const Word<Meaning> (&words)[N]) const {
        const XMLCh* text = Filled(name);
        for (const Word<Meaning>& word : words) {
            if (Same(word.text, text)) {
                return word.meaning;
            }
        }
        RaiseInvalid(name);
    }
    template <typename Meaning, std::size_t N>
    Meaning OneOfOr(const XMLCh* name, const Word<Meaning> (&words)[N], Meaning fallback) const {
        return Has(name) ? OneOf(name, words) : fallback;
    }

    /// The only child with a tag; none when there is none.
    /// @throws VTException 260272 when there are more
    Element Child(const XMLCh* tag) const;

    /// @throws VTException 260115 when there is none, 260272 when there are more
    Element RequireChild(const XMLCh* tag) const;

    /// The first child element and the next sibling element; no element at the end.
    Element FirstChild() const;
    Element NextSibling() const;

    /// All text in the element.
    std::string Content() const;

    /// How many elements of its own name stand in one whose content is held in records; 0 for one that has DOM nodes.
    std::size_t CountRecordedLike() const;

    /// @throws VTException 260153 with the attribute's text, its name and the tag
    [[noreturn]] void RaiseInvalid(const XMLCh* name) const;

    /// @throws VTException 260159 with the tag and the parent's tag: an element that has no place here
    [[noreturn]] void RaiseMisplaced() const;

    /// The children, for range-based loops.
    class ChildRange;
    ChildRange Children() const;

private:
    /// Null when the attribute is absent.
    const XMLCh* Find(const XMLCh* name) const;
    const XMLCh* Filled(const XMLCh* name) const;
    const XMLCh* ParentTag() const;

    const XMLCh* TagOf(const veltrane::SubtreeNode& node) const { return fRecords->names[node.tag]; }
    Element FirstRecord(std::uint32_t from, std::uint32_t end) const;
    std::string RecordedContent(std::uint32_t from, std::uint32_t end) const;

    xercesc::DOMElement* fElement = nullptr;
    const DocumentText* fText = nullptr;
    const veltrane::SubtreeRecords* fRecords = nullptr;
    std::uint32_t fNode = 0;
};

class Element::ChildRange {
public:
    class Iterator {
    public:
        explicit Iterator(Element element) : fAt(element) {}
        Element operator*() const { return fAt; }
        Iterator& operator++() {
            fAt = fAt.NextSibling();
            return *this;
        }
        bool operator!=(const Iterator& other) const { return !(fAt == other.fAt); }

    private:
        Element fAt;
    };

    explicit ChildRange(Element first) : fFirst(first) {}
    Iterator begin() const { return Iterator(fFirst); }
    Iterator end() const { return Iterator(Element()); }

private:
    Element fFirst;
};

inline Element::ChildRange Element::Children() const {
    return ChildRange(FirstChild());
}

} // namespace veltrane_kit

#endif
