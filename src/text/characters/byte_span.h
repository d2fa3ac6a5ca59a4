#ifndef VELTRANE_TEXT_BYTE_SPAN_H
#define VELTRANE_TEXT_BYTE_SPAN_H

#include <cstddef>
#include <cstring>
#include <string_view>

/// What the families of byte-string functions share: the piece of a text that counts, and the fixed-width target.
namespace veltrane::text {

/// The first code that is no longer ASCII.
constexpr unsigned kAsciiEnd = 0x80;

inline unsigned char Byte(char c) {
    return static_cast<unsigned char>(c);
}

/// A text of at most `n` bytes, or up to its NUL for a negative `n`; empty for null. A NUL ends it in any case.
inline std::string_view Span(const char* s, int n) {
    if (s == nullptr) {
        return {};
    }
    return {s, n < 0 ? std::strlen(s) : strnlen(s, static_cast<std::size_t>(n))};
}

/// Puts a text of at most `n` bytes in front of a target, which may overlap it, and fills the rest up to `n` with NUL.
/// @param n a negative one stands for room for the text and one NUL
/// @return the target
inline char* CopyAndFill(char* dst, std::string_view text, int n) {
    if (!text.empty()) {
        std::memmove(dst, text.data(), text.size());
    }
    const std::size_t size = n < 0 ? text.size() + 1 : static_cast<std::size_t>(n);
    std::memset(dst + text.size(), 0, size - text.size());
    return dst;
}

} // namespace veltrane::text

#endif
