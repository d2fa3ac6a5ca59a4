#include "text/characters/code_page_reader.h"

#include "text/characters/byte_span.h"

#include <unicode/uchar.h>

namespace veltrane::text {

namespace {

/// Whether a converter reads a byte that is a whole character the same wherever it stands.
bool IsStateless(const UConverter* converter) {
    switch (ucnv_getType(converter)) {
    case UCNV_SBCS:
    case UCNV_DBCS:
    case UCNV_MBCS:
    case UCNV_LATIN_1:
    case UCNV_US_ASCII:
    case UCNV_UTF8:
        return true;
    default:
        return false;
    }
}

/// The code point of one byte by itself, SingleBytes::kNone for none or several.
std::int32_t DecodeAlone(UConverter* converter, unsigned char value) {
    const char byte = static_cast<char>(value);
    UChar units[4];
    UErrorCode error = U_ZERO_ERROR;
    const SubstitutionWatch watch;
    const std::int32_t count = ucnv_toUChars(converter, units, 4, &byte, 1, &error);
    return error == U_ZERO_ERROR && !watch.Seen() && count == 1 && !U16_IS_SURROGATE(units[0]) ? units[0]
                                                                                               : SingleBytes::kNone;
}

SingleBytes MakeSingleBytes() {
    SingleBytes table;
    table.value.fill(SingleBytes::kNone);
    table.folded.fill(SingleBytes::kNone);
    const ConverterClone clone;
    if (clone.Get() == nullptr || !IsStateless(clone.Get())) {
        return table;
    }
    for (std::size_t byte = 1; byte < table.value.size(); ++byte) {
        const std::int32_t value = DecodeAlone(clone.Get(), static_cast<unsigned char>(byte));
        table.value[byte] = value;
        table.folded[byte] = value == SingleBytes::kNone ? value : u_tolower(value);
    }
    return table;
}

} // namespace

const SingleBytes& DefaultSingleBytes() {
    static const SingleBytes table = MakeSingleBytes();
    return table;
}

UConverter* CodePageReader::Converter() {
    if (!fClone) {
        fClone.emplace();
    }
    return fClone->Get();
}

std::optional<TextUnit> CodePageReader::ReadNext(std::string_view text) {
    if (UConverter* converter = Converter(); converter != nullptr) {
        UErrorCode error = U_ZERO_ERROR;
        const char* at = text.data();
        const UChar32 value = ucnv_getNextUChar(converter, &at, text.data() + text.size(), &error);
        // What a converter substitutes is a '?': for any other character the watch needn't be asked.
        if (error == U_ZERO_ERROR && (value != u'?' || !fWatch.Seen())) {
            return TextUnit{value, static_cast<int>(at - text.data()), true};
        }
        fWatch = SubstitutionWatch();
        ucnv_resetToUnicode(converter);
    }
    if (text.empty()) {
        return std::nullopt;
    }
    return TextUnit{Byte(text[0]), 1, false};
}

TextUnit CodePageReader::ReadFirst(std::string_view text) {
    const unsigned char byte = Byte(text[0]);
    if (const std::int32_t value = DefaultSingleBytes().value[byte]; value != SingleBytes::kNone) {
        return {value, 1, true};
    }
    if (UConverter* converter = Converter(); converter != nullptr) {
        ucnv_resetToUnicode(converter);
    }
    return *ReadNext(text);
}

} // namespace veltrane::text
