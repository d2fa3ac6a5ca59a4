#ifndef MCVELTRANE_900_MESSAGES_H
#define MCVELTRANE_900_MESSAGES_H

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace MCVeltrane_900 {

/// The messages of the catalogue by name. The number of each is what VTException::GetErrorCode gives, and what
/// PutErrorMessage takes.
enum class Message : int {
#define VELTRANE_MESSAGE(id, name, pattern) name = id, // NOLINT(bugprone-macro-parentheses): an enumerator
#include <MCVeltrane_900/Messages.def>
#undef VELTRANE_MESSAGE
};

/// The number of parameters that a pattern has places for: one more than the greatest number that stands in braces.
/// @param pattern a text of the catalogue, whose placeholders are single digits
constexpr std::size_t CountPlaceholders(std::string_view pattern) {
    std::size_t count = 0;
    for (std::size_t at = 0; at + 2 < pattern.size(); ++at) {
        const bool isPlaceholder =
            pattern[at] == '{' && pattern[at + 1] >= '0' && pattern[at + 1] <= '9' && pattern[at + 2] == '}';
        if (isPlaceholder) {
            count = std::max(count, static_cast<std::size_t>(pattern[at + 1] - '0') + 1);
        }
    }
    return count;
}

/// The number of parameters that a message takes; 0 for a number that no message has.
constexpr std::size_t CountPlaceholders(Message message) {
    switch (message) {
#define VELTRANE_MESSAGE(id, name, pattern)                                                                            \
    case Message::name:                                                                                                \
        return CountPlaceholders(std::string_view(pattern));
#include <MCVeltrane_900/Messages.def>
#undef VELTRANE_MESSAGE
    }
    return 0;
}

/// Whether so many parameters are what the message takes, one for each placeholder. Whoever raises a message by name is
/// held to it by the compiler.
template <Message kMessage, typename... Parameters>
concept FillsPlaceholders = sizeof...(Parameters) == CountPlaceholders(kMessage);

} // namespace MCVeltrane_900

#endif
