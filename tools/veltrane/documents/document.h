#ifndef VELTRANE_HOST_DOCUMENT_H
#define VELTRANE_HOST_DOCUMENT_H

#include <MCVeltrane_900/Messages.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace MCVeltrane_900 {
class ScoreDictionary;
class TransformationDictionary;
} // namespace MCVeltrane_900

namespace veltrane_kit {
class Transformations;
}

namespace veltrane::host {

class DocumentFile;
struct DocumentOutline;

/// Code of the message with which the library tells of a document that it cannot open on this road.
inline constexpr int kCannotOpenDocument = static_cast<int>(MCVeltrane_900::Message::CANNOT_OPEN_FILE);

/// What the host takes from a document. The derived fields borrow from the fields.
struct Document {
    Document();
    Document(Document&&) noexcept;
    ~Document();

    std::unique_ptr<MCVeltrane_900::ScoreDictionary> fields;
    std::unique_ptr<MCVeltrane_900::TransformationDictionary> derivedFields; ///< null when there are none
    bool isPmml = true;                                                      ///< else it has no derived fields
};

/// Reads a document, its texts in the named encoding. Throws a `VTException` for a document that cannot be read, and a
/// `Failure` for one that is no PMML.
Document ReadDocument(const std::string& path, const std::string& encoding);

/// The same for a document in memory, and reads the fields of one with the root "kord-ml" too. The library has been
/// started.
Document ReadAnyDocument(DocumentFile& file, const std::string& encoding);

/// What a document with the meaning of PMML gives for cases.
struct StandardFields {
    std::shared_ptr<veltrane_kit::Transformations> transformations;
    std::map<std::string, std::vector<std::string>> missingTexts; ///< in the encoding
};

/// Reads the derived fields of a document with the meaning of PMML. Throws a `VTException` for a document that cannot
/// be read, and a `Failure` for one that is no PMML or has no derived fields.
StandardFields ReadStandardFields(const std::string& path, const std::string& encoding);

/// The derived fields of a document in memory. There may be no derived fields, but there is the place for them. The
/// library has been started.
std::unique_ptr<veltrane_kit::Transformations> ReadTransformations(DocumentFile& file, const DocumentOutline& outline,
                                                                   const std::string& encoding);

/// Throws a `Failure` when there are no derived fields.
/// @param path of the document, for the message
void RequireDerivedFields(bool hasDerivedFields, const std::string& path);

} // namespace veltrane::host

#endif
