#ifndef VELTRANE_PLUGINS_KIT_RAISE_H
#define VELTRANE_PLUGINS_KIT_RAISE_H

#include <MCVeltrane_900/Messages.h>
#include <MCVeltrane_900/VTException.h>

#include <string>

namespace veltrane_kit {

using MCVeltrane_900::Message;

namespace detail {
inline const char* Bytes(const std::string& text) {
    return text.c_str();
}
inline const char* Bytes(const char* text) {
    return text;
}
} // namespace detail

/// Throws the one exception of the library with one message of its catalogue.
/// @param parameters one for each placeholder of the message, as std::string or const char*
template <Message kMessage, typename... Parameters>
    requires MCVeltrane_900::FillsPlaceholders<kMessage, Parameters...>
[[noreturn]] void Raise(const Parameters&... parameters) {
    MCVeltrane_900::VTException failure;
    failure.PutErrorMessage(static_cast<int>(kMessage), detail::Bytes(parameters)...);
    throw failure;
}

/// The same for a message without a place for element and attribute: a detail behind its text names both.
/// @param attribute may be null
template <Message kMessage, typename... Parameters>
    requires MCVeltrane_900::FillsPlaceholders<kMessage, Parameters...>
[[noreturn]] void RaiseAt(const std::string& element, const char* attribute, const Parameters&... parameters) {
    MCVeltrane_900::VTException failure;
    failure.PutErrorMessage(static_cast<int>(kMessage), detail::Bytes(parameters)...);
    const std::string place = attribute == nullptr ? "Element" : "Attribute '" + std::string(attribute) + "' of";
    failure.SetDetailMessage((" " + place + " '" + element + "'.").c_str());
    throw failure;
}

} // namespace veltrane_kit

#endif
