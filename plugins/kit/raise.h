#ifndef VELTRANE_PLUGINS_KIT_RAISE_H
#define VELTRANE_PLUGINS_KIT_RAISE_H

#include <MCVeltrane_900/VTException.h>

#include <string>

namespace veltrane_kit {

namespace detail {
inline const char* Bytes(const std::string& text) {
    return text.c_str();
}
inline const char* Bytes(const char* text) {
    return text;
}
} // namespace detail

/// Throws the one exception of the library with one message of its catalogue.
/// @param id         the message
/// @param parameters its placeholders in order, as std::string or const char*
template <typename... Parameters>
[[noreturn]] void Raise(int id, const Parameters&... parameters) {
    MCVeltrane_900::VTException failure;
    failure.PutErrorMessage(id, detail::Bytes(parameters)...);
    throw failure;
}

} // namespace veltrane_kit

#endif
