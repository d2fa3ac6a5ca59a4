#include "text/characters/utf8_step.h"

#include "text/characters/utf8_shape.h"

#include <MCXML_900/KORDMBString.h>

#include <unicode/utf.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstdint>

// Steps from character to character of a UTF-8 text.

namespace veltrane::text {

namespace {

/// Whether a step of ICU found a character: a negative one is none, and neither are the noncharacters.
bool IsCharacter(UChar32 c) {
    return c >= 0 && !U_IS_UNICODE_NONCHAR(c);
}

/// ICU's strict step over a text that isn't empty.
int StrictLength(std::string_view text) {
    std::int32_t at = 0;
    UChar32 c = 0;
    U8_NEXT(text.data(), at, static_cast<std::int32_t>(text.size()), c);
    return IsCharacter(c) ? at : -1;
}

} // namespace

std::size_t CharacterBefore(const char* s, std::size_t i) {
    if (Byte(s[i - 1]) < 0x80) {
        return 1;
    }
    const std::size_t window = std::min<std::size_t>(i, U8_MAX_LENGTH);
    const char* bytes = s + (i - window);
    auto at = static_cast<std::int32_t>(window);
    UChar32 c = 0;
    U8_PREV(bytes, 0, at, c);
    return IsCharacter(c) ? window - static_cast<std::size_t>(at) : 0;
}

} // namespace veltrane::text

namespace MCXML_900 {

namespace text = veltrane::text;
using text::Byte;

int KORDMBmblen_8(const char* s, int n) {
    if (s == nullptr || *s == '\0' || n == 0) {
        return 0;
    }
    const unsigned char lead = Byte(*s);
    if (lead < 0x80) {
        return 1;
    }
    const std::string_view bytes =
        text::Span(s, n < 0 || n > static_cast<int>(U8_MAX_LENGTH) ? static_cast<int>(U8_MAX_LENGTH) : n);
    auto trailAt = [bytes](std::size_t i) { return i < bytes.size() && text::IsTrail(Byte(bytes[i])); };
    // Most text: what these leads announce is proper whenever the trail bytes are there.
    if (lead >= 0xE1 && lead <= 0xEC && trailAt(1) && trailAt(2)) {
        return 3;
    }
    if (lead >= 0xC2 && lead <= 0xDF && trailAt(1)) {
        return 2;
    }
    return text::StrictLength(bytes);
}

int KORDMBmbclen_8(const char* s) {
    if (s == nullptr) {
        return 0;
    }
    // Leads that announce more than three trail bytes begin no character.
    const int trails = text::TrailingBytes(Byte(*s));
    int length = 1;
    while (trails <= 3 && length <= trails && s[length] != '\0') {
        ++length;
    }
    return length;
}

const char* KORDMBstrinc_8(const char* s) {
    return s == nullptr ? nullptr : s + KORDMBmbclen_8(s);
}

int KORDMBPreviousIndex_8(const char* s, int i) {
    if (s == nullptr || i < 1) {
        return i;
    }
    return i - static_cast<int>(std::max<std::size_t>(1, text::CharacterBefore(s, static_cast<std::size_t>(i))));
}

const char* KORDMBAnsiPrev_8(const char* start, const char* current) {
    if (start == nullptr || current == nullptr || current <= start) {
        return current;
    }
    return current - std::max<std::size_t>(1, text::CharacterBefore(start, static_cast<std::size_t>(current - start)));
}

} // namespace MCXML_900
