#ifndef VELTRANE_HOST_DOCUMENT_DESCRIPTION_H
#define VELTRANE_HOST_DOCUMENT_DESCRIPTION_H

#include "descriptions/document_facts.h"
#include "formulas/expression_text.h"

#include <nlohmann/json.hpp>

#include <string>

namespace veltrane::host {

/// The types of the fields and functions of a document, with those of the model's own derived fields.
StatedTypes TypesOf(const DocumentFacts& facts);

/// Describes the data fields, the derived fields and the functions of a document, each in document order, as what they
/// mean in PMML:
///
///     {"fields": [{"name": "Age", "label": "Age", "type": "double", "level": "continuous", "missingValues": [-1],
///                  "categories": [{"value": 1, "label": "one"}], "invalidValues": [],
///                  "ranges": [{"low": 0, "lowIncluded": true, "high": null, "highIncluded": true}]}],
///      "derivedFields": [{..., "expression": "Apply", "source": "", "formula": "(Age - 40) / 10", "local": false}],
///      "functions": [{"name": "half", "type": "double", "level": "continuous",
///                     "parameters": [{"name": "x", "label": "x", "type": "double", "level": "continuous"}],
///                     "formula": "x / 2"}]}
nlohmann::ordered_json DescribeFields(const DocumentFacts& facts);

/// The same as tables for a terminal.
std::string DocumentTables(const nlohmann::ordered_json& description);

} // namespace veltrane::host

#endif
