#include "text/raw_conversion.h"

#include "text/converter_callbacks.h"
#include "text/converter_clone.h"
#include "text/whole_characters.h"

#include <MCXML_900/KORDMBConverter.h>

#include <unicode/ustring.h>

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

/// From one kind of bytes to another. `units` is all that was written, a part of a character included.
Converted Convert(UConverter* to, UConverter* from, Room<char> target, Text<char> source) {
    // ICU takes no null pointers, even for nothing.
    char nothing = 0;
    char* const begin = target.size > 0 ? target.units : &nothing;
    char* at = begin;
    const char* in = source.length > 0 ? source.units : &nothing;
    UErrorCode error = U_ZERO_ERROR;
    const SubstitutionWatch watch;
    ucnv_convertEx(to, from, &at, begin + target.size, &in, in + source.length, nullptr, nullptr, nullptr, nullptr,
                   true, true, &error);
    return {static_cast<int>(at - begin), error == U_BUFFER_OVERFLOW_ERROR, Failed(error) || watch.Seen()};
}

/// The outcome of those functions of ICU that count on behind the end of the target.
Converted Counted(int length, int size, bool failed) {
    return {length > size ? size : length, length > size, failed};
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

Converted Utf8ToUtf16(Room<char16_t> target, Text<char> source) {
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

} // namespace veltrane::text
