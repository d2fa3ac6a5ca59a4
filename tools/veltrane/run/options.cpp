#include "run/options.h"

#include "files/encoding.h"
#include "files/failure.h"
#include "run/keep_argument.h"
#include "run/nearest_name.h"
#include "run/report.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <stdexcept>
#include <string_view>
#include <thread>

namespace veltrane::host {
namespace {

std::string ExitCodes() {
    std::vector<std::string> codes;
    codes.reserve(kExitCodes.size());
    for (const auto& [code, meaning] : kExitCodes) {
        codes.push_back(fmt::format("{} {}", static_cast<int>(code), meaning));
    }
    return fmt::format("Exit codes: {}.", fmt::join(codes, "; "));
}

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

constexpr const char* kByCase = "--by-case";

constexpr std::string_view kWrittenTab = "\\t";

std::string CheckDelimiter(const std::string& text) {
    if (text == kWrittenTab) {
        return {};
    }
    const bool usable = text.size() == 1 && static_cast<unsigned char>(text[0]) < 0x80 && text[0] != '\0' &&
                        !std::isalpha(static_cast<unsigned char>(text[0])) &&
                        kNoDelimiters.find(text[0]) == kNoDelimiters.npos;
    return usable ? "" : "a delimiter is one ASCII character that is no letter, digit, sign, point or quote";
}

/// An empty name is what a shell makes of a variable that isn't set.
CLI::Option* NamesFile(CLI::Option* option) {
    const auto check = [](const std::string& name) -> std::string { return name.empty() ? "its name is empty" : ""; };
    return option->check(CLI::Validator(check, "", "file name"));
}

void AddEncoding(CLI::App& command, std::string& encoding, const char* help) {
    command.add_option("--encoding", encoding, help)
        ->type_name("NAME")
        ->check(CLI::Validator(CheckEncoding, "", "encoding"))
        ->capture_default_str();
}

void AddDocument(CLI::App& command, std::string& document, const char* help) {
    NamesFile(command.add_option("DOCUMENT", document, std::string(help) + "; - is standard input"))
        ->required()
        ->type_name("");
}

std::string CheckErrorLimit(const std::string& text) {
    return ErrorLimit::Parse(text) ? "" : "a limit of errors is a number of rows, or a percentage up to 100%";
}

/// How rows are worked on, which doesn't change what comes out. No help shows the reference that tests compare with.
void AddRoads(CLI::App& command, CaseOptions& options) {
    constexpr std::size_t kMostThreads = 1024;
    options.threads = std::clamp<std::size_t>(std::thread::hardware_concurrency(), 1, kMostThreads);
    command.add_option("--threads", options.threads, "work on the rows with so many threads; all cores without it")
        ->type_name("N")
        ->check(CLI::Range(std::size_t{1}, kMostThreads, "number of threads"));
    command.add_flag(kByCase, options.byCase, "work on the rows one by one")->group("");
}

/// @param results what the output holds, for the help
void AddCases(CLI::App& command, CaseOptions& options, std::string& delimiter, const std::string& results) {
    NamesFile(command.add_option("CASES", options.cases, "CSV file with a header of field names; - is standard input"))
        ->required()
        ->type_name("");
    NamesFile(command.add_option("-o", options.output,
                                 "write to FILE, which appears whole or not at all; - is standard output"))
        ->type_name("FILE");
    AddEncoding(command, options.encoding, "encoding of the cases and of the output");
    command.add_option("--delimiter", delimiter, "character between two cells; \\t is a tab")
        ->type_name("C")
        ->check(CLI::Validator(CheckDelimiter, "", "delimiter"))
        ->capture_default_str();
    command.add_option("--missing", options.missingTokens, "cells with this text are missing; may be given again")
        ->type_name("TOKEN")
        ->allow_extra_args(false);
    command.add_flag("--missing-columns", options.missingColumns,
                     "go on without columns that the document needs; their fields are missing");
    command.add_flag("--keep", options.keep,
                     "write the input columns in front of the " + results + "; --keep A,B writes those");
    command.add_flag("--strict", options.strict, "end at the first cell that cannot be read");
    NamesFile(command.add_option("--rejects", options.rejects,
                                 "write all that cannot be read or scored to FILE: row, field, value, reason"))
        ->type_name("FILE");
    command
        .add_option_function<std::string>(
            "--max-errors", [&options](const std::string& text) { options.maxErrors = *ErrorLimit::Parse(text); },
            "exit with 3 only when more rows than these have cells that cannot be read or are not scored")
        ->type_name("N|P%")
        ->check(CLI::Validator(CheckErrorLimit, "", "error limit"));
    command.add_flag("--quiet", options.quiet, "no progress bar, no warnings, no report of single cells and rows");
    AddRoads(command, options);
}

CLI::Option& AddPlain(CLI::App& command, bool& plain) {
    return *command.add_flag("--plain", plain,
                             "read the derived fields as the library alone does, not by the meaning of PMML");
}

CLI::App& AddTransform(CLI::App& app, TransformOptions& options, std::string& delimiter) {
    CLI::App& command = *app.add_subcommand("transform", "Compute a document's derived fields for rows of cases");
    AddDocument(command, options.document, "PMML document with a TransformationDictionary");
    AddCases(command, options, delimiter, "derived fields");
    AddPlain(command, options.plain);
    return command;
}

CLI::Option& AddModels(CLI::App& command, std::optional<std::string>& models) {
    return *NamesFile(command.add_option("--models", models,
                                         "list of the models for which there are plug-ins; the installed one without"))
                ->type_name("LIST");
}

CLI::Option& AddModel(CLI::App& command, std::optional<std::string>& model) {
    return *command.add_option("--model", model, "which of several models, by its name or its number in the document")
                ->type_name("NAME-OR-NUMBER");
}

std::string CheckModelOption(const std::string& text) {
    const std::size_t sign = text.find('=');
    return sign == std::string::npos || sign == 0 ? "an option of a model is NAME=VALUE" : "";
}

CLI::App& AddScore(CLI::App& app, ScoreOptions& options, std::string& delimiter,
                   std::vector<std::string>& modelOptions) {
    CLI::App& command = *app.add_subcommand("score", "Score rows of cases with a document's model");
    AddDocument(command, options.document, "document with a model");
    AddCases(command, options, delimiter, "predictions");
    AddModels(command, options.models);
    AddModel(command, options.model);
    command.add_option("--option", modelOptions, "set an option of the model; may be given again")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false)
        ->check(CLI::Validator(CheckModelOption, "", "model option"));
    AddPlain(command, options.plain);
    return command;
}

CLI::App& AddVerify(CLI::App& app, VerifyOptions& options) {
    CLI::App& command = *app.add_subcommand("verify", "Score a document's own verification records and compare");
    AddDocument(command, options.document, "document with a model and its ModelVerification");
    AddModels(command, options.models);
    AddModel(command, options.model);
    AddEncoding(command, options.encoding, "encoding in which the report is written");
    return command;
}

/// Parts the options of a model at their first equals sign.
std::vector<std::pair<std::string, std::string>> PartModelOptions(const std::vector<std::string>& texts) {
    std::vector<std::pair<std::string, std::string>> parts;
    for (const std::string& text : texts) {
        const std::size_t sign = text.find('=');
        parts.emplace_back(text.substr(0, sign), text.substr(sign + 1));
    }
    return parts;
}

CLI::App& AddInspect(CLI::App& app, InspectOptions& options) {
    CLI::App& command = *app.add_subcommand("inspect", "Show a document's model, fields and derived fields");
    AddDocument(command, options.document,
                "document with a model or a TransformationDictionary, or one with the root kord-ml");
    CLI::Option& models = AddModels(command, options.models);
    CLI::Option& model = AddModel(command, options.model);
    AddEncoding(command, options.encoding, "encoding that the texts are read into and the tables are written in");
    command.add_flag("--json", options.json, "write JSON (UTF-8) instead of tables");
    AddPlain(command, options.plain).excludes(&models, &model); // which the library alone doesn't read
    return command;
}

/// The list of names that completions ask for, which no help shows.
CLI::App& AddModelNames(CLI::App& app, ModelNamesOptions& options) {
    CLI::App& command = *app.add_subcommand("complete-models", "List what --model takes for a document")->group("");
    AddDocument(command, options.document, "document with models");
    return command;
}

/// The commands that help shows.
std::vector<std::string> CommandNames(const CLI::App& app) {
    std::vector<std::string> names;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
        if (!command->get_group().empty()) {
            names.push_back(command->get_name());
        }
    }
    return names;
}

