#ifndef VELTRANE_HOST_SCORE_MODEL_H
#define VELTRANE_HOST_SCORE_MODEL_H

#include "documents/document_file.h"
#include "documents/document_outline.h"
#include "documents/model_list.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace MCVeltrane_900 {
class ScoreModel;
class ScoreResult;
} // namespace MCVeltrane_900

namespace veltrane::host {

/// A model with what it was built from.
struct LoadedModel {
    std::unique_ptr<MCVeltrane_900::ScoreModel> model;
    DocumentFile document;     ///< of this model alone, where there were others
    ModelList list;            ///< with the model's own kind in front
    MissingTexts missingTexts; ///< in the encoding
    std::string choiceText; ///< which of several models this is, and of the others, where nobody has chosen; else empty
};

/// Changes a document ahead of its model, by the model's place among all models.
using DocumentChange = std::function<void(DocumentFile& document, std::size_t place)>;

/// Lets the plug-in for one of a document's models build it.
/// @param models   path of the model list; the installed one without it
/// @param wanted   the model, by its name or number; see ChooseModel
/// @param encoding that the texts of the document are brought into
/// @param change   of the document that the plug-in gets; none without it
/// @throws VTException and ExplainedFailure for a list or a document that cannot be read or has no plug-in, Failure for
///         a model that isn't there, and where the plug-in doesn't keep its side: no model, a model without a
///         dictionary
LoadedModel LoadModel(const std::string& document, const std::optional<std::string>& models,
                      const std::optional<std::string>& wanted, const std::string& encoding,
                      const DocumentChange& change = {});

/// The same for a document and a list that have been read.
/// @param outline of the document
/// @param place   of the model, by ChooseModel
LoadedModel LoadModel(DocumentFile document, ModelList list, const DocumentOutline& outline,
                      std::optional<std::size_t> place, const std::string& encoding);

/// An empty result of the model's kind. Throws a `Failure` when the model gives none, or one that is not of the kind
/// that it tells.
std::unique_ptr<MCVeltrane_900::ScoreResult> MakeResult(const MCVeltrane_900::ScoreModel& model,
                                                        const std::string& document);

} // namespace veltrane::host

#endif
