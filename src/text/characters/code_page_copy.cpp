#include "platform/platform.h"
#include "text/characters/byte_span.h"

#include <MCXML_900/KORDMBString.h>

namespace MCXML_900 {

namespace {

namespace text = veltrane::text;

/// The bytes of the whole characters at the start of a text that is followed by more, or by its NUL. The last one is
/// left out when the C library calls it invalid.
std::size_t SafeLength(std::string_view bytes) {
    const auto& leads = veltrane::platform::LeadBytes();
    std::size_t last = 0;
    std::size_t end = 0;
    while (end < bytes.size()) {
        const char* at = bytes.data() + end;
        const std::size_t length = leads[text::Byte(*at)] && at[1] != '\0' ? 2 : 1;
        if (end + length > bytes.size()) {
            break;
        }
        last = end;
        end += length;
    }
    const bool valid = end == 0 || KORDMBmblen_C(bytes.data() + last, static_cast<int>(end - last)) >= 0;
    return valid ? end : last;
}

} // namespace

char* KORDMBstrncpy_C(char* dst, const char* src, int n) {
    if (dst == nullptr || src == nullptr || n == 0) {
        return dst;
    }
    const std::string_view bytes = text::Span(src, n);
    return text::CopyAndFill(dst, gSingleByteCodePage != 0 ? bytes : bytes.substr(0, SafeLength(bytes)), n);
}

} // namespace MCXML_900
