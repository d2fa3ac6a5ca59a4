#include "text/characters/byte_span.h"
#include "text/characters/caseless_compare.h"
#include "text/characters/code_page_reader.h"

#include <MCXML_900/KORDMBString.h>

#include <unicode/uchar.h>

#include <algorithm>
#include <cctype>
#include <utility>

namespace MCXML_900 {

namespace {

namespace text = veltrane::text;
using text::Byte;
using text::SingleBytes;

class FoldedCodePage {
public:
    explicit FoldedCodePage(std::string_view bytes) : fRest(bytes) {}

    bool More() {
        if (fRest.empty() && fInConverter && !fLast) {
            fLast = fReader.ReadNext(fRest);
            fInConverter = fLast.has_value();
        }
        return !fRest.empty() || fLast.has_value();
    }

    std::int32_t Next(int& status) {
        if (const std::int32_t folded = Single(); folded != SingleBytes::kNone) {
            fRest.remove_prefix(1);
            return folded;
        }
        const text::TextUnit unit = fLast ? *std::exchange(fLast, std::nullopt) : *fReader.ReadNext(fRest);
        // The bytes of one character may stand for several code points: the converter is asked until it takes a byte
        // that is a character by itself, and so has nothing left.
        fInConverter = unit.proper && !(unit.length == 1 && fSingle->value[Byte(fRest[0])] == unit.value);
        fRest.remove_prefix(static_cast<std::size_t>(unit.length));
        if (!unit.proper) {
            status = text::kUndecodable;
            return unit.value;
        }
        return u_tolower(unit.value);
    }

    static void SkipEqual(FoldedCodePage& a, FoldedCodePage& b) {
        for (std::int32_t folded = a.Single(); folded != SingleBytes::kNone && folded == b.Single();
             folded = a.Single()) {
            a.fRest.remove_prefix(1);
            b.fRest.remove_prefix(1);
        }
    }

private:
    /// The next unit, folded, where the table tells it; else SingleBytes::kNone.
    std::int32_t Single() const {
        return fInConverter || fRest.empty() ? SingleBytes::kNone : fSingle->folded[Byte(fRest[0])];
    }

    const SingleBytes* fSingle = &text::DefaultSingleBytes();
    text::CodePageReader fReader;
    std::string_view fRest;
    std::optional<text::TextUnit> fLast; ///< a code point that the converter had left at the end
    bool fInConverter = false;           ///< whether the converter may have a code point left
};

/// Bytes, folded as the C library folds them.
class FoldedBytes {
public:
    explicit FoldedBytes(std::string_view bytes) : fRest(bytes) {}
    bool More() const { return !fRest.empty(); }
    std::int32_t Next(int&) {
        const unsigned char byte = Byte(fRest[0]);
        fRest.remove_prefix(1);
        return std::tolower(byte);
    }
    static void SkipEqual(FoldedBytes&, FoldedBytes&) {}

private:
    std::string_view fRest;
};

template <class Text>
int CompareAs(std::string_view a, std::string_view b, int& status) {
    Text unitsOfA(a);
    Text unitsOfB(b);
    return text::CompareUnits(unitsOfA, unitsOfB, status);
}

int Compare(std::string_view a, std::string_view b, int& status) {
    return gSingleByteCodePage != 0 ? CompareAs<FoldedBytes>(a, b, status) : CompareAs<FoldedCodePage>(a, b, status);
}

} // namespace

int KORDMBstrnicmp_C(const char* a, const char* b, int n) {
    int status = 0;
    return Compare(text::Span(a, n), text::Span(b, n), status);
}

int KORDMBqstricmp_C(const char* a, int aLength, const char* b, int bLength, int* status) {
    int result = 0;
    const bool equal = Compare(text::Span(a, aLength), text::Span(b, bLength), result) == 0;
    if (status != nullptr) {
        *status = result;
    }
    return equal ? 1 : 0;
}

} // namespace MCXML_900
