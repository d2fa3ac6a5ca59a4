#ifndef VELTRANE_DIAGNOSTICS_RAISE_H
#define VELTRANE_DIAGNOSTICS_RAISE_H

#include <cstddef>
#include <string_view>

/// The one way in which the library fails.
namespace veltrane::diagnostics {

/// The most placeholders that a message of the catalogue has.
inline constexpr std::size_t kMaxParameters = 6;

/// Throws a VTException with one catalogued message.
/// @param detail     foreign message text to keep; empty for none
/// @param parameters values of the placeholders, kMaxParameters at most
[[noreturn]] void RaiseMessage(int id, std::string_view detail, const std::string_view* parameters, std::size_t count);

/// Throws a VTException with the message `id` and these parameters, each a text or a view of one. They are cut at a
/// NUL, and those beyond the placeholders of the message are dropped.
template <typename... Parameters>
[[noreturn]] void Raise(int id, const Parameters&... parameters) {
    static_assert(sizeof...(Parameters) <= kMaxParameters);
    const std::string_view values[] = {std::string_view(parameters)..., std::string_view()};
    RaiseMessage(id, std::string_view(), values, sizeof...(Parameters));
}

/// The same with a foreign message, which stands behind the catalogue's text.
template <typename... Parameters>
[[noreturn]] void RaiseWithDetail(int id, std::string_view detail, const Parameters&... parameters) {
    static_assert(sizeof...(Parameters) <= kMaxParameters);
    const std::string_view values[] = {std::string_view(parameters)..., std::string_view()};
    RaiseMessage(id, detail, values, sizeof...(Parameters));
}

} // namespace veltrane::diagnostics

#endif
