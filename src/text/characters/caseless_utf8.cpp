#include "text/characters/caseless_compare.h"
#include "text/characters/utf8_shape.h"

#include <MCXML_900/KORDMBString.h>

#include <unicode/uchar.h>

#include <algorithm>
#include <cstring>

namespace MCXML_900 {

namespace {

namespace text = veltrane::text;
using text::Byte;

constexpr unsigned char LowerAscii(unsigned char byte) {
    return byte >= 'A' && byte <= 'Z' ? static_cast<unsigned char>(byte + ('a' - 'A')) : byte;
}

/// Eight bytes at once.
using Word = std::uint64_t;
constexpr std::size_t kWord = sizeof(Word);

constexpr Word Repeat(unsigned char byte) {
    return byte * Word{0x0101010101010101};
}

Word ReadWord(const char* bytes) {
    Word word;
    std::memcpy(&word, bytes, kWord);
    return word;
}

/// LowerAscii of eight bytes, all below 0x80: none carries into the next.
constexpr Word LowerAscii(Word word) {
    const Word fromA = word + Repeat(0x80 - 'A');
    const Word behindZ = word + Repeat(0x80 - ('Z' + 1));
    return word + ((fromA & ~behindZ & Repeat(0x80)) >> 2); // 0x20 where a letter is large
}

/// Whether two words are ASCII and equal without regard to case.
bool AreEqualAscii(Word a, Word b) {
    return ((a | b) & Repeat(0x80)) == 0 && LowerAscii(a) == LowerAscii(b);
}

/// The bytes of the characters that two texts begin with, and that are equal but for the case of ASCII letters.
std::size_t EqualPrefix(std::string_view a, std::string_view b) {
    const std::size_t common = std::min(a.size(), b.size());
    std::size_t at = 0;
    while (at < common) {
        if (common - at >= kWord && AreEqualAscii(ReadWord(a.data() + at), ReadWord(b.data() + at))) {
            at += kWord;
            continue;
        }
        const unsigned char byte = Byte(a[at]);
        if (byte < 0x80) {
            if (LowerAscii(byte) != LowerAscii(Byte(b[at]))) {
                break;
            }
            ++at;
            continue;
        }
        const int trails = text::TrailingBytes(byte);
        const auto length = static_cast<std::size_t>(trails) + 1;
        if (common - at < length || std::memcmp(a.data() + at, b.data() + at, length) != 0 ||
            !text::HasShape(a.substr(at), trails)) {
            break;
        }
        at += length;
    }
    return at;
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
        const std::size_t equal = EqualPrefix(a.fRest, b.fRest);
        a.fRest.remove_prefix(equal);
        b.fRest.remove_prefix(equal);
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
