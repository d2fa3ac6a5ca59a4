#include "files/encoding.h"

#include <unicode/uchar.h>
#include <unicode/ucnv.h>
#include <unicode/unistr.h>
#include <unicode/utf8.h>

#include <cstdint>
#include <stdexcept>

namespace veltrane::host {
namespace {

constexpr std::string_view kAscii = "\t\n\r ,;\"'0123456789+-.AZaz";

icu::StringPiece Piece(std::string_view text) {
    return {text.data(), static_cast<std::int32_t>(text.size())};
}

int CharacterColumns(UChar32 character) {
    switch (u_charType(character)) {
    case U_NON_SPACING_MARK:
    case U_ENCLOSING_MARK:
    case U_FORMAT_CHAR:
        return 0;
    default:
        break;
    }
    const int width = u_getIntPropertyValue(character, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

} // namespace

void Encoding::Closer::operator()(UConverter* converter) const {
    ucnv_close(converter);
}

Encoding::Encoding(const std::string& name) {
    UErrorCode status = U_ZERO_ERROR;
    if (!name.empty()) {
        fConverter.reset(ucnv_open(name.c_str(), &status));
    }
    if (!fConverter || U_FAILURE(status)) {
        throw std::invalid_argument("unknown encoding \"" + name + "\"");
    }
    if (FromUtf8(kAscii) != kAscii) {
        throw std::invalid_argument("the encoding \"" + name + "\" does not keep ASCII and cannot be used here");
    }
}

Encoding::~Encoding() = default;

std::string Encoding::ToUtf8(std::string_view text) const {
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeString units(text.data(), static_cast<std::int32_t>(text.size()), fConverter.get(), status);
    std::string result;
    return U_SUCCESS(status) ? units.toUTF8String(result) : std::string(text);
}

std::string Encoding::FromUtf8(std::string_view text) const {
    const icu::UnicodeString units = icu::UnicodeString::fromUTF8(Piece(text));
    UErrorCode status = U_ZERO_ERROR;
    std::string result(
        static_cast<std::size_t>(UCNV_GET_MAX_BYTES_FOR_STRING(units.length(), ucnv_getMaxCharSize(fConverter.get()))),
        '\0');
    const std::int32_t size =
        units.extract(result.data(), static_cast<std::int32_t>(result.size()), fConverter.get(), status);
    result.resize(U_SUCCESS(status) ? static_cast<std::size_t>(size) : 0);
    return result;
}

int TextColumns(std::string_view utf8) {
    const auto size = static_cast<std::int32_t>(utf8.size());
    int columns = 0;
    for (std::int32_t at = 0; at < size;) {
        UChar32 character;
        U8_NEXT_OR_FFFD(utf8.data(), at, size, character);
        columns += CharacterColumns(character);
    }
    return columns;
}

} // namespace veltrane::host
