#ifndef VELTRANE_HOST_BYTE_STREAM_H
#define VELTRANE_HOST_BYTE_STREAM_H

#include "files/failure.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace veltrane::host {

/// How many bytes are asked for at once.
constexpr std::size_t kChunkSize = std::size_t{256} << 10;

/// Where the reader of cases takes its bytes from.
class ByteSource {
public:
    virtual ~ByteSource() = default;

    /// Reads up to `size` bytes, at least one unless the end is reached.
    /// @return the number of bytes, 0 at the end
    virtual std::size_t Read(char* buffer, std::size_t size) = 0;
};

/// Where the writer of results puts its bytes.
class ByteSink {
public:
    virtual ~ByteSink() = default;

    /// Writes all the bytes or throws a `Failure` that names the sink.
    virtual void Write(std::string_view bytes) = 0;
};

/// A file that the system doesn't open or read; the text is its name and the system's reason.
class UnreadableFile : public Failure {
public:
    using Failure::Failure;
};

/// A file opened for reading; the name `-` is standard input. Failures are an `UnreadableFile`.
class InputFile : public ByteSource {
public:
    explicit InputFile(std::string name);
    ~InputFile() override;
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    std::size_t Read(char* buffer, std::size_t size) override;

    /// The size in bytes of a regular file; a pipe or a terminal has none.
    std::optional<std::uint64_t> Size() const { return fSize; }
    std::uint64_t BytesRead() const { return fBytesRead; }

    /// Whether the next `Read` gives bytes, or tells the end, without waiting for them.
    bool IsReady() const;

private:
    std::string fName;
    int fDescriptor;
    std::optional<std::uint64_t> fSize;
    std::uint64_t fBytesRead = 0;
};

/// Writes to a file descriptor that somebody else closes.
class DescriptorSink : public ByteSink {
public:
    DescriptorSink(int descriptor, std::string name) : fDescriptor(descriptor), fName(std::move(name)) {}

    void Write(std::string_view bytes) override;

private:
    int fDescriptor;
    std::string fName;
};

/// The text of the system's error number, for the end of a message.
std::string SystemErrorText(int number);

} // namespace veltrane::host

#endif
