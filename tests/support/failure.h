#ifndef VELTRANE_TESTS_SUPPORT_FAILURE_H
#define VELTRANE_TESTS_SUPPORT_FAILURE_H

#include <MCVeltrane_900/VTException.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace veltrane::tests {

/// Runs `action` and expects a VTException with this error code and this whole text of its messages, parameters filled
/// in. A failure is reported at the caller's line.
void ExpectFailure(const std::function<void()>& action, int id, const std::string& text,
                   const char* file = __builtin_FILE(), int line = __builtin_LINE());

/// The same, and the detail message too.
void ExpectFailureWithDetail(const std::function<void()>& action, int id, const std::string& text,
                             const std::string& detail, const char* file = __builtin_FILE(),
                             int line = __builtin_LINE());

} // namespace veltrane::tests

#endif
