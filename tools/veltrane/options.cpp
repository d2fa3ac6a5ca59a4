#include "options.h"

#include "encoding.h"
#include "failure.h"

#include <CLI/CLI.hpp>

#include <stdexcept>
#include <string_view>

namespace veltrane::host {
namespace {

constexpr const char* kExitCodes = "Exit codes: 0 done; 1 the document, the set-up or a file failed; 2 wrong usage; "
                                   "3 done, but some cells could not be read.";

/// Characters that occur in numbers or that CSV gives a meaning of its own.
constexpr std::string_view kNoDelimiters = "0123456789+-.\"\r\n";

std::string CheckEncoding(const std::string& name) {
    try {
        const Encoding encoding(name);
        return {};
    } catch (const std::invalid_argument& problem) {
        return problem.what();
    }
}

constexpr std::string_view kWrittenTab = "\\t";

std::string CheckDelimiter(const std::string& text) {
    if (text == kWrittenTab)
        return {};
    const bool usable = text.size() == 1 && static_cast<unsigned char>(text[0]) < 0x80 && text[0] != '\0' &&
                        !std::isalpha(static_cast<unsigned char>(text[0])) &&
                        kNoDelimiters.find(text[0]) == kNoDelimiters.npos;
    return usable ? "" : "a delimiter is one ASCII character that is no letter, digit, sign, point or quote";
}

void AddEncoding(CLI::App& command, std::string& encoding, const char* help) {
    command.add_option("--encoding", encoding, help)
        ->type_name("NAME")
        ->check(CLI::Validator(CheckEncoding, "", "encoding"))
        ->capture_default_str();
}

CLI::App& AddTransform(CLI::App& app, TransformOptions& options, std::string& delimiter) {
    CLI::App& command = *app.add_subcommand("transform", "Compute a document's derived fields for rows of cases");
    command.add_option("DOCUMENT", options.document, "PMML document with a TransformationDictionary")
        ->required()
        ->type_name("");
    command.add_option("CASES", options.cases, "CSV file with a header of field names; - is standard input")
        ->required()
        ->type_name("");
    command.add_option("-o", options.output, "write to FILE, which appears whole or not at all")->type_name("FILE");
    AddEncoding(command, options.encoding, "encoding of the cases and of the output");
    command.add_option("--delimiter", delimiter, "character between two cells; \\t is a tab")
        ->type_name("C")
        ->check(CLI::Validator(CheckDelimiter, "", "delimiter"))
        ->capture_default_str();
    command.add_option("--missing", options.missingTokens, "cells with this text are missing; may be given again")
        ->type_name("TOKEN")
        ->allow_extra_args(false);
    command.add_flag("--keep", options.keep, "write the input columns in front of the derived fields");
    command.add_flag("--strict", options.strict, "end at the first cell that cannot be read");
    command.add_flag("--quiet", options.quiet, "no progress bar, no warnings, no report of each unreadable cell");
    return command;
}

CLI::App& AddInspect(CLI::App& app, InspectOptions& options) {
    CLI::App& command = *app.add_subcommand("inspect", "Show a document's fields and derived fields");
    command
        .add_option("DOCUMENT", options.document,
                    "PMML document with a TransformationDictionary, or one with the root kord-ml")
        ->required()
        ->type_name("");
    AddEncoding(command, options.encoding, "encoding that the texts are read into and the tables are written in");
    command.add_flag("--json", options.json, "write JSON (UTF-8) instead of tables");
    return command;
}

} // namespace

Request ParseCommandLine(int argc, const char* const* argv) {
    CLI::App app("Computes the derived fields of model documents.", "veltrane");
    app.set_version_flag("--version", std::string("veltrane ") + VELTRANE_VERSION);
    app.require_subcommand(1);
    app.footer(kExitCodes);
    TransformOptions transform;
    InspectOptions inspect;
    std::string delimiter = ",";
    const CLI::App& transformCommand = AddTransform(app, transform, delimiter);
    const CLI::App& inspectCommand = AddInspect(app, inspect);
    app.add_subcommand("functions", "List the built-in functions of Apply");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& end) {
        return app.exit(end) == 0 ? kExitDone : kExitUsage;
    }
    if (inspectCommand.parsed())
        return inspect;
    if (!transformCommand.parsed())
        return FunctionsOptions();
    transform.delimiter = delimiter == kWrittenTab ? '\t' : delimiter.front();
    return transform;
}

} // namespace veltrane::host