bool IsShown(const CLI::Option* option) {
    return !option->get_group().empty();
}

/// The long names of a command's options.
std::vector<std::string> OptionNames(const CLI::App& command) {
    std::vector<std::string> names;
    for (const CLI::Option* option : command.get_options(IsShown)) {
        for (const std::string& name : option->get_lnames()) {
            names.push_back("--" + name);
        }
    }
    return names;
}

/// What other commands call `-o`.
constexpr const char* kOutput = "--output";

/// The option that was most likely meant; empty when none is near.
std::string NearestOption(const std::string& meant, const CLI::App& command) {
    std::vector<std::string> names = OptionNames(command);
    if (command.get_option_no_throw("-o") != nullptr) {
        names.emplace_back(kOutput);
    }
    const std::string nearest = NearestName(meant, names);
    return nearest == kOutput ? "-o" : nearest;
}

/// What a command takes besides options: `DOCUMENT and CASES`.
std::string FilesText(const CLI::App& command) {
    std::vector<std::string> names;
    for (const CLI::Option* file :
         command.get_options([](const CLI::Option* option) { return option->get_positional(); })) {
        names.push_back(file->get_name());
    }
    return names.empty() ? "no files" : fmt::format("{}", fmt::join(names, " and "));
}

bool IsOption(const std::string& word) {
    return word.size() > 1 && word.front() == '-';
}

