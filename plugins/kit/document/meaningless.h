#ifndef VELTRANE_PLUGINS_KIT_MEANINGLESS_H
#define VELTRANE_PLUGINS_KIT_MEANINGLESS_H

#include "kit/document/element.h"

namespace veltrane_kit {

/// Is told of each element that stays in a document, before and after all that stands in it.
class ElementVisitor {
public:
    virtual ~ElementVisitor() = default;
    virtual void Enter(const Element& element) = 0;
    virtual void Leave(const Element& element) = 0;
};

/// Takes out of a document what says nothing about its model: every Extension with all that it holds, comments and
/// processing instructions. Texts that were parted by them are joined, sections of CDATA become text, and the content
/// of an entity stands where it was referred to, so that readers of children and of texts find nothing but what counts.
///
/// One kind of Extension stays, since there is no other place for what it holds: those of a BayesInputs, in which
/// producers put continuous inputs before version 4.2.
///
/// Subtrees that are records stay as they are: Element passes over an Extension there, and a record of a comment or of
/// a part of a text there is none.
///
/// Linear in the size of the document, and no recursion over it. A visitor goes the same way, for documents are large
/// and a way through them takes its time; what stands in an element is as it should be when it leaves that.
void DropMeaningless(const Element& root, ElementVisitor* visitor = nullptr);

} // namespace veltrane_kit

#endif
