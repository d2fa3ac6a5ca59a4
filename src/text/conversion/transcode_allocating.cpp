#include "text/characters/code_page_bytes.h"
#include "text/conversion/string_target.h"

#include <MCXML_900/KORDMBTranscode.h>

#include <algorithm>

namespace MCXML_900 {

namespace {

using namespace veltrane::text;

template <class Unit>
std::unique_ptr<Unit[]> NewUnits(std::size_t units) {
    return std::unique_ptr<Unit[]>(units <= kLargest ? new (std::nothrow) Unit[units] : nullptr);
}

/// Converts into new memory of a size that is sure to be enough.
/// @param convert from (Unit* buffer, int units) to the units written
template <class Unit, class Conversion>
std::unique_ptr<Unit[]> ConvertIntoNew(std::size_t units, Conversion convert, std::size_t* written = nullptr) {
    std::unique_ptr<Unit[]> made = NewUnits<Unit>(units);
    if (made != nullptr) {
        const int length = convert(made.get(), static_cast<int>(units));
        if (written != nullptr) {
            *written = static_cast<std::size_t>(length);
        }
    }
    return made;
}

/// The same, and then a text of its true length: bytes take far less room than they might.
template <class Conversion>
char* ConvertAndTrim(std::size_t bytes, Conversion convert) {
    std::size_t length = 0;
    const std::unique_ptr<char[]> whole = ConvertIntoNew<char>(bytes, convert, &length);
    std::unique_ptr<char[]> trimmed = whole != nullptr ? NewUnits<char>(length + 1) : nullptr;
    if (trimmed != nullptr) {
        std::copy_n(whole.get(), length + 1, trimmed.get());
    }
    return trimmed.release();
}

template <class Unit>
std::size_t Length(const Unit* text) {
    return std::char_traits<Unit>::length(text);
}

} // namespace

char* KORDMBTranscodeU8(const char16_t* text) {
    return text == nullptr ? nullptr : ConvertAndTrim(4 * Length(text) + 1, [=](char* buffer, int size) {
        return KORDMB16to8(buffer, size, text, -1, nullptr);
    });
}

char16_t* KORDMBTranscodeU8(const char* text) {
    return text == nullptr ? nullptr : ConvertIntoNew<char16_t>(Length(text) + 1, [=](char16_t* buffer, int size) {
                                           return KORDMB8to16(buffer, size, text, -1, nullptr);
                                       }).release();
}

char* KORDMBTranscodeCodePage(const char16_t* text) {
    return text == nullptr ? nullptr
                           : ConvertAndTrim(CodePageBytes(nullptr, Length(text)), [=](char* buffer, int size) {
                                 return KORDMB16toCodePage(nullptr, buffer, size, text, -1, nullptr);
                             });
}

char16_t* KORDMBTranscodeCodePage(const char* text) {
    return text == nullptr ? nullptr : ConvertIntoNew<char16_t>(2 * Length(text) + 1, [=](char16_t* buffer, int size) {
                                           return KORDMBCodePageto16(nullptr, buffer, size, text, -1, nullptr);
                                       }).release();
}

} // namespace MCXML_900