/// An option that is none, where another one may be meant that has two dashes.
std::string UnknownOption(const std::string& word, const std::string& place, const CLI::App& app) {
    const std::string name = word.substr(0, word.find('='));
    const std::string meant = name.starts_with("--") || name.size() == 2 ? name : "-" + name;
    return fmt::format("there is no option \"{}\" {}{}", Escaped(name), place, DidYouMean(NearestOption(meant, app)));
}

/// What is wrong with the words that a command couldn't take; empty where it took all of them.
std::string UnknownWord(const CLI::App& command) {
    const std::vector<std::string> rest = command.remaining();
    const auto option = std::find_if(rest.begin(), rest.end(), IsOption);
    if (option != rest.end()) {
        return UnknownOption(*option, "of " + command.get_name(), command);
    }
    if (!rest.empty()) {
        return fmt::format("\"{}\" is one too many; {} takes {}", Escaped(rest.front()), command.get_name(),
                           FilesText(command));
    }
    return {};
}

/// What is wrong with a command's name, or with the first option or word that is none; empty where it is something
/// else.
std::string UnknownName(const CLI::App& app, int argc, const char* const* argv) {
    const std::string word = argc > 1 ? argv[1] : "";
    const std::vector<std::string> commands = CommandNames(app);
    if (argc < 2) {
        return "a command is needed";
    }
    if (IsOption(word) && app.get_option_no_throw(word.substr(0, word.find('='))) == nullptr) {
        return UnknownOption(word, "in front of a command", app);
    }
    if (!IsOption(word) && std::find(commands.begin(), commands.end(), word) == commands.end()) {
        return fmt::format("there is no command \"{}\"{}", Escaped(word), Suggestion(word, commands));
    }
    for (const CLI::App* command : app.get_subcommands()) {
        const std::string unknown = UnknownWord(*command);
        if (!unknown.empty()) {
            return unknown;
        }
    }
    return {};
}

