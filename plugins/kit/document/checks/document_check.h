#ifndef VELTRANE_PLUGINS_KIT_DOCUMENT_CHECK_H
#define VELTRANE_PLUGINS_KIT_DOCUMENT_CHECK_H

#include "kit/document/element.h"

#include <string>
#include <vector>

namespace veltrane_kit {

/// Refuses a document that says what no document may say: of all that is read for a model, elements in the wrong place,
/// attributes that lack or hold what they can't, and what contradicts itself. What other models of the document, and
/// parts that say nothing about scores, hold plays no part, nor do attributes that aren't known.
///
/// It comes before all readers, so that what is faulty ends in a message that names element and attribute, and readers
/// find what they may rely on. On the way it takes out what DropMeaningless does. Linear in the size of the document,
/// but for the sorting of names; no recursion over it.
/// @param model the tag of the model that is read, the first one below the root; null checks the dictionary and the
///              derived fields of the document alone
/// @param others the model list: models of these kinds may be parts of one; what they hold is checked by their plug-ins
/// @throws VTException 260159 for an element that has no place, 260120 for an attribute that lacks, 260285 for one that
///         is empty and 260153 for one with a wrong value, with the names of element and attribute, and what the rules
///         of element_rules.h throw
void CheckDocument(const Element& root, const XMLCh* model, const std::vector<std::string>& others = {});

} // namespace veltrane_kit

#endif
