#include "platform/platform.h"
#include "text/characters/byte_span.h"
#include "text/characters/code_page_reader.h"
#include "text/characters/reject_table.h"

#include <MCXML_900/KORDMBString.h>

#include <algorithm>
#include <cstring>

namespace MCXML_900 {

namespace text = veltrane::text;
using text::Byte;

namespace {

/// Walks over the characters and calls `found` with each place that begins with the byte, until that says false. Behind
/// such a place it goes on with the next byte, even where a longer character begins there.
/// @return the terminator
template <class Found>
const char* FindByte(const char* s, unsigned char byte, Found found) {
    const auto& leads = veltrane::platform::LeadBytes();
    while (*s != '\0') {
        int step = 1;
        if (Byte(*s) == byte) {
            if (!found(s)) {
                break;
            }
        } else if (leads[Byte(*s)]) {
            constexpr int kLongest = 5;
            step = std::max(1, KORDMBmblen_C(s, kLongest));
        }
        s += step;
    }
    return s;
}

} // namespace

const char* KORDMBstrchr_C(const char* s, unsigned int ch) {
    if (s == nullptr || gSingleByteCodePage != 0) {
        return s == nullptr ? nullptr : std::strchr(s, static_cast<int>(ch));
    }
    const char* first = nullptr;
    const char* end = FindByte(s, static_cast<unsigned char>(ch), [&first](const char* at) {
        first = at;
        return false;
    });
    return first == nullptr && ch == 0 ? end : first;
}

const char* KORDMBstrrchr_C(const char* s, unsigned int ch) {
    if (s == nullptr || gSingleByteCodePage != 0) {
        return s == nullptr ? nullptr : std::strrchr(s, static_cast<int>(ch));
    }
    const char* last = nullptr;
    const char* end = FindByte(s, static_cast<unsigned char>(ch), [&last](const char* at) {
        last = at;
        return true;
    });
    return last == nullptr && ch == 0 ? end : last;
}

std::size_t KORDMBstrcspn_C(const char* s, const char* reject) {
    const std::string_view bytes = text::Span(s, -1);
    const std::string_view rejected = text::Span(reject, -1);
    if (rejected.empty() || bytes.empty()) {
        return bytes.size();
    }
    if (gSingleByteCodePage != 0) {
        return std::strcspn(s, reject);
    }
    text::CodePageReader reader;
    return text::LengthWithout(bytes, rejected, [&reader](std::string_view at) { return reader.ReadFirst(at); });
}

int KORDMBU32Get_C(unsigned int* out, const char* s, int pos, int end) {
    // With the shift sequences before it no character is longer than this.
    constexpr int kWindow = 64;
    unsigned int value = 0;
    int length = 0;
    if (s != nullptr && pos >= 0 && (end < 0 || end > pos)) {
        const int window = end < 0 || end - pos > kWindow ? kWindow : end - pos;
        if (const std::string_view bytes = text::Span(s + pos, window); !bytes.empty()) {
            text::CodePageReader reader;
            const text::TextUnit unit = reader.ReadFirst(bytes);
            value = unit.proper ? static_cast<unsigned int>(unit.value) : 0;
            length = unit.proper ? unit.length : -1;
        }
    }
    if (out != nullptr) {
        *out = value;
    }
    return length;
}

namespace {

/// The bytes of the whole characters at the start of a text that is followed by more, or by its NUL. The last one is
/// left out when the C library calls it invalid.
std::size_t SafeLength(std::string_view bytes) {
    const auto& leads = veltrane::platform::LeadBytes();
    std::size_t last = 0;
    std::size_t end = 0;
    while (end < bytes.size()) {
        const char* at = bytes.data() + end;
        const std::size_t length = leads[Byte(*at)] && at[1] != '\0' ? 2 : 1;
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
