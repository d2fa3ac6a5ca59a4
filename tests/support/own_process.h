#ifndef VELTRANE_TESTS_SUPPORT_OWN_PROCESS_H
#define VELTRANE_TESTS_SUPPORT_OWN_PROCESS_H

#include <string>
#include <vector>

namespace veltrane::tests {

/// The full names of the tests that the program's filter chooses and these patterns of gtest match.
std::vector<std::string> ChosenTests(const std::string& patterns);

/// Runs each test in a child of this process, which must not have used the library: the child finds the state of a
/// process that has just begun, and ends as a process does, static objects and all. A test that crashes ends only its
/// child. Prints the failures and then the counts, as gtest does.
/// @return whether all passed
bool RunInOwnProcesses(const std::vector<std::string>& names);

} // namespace veltrane::tests

#endif
