#ifndef VELTRANE_HOST_DESCRIBE_H
#define VELTRANE_HOST_DESCRIBE_H

#include <nlohmann/json.hpp>

#include <string>

namespace MCVeltrane_900 {
class ScoreDictionary;
class TransformationDictionary;
} // namespace MCVeltrane_900

namespace veltrane::host {

class Encoding;

/// Describes the fields and derived fields of a document as the library alone reads them, both in document order:
///
///     {"fields": [{"name": "Age", "label": "Age", "type": "double", "level": "continuous",
///                  "missingValues": [-1, {"low": null, "lowIncluded": true, "high": 0, "highIncluded": false}],
///                  "categories": [{"value": 1, "label": "one"}]}],
///      "derivedFields": [{..., "expression": "NormContinuous", "source": "Age"},
///                        {..., "expression": "Apply", "source": "", "formula": "(Age - 40) / 10"}]}
///
/// An infinite bound is null. A date or time is its ISO text. All texts are UTF-8.
/// @param derivedFields null for none
/// @param encoding      the one that the document was read into
nlohmann::ordered_json Describe(const MCVeltrane_900::ScoreDictionary& fields,
                                const MCVeltrane_900::TransformationDictionary* derivedFields,
                                const Encoding& encoding);

/// The same as two tables for a terminal. Numbers have up to 15 digits, and a long list of values is cut.
std::string DescriptionTables(const nlohmann::ordered_json& description);

} // namespace veltrane::host

#endif
