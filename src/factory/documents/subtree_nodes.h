#ifndef VELTRANE_FACTORY_SUBTREE_NODES_H
#define VELTRANE_FACTORY_SUBTREE_NODES_H

#include <veltrane/subtrees.h>

#include <xercesc/dom/DOM.hpp>

#include <cstdint>

/// From the records of subtrees to the tree that the parser would have made.
namespace veltrane::factory {

/// Where a tree goes on.
struct TreePlace {
    xercesc::DOMNode* parent; ///< the element that is open
    xercesc::DOMNode* last;   ///< what was begun or ended last
};

/// Makes nodes of a subtree's records.
/// @param element the first element, which stands in the tree without children
/// @param end     the node behind the last record of the subtree
/// @param open    the element that is open behind that; the first one when all is written
TreePlace MakeNodes(xercesc::DOMElement& element, const SubtreeRecords& records, std::uint32_t root, std::uint32_t end,
                    std::uint32_t open);

/// Puts nodes in place of all records in an element, for readers of the tree.
/// @throws DocumentRefused where they pass the bounds of the document that is held in them
void RestoreSubtrees(xercesc::DOMElement& element);

/// Marks a document as one with records, and an element as the place of some.
void MarkDocument(xercesc::DOMDocument& document);
void MarkSubtree(xercesc::DOMElement& element, const Subtree& subtree);

} // namespace veltrane::factory

#endif
