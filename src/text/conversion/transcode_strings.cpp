#include "text/characters/code_page_bytes.h"
#include "text/conversion/string_target.h"

#include <MCXML_900/KORDMBTranscode.h>

namespace MCXML_900 {

namespace {

using namespace veltrane::text;

/// The length as the conversions on buffers take it. A longer text fails for want of memory before it is looked at.
template <class Unit>
int Length(const std::basic_string<Unit>& text) {
    return static_cast<int>(text.size());
}

} // namespace

int KORDMBU8ToCodePage(void* converter, std::string& out, const std::string& in) {
    return ConvertInto<1025>(out, in.size() + 1, [&](char* buffer, int size, int* status) {
        return KORDMB8toCodePage(converter, buffer, size, in.data(), Length(in), status);
    });
}

int KORDMBCodePageToU8(void* converter, std::string& out, const std::string& in) {
    return ConvertInto<3073>(out, 3 * in.size() + 1, [&](char* buffer, int size, int* status) {
        return KORDMBCodePageto8(converter, buffer, size, in.data(), Length(in), status);
    });
}

int KORDMBU16ToCodePage(void* converter, std::string& out, const std::u16string& in) {
    return ConvertInto<4097>(out, CodePageBytes(converter, in.size()), [&](char* buffer, int size, int* status) {
        return KORDMB16toCodePage(converter, buffer, size, in.data(), Length(in), status);
    });
}

int KORDMBCodePageToU16(void* converter, std::u16string& out, const std::string& in) {
    // Some encodings have bytes that stand for a character beyond U+FFFF.
    return ConvertInto<4098>(out, sizeof(char16_t) * (2 * in.size() + 1), [&](char16_t* buffer, int size, int* status) {
        return KORDMBCodePageto16(converter, buffer, size, in.data(), Length(in), status);
    });
}

int KORDMBU16ToU8(std::string& out, const std::u16string& in) {
    return ConvertInto<4097>(out, 4 * in.size() + 1, [&](char* buffer, int size, int* status) {
        return KORDMB16to8(buffer, size, in.data(), Length(in), status);
    });
}

int KORDMBU8ToU16(std::u16string& out, const std::string& in) {
    return ConvertInto<2050>(out, sizeof(char16_t) * (in.size() + 1), [&](char16_t* buffer, int size, int* status) {
        return KORDMB8to16(buffer, size, in.data(), Length(in), status);
    });
}

int KORDMBU16ToU8(void*, std::string& out, const std::u16string& in) {
    return KORDMBU16ToU8(out, in);
}

int KORDMBU8ToU16(void*, std::u16string& out, const std::string& in) {
    return KORDMBU8ToU16(out, in);
}

} // namespace MCXML_900