/// Reads a command line with the names of the columns to keep. A word behind `--keep` names them, unless that leaves a
/// command without its files.
/// @return the names; none for all columns
std::vector<std::string> ParseWithKept(CLI::App& app, const std::vector<std::string>& arguments) {
    const auto parse = [&](const KeepArgument& keep) {
        app.parse(std::vector<std::string>(keep.arguments.rbegin(), keep.arguments.rend()));
        std::vector<std::string> names;
        for (const std::string& list : keep.values) {
            for (std::string& name : ColumnNames(list)) {
                names.push_back(std::move(name));
            }
        }
        return names;
    };
    try {
        return parse(TakeKeepValues(arguments, true));
    } catch (const CLI::RequiredError&) {
        return parse(TakeKeepValues(arguments, false));
    }
}

/// Tells a person what is wrong with the command line.
int Complain(const CLI::App& app, const CLI::ParseError& fault, int argc, const char* const* argv) {
    const std::string unknown = UnknownName(app, argc, argv);
    if (unknown.empty()) {
        fmt::print(stderr, "veltrane: {}\nRun with --help for more information.\n", fault.what());
        return EXIT_USAGE;
    }
    fmt::print(stderr, "veltrane: {}\nThe commands are {}; run one with --help for its options.\n", unknown,
               fmt::join(CommandNames(app), ", "));
    return EXIT_USAGE;
}

/// Standard input can be read once only.
int ComplainOfTwoStandardInputs() {
    fmt::print(stderr, "veltrane: DOCUMENT and CASES cannot both be standard input\n");
    return EXIT_USAGE;
}

bool BothAreStandardInput(const std::string& document, const CaseOptions& options) {
    return document == kStandardStream && options.cases == kStandardStream;
}

/// The description of the command line, and what is read into.
struct CommandLine {
    CLI::App app{"Scores cases with the models of documents and computes their derived fields.", "veltrane"};
    TransformOptions transform;
    ScoreOptions score;
    VerifyOptions verify;
    InspectOptions inspect;
    ModelNamesOptions modelNames;
    std::string delimiter = ",";
    std::vector<std::string> modelOptions;
    const CLI::App& transformCommand = AddTransform(app, transform, delimiter);
    const CLI::App& scoreCommand = AddScore(app, score, delimiter, modelOptions);
    const CLI::App& verifyCommand = AddVerify(app, verify);
    const CLI::App& inspectCommand = AddInspect(app, inspect);
    const CLI::App& functionsCommand = *app.add_subcommand("functions", "List the built-in functions of Apply");
    const CLI::App& modelNamesCommand = AddModelNames(app, modelNames);

    CommandLine() {
        app.set_version_flag("--version", std::string("veltrane ") + VELTRANE_VERSION);
        app.require_subcommand(1);
        app.footer(ExitCodes());
    }
};

/// What was asked for, once the command line has been read.
Request RequestOf(CommandLine& line) {
    if (line.functionsCommand.parsed()) {
        return FunctionsOptions();
    }
    if (line.modelNamesCommand.parsed()) {
        return line.modelNames;
    }
    if (line.inspectCommand.parsed()) {
        return line.inspect;
    }
    if (line.verifyCommand.parsed()) {
        return line.verify;
    }
    const char delimiter = line.delimiter == kWrittenTab ? '\t' : line.delimiter.front();
    line.transform.delimiter = line.score.delimiter = delimiter;
    if (BothAreStandardInput(line.transform.document, line.transform) ||
        BothAreStandardInput(line.score.document, line.score)) {
        return ComplainOfTwoStandardInputs();
    }
    if (line.transformCommand.parsed()) {
        return line.transform;
    }
    line.score.modelOptions = PartModelOptions(line.modelOptions);
    return line.score;
}

} // namespace

Request ParseCommandLine(int argc, const char* const* argv) {
    CommandLine line;
    try {
        line.transform.keptColumns = line.score.keptColumns = ParseWithKept(line.app, {argv + 1, argv + argc});
    } catch (const CLI::Success& end) {
        return line.app.exit(end);
    } catch (const CLI::ParseError& fault) {
        return Complain(line.app, fault, argc, argv);
    }
    return RequestOf(line);
}

void WithCommandLine(const std::function<void(const CLI::App&)>& use) {
    use(CommandLine().app);
}

} // namespace veltrane::host
