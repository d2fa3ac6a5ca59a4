#ifndef VELTRANE_HOST_PLAIN_DOCUMENT_H
#define VELTRANE_HOST_PLAIN_DOCUMENT_H

#include <cstddef>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace veltrane::host {

/// A document whose shared derived fields are data fields, which somebody else computes.
struct PlainDocument {
    std::string text;                ///< UTF-8
    std::vector<std::string> fields; ///< in UTF-8, in the order in which they stand behind the other data fields
};

/// Makes data fields of those derived fields of the TransformationDictionary that a model mentions, and has its mining
/// schema take them as they are. The other derived fields of the dictionary are left out; the functions that it defines
/// and the model's own derived fields stay.
/// @param in    a document without a fault, at its start; it is read twice
/// @param place of the model among all models
/// @return none where the dictionary has no derived fields
std::optional<PlainDocument> MakePlain(std::istream& in, std::size_t place);

} // namespace veltrane::host

#endif
