#include "diagnostics/message_bytes.h"

#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <cstdint>

namespace veltrane::diagnostics {

namespace {

constexpr UChar32 kEscape = 0xDC00;
constexpr UChar32 kFirstEscape = kEscape + 0x80;
constexpr UChar32 kLastEscape = kEscape + 0xFF;

void AppendCharacter(std::string& bytes, UChar32 character) {
    if (character >= kFirstEscape && character <= kLastEscape) {
        bytes.push_back(static_cast<char>(character - kEscape));
        return;
    }
    char encoded[U8_MAX_LENGTH];
    std::size_t length = 0;
    U8_APPEND_UNSAFE(encoded, length, character);
    bytes.append(encoded, length);
}

} // namespace

icu::UnicodeString FromMessageBytes(std::string_view bytes) {
    const auto* source = reinterpret_cast<const std::uint8_t*>(bytes.data());
    icu::UnicodeString text;
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t start = at;
        UChar32 character = 0;
        U8_NEXT(source, at, bytes.size(), character);
        if (character >= 0) {
            text.append(character);
            continue;
        }
        for (std::size_t bad = start; bad < at; ++bad) {
            text.append(static_cast<char16_t>(kEscape + source[bad]));
        }
    }
    return text;
}

std::string ToMessageBytes(const icu::UnicodeString& text) {
    std::string bytes;
    bytes.reserve(static_cast<std::size_t>(text.length()));
    for (std::int32_t at = 0; at < text.length();) {
        const UChar32 character = text.char32At(at);
        if (character == 0) {
            break;
        }
        AppendCharacter(bytes, character);
        at += U16_LENGTH(character);
    }
    return bytes;
}

} // namespace veltrane::diagnostics
