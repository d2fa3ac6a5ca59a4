#include "descriptions/functions_command.h"

#include "files/byte_stream.h"
#include "files/failure.h"
#include "run/table.h"

#include <string_view>
#include <unistd.h>

namespace veltrane::host {
namespace {

constexpr int ANY = -1;
constexpr int UNCHECKED = -2;

/// What the arguments of a function have to be, for one argument and for several.
struct ArgumentWords {
    std::string_view one;
    std::string_view several;
};

constexpr ArgumentWords NOT_CHECKED{"value of any kind", "values of any kind"};
constexpr ArgumentWords NUMERIC{"number", "numbers"};
constexpr ArgumentWords TEXT{"text", "texts"};
constexpr ArgumentWords TEXT_NUMBER{"", "a text, a number"};
constexpr ArgumentWords TEXT_NUMBER_NUMBER{"", "a text, two numbers"};
constexpr ArgumentWords TARGET_FIELD{"field of the result's type", ""};
constexpr ArgumentWords NUMERIC_FIELD{"numeric field", ""};

struct Row {
    std::string_view name;
    std::string_view otherName;
    int parameters;
    ArgumentWords arguments;
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

constexpr Row kRows[] = {
#define VELTRANE_TRANSFORM_FUNCTION(enumerator, number, literals, gathering, implementation, parameters, arguments,    \
                                    families, word, summary, missing)                                                  \
    {First literals, Second literals, parameters, arguments, summary, missing},
#include <MCVeltrane_900/TransformFunctions.def>
};

std::string ArgumentsText(const Row& row) {
    switch (row.parameters) {
    case UNCHECKED:
        return "not checked";
    case ANY:
        return "any number of " + std::string(row.arguments.several);
    case 1:
        return "a " + std::string(row.arguments.one);
    default:
        // Where the kinds differ by place, the words tell the number.
        return row.arguments.one.empty() ? std::string(row.arguments.several)
                                         : std::to_string(row.parameters) + " " + std::string(row.arguments.several);
    }
}

} // namespace

std::string FunctionName(int function) {
    return function >= 0 && function < static_cast<int>(std::size(kRows)) ? std::string(kRows[function].name) : "";
}

std::string FunctionsTable() {
    Table table({"name", "also", "arguments", "result", "missing"});
    for (const Row& row : kRows) {
        table.AddRow({std::string(row.name), std::string(row.otherName), ArgumentsText(row), std::string(row.summary),
                      std::string(row.missing)});
    }
    return table.Text();
}

int RunFunctions() {
    DescriptorSink(STDOUT_FILENO, "standard output").Write(FunctionsTable());
    return EXIT_DONE;
}

} // namespace veltrane::host
