#include "text/conversion/raw_conversion.h"

#include "text/characters/byte_span.h"
#include "text/conversion/whole_characters.h"
#include "text/converters/converter_callbacks.h"
#include "text/converters/converter_clone.h"

#include <MCXML_900/KORDMBConverter.h>

#include <unicode/ustring.h>

#include <algorithm>
#include <iterator>
#include <type_traits>

namespace veltrane::text {

namespace {

constexpr UChar32 kSubstitute = '?';
constexpr Converted kNothing{0, false, true};

/// The UTF-8 side of a conversion with a code page. Unlike the algorithmic converters of ICU's own it has the
/// callbacks, so that an invalid sequence is a '?' and a failure even where the code page has U+FFFD.
const UConverter* Utf8Converter() {
    static const auto* const converter = static_cast<UConverter*>(MCXML_900::KORDMBConverterNew_C("UTF-8"));
    return converter;
}

/// A way through UTF-16 from one kind of bytes to another, which may be gone in several steps.
class Pipe {
public:
    Pipe(UConverter* to, UConverter* from, Text<char> source)
        : fTo(to), fFrom(from), fAt(source.length > 0 ? source.units : ""), fEnd(fAt + source.length) {}

    /// Converts on until the source or the room ends.
    /// @return the bytes written, a part of a character included
    int Run(Room<char> target, bool first, UErrorCode& error) {
        char* at = target.units;
        ucnv_convertEx(fTo, fFrom, &at, target.units + target.size, &fAt, fEnd, fPivot, &fRead, &fWritten,
                       std::end(fPivot), static_cast<UBool>(first), true, &error);
        return static_cast<int>(at - target.units);
    }

private:
    UConverter* fTo;
    UConverter* fFrom;
    const char* fAt;
    const char* fEnd;
    UChar fPivot[1024];
    UChar* fRead = fPivot;
    UChar* fWritten = fPivot;
};

/// From one kind of bytes to another. `units` is all that was written, a part of a character included.
Converted Convert(UConverter* to, UConverter* from, Room<char> target, Text<char> source) {
    char rest[16];
    UErrorCode error = U_ZERO_ERROR;
    const SubstitutionWatch watch;
    Pipe pipe(to, from, source);
    const int written = pipe.Run({target.size > 0 ? target.units : rest, target.size}, true, error);
    bool overflow = error == U_BUFFER_OVERFLOW_ERROR;
    if (overflow) {
        // What is left of the source may stand for nothing.
        error = U_ZERO_ERROR;
        overflow = pipe.Run({rest, sizeof rest}, false, error) > 0 || error == U_BUFFER_OVERFLOW_ERROR;
    }
    return {written, overflow, Failed(error) || watch.Seen()};
}

/// Copies the ASCII that a text begins with, which is the same in both forms of Unicode, in blocks that the compiler
/// turns into a few instructions each.
/// @return the units copied
template <class Target, class Source>
int CopyAscii(Room<Target> target, Text<Source> source) {
    constexpr int kBlock = 16;
    using Unsigned = std::make_unsigned_t<Source>;
    const int most = std::min(target.size, source.length);
    int copied = 0;
    while (most - copied >= kBlock) {
        const Source* const block = source.units + copied;
        Unsigned seen = 0;
        for (int i = 0; i < kBlock; ++i) {
            seen = static_cast<Unsigned>(seen | static_cast<Unsigned>(block[i]));
        }
        if (seen >= kAsciiEnd) {
            break;
        }
        std::copy_n(block, kBlock, target.units + copied);
        copied += kBlock;
    }
    return copied;
}

/// The ASCII at the start by itself, and what comes behind it by `convert`.
template <class Target, class Source, class Conversion>
Converted BehindAscii(Room<Target> target, Text<Source> source, Conversion convert) {
    const int ascii = CopyAscii(target, source);
    Converted result = convert(Room<Target>{target.units + ascii, target.size - ascii},
                               Text<Source>{source.units + ascii, source.length - ascii});
    result.units += ascii;
    return result;
}

/// The outcome of those functions of ICU that count on behind the end of the target.
Converted Counted(int length, int size, bool failed) {
    return {length > size ? size : length, length > size, failed};
}

Converted AnyUtf16ToUtf8(Room<char> target, Text<char16_t> source) {
    UErrorCode error = U_ZERO_ERROR;
    int length = 0;
    u_strToUTF8(target.units, target.size, &length, source.units, source.length, &error);
    const bool failed = error == U_INVALID_CHAR_FOUND;
    if (failed) {
        error = U_ZERO_ERROR;
        u_strToUTF8WithSub(target.units, target.size, &length, source.units, source.length, kSubstitute, nullptr,
                           &error);
    }
    Converted result = Counted(length, target.size, failed || Failed(error));
    if (result.overflow) {
        result.units = FittingUtf8(source, target.size);
    }
    return result;
}

Converted AnyUtf8ToUtf16(Room<char16_t> target, Text<char> source) {
    UErrorCode error = U_ZERO_ERROR;
    int length = 0;
    u_strFromUTF8(target.units, target.size, &length, source.units, source.length, &error);
    const bool failed = error == U_INVALID_CHAR_FOUND;
    if (failed) {
        error = U_ZERO_ERROR;
        u_strFromUTF8WithSub(target.units, target.size, &length, source.units, source.length, kSubstitute, nullptr,
                             &error);
    }
    Converted result = Counted(length, target.size, failed || Failed(error));
    if (result.overflow) {
        result.units = WholeUtf16(target.units, result.units);
    }
    return result;
}

} // namespace

Converted FromUtf8(UConverter* to, Room<char> target, Text<char> source) {
    const ConverterClone from(Utf8Converter());
    if (to == nullptr || from.Get() == nullptr) {
        return kNothing;
    }
    Converted result = Convert(to, from.Get(), target, source);
    if (result.overflow) {
        result.units = WholeCodePage(to, target.units, result.units);
    }
    return result;
}

Converted ToUtf8(UConverter* from, Room<char> target, Text<char> source) {
    const ConverterClone to(Utf8Converter());
    if (from == nullptr || to.Get() == nullptr) {
        return kNothing;
    }
    Converted result = Convert(to.Get(), from, target, source);
    if (result.overflow) {
        result.units = WholeUtf8(target.units, result.units);
    }
    return result;
}

Converted FromUtf16(UConverter* to, Room<char> target, Text<char16_t> source) {
    if (to == nullptr) {
        return kNothing;
    }
    UErrorCode error = U_ZERO_ERROR;
    const SubstitutionWatch watch;
    const int length = ucnv_fromUChars(to, target.units, target.size, source.units, source.length, &error);
    Converted result = Counted(length, target.size, Failed(error) || watch.Seen());
    if (result.overflow) {
        result.units = WholeCodePage(to, target.units, result.units);
    }
    return result;
}

Converted ToUtf16(UConverter* from, Room<char16_t> target, Text<char> source) {
    if (from == nullptr) {
        return kNothing;
    }
    UErrorCode error = U_ZERO_ERROR;
    const SubstitutionWatch watch;
    const int length = ucnv_toUChars(from, target.units, target.size, source.units, source.length, &error);
    Converted result = Counted(length, target.size, Failed(error) || watch.Seen());
    if (result.overflow) {
        result.units = WholeUtf16(target.units, result.units);
    }
    return result;
}

Converted Utf16ToUtf8(Room<char> target, Text<char16_t> source) {
    return BehindAscii(target, source, AnyUtf16ToUtf8);
}

Converted Utf8ToUtf16(Room<char16_t> target, Text<char> source) {
    return BehindAscii(target, source, AnyUtf8ToUtf16);
}

} // namespace veltrane::text
