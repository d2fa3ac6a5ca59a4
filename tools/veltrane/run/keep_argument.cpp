#include "run/keep_argument.h"

#include <string_view>

namespace veltrane::host {
namespace {

constexpr std::string_view kKeep = "--keep";
constexpr std::string_view kKeepWith = "--keep=";

} // namespace

KeepArgument TakeKeepValues(const std::vector<std::string>& arguments, bool takesWords) {
    KeepArgument result;
    bool wordFollows = false;
    bool onlyWords = false;
    for (const std::string& argument : arguments) {
        if (wordFollows && !argument.empty() && argument.front() != '-') {
            result.values.push_back(argument);
            wordFollows = false;
            continue;
        }
        onlyWords = onlyWords || argument == "--";
        wordFollows = takesWords && !onlyWords && argument == kKeep;
        const bool hasValue = !onlyWords && argument.starts_with(kKeepWith);
        if (hasValue) {
            result.values.push_back(argument.substr(kKeepWith.size()));
        }
        result.arguments.push_back(hasValue ? std::string(kKeep) : argument);
    }
    return result;
}

std::vector<std::string> ColumnNames(const std::string& list) {
    std::vector<std::string> names(1);
    bool quoted = false;
    for (std::size_t at = 0; at < list.size(); ++at) {
        if (list[at] == '"') {
            const bool isDoubled = quoted && list.compare(at, 2, "\"\"") == 0;
            if (isDoubled) {
                names.back() += list[at++];
            } else {
                quoted = !quoted;
            }
        } else if (list[at] == ',' && !quoted) {
            names.emplace_back();
        } else {
            names.back() += list[at];
        }
    }
    return names;
}

} // namespace veltrane::host
