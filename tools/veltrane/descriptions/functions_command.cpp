#include "descriptions/functions_command.h"

#include "files/byte_stream.h"
#include "files/failure.h"
#include "kit/functions/standard_functions.h"
#include "run/table.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <unistd.h>

namespace veltrane::host {
namespace {

using veltrane::Function;

constexpr int ANY = -1;
constexpr int NOT_CHECKED = -2;

/// What the arguments of a function have to be: how many, and the words for one and for several.
struct Arguments {
    int count;
    std::string_view one;
    std::string_view several;
};

constexpr Arguments UNCHECKED{NOT_CHECKED, "", ""};
constexpr Arguments MEANS_AND_VARIANCES = UNCHECKED;
constexpr Arguments TARGET_FIELD{1, "field of the result's type", ""};
constexpr Arguments NUMERIC_FIELD{1, "numeric field", ""};

constexpr Arguments NUMBERS(int count) {
    return {count, "number", "numbers"};
}
constexpr Arguments TEXTS(int count) {
    return {count, "text", "texts"};
}
constexpr Arguments TEXT_CONSTANTS(int count) {
    return TEXTS(count);
}
constexpr Arguments TEXT_THEN_NUMBERS(int count) {
    return {count, "", count == 2 ? "a text, a number" : "a text, two numbers"};
}
constexpr Arguments ANYTHING(int count) {
    return {count, "value of any kind", "values of any kind"};
}
constexpr Arguments METHOD_SECOND(int count) {
    return ANYTHING(count);
}

struct Row {
    int number;
    std::string_view name;
    std::string_view otherName;
    Arguments arguments;
    std::string_view summary;
    std::string_view missing;
};

constexpr std::string_view First(std::string_view name) {
    return name;
}
constexpr std::string_view First(std::string_view name, std::string_view) {
    return name;
}
constexpr std::string_view Second(std::string_view) {
    return {};
}
constexpr std::string_view Second(std::string_view, std::string_view name) {
    return name;
}

/// The rows of the library alone.
constexpr Row kRows[] = {
#define VELTRANE_TRANSFORM_FUNCTION(enumerator, number, names, evaluation, arguments, families, summary, missing)      \
    {number, First names, Second names, arguments, summary, missing},
#include <MCVeltrane_900/TransformFunctions.def>
};

std::string ArgumentsText(const Arguments& arguments) {
    switch (arguments.count) {
    case NOT_CHECKED:
        return "not checked";
    case ANY:
        return "any number of " + std::string(arguments.several);
    case 1:
        return "a " + std::string(arguments.one);
    default:
        // Where the kinds differ by place, the words tell the number.
        return arguments.one.empty() ? std::string(arguments.several)
                                     : std::to_string(arguments.count) + " " + std::string(arguments.several);
    }
}

/// The words for one argument of a kind and for several.
Arguments WordsOf(Function::Arguments kind) {
    switch (kind) {
    case Function::Arguments::NUMBERS:
        return NUMBERS(1);
    case Function::Arguments::TEXTS:
        return TEXTS(1);
    case Function::Arguments::TRUTHS:
        return {1, "truth value", "truth values"};
    case Function::Arguments::MOMENTS:
        return {1, "date or time", "values, a date or time first"};
    default:
        return ANYTHING(1);
    }
}

std::string ArgumentsText(const Function& function) {
    const Arguments words = WordsOf(function.arguments);
    const std::string several(words.several);
    if (function.most == 1) {
        return "a " + std::string(words.one);
    }
    if (function.most == function.fewest) {
        return std::to_string(function.fewest) + " " + several;
    }
    if (function.most != Function::kAny) {
        return std::to_string(function.fewest) + " to " + std::to_string(function.most) + " " + several;
    }
    return function.fewest == 1 ? "any number of " + several
                                : std::to_string(function.fewest) + " " + several + " or more";
}

std::string TableOfTheStandard() {
    Table table({"name", "arguments", "result", "missing"});
    for (const Function& function : veltrane_kit::StandardFunctions().All()) {
        table.AddRow({function.name, ArgumentsText(function), function.summary, function.missingRule});
    }
    return table.Text();
}

std::string TableOfTheLibrary() {
    Table table({"name", "also", "arguments", "result", "missing"});
    for (const Row& row : kRows) {
        table.AddRow({std::string(row.name), std::string(row.otherName), ArgumentsText(row.arguments),
                      std::string(row.summary), std::string(row.missing)});
    }
    return table.Text();
}

} // namespace

std::string FunctionName(int function) {
    const auto* const row = std::lower_bound(std::begin(kRows), std::end(kRows), function,
                                             [](const Row& each, int number) { return each.number < number; });
    return row != std::end(kRows) && row->number == function ? std::string(row->name) : "";
}

std::string FunctionsTables() {
    return "Functions of PMML 4.4, with the meaning of the standard:\n\n" + TableOfTheStandard() +
           "\nFunctions of the library alone:\n\n" + TableOfTheLibrary();
}

int RunFunctions() {
    DescriptorSink(STDOUT_FILENO, "standard output").Write(FunctionsTables());
    return EXIT_DONE;
}

} // namespace veltrane::host
