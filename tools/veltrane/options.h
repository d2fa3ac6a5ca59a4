#ifndef VELTRANE_HOST_OPTIONS_H
#define VELTRANE_HOST_OPTIONS_H

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace veltrane::host {

/// `veltrane transform`.
struct TransformOptions {
    std::string document;
    std::string cases;                 ///< `-` is standard input
    std::optional<std::string> output; ///< standard output without it
    std::string encoding = "UTF-8";
    char delimiter = ',';
    std::vector<std::string> missingTokens;
    bool keep = false;
    bool strict = false;
    bool quiet = false;
};

/// `veltrane inspect`.
struct InspectOptions {
    std::string document;
    std::string encoding = "UTF-8";
    bool json = false;
};

/// `veltrane functions`.
struct FunctionsOptions {};

/// What the command line asks for; a number is the exit code where nothing is left to do (help, wrong usage).
using Request = std::variant<TransformOptions, InspectOptions, FunctionsOptions, int>;

/// Reads the command line. Help goes to standard output, a complaint to standard error.
Request ParseCommandLine(int argc, const char* const* argv);

} // namespace veltrane::host

#endif
