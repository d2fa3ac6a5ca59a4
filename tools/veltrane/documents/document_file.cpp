#include "documents/document_file.h"

#include "documents/explanation.h"
#include "files/byte_stream.h"
#include "files/unpacking.h"

namespace veltrane::host {
namespace {

std::string ReadAll(ByteSource& source) {
    std::string bytes;
    for (std::size_t size = 0;;) {
        bytes.resize(size + kChunkSize);
        const std::size_t count = source.Read(bytes.data() + size, kChunkSize);
        size += count;
        if (count == 0) {
            bytes.resize(size);
            return bytes;
        }
    }
}

} // namespace

DocumentFile::DocumentFile(const std::string& path, int code) : fName(path) {
    try {
        InputFile file(path);
        Replace(UnpackedDocument(ReadAll(file), path));
    } catch (const UnreadableFile& reason) {
        throw ExplainedFailure(ToldText(code, path), reason.what());
    }
}

std::istream& DocumentFile::Stream() {
    fStream.clear();
    fStream.seekg(0);
    return fStream;
}

void DocumentFile::Replace(std::string bytes) {
    fStream.str(std::move(bytes));
}

} // namespace veltrane::host
