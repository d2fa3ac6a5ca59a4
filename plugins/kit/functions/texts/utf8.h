#ifndef VELTRANE_PLUGINS_KIT_FUNCTIONS_UTF8_H
#define VELTRANE_PLUGINS_KIT_FUNCTIONS_UTF8_H

#include <algorithm>
#include <cstddef>
#include <string_view>

/// The bytes of texts in UTF-8.
namespace veltrane_kit::standard {

inline bool IsAscii(std::string_view text) {
    unsigned all = 0;
    for (const char byte : text) {
        all |= static_cast<unsigned char>(byte);
    }
    return all < 0x80U;
}

/// Turns the letters of ASCII from one on into those from another one on.
inline void TurnLetters(char* bytes, std::size_t size, char first, char other) {
    constexpr unsigned char kLetters = 26;
    const int distance = other - first;
    for (std::size_t i = 0; i < size; ++i) {
        const bool isTurned = static_cast<unsigned char>(bytes[i] - first) < kLetters;
        bytes[i] = static_cast<char>(bytes[i] + (isTurned ? distance : 0));
    }
}

/// A text without blanks, tabs and ends of lines at both ends.
inline std::string_view WithoutBlanks(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(kBlanks);
    return first == text.npos ? text.substr(0, 0) : text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

/// Whether a byte of UTF-8 goes on with the character before it.
inline bool GoesOn(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

inline std::size_t CountUtf8(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char byte) { return !GoesOn(byte); }));
}

/// The bytes before a character.
/// @param characters at least so many bytes; beyond the last it is the size of the text
inline std::size_t BytesOf(std::string_view text, double characters) {
    std::size_t at = 0;
    for (double passed = 0.0; at < text.size(); ++at) {
        passed += GoesOn(text[at]) ? 0.0 : 1.0;
        if (passed > characters) {
            break;
        }
    }
    return at;
}

} // namespace veltrane_kit::standard

#endif
