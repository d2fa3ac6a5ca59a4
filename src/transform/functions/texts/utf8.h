#ifndef VELTRANE_TRANSFORM_FUNCTIONS_TEXTS_UTF8_H
#define VELTRANE_TRANSFORM_FUNCTIONS_TEXTS_UTF8_H

#include <unicode/bytestream.h>
#include <unicode/unistr.h>

#include <string>

namespace veltrane::functions {

inline std::string ToUtf8(const icu::UnicodeString& text) {
    std::string bytes;
    icu::StringByteSink<std::string> sink(&bytes);
    text.toUTF8(sink);
    return bytes;
}

} // namespace veltrane::functions

#endif
