#ifndef VELTRANE_HOST_FAILURE_H
#define VELTRANE_HOST_FAILURE_H

#include <array>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace veltrane::host {

/// What the command ends with. A shell script tells from it whether the output can be used.
enum ExitCode {
    EXIT_DONE = 0,       ///< done, every cell was read
    EXIT_FAILED = 1,     ///< the document, the set-up or a file failed
    EXIT_USAGE = 2,      ///< the command line is wrong
    EXIT_INCOMPLETE = 3, ///< done, but some cells could not be read and count as missing, or some rows were not scored
    EXIT_DIFFERENT = 4,  ///< a document's verification records do not give what they should
};

/// What help tells of the exit codes.
inline constexpr std::array<std::pair<ExitCode, std::string_view>, 5> kExitCodes{{
    {EXIT_DONE, "done"},
    {EXIT_FAILED, "the document, the set-up or a file failed"},
    {EXIT_USAGE, "wrong usage"},
    {EXIT_INCOMPLETE, "done, but some cells could not be read or some rows not scored"},
    {EXIT_DIFFERENT, "verification records differ"},
}};

/// Ends the run with `EXIT_FAILED`. The text is for the person at the terminal and names the file it is about.
class Failure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Ends the run with `EXIT_FAILED`: what the library tells, in its own words, and what there is to add.
class ExplainedFailure : public Failure {
public:
    /// @param explanation empty for none
    ExplainedFailure(const std::string& told, std::string explanation)
        : Failure(told), fExplanation(std::move(explanation)) {}

    const std::string& Explanation() const { return fExplanation; }

private:
    std::string fExplanation;
};

/// Ends the run with `EXIT_USAGE`: what the command line asks for cannot be meant.
class UsageFailure : public Failure {
public:
    using Failure::Failure;
};

/// Ends the run with `EXIT_FAILED` where the reason has been told already.
class ToldFailure : public std::exception {};

} // namespace veltrane::host

#endif
