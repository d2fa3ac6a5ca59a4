#include "text/characters/byte_span.h"
#include "text/characters/reject_table.h"
#include "text/characters/utf8_shape.h"
#include "text/characters/utf8_step.h"

#include <MCXML_900/KORDMBString.h>

#include <algorithm>
#include <cstring>

namespace MCXML_900 {

namespace text = veltrane::text;
using text::Byte;

namespace {

/// Walks over the characters by their leads alone, without a look at the shape, and calls `found` with each place of
/// one until that says false. A character that the NUL cuts off ends the walk.
template <class Found>
void FindCodePoint(const char* s, unsigned int ch, Found found) {
    while (*s != '\0') {
        const unsigned char lead = Byte(*s);
        const int trails = lead < 0x80 ? 0 : lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
        unsigned int value = trails == 0 ? lead : lead & (0x3FU >> trails);
        for (int i = 1; i <= trails; ++i) {
            if (s[i] == '\0') {
                return;
            }
            value = value << 6 | (Byte(s[i]) & 0x3FU);
        }
        if (value == ch && !found(s)) {
            return;
        }
        s += 1 + trails;
    }
}

} // namespace

const char* KORDMBstrchr_8(const char* s, unsigned int ch) {
    if (s == nullptr || ch < 0x80) {
        return s == nullptr ? nullptr : std::strchr(s, static_cast<int>(ch));
    }
    const char* first = nullptr;
    FindCodePoint(s, ch, [&first](const char* at) {
        first = at;
        return false;
    });
    return first;
}

const char* KORDMBstrrchr_8(const char* s, unsigned int ch) {
    if (s == nullptr || ch < 0x80) {
        return s == nullptr ? nullptr : std::strrchr(s, static_cast<int>(ch));
    }
    const char* last = nullptr;
    FindCodePoint(s, ch, [&last](const char* at) {
        last = at;
        return true;
    });
    return last;
}

std::size_t KORDMBstrcspn_8(const char* s, const char* reject) {
    const std::string_view rejected = text::Span(reject, -1);
    if (s != nullptr && std::all_of(rejected.begin(), rejected.end(), [](char c) { return Byte(c) < 0x80; })) {
        // No byte of a longer character, and none that can't be decoded, is ASCII.
        return rejected.empty() ? std::strlen(s) : std::strcspn(s, reject);
    }
    return text::LengthWithout(text::Span(s, -1), rejected, text::Utf8Unit);
}

namespace {

/// The bytes of a text without the improper ones at its end.
std::size_t ProperLength(std::string_view bytes) {
    std::size_t length = bytes.size();
    while (length > 0 && text::CharacterBefore(bytes.data(), length) == 0) {
        --length;
    }
    return length;
}

} // namespace

char* KORDMBstrncpy_8(char* dst, const char* src, int n) {
    if (dst == nullptr || n == 0) {
        return dst;
    }
    const std::string_view bytes = text::Span(src, n);
    return text::CopyAndFill(dst, bytes.substr(0, ProperLength(bytes)), n);
}

} // namespace MCXML_900
