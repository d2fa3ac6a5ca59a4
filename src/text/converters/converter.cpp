#include "platform/platform.h"
#include "text/converters/code_pages.h"
#include "text/converters/converter_callbacks.h"
#include "text/converters/status.h"

#include <MCXML_900/KORDMBConverter.h>
#include <MCXML_900/KORDMBString.h>
#include <MCXML_900/KORDMBTranscode.h>

#include <unicode/ucnv.h>

#include <atomic>
#include <mutex>
#include <string>

namespace MCXML_900 {

namespace {

using namespace veltrane;

std::atomic<UConverter*> gDefaultConverter = nullptr;
std::atomic<int> gDefaultConverterID = 0;
std::mutex gDefaultConverterMutex;

/// Room for a name in plain text, with its terminator.
constexpr int kNameBytes = 60;

/// Opens by ICU's name, null for ICU's own default.
UConverter* Open(const char* name) {
    UErrorCode error = U_ZERO_ERROR;
    UConverter* converter = ucnv_open(name, &error);
    return U_SUCCESS(error) ? converter : nullptr;
}

/// A converter for the encoding of the C locale, which names a Windows code page "CP" and its number: to ICU that is an
/// older one for some numbers, and its "cp949" lacks most of Hangul.
UConverter* OpenLocaleEncoding() {
    const std::string encoding = platform::LocaleEncoding();
    if (encoding.empty()) {
        return nullptr;
    }
    const bool isNumber = encoding.rfind("CP", 0) == 0 && text::CodePageNumber(encoding.c_str() + 2) != 0;
    UConverter* converter = isNumber ? Open(("windows-" + encoding.substr(2)).c_str()) : nullptr;
    return converter != nullptr ? converter : Open(encoding.c_str());
}

/// One for the encoding of the C locale, which ICU takes for UTF-8 on some systems, whatever it is.
UConverter* OpenProcessDefault() {
    UConverter* converter = OpenLocaleEncoding();
    return converter != nullptr ? converter : Open(nullptr);
}

UConverter* OpenLikeDefault() {
    const UConverter* existing = gDefaultConverter.load();
    if (existing == nullptr) {
        return OpenProcessDefault();
    }
    UErrorCode error = U_ZERO_ERROR;
    const char* name = ucnv_getName(existing, &error);
    return U_SUCCESS(error) ? Open(name) : nullptr;
}

UConverter* OpenByName(const char* name) {
    if (const long number = text::CodePageNumber(name); number != 0) {
        const std::string known = text::CodePageName(number);
        return known.empty() ? nullptr : Open(known.c_str());
    }
    UConverter* converter = Open(name);
    // A name that ICU doesn't have.
    if (converter == nullptr && KORDMBqstricmp_C(name, -1, "windows-28591", -1, nullptr) != 0) {
        converter = Open("ISO-8859-1");
    }
    return converter;
}

} // namespace

void* KORDMBConverterNew_C(const char* name) {
    UConverter* converter = name == nullptr ? OpenLikeDefault() : OpenByName(name);
    if (converter == nullptr) {
        return nullptr;
    }
    UErrorCode error = U_ZERO_ERROR;
    text::InstallCallbacks(converter, error);
    if (U_FAILURE(error)) {
        ucnv_close(converter);
        return nullptr;
    }
    return converter;
}

void* KORDMBConverterNew_8(const char* name) {
    if (name == nullptr) {
        return KORDMBConverterNew_C(nullptr);
    }
    // ICU's names are plain text.
    char plain[kNameBytes];
    int status = text::kConverted;
    KORDMB8toCodePage(nullptr, plain, kNameBytes, name, -1, &status);
    return status == text::kNotConverted ? nullptr : KORDMBConverterNew_C(plain);
}

void* KORDMBConverterNew_A(const char* name) {
    return qUTF8mode() != 0 ? KORDMBConverterNew_8(name) : KORDMBConverterNew_C(name);
}

UConverter* KORDMBGetDefaultConverter() {
    if (UConverter* existing = gDefaultConverter.load()) {
        return existing;
    }
    const std::lock_guard lock(gDefaultConverterMutex);
    if (UConverter* existing = gDefaultConverter.load()) {
        return existing;
    }
    auto* converter = static_cast<UConverter*>(KORDMBConverterNew_C(nullptr));
    if (converter != nullptr) {
        ++gDefaultConverterID;
        gDefaultConverter = converter;
    }
    return converter;
}

int KORDMBDefaultConverterID() {
    return gDefaultConverterID;
}

} // namespace MCXML_900
