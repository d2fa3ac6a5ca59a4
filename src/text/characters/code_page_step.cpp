#include "platform/platform.h"
#include "text/characters/byte_span.h"

#include <MCXML_900/KORDMBString.h>

#include <climits>

#include <cwchar>

// Steps from character to character of a text in the code page.

namespace MCXML_900 {

int gSingleByteCodePage = 0;

namespace {

namespace text = veltrane::text;
using text::Byte;
using veltrane::platform::LeadBytes;

/// The start of the character that holds the byte at `pos`, which is below the length of the text.
std::size_t FindStart(const char* s, std::size_t pos) {
    if (gSingleByteCodePage != 0) {
        return pos;
    }
    // A byte that is no lead ends a character. So the leads right before `pos` pair off, and of an odd number of them
    // the last one's character takes the byte at `pos`.
    const auto& leads = LeadBytes();
    std::size_t run = pos;
    while (run > 0 && leads[Byte(s[run - 1])]) {
        --run;
    }
    return (pos - run) % 2 == 0 ? pos : pos - 1;
}

} // namespace

int KORDMBmblen_C(const char* s, int n) {
    if (s == nullptr || *s == '\0') {
        return 0;
    }
    const std::string_view bytes = text::Span(s, n < 0 || n > MB_LEN_MAX ? MB_LEN_MAX : n);
    std::mbstate_t state{};
    const std::size_t length = std::mbrlen(bytes.data(), bytes.size(), &state);
    return length <= bytes.size() ? static_cast<int>(length) : -1;
}

int KORDMBmbclen_C(const char* s) {
    if (s == nullptr) {
        return 0;
    }
    return KORDMBIsLeadByte_C(Byte(*s)) && s[1] != '\0' ? 2 : 1;
}

bool KORDMBIsLeadByte_C(unsigned char byte) {
    return gSingleByteCodePage == 0 && LeadBytes()[byte];
}

const char* KORDMBstrinc_C(const char* s) {
    return s == nullptr ? nullptr : s + KORDMBmbclen_C(s);
}

int KORDMBFindStart_C(const char* s, int pos) {
    if (s == nullptr) {
        return 0;
    }
    if (pos <= 0) {
        return pos;
    }
    const std::string_view before = text::Span(s, pos);
    const bool behind = static_cast<int>(before.size()) < pos || s[pos] == '\0';
    return static_cast<int>(behind ? before.size() : FindStart(s, before.size()));
}

const char* KORDMBAnsiPrev_C(const char* start, const char* current) {
    if (start == nullptr || current == nullptr || current <= start) {
        return current;
    }
    const auto last = static_cast<std::size_t>(current - start) - 1;
    const std::size_t length = strnlen(start, last + 1);
    return start + (length <= last ? length : FindStart(start, last));
}

} // namespace MCXML_900
