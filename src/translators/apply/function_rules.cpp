#include "translators/apply/function_rules.h"

#include "transform/function_table.h"

#include <array>

namespace veltrane::translators {

using TD = MCVeltrane_900::TransformationDictionary;
using transform::kFunctionCount;

namespace {

/// Messages have no word for the functions from this one on.
constexpr int kFirstWordless = 72;

/// The column of the arguments: what they are, and how many.
struct Given {
    Arguments arguments;
    int parameters;
};

constexpr int ANY = kAnyNumber;
constexpr Given UNCHECKED{Arguments::NOT_CHECKED, kUncheckedNumber};
constexpr Given MEANS_AND_VARIANCES{Arguments::MEANS_AND_VARIANCES, kUncheckedNumber};
constexpr Given TARGET_FIELD{Arguments::TARGET_FIELD, 1};
constexpr Given NUMERIC_FIELD{Arguments::NUMERIC_FIELD, 1};

constexpr Given NUMBERS(int count) {
    return {Arguments::NUMBERS, count};
}
constexpr Given TEXTS(int count) {
    return {Arguments::TEXTS, count};
}
constexpr Given TEXT_CONSTANTS(int count) {
    return {Arguments::TEXT_CONSTANTS, count};
}
constexpr Given TEXT_THEN_NUMBERS(int count) {
    return {Arguments::TEXT_THEN_NUMBERS, count};
}
constexpr Given METHOD_SECOND(int count) {
    return {Arguments::METHOD_SECOND, count};
}
constexpr Given ANYTHING(int count) {
    return {Arguments::NOT_CHECKED, count};
}

constexpr FunctionRules Rules(int function, std::string_view name, Given given, unsigned int families) {
    const bool hasWord = function < kFirstWordless && (families & WORDLESS) == 0;
    return {given.parameters, given.arguments, families, hasWord ? name : kNoWord};
}

/// The usual name comes first.
template <typename... More>
constexpr std::string_view First(std::string_view name, More...) {
    return name;
}

/// The functions in the order of the table, and what stands for a number that is none.
constexpr std::array<FunctionRules, kFunctionCount + 1> kRules{{
#define VELTRANE_TRANSFORM_FUNCTION(enumerator, number, names, evaluation, arguments, families, ...)                   \
    Rules(number, First names, arguments, families),
#include <MCVeltrane_900/TransformFunctions.def>
    {kUncheckedNumber, Arguments::NOT_CHECKED, NO_FAMILY, kNoWord},
}};

} // namespace

const FunctionRules& RulesOf(TD::TransformFunction function) {
    return kRules[transform::RowOf(function)];
}

} // namespace veltrane::translators
