#ifndef VELTRANE_TEXT_RAW_CONVERSION_H
#define VELTRANE_TEXT_RAW_CONVERSION_H

#include <unicode/ucnv.h>

namespace veltrane::text {

/// What one run of ICU gave.
struct Converted {
    int units;     ///< whole characters in the target
    bool overflow; ///< the text is longer than the target
    bool failed;   ///< a character was replaced, or nothing was converted
};

/// Where a conversion writes.
template <class Unit>
struct Room {
    Unit* units;
    int size;
};

/// A text of a known length.
template <class Unit>
struct Text {
    const Unit* units;
    int length;
};

// Each converts a text into the room given and cuts at whole characters. A null converter converts nothing.

Converted FromUtf8(UConverter* to, Room<char> target, Text<char> source);
Converted ToUtf8(UConverter* from, Room<char> target, Text<char> source);
Converted FromUtf16(UConverter* to, Room<char> target, Text<char16_t> source);
Converted ToUtf16(UConverter* from, Room<char16_t> target, Text<char> source);
Converted Utf16ToUtf8(Room<char> target, Text<char16_t> source);
Converted Utf8ToUtf16(Room<char16_t> target, Text<char> source);

} // namespace veltrane::text

#endif
