#include "command_pages.h"
#include "command_words.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <fmt/ranges.h>

#include <map>

namespace veltrane::host {
namespace {

std::vector<std::string> OptionNames(const CLI::App& command) {
    std::vector<std::string> names;
    for (const CommandWord& word : Options(command)) {
        names.insert(names.end(), word.names.begin(), word.names.end());
    }
    return names;
}

/// A text between quotes, inside which bash reads no signs.
std::string Quoted(const std::string& text) {
    std::string quoted = "'";
    for (const char character : text) {
        quoted += character == '\'' ? "'\\''" : std::string(1, character);
    }
    return quoted + "'";
}

std::string Words(const CLI::App& app) {
    std::vector<std::string> first = OptionNames(app);
    std::string cases;
    for (const CLI::App* command : Commands(app)) {
        first.push_back(command->get_name());
        cases +=
            fmt::format("    {}) printf '%s\\n' {} ;;\n", command->get_name(), fmt::join(OptionNames(*command), " "));
    }
    return fmt::format("# The words of a command; without one, those that come first.\n_veltrane_words()\n{{\n"
                       "    case $1 in\n    '') printf '%s\\n' {} ;;\n{}    esac\n}}\n",
                       fmt::join(first, " "), cases);
}

std::string TakesValue(const CLI::App& app) {
    std::vector<std::string> patterns;
    for (const CLI::App* command : Commands(app)) {
        for (const CommandWord& word : Options(*command)) {
            for (const std::string& name : word.names) {
                if (word.TakesValue()) {
                    patterns.push_back(fmt::format("'{} {}'", command->get_name(), name));
                }
            }
        }
    }
    return fmt::format("\n# Whether an option of a command takes a value.\n_veltrane_takes_value()\n{{\n"
                       "    case \"$1 $2\" in\n    {}) return 0 ;;\n    esac\n    return 1\n}}\n",
                       fmt::join(patterns, " | \\\n        "));
}

/// What the value of an option is completed by; files are what is left to readline.
std::string ValuesCase(const std::string& option, Values values) {
    switch (values) {
    case Values::FILES:
        return "";
    case Values::MODELS:
        return fmt::format("    {}) _veltrane_offer \"$2\" < <(_veltrane_models \"${{@:3}}\") ;;\n", option);
    case Values::LISTED: {
        std::vector<std::string> texts;
        for (const std::string& text : ListedValues(option)) {
            texts.push_back(Quoted(text));
        }
        return fmt::format("    {}) _veltrane_offer \"$2\" < <(printf '%s\\n' {}) ;;\n", option, fmt::join(texts, " "));
    }
    case Values::FREE:
        break;
    }
    return fmt::format("    {}) compopt +o bashdefault +o default 2>/dev/null ;;\n", option);
}

std::string ValueFunction(const CLI::App& app) {
    std::map<std::string, Values> options;
    for (const CLI::App* command : Commands(app)) {
        for (const CommandWord& word : Options(*command)) {
            for (const std::string& name : word.names) {
                if (word.TakesValue()) {
                    options.emplace(name, word.values);
                }
            }
        }
    }
    std::string cases;
    for (const auto& [option, values] : options) {
        cases += ValuesCase(option, values);
    }
    return fmt::format("\n# Offers values of an option that start with a text; the files of the "
                       "command line follow. Where a\n"
                       "# file is wanted, readline offers those.\n_veltrane_values()\n{{\n    case "
                       "$1 in\n{}    esac\n}}\n",
                       cases);
}

} // namespace

PageParts BashParts(const CLI::App& app) {
    return {{"TABLES", Words(app) + TakesValue(app) + ValueFunction(app)}};
}

} // namespace veltrane::host
