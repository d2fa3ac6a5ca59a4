#ifndef VELTRANE_HOST_MODEL_DESCRIPTION_H
#define VELTRANE_HOST_MODEL_DESCRIPTION_H

#include "descriptions/document_facts.h"
#include "documents/document_outline.h"

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace veltrane::host {

/// What a built model tells a host beyond its document, in UTF-8.
struct ModelFace {
    std::vector<std::string> columns; ///< of what `score` writes: the predicted value, then the output fields
    std::vector<std::string> inputs;
    std::string target; ///< empty for none
};

/// Describes a model of a document: where the document comes from, the model's kind and size, its inputs and target
/// with the treatment of their values, its outputs with their columns, all fields, and the derived fields as formulas.
/// What a document leaves out is left out, or empty; numbers are numbers, and all texts are UTF-8.
/// @param place of the model in the outline
/// @param face  of the model; without columns where it wasn't built
nlohmann::ordered_json DescribeModel(const DocumentFacts& facts, const DocumentOutline& outline, std::size_t place,
                                     const ModelFace& face);

/// Where a document comes from, as the value of the key `document`.
nlohmann::ordered_json DescribeOrigin(const DocumentFacts& facts);

/// The description as tables for a terminal.
std::string ModelTables(const nlohmann::ordered_json& description);

} // namespace veltrane::host

#endif
