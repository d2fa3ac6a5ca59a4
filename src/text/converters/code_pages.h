#ifndef VELTRANE_TEXT_CODE_PAGES_H
#define VELTRANE_TEXT_CODE_PAGES_H

#include <string>

namespace veltrane::text {

/// Reads a text as the number of a code page: all of it decimal, 1 to 99999. 0 for any other text.
long CodePageNumber(const char* text);

/// The name under which ICU has a Windows code page: its IANA name where it has one. Empty for an unknown number.
std::string CodePageName(long number);

} // namespace veltrane::text

#endif
