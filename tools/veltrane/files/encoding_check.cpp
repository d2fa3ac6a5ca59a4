#include "files/encoding_check.h"

#include <unicode/ucnv.h>
#include <unicode/ucnv_err.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <stdexcept>

namespace veltrane::host {
namespace {

/// The number of bytes at the front that are ASCII, in steps of eight and then one by one.
std::size_t AsciiPrefix(std::string_view bytes) {
    constexpr std::uint64_t kHighBits = 0x8080808080808080U;
    std::size_t at = 0;
    for (std::uint64_t word; at + sizeof word <= bytes.size(); at += sizeof word) {
        std::memcpy(&word, bytes.data() + at, sizeof word);
        if ((word & kHighBits) != 0) {
            break;
        }
    }
    while (at < bytes.size() && static_cast<unsigned char>(bytes[at]) < 0x80) {
        ++at;
    }
    return at;
}

bool IsUtf8(std::string_view bytes) {
    const auto size = static_cast<std::int32_t>(bytes.size());
    for (std::int32_t at = 0; at < size;) {
        UChar32 character;
        U8_NEXT(bytes.data(), at, size, character);
        if (character < 0) {
            return false;
        }
    }
    return true;
}

/// Whether ASCII bytes mean themselves whatever stands in front of them: not where an escape changes their meaning.
bool MeansAsciiBytes(const UConverter* converter) {
    switch (ucnv_getType(converter)) {
    case UCNV_SBCS:
    case UCNV_DBCS:
    case UCNV_MBCS:
    case UCNV_LATIN_1:
    case UCNV_UTF8:
    case UCNV_US_ASCII:
        return true;
    default:
        return false;
    }
}

/// Windows code pages have no character for some bytes, which ICU takes for control characters all the same.
bool IsWindowsPage(const UConverter* converter) {
    UErrorCode status = U_ZERO_ERROR;
    const char* name = ucnv_getStandardName(ucnv_getName(converter, &status), "IANA", &status);
    return U_SUCCESS(status) && name != nullptr && std::string_view(name).starts_with("windows-125");
}

bool IsHighControl(UChar unit) {
    return unit >= 0x80 && unit < 0xA0;
}

} // namespace

void EncodingCheck::Closer::operator()(UConverter* converter) const {
    ucnv_close(converter);
}

EncodingCheck::EncodingCheck(const std::string& name) : fProblem("is not text in " + name) {
    UErrorCode status = U_ZERO_ERROR;
    fConverter.reset(ucnv_open(name.c_str(), &status));
    ucnv_setToUCallBack(fConverter.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
    if (U_FAILURE(status)) {
        throw std::invalid_argument("unknown encoding \"" + name + "\"");
    }
    fIsUtf8 = ucnv_getType(fConverter.get()) == UCNV_UTF8;
    fKeepsAscii = MeansAsciiBytes(fConverter.get());
    fHasHighControls = !IsWindowsPage(fConverter.get());
}

EncodingCheck::~EncodingCheck() = default;

bool EncodingCheck::Holds(std::string_view bytes) const {
    if (fKeepsAscii) {
        const std::size_t ascii = AsciiPrefix(bytes);
        if (ascii == bytes.size()) {
            return true;
        }
        // A byte below 0x80 may be the second half of a character, but then its first half is above.
        bytes.remove_prefix(ascii);
    }
    return fIsUtf8 ? IsUtf8(bytes) : Converts(bytes);
}

/// Converts piece by piece into a buffer that is thrown away, and stops at what is no character.
bool EncodingCheck::Converts(std::string_view bytes) const {
    std::array<UChar, 256> units;
    const char* next = bytes.data();
    const char* const end = next + bytes.size();
    ucnv_resetToUnicode(fConverter.get());
    UErrorCode status = U_BUFFER_OVERFLOW_ERROR;
    while (status == U_BUFFER_OVERFLOW_ERROR) {
        status = U_ZERO_ERROR;
        UChar* unit = units.data();
        ucnv_toUnicode(fConverter.get(), &unit, unit + units.size(), &next, end, nullptr, true, &status);
        if (!fHasHighControls && std::any_of(units.data(), unit, IsHighControl)) {
            return false;
        }
    }
    return U_SUCCESS(status);
}

} // namespace veltrane::host
