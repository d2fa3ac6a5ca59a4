#include "text/converters/converter_callbacks.h"

#include <unicode/ucnv_cb.h>
#include <unicode/ucnv_err.h>

namespace veltrane::text {

namespace {

constexpr char16_t kSubstitute = u'?';

thread_local bool tSubstituted = false;

void Report(UConverterCallbackReason reason, UErrorCode* error) {
    tSubstituted = true;
    if (U_SUCCESS(*error)) {
        *error = reason == UCNV_UNASSIGNED ? kUnassigned : kIllegal;
    }
}

/// Reasons behind these tell of a reset, a clone or the end of the converter.
bool IsBadInput(UConverterCallbackReason reason) {
    return reason <= UCNV_IRREGULAR;
}

/// As ICU's own substitution, with '?' in place of U+FFFD and U+001A, whether or not the target has room for it: what
/// doesn't fit waits in the converter.
void ToUnicode(const void*, UConverterToUnicodeArgs* arguments, const char*, std::int32_t,
               UConverterCallbackReason reason, UErrorCode* error) {
    if (IsBadInput(reason)) {
        *error = U_ZERO_ERROR;
        ucnv_cbToUWriteUChars(arguments, &kSubstitute, 1, 0, error);
        Report(reason, error);
    }
}

/// ICU's own substitution, which leaves out unmapped characters that stand for nothing visible.
void FromUnicode(const void*, UConverterFromUnicodeArgs* arguments, const UChar* units, std::int32_t length,
                 UChar32 character, UConverterCallbackReason reason, UErrorCode* error) {
    if (IsBadInput(reason)) {
        UCNV_FROM_U_CALLBACK_SUBSTITUTE(nullptr, arguments, units, length, character, reason, error);
        Report(reason, error);
    }
}

} // namespace

void InstallCallbacks(UConverter* converter, UErrorCode& error) {
    ucnv_setToUCallBack(converter, ToUnicode, nullptr, nullptr, nullptr, &error);
    ucnv_setFromUCallBack(converter, FromUnicode, nullptr, nullptr, nullptr, &error);
    ucnv_setSubstString(converter, &kSubstitute, 1, &error);
}

SubstitutionWatch::SubstitutionWatch() {
    tSubstituted = false;
}

bool SubstitutionWatch::Seen() const {
    return tSubstituted;
}

} // namespace veltrane::text
