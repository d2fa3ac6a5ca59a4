#ifndef VELTRANE_TESTS_SUPPORT_FAULTS_FAILURE_H
#define VELTRANE_TESTS_SUPPORT_FAULTS_FAILURE_H

#include <MCVeltrane_900/Messages.h>
#include <MCVeltrane_900/VTException.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace veltrane::tests {

// Tests write the names of the library and of its messages without a prefix.
using namespace MCVeltrane_900;
using enum Message;

/// What a failure tells: a message of the catalogue and the parameters in its places, of which the tests know the whole
/// text. It is written {MISSING_ATTRIBUTE_OF, "name", "DataField"}.
struct Failure {
    static constexpr int kMost = 6; ///< the most places that a message has

    /// The parameters are not copied.
    template <typename... Texts>
    constexpr Failure(Message what, Texts... texts) : message(what), parameters{texts...} {
        static_assert(sizeof...(texts) <= kMost);
    }

    /// The text of the message with the parameters filled in, from the tests' own copy of the catalogue.
    std::string Text() const;

    Message message;
    const char* parameters[kMost]; ///< null behind the last
};

/// Runs `action` and expects a VTException with this error code and this whole text of its messages. What doesn't agree
/// is reported at the caller's line.
void ExpectFailure(const std::function<void()>& action, const Failure& failure, const char* file = __builtin_FILE(),
                   int line = __builtin_LINE());

/// The same with a text that the tests' copy of the catalogue doesn't have, or not alone.
void ExpectFailure(const std::function<void()>& action, int id, const std::string& text,
                   const char* file = __builtin_FILE(), int line = __builtin_LINE());

/// The same, and the detail message too.
void ExpectFailureWithDetail(const std::function<void()>& action, const Failure& failure, const std::string& detail,
                             const char* file = __builtin_FILE(), int line = __builtin_LINE());
void ExpectFailureWithDetail(const std::function<void()>& action, int id, const std::string& text,
                             const std::string& detail, const char* file = __builtin_FILE(),
                             int line = __builtin_LINE());

} // namespace veltrane::tests

#endif
