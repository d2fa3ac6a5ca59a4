#ifndef VELTRANE_PLUGINS_KIT_COMPLETION_H
#define VELTRANE_PLUGINS_KIT_COMPLETION_H

#include "kit/document/element.h"
#include "kit/model/model_plan.h"

#include <MCVeltrane_900/PMMLTranslator.h>

#include <memory>
#include <string>
#include <vector>

namespace veltrane_kit {

/// What all models of a document have in common, read once.
struct DocumentParts {
    Element root;
    std::string encoding;                ///< of all texts
    std::string version;                 ///< of PMML, as the document has it
    std::vector<std::string> modelNames; ///< the model list, where the factory has brought it
    std::shared_ptr<const DataFields> fields;
    std::unique_ptr<MCVeltrane_900::ScoreDictionary> dictionary; ///< the data dictionary as the library has it
};

/// Reads what a document says for all of its models, and completes it in place where producers leave things out.
/// @param root       of a document that has been checked
/// @param translator reads the data dictionary as the library does
/// @throws VTException 260115 without a DataDictionary, and what reading data fields throws
DocumentParts CompleteDocument(const Element& root, const std::string& encoding,
                               MCVeltrane_900::PMMLTranslator& translator);

/// Reads one model element of a document: what all kinds have in common, and what is the kind's own.
/// @param dictionary the data dictionary for this model alone, since mining schema and targets add to it: that of the
///                   document, or a clone where the document has several models to read
/// @param translator reads targets as the library does
/// @param makeScorer of the kind
/// @throws VTException for what the model's elements have wrong
std::unique_ptr<const ModelPlan> CompleteModel(const Element& model, const DocumentParts& document,
                                               std::unique_ptr<MCVeltrane_900::ScoreDictionary> dictionary,
                                               MCVeltrane_900::PMMLTranslator& translator, MakeScorer makeScorer);

/// How many models a model may be a part of, one in the other.
inline constexpr int kDeepestPart = 32;

/// Refuses a model that has parts and lies too deep to have any.
/// @param element of the model that consists of others, or of a part that lies in a leaf
/// @throws VTException 260302 with the bound as its detail
void RequireRoomForParts(const Element& element, const ModelParts& parts);

/// Reads a model that is a part of another one: its mining schema names fields of the outer model, its derived fields
/// stand on these, and what its scorer reads stands in the frame of the outer model.
/// @param outer     of the model that is being built, its scorer not yet; its inputs are borrowed for the life of the
///                  plan
/// @param makeScorer of the kind
/// @param asked     the output fields of the outer model that name this part
/// @throws VTException for what the model's elements have wrong
std::unique_ptr<const ModelPlan> CompletePart(const Element& model, ModelParts& outer, MakeScorer makeScorer,
                                              const std::vector<Element>& asked);

} // namespace veltrane_kit

#endif
