#ifndef VELTRANE_DIAGNOSTICS_MESSAGE_BYTES_H
#define VELTRANE_DIAGNOSTICS_MESSAGE_BYTES_H

#include <unicode/unistr.h>

#include <string>
#include <string_view>

/// The bridge between message bytes and ICU text. Bytes are read as UTF-8 under every locale, and a byte that is not
/// UTF-8 travels as a lone surrogate, U+DC00 + byte, which no valid text holds. So every byte string comes back as it
/// went in: names in UTF-8, and names in a code page too.
namespace veltrane::diagnostics {

icu::UnicodeString FromMessageBytes(std::string_view bytes);

/// The result ends at the first NUL.
std::string ToMessageBytes(const icu::UnicodeString& text);

} // namespace veltrane::diagnostics

#endif
