#ifndef VELTRANE_TEXT_CODE_PAGE_BYTES_H
#define VELTRANE_TEXT_CODE_PAGE_BYTES_H

#include <MCXML_900/KORDMBConverter.h>

#include <unicode/ucnv.h>

#include <cstddef>

namespace veltrane::text {

/// The bytes that a UTF-16 text can take in a code page, shifts of state and a terminator included.
/// @param converter null for the default one; of which only the description is read
inline std::size_t CodePageBytes(const void* converter, std::size_t units) {
    constexpr std::size_t kShifts = 10;
    const auto* codePage =
        converter != nullptr ? static_cast<const UConverter*>(converter) : MCXML_900::KORDMBGetDefaultConverter();
    const int width = codePage != nullptr ? ucnv_getMaxCharSize(codePage) : 1;
    return (units + kShifts) * static_cast<std::size_t>(width) + 1;
}

} // namespace veltrane::text

#endif
