#ifndef VELTRANE_TEXT_UTF8_STEP_H
#define VELTRANE_TEXT_UTF8_STEP_H

#include <cstddef>

namespace veltrane::text {

/// The bytes of the proper character that ends before byte `i` of a text; 0 when none ends there, where a surrogate and
/// a noncharacter are none.
/// @param i at least 1
std::size_t CharacterBefore(const char* s, std::size_t i);

} // namespace veltrane::text

#endif
