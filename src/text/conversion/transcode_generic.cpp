#include "text/conversion/fixed_field.h"
#include "text/conversion/string_target.h"

#include <MCXML_900/KORDMBString.h>
#include <MCXML_900/KORDMBTranscode.h>

#include <cstring>

namespace MCXML_900 {

namespace {

using namespace veltrane::text;

/// Bytes that stay as they are. Unlike a conversion this cuts anywhere, without a status of its own.
int Copy(const FixedField<char, char>& field) {
    const int length = field.IsUsable() ? field.TextLength() : -1;
    if (length < 0) {
        return field.Refuse();
    }
    const int copied = std::min(std::max(field.size, 0), length);
    if (copied > 0) {
        std::memcpy(field.target, field.source, static_cast<std::size_t>(copied));
    }
    if (field.IsTerminated() && copied < field.size) {
        field.target[copied] = 0;
    }
    return field.Report(kConverted, copied);
}

} // namespace

// On buffers.

int KORDMBGenerictoCodePage(void* converter, char* target, int targetSize, const char* source, int sourceLength,
                            int* status) {
    return qUTF8mode() != 0 ? KORDMB8toCodePage(converter, target, targetSize, source, sourceLength, status)
                            : Copy({target, targetSize, source, sourceLength, status});
}

int KORDMBCodePagetoGeneric(void* converter, char* target, int targetSize, const char* source, int sourceLength,
                            int* status) {
    return qUTF8mode() != 0 ? KORDMBCodePageto8(converter, target, targetSize, source, sourceLength, status)
                            : Copy({target, targetSize, source, sourceLength, status});
}

int KORDMB8toGeneric(void* converter, char* target, int targetSize, const char* source, int sourceLength, int* status) {
    return qUTF8mode() != 0 ? Copy({target, targetSize, source, sourceLength, status})
                            : KORDMB8toCodePage(converter, target, targetSize, source, sourceLength, status);
}

int KORDMBGenericto8(void* converter, char* target, int targetSize, const char* source, int sourceLength, int* status) {
    return qUTF8mode() != 0 ? Copy({target, targetSize, source, sourceLength, status})
                            : KORDMBCodePageto8(converter, target, targetSize, source, sourceLength, status);
}

int KORDMB16toGeneric(void* converter, char* target, int targetSize, const char16_t* source, int sourceLength,
                      int* status) {
    return qUTF8mode() != 0 ? KORDMB16to8(target, targetSize, source, sourceLength, status)
                            : KORDMB16toCodePage(converter, target, targetSize, source, sourceLength, status);
}

int KORDMBGenericto16(void* converter, char16_t* target, int targetSize, const char* source, int sourceLength,
                      int* status) {
    return qUTF8mode() != 0 ? KORDMB8to16(target, targetSize, source, sourceLength, status)
                            : KORDMBCodePageto16(converter, target, targetSize, source, sourceLength, status);
}

// On strings.

int KORDMBGenericToCodePage(void* converter, std::string& out, const std::string& in) {
    return qUTF8mode() != 0 ? KORDMBU8ToCodePage(converter, out, in) : Assign(out, in.data(), in.size());
}

int KORDMBCodePageToGeneric(void* converter, std::string& out, const std::string& in) {
    return qUTF8mode() != 0 ? KORDMBCodePageToU8(converter, out, in) : Assign(out, in.data(), in.size());
}

int KORDMBU8ToGeneric(void* converter, std::string& out, const std::string& in) {
    return qUTF8mode() != 0 ? Assign(out, in.data(), in.size()) : KORDMBU8ToCodePage(converter, out, in);
}

int KORDMBGenericToU8(void* converter, std::string& out, const std::string& in) {
    return qUTF8mode() != 0 ? Assign(out, in.data(), in.size()) : KORDMBCodePageToU8(converter, out, in);
}

int KORDMBU16ToGeneric(void* converter, std::string& out, const std::u16string& in) {
    return qUTF8mode() != 0 ? KORDMBU16ToU8(out, in) : KORDMBU16ToCodePage(converter, out, in);
}

int KORDMBGenericToU16(void* converter, std::u16string& out, const std::string& in) {
    return qUTF8mode() != 0 ? KORDMBU8ToU16(out, in) : KORDMBCodePageToU16(converter, out, in);
}

int KORDMBU8ToGeneric(std::string& out, const std::string& in) {
    return KORDMBU8ToGeneric(nullptr, out, in);
}

int KORDMBGenericToU8(std::string& out, const std::string& in) {
    return KORDMBGenericToU8(nullptr, out, in);
}

int KORDMBU16ToGeneric(std::string& out, const std::u16string& in) {
    return KORDMBU16ToGeneric(nullptr, out, in);
}

int KORDMBGenericToU16(std::u16string& out, const std::string& in) {
    return KORDMBGenericToU16(nullptr, out, in);
}

// Into new memory.

char* KORDMBTranscodeGeneric(const char16_t* text) {
    return qUTF8mode() != 0 ? KORDMBTranscodeU8(text) : KORDMBTranscodeCodePage(text);
}

char16_t* KORDMBTranscodeGeneric(const char* text) {
    return qUTF8mode() != 0 ? KORDMBTranscodeU8(text) : KORDMBTranscodeCodePage(text);
}

} // namespace MCXML_900
