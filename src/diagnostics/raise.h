#ifndef VELTRANE_DIAGNOSTICS_RAISE_H
#define VELTRANE_DIAGNOSTICS_RAISE_H

#include <MCVeltrane_900/Messages.h>

#include <cstddef>
#include <string_view>

/// The one way in which the library fails.
namespace veltrane::diagnostics {

using MCVeltrane_900::Message;

/// The most placeholders that a message of the catalogue has.
inline constexpr std::size_t kMaxParameters = 6;

/// Throws a VTException with one catalogued message.
/// @param detail     foreign message text to keep; empty for none
/// @param parameters values of the placeholders, kMaxParameters at most
[[noreturn]] void RaiseMessage(Message message, std::string_view detail, const std::string_view* parameters,
                               std::size_t count);

/// Throws a VTException with this message and a foreign one, which stands behind the catalogue's text.
/// @param parameters one for each placeholder of the message, each a text or a view of one; they are cut at a NUL
template <Message kMessage, typename... Parameters>
    requires MCVeltrane_900::FillsPlaceholders<kMessage, Parameters...>
[[noreturn]] void RaiseWithDetail(std::string_view detail, const Parameters&... parameters) {
    static_assert(sizeof...(Parameters) <= kMaxParameters);
    const std::string_view values[] = {std::string_view(parameters)..., std::string_view()};
    RaiseMessage(kMessage, detail, values, sizeof...(Parameters));
}

/// The same without a foreign message.
template <Message kMessage, typename... Parameters>
    requires MCVeltrane_900::FillsPlaceholders<kMessage, Parameters...>
[[noreturn]] void Raise(const Parameters&... parameters) {
    RaiseWithDetail<kMessage>(std::string_view(), parameters...);
}

} // namespace veltrane::diagnostics

#endif
