#ifndef VELTRANE_TEXT_TEXT_UNIT_H
#define VELTRANE_TEXT_TEXT_UNIT_H

#include <cstdint>

namespace veltrane::text {

/// One step of a walk over a text: a character, or a byte that can't be decoded and stands for itself.
struct TextUnit {
    std::int32_t value; ///< code point, or the byte
    int length;         ///< bytes
    bool proper;        ///< whether it is a character
};

} // namespace veltrane::text

#endif
