#ifndef VELTRANE_TEXT_WHOLE_CHARACTERS_H
#define VELTRANE_TEXT_WHOLE_CHARACTERS_H

#include "text/conversion/raw_conversion.h"

namespace veltrane::text {

// Where a target that is full ends with a part of a character, the length of what comes before.

int WholeUtf8(const char* text, int length);
int WholeUtf16(const char16_t* text, int length);
int WholeCodePage(const UConverter* converter, const char* text, int length);

/// The bytes in UTF-8 of as many whole characters of a UTF-16 text as fit. A lone surrogate takes the byte of its '?'.
int FittingUtf8(Text<char16_t> source, int size);

} // namespace veltrane::text

#endif
