#ifndef VELTRANE_HOST_DOCUMENT_OUTLINE_H
#define VELTRANE_HOST_DOCUMENT_OUTLINE_H

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace veltrane::host {

/// A model in a document: an element directly below the root "PMML" that is none of those that every document has.
struct OutlinedModel {
    std::string element;
    std::string name;       ///< modelName; may be empty
    bool isScorable = true; ///< isScorable
};

/// What keeps a document from being read.
struct DocumentFault {
    std::uint64_t line = 0; ///< from 1; 0 where the place isn't known
    std::uint64_t column = 0;
    std::string text; ///< the XML parser's words, or the bound that the document passes
};

/// What a document looks like from afar. All texts are UTF-8.
struct DocumentOutline {
    std::string root;                   ///< empty where the document doesn't come to one
    std::vector<OutlinedModel> models;  ///< in document order
    std::set<std::string> elements;     ///< the names of all elements below the root
    std::optional<DocumentFault> fault; ///< what was read before it stands in the outline

    bool IsPmml() const { return root == "PMML"; }
};

/// Whether an element directly below the root "PMML" is a model.
/// @param element its name
bool IsModelElement(std::u16string_view element);

/// Reads the outline of a document. It keeps the library's bounds on documents and reads nothing outside of it.
/// @param in at its start
DocumentOutline ReadOutline(std::istream& in);

} // namespace veltrane::host

#endif
