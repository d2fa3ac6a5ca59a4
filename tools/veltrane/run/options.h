#ifndef VELTRANE_HOST_OPTIONS_H
#define VELTRANE_HOST_OPTIONS_H

#include "run/error_limit.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace CLI {
class App;
}

namespace veltrane::host {

/// The name of standard input, and as an output that of standard output.
inline constexpr const char* kStandardStream = "-";

/// What every command that goes through a file of cases is asked.
struct CaseOptions {
    std::string cases;
    std::string output = kStandardStream;
    std::string encoding = "UTF-8";
    std::vector<std::string> missingTokens;
    std::vector<std::string> keptColumns; ///< where input columns are kept: those, in UTF-8; all without any
    std::optional<std::string> rejects;   ///< the file that takes what could not be read or scored; none without it
    ErrorLimit maxErrors;                 ///< how many rows may have errors before the exit code tells of them
    std::size_t threads = 1;              ///< at least one
    char delimiter = ',';
    bool missingColumns = false; ///< whether the file may lack columns that the document needs
    bool keep = false;           ///< whether input columns are kept
    bool strict = false;
    bool quiet = false;
    bool byCase = false; ///< whether rows go one by one that could go through blocks
};

/// `veltrane transform`.
struct TransformOptions : CaseOptions {
    std::string document;
    bool plain = false; ///< whether the document means what the library alone takes it for
};

/// `veltrane score`.
struct ScoreOptions : CaseOptions {
    std::string document;
    std::optional<std::string> models; ///< the file with the list of models; the installed one without it
    std::optional<std::string> model;  ///< the name or the number of the model; the first that can be scored without it
    std::vector<std::pair<std::string, std::string>>
        modelOptions;   ///< names and values, in the order of the command line
    bool plain = false; ///< whether shared derived fields mean what the library alone takes them for
};

/// `veltrane verify`.
struct VerifyOptions {
    std::string document;
    std::optional<std::string> models;
    std::optional<std::string> model;
    std::string encoding = "UTF-8";
};

/// `veltrane inspect`.
struct InspectOptions {
    std::string document;
    std::optional<std::string> models;
    std::optional<std::string> model;
    std::string encoding = "UTF-8";
    bool json = false;
    bool plain = false; ///< whether the document is shown as the library alone reads it
};

/// `veltrane functions`.
struct FunctionsOptions {};

/// `veltrane complete-models`, which the completions of shells call.
struct ModelNamesOptions {
    std::string document;
};

/// What the command line asks for; a number is the exit code where nothing is left to do (help, wrong usage).
using Request = std::variant<TransformOptions, ScoreOptions, VerifyOptions, InspectOptions, FunctionsOptions,
                             ModelNamesOptions, int>;

/// Reads the command line. Help goes to standard output, a complaint to standard error.
Request ParseCommandLine(int argc, const char* const* argv);

/// Hands out the description of the command line, of which the help is made and so is what else tells of it.
void WithCommandLine(const std::function<void(const CLI::App&)>& use);

} // namespace veltrane::host

#endif
