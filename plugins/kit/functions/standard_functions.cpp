#include "kit/functions/standard_functions.h"

#include "kit/functions/logic.h"
#include "kit/functions/moments.h"
#include "kit/functions/numbers/aggregates.h"
#include "kit/functions/numbers/analysis.h"
#include "kit/functions/numbers/arithmetic.h"
#include "kit/functions/numbers/columns.h"
#include "kit/functions/numbers/normal.h"
#include "kit/functions/texts/characters.h"
#include "kit/functions/texts/patterns.h"

#include <utility>

namespace veltrane_kit {

namespace {

using namespace standard;
using veltrane::Function;
using veltrane::FunctionLibrary;

constexpr std::size_t ANY = Function::kAny;

/// What a row of the table sets of a function in its own way.
using Evaluation = void (*)(Function& function);

template <double (*kKernel)(double)>
constexpr Evaluation OfOne() {
    return [](Function& function) {
        function.ofOne = kKernel;
        function.ofColumns = ColumnsOfOne<kKernel>;
    };
}

template <double (*kKernel)(double, double)>
constexpr Evaluation OfTwo() {
    return [](Function& function) {
        function.ofTwo = kKernel;
        function.ofColumns = ColumnsOfTwo<kKernel>;
    };
}

template <double (*kStep)(double, double)>
constexpr Evaluation OfFold() {
    return [](Function& function) {
        function.ofMany = Fold<kStep>;
        function.ofColumns = ColumnsOfFold<kStep>;
    };
}

template <double (*kKernel)(const double*, std::size_t)>
constexpr Evaluation OfMany() {
    return [](Function& function) { function.ofMany = kKernel; };
}

template <veltrane::Value (*kFunction)(veltrane::FunctionCall&)>
constexpr Evaluation OfValues() {
    return [](Function& function) { function.ofValues = kFunction; };
}

struct Row {
    const char* name;
    std::size_t fewest;
    std::size_t most;
    Function::Arguments arguments;
    Function::Result result;
    Function::Missing missing;
    Evaluation evaluation;
    const char* summary;
    const char* missingRule;
};

constexpr Row kRows[] = {
#define VELTRANE_STANDARD_FUNCTION(name, fewest, most, arguments, result, rule, ...)                                   \
    {name,       fewest, most, Function::Arguments::arguments, Function::Result::result, Function::Missing::rule,      \
     __VA_ARGS__},
#include "kit/functions/standard_functions.def"
};

struct FilledLibrary : FunctionLibrary {
    FilledLibrary() {
        for (const Row& row : kRows) {
            Function function;
            function.name = row.name;
            function.fewest = row.fewest;
            function.most = row.most;
            function.arguments = row.arguments;
            function.result = row.result;
            function.missing = row.missing;
            row.evaluation(function);
            function.summary = row.summary;
            function.missingRule = row.missingRule;
            Add(std::move(function));
        }
    }
};

} // namespace

/// It is never destroyed: documents may be scored while the process ends.
const FunctionLibrary& StandardFunctions() {
    static const auto* const library = new FilledLibrary;
    return *library;
}

} // namespace veltrane_kit
