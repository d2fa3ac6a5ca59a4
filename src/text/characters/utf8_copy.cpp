#include "text/characters/byte_span.h"
#include "text/characters/utf8_step.h"

#include <MCXML_900/KORDMBString.h>

namespace MCXML_900 {

namespace {

/// The bytes of a text without the improper ones at its end.
std::size_t ProperLength(std::string_view text) {
    std::size_t length = text.size();
    while (length > 0 && veltrane::text::CharacterBefore(text.data(), length) == 0) {
        --length;
    }
    return length;
}

} // namespace

char* KORDMBstrncpy_8(char* dst, const char* src, int n) {
    if (dst == nullptr || n == 0) {
        return dst;
    }
    const std::string_view text = veltrane::text::Span(src, n);
    return veltrane::text::CopyAndFill(dst, text.substr(0, ProperLength(text)), n);
}

} // namespace MCXML_900
