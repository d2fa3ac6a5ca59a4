#ifndef VELTRANE_HOST_UNPACKING_H
#define VELTRANE_HOST_UNPACKING_H

#include "files/byte_stream.h"

#include <memory>
#include <string>
#include <string_view>

namespace veltrane::host {

/// Turns packed bytes into what was packed, piece by piece, in an amount of memory that doesn't depend on either.
class Unpacker {
public:
    virtual ~Unpacker() = default;

    /// Takes some bytes from the front of `input` and writes some into `buffer`; it does one of both unless both are
    /// used up.
    /// @return the number of bytes written
    /// @throws Failure with what is wrong with the bytes
    virtual std::size_t Unpack(std::string_view& input, char* buffer, std::size_t size) = 0;

    /// Whether the input may end here.
    virtual bool IsComplete() const = 0;
};

/// The bytes of a file as they were before gzip or zstd packed it, which the first bytes tell, whatever its name is; a
/// file that isn't packed as it is. Several archives one behind the other count as one.
///
/// Archives of other kinds, and those that are cut off or damaged, are a `Failure` that names the file.
class UnpackedSource : public ByteSource {
public:
    /// @param source borrowed
    /// @param name   of the file, for messages
    UnpackedSource(ByteSource& source, std::string name);
    ~UnpackedSource() override;

    std::size_t Read(char* buffer, std::size_t size) override;

    /// Whether the file is packed, from the first `Read` on.
    bool IsPacked() const { return fUnpacker != nullptr; }

private:
    void ReadStart();
    void ReadMore();

    ByteSource& fSource;
    std::string fName;
    std::unique_ptr<Unpacker> fUnpacker; ///< null for a file that isn't packed
    std::string fChunk;
    std::string_view fInput; ///< of the chunk, what is still to be taken
    bool fStarted = false;
    bool fEnded = false;
};

/// The bytes of a whole document, unpacked where they are packed.
/// @param bytes as they are in the file
/// @param name  of the file, for messages
/// @throws Failure as above, and for an archive that unpacks to more than the library lets a document of its size hold
///         in memory
std::string UnpackedDocument(std::string bytes, const std::string& name);

} // namespace veltrane::host

#endif
