#include "text/caseless_compare.h"
#include "text/utf8_shape.h"

#include <MCXML_900/KORDMBString.h>

#include <unicode/uchar.h>

#include <algorithm>

namespace MCXML_900 {

namespace {

namespace text = veltrane::text;
using text::Byte;

constexpr unsigned char LowerAscii(unsigned char byte) {
    return byte >= 'A' && byte <= 'Z' ? static_cast<unsigned char>(byte + ('a' - 'A')) : byte;
}

constexpr std::size_t kBlock = 16;

/// Whether two blocks are ASCII and equal without regard to case. The loop has no branch, so that the compiler takes
/// the whole block at once.
bool EqualAsciiBlocks(const char* a, const char* b) {
    unsigned char high = 0;
    unsigned char difference = 0;
    for (std::size_t i = 0; i < kBlock; ++i) {
        const unsigned char x = Byte(a[i]);
        const unsigned char y = Byte(b[i]);
        high |= static_cast<unsigned char>(x | y);
        difference |= static_cast<unsigned char>(LowerAscii(x) ^ LowerAscii(y));
    }
    return high < 0x80 && difference == 0;
}

class FoldedUtf8 {
public:
    explicit FoldedUtf8(std::string_view bytes) : fRest(bytes) {}

    bool More() const { return !fRest.empty(); }
    std::int32_t Next(int& status) {
        const unsigned char byte = Byte(fRest[0]);
        if (byte < 0x80) {
            fRest.remove_prefix(1);
            return LowerAscii(byte);
        }
        const text::TextUnit unit = text::Utf8Unit(fRest);
        fRest.remove_prefix(static_cast<std::size_t>(unit.length));
        if (!unit.proper) {
            status = text::kUndecodable;
            return unit.value;
        }
        return u_tolower(unit.value);
    }
    static void SkipEqual(FoldedUtf8& a, FoldedUtf8& b) {
        const std::size_t common = std::min(a.fRest.size(), b.fRest.size());
        std::size_t at = 0;
        while (common - at >= kBlock && EqualAsciiBlocks(a.fRest.data() + at, b.fRest.data() + at)) {
            at += kBlock;
        }
        a.fRest.remove_prefix(at);
        b.fRest.remove_prefix(at);
    }

private:
    std::string_view fRest;
};

int Compare(std::string_view a, std::string_view b, int& status) {
    FoldedUtf8 unitsOfA(a);
    FoldedUtf8 unitsOfB(b);
    return text::CompareUnits(unitsOfA, unitsOfB, status);
}

} // namespace

int KORDMBstrnicmp_8(const char* a, const char* b, int n) {
    int status = 0;
    return Compare(text::Span(a, n), text::Span(b, n), status);
}

int KORDMBqstricmp_8(const char* a, int aLength, const char* b, int bLength, int* status) {
    int result = 0;
    const bool equal = Compare(text::Span(a, aLength), text::Span(b, bLength), result) == 0;
    if (status != nullptr) {
        *status = result;
    }
    return equal ? 1 : 0;
}

} // namespace MCXML_900
