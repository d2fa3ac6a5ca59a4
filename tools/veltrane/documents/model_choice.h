#ifndef VELTRANE_HOST_MODEL_CHOICE_H
#define VELTRANE_HOST_MODEL_CHOICE_H

#include "documents/document_outline.h"
#include "documents/model_list.h"

#include <cstddef>
#include <iosfwd>
#include <optional>
#include <string>

namespace veltrane::host {

/// Chooses one of a document's models.
/// @param wanted   the name of a model, or its number, from 1 in document order; without it, the first model that says
///                 that it can be scored and for which there is a plug-in
/// @param document its name, for messages
/// @return the place of the model in the outline; nothing where the document has none of these and the library's own
///         rules hold
/// @throws Failure for a wanted model that isn't there, a name that several have, or a document that has no models
std::optional<std::size_t> ChooseModel(const DocumentOutline& outline, const ModelList& list,
                                       const std::optional<std::string>& wanted, const std::string& document);

/// A model as a person finds it again: `2 "churn" (TreeModel)`.
std::string ModelText(const DocumentOutline& outline, std::size_t place);

/// Which of several models was chosen, and which others there are.
std::string ChoiceText(const DocumentOutline& outline, std::size_t chosen, const std::string& document);

/// The document with one of its models alone, in UTF-8: to the library, and to every plug-in, it is the only one.
/// Everything else stays, but comments, processing instructions and the document type are left out, and entities stand
/// as what they stand for.
/// @param in    a document without a fault, at its start
/// @param place of the model among all models
std::string DocumentOfOneModel(std::istream& in, std::size_t place);

} // namespace veltrane::host

#endif
