#ifndef VELTRANE_HOST_DOCUMENT_OUTLINE_H
#define VELTRANE_HOST_DOCUMENT_OUTLINE_H

#include <cstdint>
#include <iosfwd>
#include <map>
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

/// By the name of a data field the texts that it lists for missing values.
using MissingTexts = std::map<std::string, std::vector<std::string>>;

/// What a document looks like from afar. All texts are UTF-8.
struct DocumentOutline {
    std::string root;                   ///< empty where the document doesn't come to one
    std::vector<OutlinedModel> models;  ///< in document order
    std::set<std::string> elements;     ///< the names of all elements below the root
    MissingTexts missingTexts;          ///< of a document of PMML
    bool hasPrefixes = false;           ///< whether a name has a prefix that stands for PMML
    std::optional<DocumentFault> fault; ///< what was read before it stands in the outline

    bool IsPmml() const { return root == "PMML"; }
};

/// Whether an element directly below the root "PMML" is a model.
/// @param element its name
bool IsModelElement(std::u16string_view element);

/// Reads the outline of a document. It keeps the library's bounds on documents and reads nothing outside of it.
/// @param in at its start
DocumentOutline ReadOutline(std::istream& in);

/// The outline of a document in its bytes, but for `elements`, told without a parser; nothing where that leaves a
/// doubt. A document with a fault may have one that tells of none.
std::optional<DocumentOutline> GlanceAtOutline(std::string_view bytes);

/// The texts for missing values of an outline in an encoding.
MissingTexts MissingTextsIn(const std::string& encoding, const DocumentOutline& outline);

class DocumentFile;

/// The outline of a document that is to be read by the meaning of PMML. Elements of PMML's name space that are written
/// with a prefix lose it first, in the document's bytes: the library knows elements by their names as they are written.
/// A document with a fault stays as it is.
DocumentOutline ReadPmmlOutline(DocumentFile& document);

} // namespace veltrane::host

#endif
