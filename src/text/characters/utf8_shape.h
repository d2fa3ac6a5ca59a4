#ifndef VELTRANE_TEXT_UTF8_SHAPE_H
#define VELTRANE_TEXT_UTF8_SHAPE_H

#include "text/characters/byte_span.h"
#include "text/characters/text_unit.h"

/// UTF-8 by table and shape: lengths by the lead byte, the ranges of the trail bytes, no more. A surrogate has the
/// shape of a character.
namespace veltrane::text {

/// How many trail bytes a lead byte announces, by its pattern.
constexpr int TrailingBytes(unsigned char lead) {
    return lead < 0xC0 ? 0 : lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : lead < 0xF8 ? 3 : lead < 0xFC ? 4 : 5;
}

constexpr bool IsTrail(unsigned char byte) {
    return (byte & 0xC0U) == 0x80;
}

/// Whether a second byte is in the range that its lead byte leaves it: no overlong form, nothing above U+10FFFF.
constexpr bool IsSecond(unsigned char lead, unsigned char second) {
    switch (lead) {
    case 0xE0:
        return second >= 0xA0 && second <= 0xBF;
    case 0xF0:
        return second >= 0x90 && second <= 0xBF;
    case 0xF4:
        return second >= 0x80 && second <= 0x8F;
    default:
        return IsTrail(second);
    }
}

/// Whether the first bytes of a non-empty text have the shape of one character above U+007F.
/// @param trails what its first byte announces
inline bool HasShape(std::string_view text, int trails) {
    const unsigned char lead = Byte(text[0]);
    if (lead < 0xC2 || lead > 0xF4 || text.size() <= static_cast<std::size_t>(trails) ||
        !IsSecond(lead, Byte(text[1]))) {
        return false;
    }
    for (int i = 2; i <= trails; ++i) {
        if (!IsTrail(Byte(text[static_cast<std::size_t>(i)]))) {
            return false;
        }
    }
    return true;
}

/// The unit at the start of a non-empty text.
inline TextUnit Utf8Unit(std::string_view text) {
    const unsigned char lead = Byte(text[0]);
    const int trails = TrailingBytes(lead);
    if (lead < 0x80) {
        return {lead, 1, true};
    }
    if (!HasShape(text, trails)) {
        return {lead, 1, false};
    }
    std::int32_t value = lead & (0x3F >> trails);
    for (int i = 1; i <= trails; ++i) {
        value = value << 6 | (Byte(text[static_cast<std::size_t>(i)]) & 0x3F);
    }
    return {value, trails + 1, true};
}

} // namespace veltrane::text

#endif
