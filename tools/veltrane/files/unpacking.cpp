#include "files/unpacking.h"

#include "factory/documents/document_limits.h"
#include "files/byte_stream.h"
#include "files/failure.h"
#include "files/packed_formats.h"

#include <fmt/format.h>

#include <algorithm>

namespace veltrane::host {
namespace {

/// The first bytes of a packed file.
struct Signature {
    std::string_view bytes;
    std::unique_ptr<Unpacker> (*makeUnpacker)(); ///< null for archives that aren't read
    const char* kind;
};

using namespace std::string_view_literals;

constexpr Signature kSignatures[] = {
    {"\x1F\x8B"sv, MakeGzipUnpacker, "gzip"},
    {"\x28\xB5\x2F\xFD"sv, MakeZstdUnpacker, "zstd"},
    {"PK\x03\x04"sv, nullptr, "a ZIP archive, as spreadsheets are"},
    {"PK\x05\x06"sv, nullptr, "a ZIP archive"},
    {"BZh91AY&SY"sv, nullptr, "packed with bzip2"},
    {"\3757zXZ\0"sv, nullptr, "packed with xz"},
    {"7z\xBC\xAF\x27\x1C"sv, nullptr, "a 7z archive"},
};

constexpr std::size_t kLongestSignature = 10;

/// Frames of zstd that are to be skipped may come first; their magic numbers end in any of 16 digits.
bool IsSkippableFrame(std::string_view bytes) {
    return bytes.size() >= 4 && (bytes[0] & 0xF0) == 0x50 && bytes.substr(1, 3) == "\x2A\x4D\x18";
}

const Signature* SignatureOf(std::string_view bytes) {
    for (const Signature& signature : kSignatures) {
        if (bytes.starts_with(signature.bytes)) {
            return &signature;
        }
    }
    return IsSkippableFrame(bytes) ? &kSignatures[1] : nullptr;
}

/// Whether more bytes may turn these into a signature.
bool MayBecomeSignature(std::string_view bytes) {
    const bool begins = std::any_of(std::begin(kSignatures), std::end(kSignatures), [&](const Signature& signature) {
        return signature.bytes.size() > bytes.size() && signature.bytes.starts_with(bytes);
    });
    return begins || (bytes.size() < 4 && !bytes.empty() && (bytes[0] & 0xF0) == 0x50 &&
                      "\x2A\x4D\x18"sv.starts_with(bytes.substr(1)));
}

class MemorySource : public ByteSource {
public:
    explicit MemorySource(std::string_view bytes) : fBytes(bytes) {}

    std::size_t Read(char* buffer, std::size_t size) override {
        const std::size_t count = fBytes.copy(buffer, size);
        fBytes.remove_prefix(count);
        return count;
    }

private:
    std::string_view fBytes;
};

} // namespace

UnpackedSource::UnpackedSource(ByteSource& source, std::string name) : fSource(source), fName(std::move(name)) {}

UnpackedSource::~UnpackedSource() = default;

/// A pipe may give a byte at a time, and a line of a few bytes is not to wait for the next.
void UnpackedSource::ReadStart() {
    fStarted = true;
    fChunk.resize(kChunkSize);
    std::size_t size = 0;
    do {
        const std::size_t count = fSource.Read(fChunk.data() + size, size == 0 ? kChunkSize : kLongestSignature - size);
        fEnded = count == 0;
        size += count;
    } while (!fEnded && size < kLongestSignature && MayBecomeSignature({fChunk.data(), size}));
    fInput = {fChunk.data(), size};
    const Signature* signature = SignatureOf(fInput);
    if (signature && !signature->makeUnpacker) {
        throw Failure(
            fmt::format("{}: the file is {}; of packed files those of gzip and zstd are read", fName, signature->kind));
    }
    if (signature) {
        fUnpacker = signature->makeUnpacker();
    }
}

void UnpackedSource::ReadMore() {
    const std::size_t count = fSource.Read(fChunk.data(), fChunk.size());
    fInput = {fChunk.data(), count};
    fEnded = count == 0;
}

std::size_t UnpackedSource::Read(char* buffer, std::size_t size) {
    if (!fStarted) {
        ReadStart();
    }
    if (!fUnpacker && !fInput.empty()) {
        const std::size_t count = fInput.copy(buffer, size);
        fInput.remove_prefix(count);
        return count;
    }
    if (!fUnpacker) {
        return fEnded ? 0 : fSource.Read(buffer, size);
    }
    try {
        for (;;) {
            const std::size_t count = fUnpacker->Unpack(fInput, buffer, size);
            if (count > 0) {
                return count;
            }
            if (fInput.empty() && !fEnded) {
                ReadMore();
            }
            if (fInput.empty() && fEnded) {
                break;
            }
        }
    } catch (const Failure& problem) {
        throw Failure(fName + ": " + problem.what());
    }
    if (!fUnpacker->IsComplete()) {
        throw Failure(fName + ": the packed file ends too early; is it cut off?");
    }
    return 0;
}

std::string UnpackedDocument(std::string bytes, const std::string& name) {
    const Signature* signature = SignatureOf(bytes);
    if (!signature) {
        return bytes;
    }
    const std::uint64_t most = factory::kHeldMemory + factory::kHeldMemoryPerByte * bytes.size();
    MemorySource packed(bytes);
    UnpackedSource source(packed, name);
    std::string document;
    std::string chunk(kChunkSize, '\0');
    while (const std::size_t count = source.Read(chunk.data(), chunk.size())) {
        document.append(chunk, 0, count);
        if (document.size() > most) {
            throw Failure(
                fmt::format("{}: the document unpacks to more than {} MiB, which is too much for {} packed bytes; "
                            "unpack it first if that is right",
                            name, most >> 20, bytes.size()));
        }
    }
    return document;
}

} // namespace veltrane::host
