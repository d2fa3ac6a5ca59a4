#ifndef VELTRANE_HOST_DOCUMENT_FACTS_H
#define VELTRANE_HOST_DOCUMENT_FACTS_H

#include "documents/xml_tree.h"

#include <cstddef>
#include <iosfwd>
#include <map>
#include <string>

namespace veltrane::host {

/// How many elements there are in a model.
struct ModelSize {
    std::map<std::string, std::size_t> elements; ///< by name; only of those that make the model itself
    std::size_t leaves = 0;                      ///< elements Node without one inside
    std::size_t depth = 0;                       ///< levels of elements Node
};

/// What a PMML document says of one of its models, apart from what the model is made of, which is only counted.
struct DocumentFacts {
    XmlNode root; ///< without children
    XmlNode header;
    XmlNode dictionary;      ///< DataDictionary
    XmlNode transformations; ///< TransformationDictionary
    XmlNode model;           ///< with its MiningSchema, Output, Targets and LocalTransformations
    ModelSize size;
};

/// Reads the facts of a model. It keeps the library's bounds on documents.
/// @param in    a document without a fault, at its start
/// @param place of the model among all models
DocumentFacts ReadFacts(std::istream& in, std::size_t place);

} // namespace veltrane::host

#endif
