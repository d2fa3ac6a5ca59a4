#ifndef VELTRANE_PLUGINS_KIT_FUNCTIONS_BYTES_H
#define VELTRANE_PLUGINS_KIT_FUNCTIONS_BYTES_H

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

/// Short texts eight bytes at a time. What is left over is done with the bytes before it once more, so that no byte
/// outside of a text is read or written.
namespace veltrane_kit::standard {

namespace bytes {

inline constexpr std::uint64_t kOnes = 0x0101010101010101;
inline constexpr std::uint64_t kHighest = 0x8080808080808080;

template <typename T>
std::uint64_t Read(const char* place) {
    T word;
    std::memcpy(&word, place, sizeof(T));
    return word;
}

template <typename T>
void Write(std::uint64_t word, char* place) {
    const T part = static_cast<T>(word);
    std::memcpy(place, &part, sizeof(T));
}

/// Writes what an operation makes of the words of a text.
/// @param to room for as many bytes, apart from the text
/// @return all words, one over the other
template <typename Operation>
std::uint64_t Map(std::string_view text, char* to, const Operation& operation) {
    const char* const from = text.data();
    const std::size_t size = text.size();
    std::uint64_t all = 0;
    const auto step = [&]<typename T>(std::size_t at, T /*word*/) {
        const std::uint64_t word = Read<T>(from + at);
        all |= word;
        Write<T>(operation(word), to + at);
    };
    if (size >= 8) {
        for (std::size_t at = 0; at + 8 < size; at += 8) {
            step(at, std::uint64_t{});
        }
        step(size - 8, std::uint64_t{});
    } else if (size >= 4) {
        step(0, std::uint32_t{});
        step(size - 4, std::uint32_t{});
    } else {
        for (std::size_t at = 0; at < size; ++at) {
            step(at, std::uint8_t{});
        }
    }
    return all;
}

} // namespace bytes

/// @param to room for the text, apart from it
/// @return the end of what was written
inline char* CopyText(std::string_view text, char* to) {
    constexpr std::size_t kShort = 64;
    if (text.size() > kShort) {
        std::memcpy(to, text.data(), text.size());
    } else {
        bytes::Map(text, to, [](std::uint64_t word) { return word; });
    }
    return to + text.size();
}

/// Copies a text with its ASCII letters from one on turned into those from another one on, which differ in one bit.
/// @tparam kFirst 'a' or 'A'
/// @param to room for the text, apart from it
/// @return whether all of the text is ASCII; else what was written is of no use
template <char kFirst>
bool TurnText(std::string_view text, char* to) {
    constexpr std::uint64_t kFromFirst = (0x80 - kFirst) * bytes::kOnes;
    constexpr std::uint64_t kBeyondLast = (0x80 - kFirst - 26) * bytes::kOnes;
    const std::uint64_t all = bytes::Map(text, to, [](std::uint64_t word) {
        const std::uint64_t low = word & ~bytes::kHighest;
        const std::uint64_t letters = ((low + kFromFirst) ^ (low + kBeyondLast)) & bytes::kHighest;
        return word ^ letters >> 2U;
    });
    return (all & bytes::kHighest) == 0;
}

/// Whether all of a short text is ASCII.
inline bool IsAsciiText(std::string_view text) {
    const char* const from = text.data();
    const std::size_t size = text.size();
    std::uint64_t all = 0;
    if (size >= 8) {
        for (std::size_t at = 0; at + 8 < size; at += 8) {
            all |= bytes::Read<std::uint64_t>(from + at);
        }
        all |= bytes::Read<std::uint64_t>(from + size - 8);
    } else if (size >= 4) {
        all = bytes::Read<std::uint32_t>(from) | bytes::Read<std::uint32_t>(from + size - 4);
    } else {
        for (const char byte : text) {
            all |= static_cast<unsigned char>(byte);
        }
    }
    return (all & bytes::kHighest) == 0;
}

/// As std::string_view::compare() does: below 0, 0 or above 0.
inline int CompareTexts(std::string_view left, std::string_view right) {
    if constexpr (std::endian::native == std::endian::little) {
        if (left.size() >= 8 && right.size() >= 8) {
            const std::uint64_t first = __builtin_bswap64(bytes::Read<std::uint64_t>(left.data()));
            const std::uint64_t second = __builtin_bswap64(bytes::Read<std::uint64_t>(right.data()));
            if (first != second) {
                return first < second ? -1 : 1;
            }
        }
    }
    return left.compare(right);
}

} // namespace veltrane_kit::standard

#endif
