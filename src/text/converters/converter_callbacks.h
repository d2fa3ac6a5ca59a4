#ifndef VELTRANE_TEXT_CONVERTER_CALLBACKS_H
#define VELTRANE_TEXT_CONVERTER_CALLBACKS_H

#include <unicode/ucnv.h>

namespace veltrane::text {

/// What a converter's callbacks report beside ICU's own codes. Both are warnings to ICU, so it goes on converting.
constexpr auto kUnassigned = static_cast<UErrorCode>(-100);
constexpr auto kIllegal = static_cast<UErrorCode>(-101);

/// Gives a converter the callbacks that report a substitution, and '?' to substitute with.
void InstallCallbacks(UConverter* converter, UErrorCode& error);

/// Notices the substitutions that this thread's converters make while it lives. ICU's code alone can't tell: where a
/// text is longer than one of ICU's buffers, or exactly fills the target, another code takes the place of the warning.
class SubstitutionWatch {
public:
    SubstitutionWatch();
    bool Seen() const;
};

/// Whether a code, a warning of the callbacks included, says that a character wasn't converted.
constexpr bool Failed(UErrorCode error) {
    return error > U_ZERO_ERROR || error == kUnassigned || error == kIllegal;
}

} // namespace veltrane::text

#endif
