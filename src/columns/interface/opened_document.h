#ifndef VELTRANE_COLUMNS_OPENED_DOCUMENT_H
#define VELTRANE_COLUMNS_OPENED_DOCUMENT_H

#include <veltrane/document.h>

#include <iosfwd>
#include <memory>
#include <string>

namespace MCVeltrane_900 {
class ScoreModel;
}

namespace veltrane::columns {

/// What scores a document, whatever is behind it.
struct OpenedDocument {
    OpenedDocument();
    OpenedDocument(OpenedDocument&&) noexcept;
    ~OpenedDocument();

    std::unique_ptr<MCVeltrane_900::ScoreModel> model; ///< that the scorer stands on; null where it needs none
    std::unique_ptr<ColumnScorer> scorer;
};

/// Opens a document.
/// @param in that goes back to its start; it is borrowed for the call
/// @throws VTException see Document
OpenedDocument OpenInColumns(std::istream& in, const DocumentOptions& options);

/// Whether texts of an encoding are UTF-8, by whichever of its names.
/// @throws VTException 260344 for an encoding that isn't known
bool IsUtf8(const std::string& encoding);

} // namespace veltrane::columns

#endif
