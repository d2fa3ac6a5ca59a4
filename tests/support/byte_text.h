#ifndef VELTRANE_TESTS_SUPPORT_BYTE_TEXT_H
#define VELTRANE_TESTS_SUPPORT_BYTE_TEXT_H

#include <string>
#include <string_view>

namespace veltrane::tests {

/// The bytes of a hexadecimal text: Bytes("E2 82 AC").
std::string Bytes(const std::string& hexadecimal);

/// The hexadecimal text of bytes.
std::string Hexadecimal(std::string_view bytes);

/// Memory that ends at a page no one may touch, so that a read or a write behind it crashes.
class GuardedBuffer {
public:
    GuardedBuffer();
    ~GuardedBuffer();
    GuardedBuffer(const GuardedBuffer&) = delete;
    GuardedBuffer& operator=(const GuardedBuffer&) = delete;

    /// Puts a text and its NUL at the very end. It is there until the next call.
    const char* Put(std::string_view text);
    /// The last `size` bytes, filled with 'x'.
    char* Room(std::size_t size);

private:
    char* fStart;
    std::size_t fSize;
};

} // namespace veltrane::tests

#endif
