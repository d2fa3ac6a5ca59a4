#include "command_words.h"

#include "files/encoding.h"

#include <CLI/CLI.hpp>
#include <unicode/ucnv.h>

#include <map>
#include <set>
#include <stdexcept>

namespace veltrane::host {
namespace {

/// The values of the options that have some. An option that isn't here ends the build, so that none is forgotten.
const std::map<std::string, Values> kValues{
    {"-o", Values::FILES},        {"--rejects", Values::FILES},   {"--models", Values::FILES},
    {"--model", Values::MODELS},  {"--encoding", Values::LISTED}, {"--delimiter", Values::LISTED},
    {"--option", Values::LISTED}, {"--missing", Values::FREE},    {"--max-errors", Values::FREE},
    {"--threads", Values::FREE},
};

/// An option is looked up by its last name.
Values ValuesOf(const CommandWord& word) {
    const auto found = kValues.find(word.names.back());
    if (found == kValues.end()) {
        throw std::logic_error("nothing says how the value of " + word.names.back() + " is completed");
    }
    return found->second;
}

CommandWord WordOf(const CLI::Option& option) {
    CommandWord word;
    for (const std::string& name : option.get_snames()) {
        word.names.push_back("-" + name);
    }
    for (const std::string& name : option.get_lnames()) {
        word.names.push_back("--" + name);
    }
    word.text = option.get_description();
    word.unless = option.get_default_str();
    const int most = option.get_items_expected_max(); // none for a flag
    word.again = most > 1;
    if (option.get_positional()) {
        word.value = option.get_name(true);
        word.values = Values::FILES;
    } else if (most > 0) {
        word.value = option.get_type_name();
        word.values = ValuesOf(word);
    }
    return word;
}

std::vector<CommandWord> Words(const CLI::App& command, bool files) {
    std::vector<CommandWord> words;
    for (const CLI::Option* option : command.get_options()) {
        if (option->get_positional() == files && !option->get_group().empty()) {
            words.push_back(WordOf(*option));
        }
    }
    return words;
}

bool IsUsable(const std::string& encoding) {
    try {
        const Encoding opened(encoding);
        return true;
    } catch (const std::invalid_argument&) {
        return false;
    }
}

/// The encodings that the command takes, by the names that people know them by.
std::vector<std::string> Encodings() {
    std::set<std::string> names;
    for (std::int32_t place = 0; place < ucnv_countAvailable(); ++place) {
        UErrorCode status = U_ZERO_ERROR;
        const char* own = ucnv_getAvailableName(place);
        const char* known = ucnv_getStandardName(own, "MIME", &status);
        if (known == nullptr) {
            known = ucnv_getStandardName(own, "IANA", &status);
        }
        if (known != nullptr && IsUsable(known)) {
            names.insert(known);
        }
    }
    return {names.begin(), names.end()};
}

} // namespace

std::vector<const CLI::App*> Commands(const CLI::App& app) {
    return app.get_subcommands([](const CLI::App* command) { return !command->get_group().empty(); });
}

std::vector<CommandWord> Options(const CLI::App& command) {
    return Words(command, false);
}

std::vector<CommandWord> Files(const CLI::App& command) {
    return Words(command, true);
}

std::vector<std::string> ListedValues(const std::string& option) {
    if (option == "--encoding") {
        return Encodings();
    }
    if (option == "--delimiter") {
        return {",", ";", "|", "\\t"};
    }
    // The options of the models whose plug-ins come along.
    return {"missingValuePolicy=defaultPrediction", "missingValuePolicy=noPrediction"};
}

} // namespace veltrane::host
