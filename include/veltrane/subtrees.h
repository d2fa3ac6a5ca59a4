#ifndef VELTRANE_SUBTREES_H
#define VELTRANE_SUBTREES_H

#include <xercesc/dom/DOMElement.hpp>

#include <cstdint>

/// Large parts of a document that a plug-in reads as records instead of DOM nodes.
///
/// A plug-in that has a fourth export
///
///     extern "C" const veltrane::SubtreeKind* NameMySubtrees(int version)
///
/// names the kinds of subtree that it reads by itself. While the document is parsed such a subtree is written down as
/// flat records. In the tree stands its first element alone, with its attributes and without what it holds, and leads
/// to the records. A record takes a tenth of the memory of a DOM node, and less than that of its time.
///
/// A subtree that holds anything but the named elements, their attributes and plain text (a comment, a section of
/// CDATA, the reference to an entity that has elements, an attribute that a document type declares) is DOM as ever.
namespace veltrane {

/// A kind of subtree.
struct SubtreeKind {
    /// A plug-in answers null for another version.
    static constexpr int kVersion = 1;

    const char16_t* parent;        ///< the name of the element in which such subtrees stand; null ends a list of kinds
    const char16_t* tag;           ///< the name of a subtree's first element
    const char16_t* const* within; ///< the names of all elements that may stand in it; null ends them
};

/// An element of a subtree, or a text in one. Records stand in the order of the document.
struct SubtreeNode {
    static constexpr std::uint16_t kText = 0xFFFF;

    std::uint16_t tag;            ///< a place among the names; kText for a text
    std::uint16_t attributeCount; ///< 0 for a text, and for the first element of the subtree: the tree has them
    std::uint32_t parent;         ///< a node; the subtree's first element for what stands in that
    std::uint32_t end;            ///< the node behind all that stands in this one
    std::uint32_t first;          ///< the first attribute; of a text, its place among the texts
};

/// An attribute, in the order of the document.
struct SubtreeAttribute {
    std::uint32_t name;  ///< a place among the names
    std::uint32_t value; ///< a place among the texts
};

/// The records of a document.
struct SubtreeRecords {
    const SubtreeNode* nodes;
    const SubtreeAttribute* attributes;
    const char16_t* texts; ///< each ends in NUL; equal short ones may be one
    const char16_t* const* names;
};

/// One subtree.
struct Subtree {
    const SubtreeRecords* records;
    std::uint32_t root; ///< the node of its first element
};

/// The key of the user data that leads from an element to its Subtree.
inline constexpr char16_t kSubtreeKey[] = u"veltrane:subtree";

/// What an element of the tree holds as records, in place of children; null when it has them in the tree. It lives as
/// long as the tree.
inline const Subtree* SubtreeOf(const xercesc::DOMElement& element) {
    return static_cast<const Subtree*>(element.getUserData(kSubtreeKey));
}

} // namespace veltrane

#endif
