#include "command_pages.h"
#include "command_words.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <fmt/ranges.h>

#include <map>

namespace veltrane::host {
namespace {

std::string WithoutLineEnd(const std::string& lines) {
    return lines.substr(0, lines.size() - 1);
}

/// A text inside single quotes, in the parts of zsh's descriptions of arguments.
std::string Zsh(const std::string& text) {
    std::string escaped;
    for (const char character : text) {
        if (character == '\'') {
            escaped += "'\\''";
        } else if (std::string_view("[]:\\").find(character) != std::string_view::npos) {
            escaped += std::string("\\") + character;
        } else {
            escaped += character;
        }
    }
    return escaped;
}

/// The name of the function that offers an option's values.
std::string FunctionName(const std::string& option) {
    return "_veltrane_" + option.substr(option.find_first_not_of('-'));
}

std::string Action(const CommandWord& word) {
    switch (word.values) {
    case Values::FILES:
        return "_files";
    case Values::MODELS:
        return "_veltrane_models";
    case Values::LISTED:
        return FunctionName(word.names.back());
    case Values::FREE:
        break;
    }
    return " "; // a message alone
}

/// A name as it stands where the value may follow in the next word or in the same one.
std::string NameForm(const std::string& name, const CommandWord& word) {
    if (!word.TakesValue()) {
        return name;
    }
    return name + (name.starts_with("--") ? "=" : "+");
}

std::string OptionArgument(const CommandWord& word, const std::string& indent) {
    const bool isLast = word.value.empty() && word.names.back() == "--help";
    const std::string others = isLast ? "(- *)" : word.again ? "*" : fmt::format("({})", fmt::join(word.names, " "));
    const std::string value = word.TakesValue() ? fmt::format(":{}:{}", Zsh(word.value), Action(word)) : "";
    std::string lines;
    for (const std::string& name : word.names) {
        lines += fmt::format("{}'{}{}[{}]{}' \\\n", indent, others, NameForm(name, word), Zsh(word.text), value);
    }
    return lines;
}

std::string CommandCase(const CLI::App& command) {
    const std::string indent(12, ' ');
    std::string arguments;
    for (const CommandWord& word : Options(command)) {
        arguments += OptionArgument(word, indent);
    }
    int place = 0;
    for (const CommandWord& word : Files(command)) {
        arguments += fmt::format("{}'{}:{}:_files' \\\n", indent, ++place, Zsh(word.value));
    }
    arguments.erase(arguments.size() - 3); // the last line doesn't go on
    return fmt::format("    {})\n        _arguments -S \\\n{}\n        ;;\n", command.get_name(), arguments);
}

std::string CommandsFunction(const CLI::App& app) {
    std::string lines;
    for (const CLI::App* command : Commands(app)) {
        lines += fmt::format("        '{}:{}'\n", command->get_name(), Zsh(command->get_description()));
    }
    return fmt::format(
        "_veltrane_commands()\n{{\n    local -a commands=(\n{}    )\n    _describe command commands\n}}\n", lines);
}

std::string ListedFunctions(const CLI::App& app) {
    std::map<std::string, CommandWord> options;
    for (const CLI::App* command : Commands(app)) {
        for (const CommandWord& word : Options(*command)) {
            if (word.values == Values::LISTED) {
                options.emplace(word.names.back(), word);
            }
        }
    }
    std::string functions;
    for (const auto& [option, word] : options) {
        std::string values;
        for (const std::string& text : ListedValues(option)) {
            values += fmt::format("        '{}'\n", text);
        }
        functions += fmt::format(
            "\n{}()\n{{\n    local -a values=(\n{}    )\n    _wanted values expl '{}' compadd -a values\n}}\n",
            FunctionName(option), values, word.value);
    }
    return functions;
}

} // namespace

PageParts ZshParts(const CLI::App& app) {
    std::string options;
    for (const CommandWord& word : Options(app)) {
        options += OptionArgument(word, std::string(8, ' '));
    }
    std::string cases;
    for (const CLI::App* command : Commands(app)) {
        cases += CommandCase(*command);
    }
    return {{"FUNCTIONS", CommandsFunction(app) + ListedFunctions(app)},
            {"OPTIONS", WithoutLineEnd(options)},
            {"COMMANDS", WithoutLineEnd(cases)}};
}

} // namespace veltrane::host
