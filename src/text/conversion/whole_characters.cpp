#include "text/conversion/whole_characters.h"

#include "text/converters/converter_clone.h"

#include <unicode/ucnv_err.h>
#include <unicode/utf16.h>
#include <unicode/utf8.h>

namespace veltrane::text {

int WholeUtf8(const char* text, int length) {
    if (length == 0) {
        return 0;
    }
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text);
    int last = length - 1;
    U8_SET_CP_START(bytes, 0, last);
    return last + 1 + U8_COUNT_TRAIL_BYTES(bytes[last]) > length ? last : length;
}

int WholeUtf16(const char16_t* text, int length) {
    return length > 0 && U16_IS_LEAD(text[length - 1]) ? length - 1 : length;
}

int WholeCodePage(const UConverter* converter, const char* text, int length) {
    const ConverterClone walker(converter);
    UErrorCode error = walker.Get() != nullptr ? U_ZERO_ERROR : U_MEMORY_ALLOCATION_ERROR;
    ucnv_setToUCallBack(walker.Get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &error);
    if (U_FAILURE(error)) {
        return 0;
    }
    ucnv_resetToUnicode(walker.Get());
    const char* const end = text + length;
    for (const char* at = text; at < end;) {
        const char* const start = at;
        error = U_ZERO_ERROR;
        ucnv_getNextUChar(walker.Get(), &at, end, &error);
        if (error == U_TRUNCATED_CHAR_FOUND || (U_FAILURE(error) && at == start)) {
            return static_cast<int>(start - text);
        }
    }
    return length;
}

int FittingUtf8(Text<char16_t> source, int size) {
    int fitting = 0;
    for (int i = 0; i < source.length;) {
        UChar32 character = 0;
        U16_NEXT(source.units, i, source.length, character);
        const int bytes = U_IS_SURROGATE(character) ? 1 : U8_LENGTH(character);
        if (bytes > size - fitting) {
            break;
        }
        fitting += bytes;
    }
    return fitting;
}

} // namespace veltrane::text
