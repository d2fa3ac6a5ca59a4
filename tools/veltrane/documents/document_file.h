#ifndef VELTRANE_HOST_DOCUMENT_FILE_H
#define VELTRANE_HOST_DOCUMENT_FILE_H

#include <iosfwd>
#include <sstream>
#include <string>
#include <string_view>

namespace veltrane::host {

/// The bytes of a document, unpacked and whole in memory: a document is read more than once, and standard input comes
/// only once.
class DocumentFile {
public:
    /// Reads the file at a path; `-` is standard input.
    /// @param code of the message with which the library tells of a document that it cannot open
    /// @throws ExplainedFailure with that message and the system's reason, Failure for an archive that cannot be
    ///         unpacked
    DocumentFile(const std::string& path, int code);

    const std::string& Name() const { return fName; }
    std::string_view Bytes() const { return fStream.view(); }

    /// The bytes as a stream that stands at its start, valid until the next call.
    std::istream& Stream();

    /// Puts other bytes in the place of the document's.
    void Replace(std::string bytes);

private:
    std::string fName;
    std::istringstream fStream;
};

} // namespace veltrane::host

#endif
