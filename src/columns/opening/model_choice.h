#ifndef VELTRANE_COLUMNS_MODEL_CHOICE_H
#define VELTRANE_COLUMNS_MODEL_CHOICE_H

#include <veltrane_export.h>

#include <string>
#include <vector>

XERCES_CPP_NAMESPACE_BEGIN
class DOMElement;
XERCES_CPP_NAMESPACE_END

namespace veltrane::columns {

/// The models of a document: the elements directly below the root "PMML" that are none of those that every document
/// has.
/// @return in the order of the document, borrowed from it
std::vector<xercesc::DOMElement*> ModelsOf(const xercesc::DOMElement& root);

/// Chooses one of a document's models.
/// @param models of the document, one at least
/// @param names  of the kinds that have a plug-in
/// @param wanted the name of a model, or its number, from 1; empty: the first one that says that it can be scored and
///               whose kind is among the names, else the first whose kind is
/// @throws VTException 260341 for a wanted model that isn't there, or a name that several have; 260301 with its kind
/// for
///         one that has no plug-in
xercesc::DOMElement& ChooseModel(const std::vector<xercesc::DOMElement*>& models, const std::vector<std::string>& names,
                                 const std::string& wanted);

} // namespace veltrane::columns

#endif
