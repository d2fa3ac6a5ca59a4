#include "translators/apply/function_list.h"

#include "support/function_numbers.h"

#include <algorithm>

namespace veltrane::tests {

namespace {

/// What the table says of the arguments of one of the library's own functions.
struct Given {
    int count;
    Takes takes;
};

constexpr int ANY = kAnyCount;
constexpr Given UNCHECKED{kUncheckedCount, Takes::ANYTHING};
constexpr Given MEANS_AND_VARIANCES{kUncheckedCount, Takes::MEANS_AND_VARIANCES};
constexpr Given TARGET_FIELD{1, Takes::TARGET_FIELD};
constexpr Given NUMERIC_FIELD{1, Takes::NUMERIC_FIELD};
constexpr Given NUMBERS(int count) {
    return {count, Takes::NUMBERS};
}
constexpr Given TEXTS(int count) {
    return {count, Takes::TEXTS};
}
constexpr Given TEXT_CONSTANTS(int count) {
    return {count, Takes::TEXT_CONSTANTS};
}
constexpr Given TEXT_THEN_NUMBERS(int count) {
    return {count, Takes::TEXT_THEN_NUMBERS};
}
constexpr Given METHOD_SECOND(int count) {
    return {count, Takes::ANYTHING};
}
constexpr Given ANYTHING(int count) {
    return {count, Takes::ANYTHING};
}

/// What a family does with numbers and texts; most do nothing that matters here.
enum Family : unsigned int {
    NO_FAMILY = 0,
    TAKES_NUMBERS = 1,
    GIVES_NUMBERS = 2,
    TAKES_TEXTS = 4,
    GIVES_TEXTS = 8,
    PASSES_ON = 16,
    ARITHMETIC = TAKES_NUMBERS | GIVES_NUMBERS,
    MATHEMATICS = ARITHMETIC,
    STATISTIC = ARITHMETIC,
    DATE_TIME = ARITHMETIC,
    NUMERIC_RESULT = ARITHMETIC,
    LOGIC = GIVES_NUMBERS,
    OUTPUT_NUMERIC = GIVES_NUMBERS,
    STRING = TAKES_TEXTS | GIVES_TEXTS,
    INPUT_STRING = TAKES_TEXTS,
    MIX_OUTPUT = PASSES_ON,
    MIX_INPUT = 0,
    WORDLESS = 0
};

unsigned int OwnFamilies(int function) {
    switch (function) {
#define VELTRANE_TRANSFORM_FUNCTION(enumerator, number, names, evaluation, arguments, families, ...)                   \
    case number:                                                                                                       \
        return families;
#include <MCVeltrane_900/TransformFunctions.def>
    default:
        return NO_FAMILY;
    }
}

/// Whether a function does something: those of fixed numbers by their ranges, one of the library's own by its family.
bool Does(Family what, const std::vector<NumberRange>& pinned, int function) {
    return function < kFirstOwnNumber ? IsIn(pinned, function) : (OwnFamilies(function) & what) != 0;
}

} // namespace

const std::vector<ListedFunction>& ListedFunctions() {
    static const std::vector<ListedFunction> all = [] {
        std::vector<ListedFunction> list = PinnedFunctions();
        const auto add = [&list](int number, const std::vector<std::string>& names, Given given) {
            if (number >= kFirstOwnNumber) {
                list.push_back({number, names, given.count, given.takes});
            }
        };
#define VELTRANE_LIST(...) __VA_ARGS__
#define VELTRANE_TRANSFORM_FUNCTION(enumerator, number, names, evaluation, arguments, ...)                             \
    add(number, {VELTRANE_LIST names}, arguments);
#include <MCVeltrane_900/TransformFunctions.def>
        return list;
    }();
    return all;
}

const std::vector<ListedFunction>& PinnedFunctions() {
    using enum Takes;
    static const std::vector<ListedFunction> list = {
        {0, {"+"}, 2, NUMBERS},
        {1, {"-"}, 2, NUMBERS},
        {2, {"*"}, 2, NUMBERS},
        {3, {"/"}, 2, NUMBERS},
        {4, {"pow"}, 2, NUMBERS},
        {5, {"abs"}, 1, NUMBERS},
        {6, {"exp"}, 1, NUMBERS},
        {7, {"log10", "lg10"}, 1, NUMBERS},
        {8, {"ln"}, 1, NUMBERS},
        {9, {"mod"}, 2, NUMBERS},
        {10, {"round"}, 1, NUMBERS},
        {11, {"sqrt"}, 1, NUMBERS},
        {12, {"trunc"}, 1, NUMBERS},
        {13, {"floor"}, kUncheckedCount, ANYTHING},
        {14, {"ceil"}, kUncheckedCount, ANYTHING},
        {15, {"product"}, kAnyCount, NUMBERS},
        {16, {"min"}, kAnyCount, NUMBERS},
        {17, {"max"}, kAnyCount, NUMBERS},
        {18, {"mean"}, kAnyCount, NUMBERS},
        {19, {"avg"}, kAnyCount, NUMBERS},
        {20, {"median"}, kAnyCount, NUMBERS},
        {21, {"sum"}, kAnyCount, NUMBERS},
        {22, {"sd"}, kAnyCount, NUMBERS},
        {23, {"variance"}, kAnyCount, NUMBERS},
        {24, {"cdf.normal"}, 3, NUMBERS},
        {25, {"cdfnorm"}, 1, NUMBERS},
        {26, {"idf.normal"}, 3, NUMBERS},
        {27, {"pdf.normal"}, 3, NUMBERS},
        {28, {"date_years_difference"}, 2, ANYTHING},
        {29, {"date_months_difference"}, 2, ANYTHING},
        {30, {"date_days_difference"}, 2, ANYTHING},
        {31, {"year-from-date"}, 1, ANYTHING},
        {32, {"month-from-date"}, 1, ANYTHING},
        {33, {"day-from-date"}, 1, ANYTHING},
        {34, {"time_hours_difference"}, 2, ANYTHING},
        {35, {"time_minutes_difference"}, 2, ANYTHING},
        {36, {"time_seconds_difference"}, 2, ANYTHING},
        {37, {"hour-from-time"}, 1, ANYTHING},
        {38, {"minute-from-time"}, 1, ANYTHING},
        {39, {"second-from-time"}, 1, ANYTHING},
        {40, {"isMissing"}, kUncheckedCount, ANYTHING},
        {41, {"isNotMissing"}, kUncheckedCount, ANYTHING},
        {42, {"equal"}, kUncheckedCount, ANYTHING},
        {43, {"notEqual"}, kUncheckedCount, ANYTHING},
        {44, {"lessThan"}, kUncheckedCount, ANYTHING},
        {45, {"lessOrEqual"}, kUncheckedCount, ANYTHING},
        {46, {"greaterThan"}, kUncheckedCount, ANYTHING},
        {47, {"greaterOrEqual"}, kUncheckedCount, ANYTHING},
        {48, {"isIn"}, kUncheckedCount, ANYTHING},
        {49, {"isNotIn"}, kUncheckedCount, ANYTHING},
        {50, {"and"}, kUncheckedCount, ANYTHING},
        {51, {"or"}, kUncheckedCount, ANYTHING},
        {52, {"not"}, kUncheckedCount, ANYTHING},
        {53, {"matches"}, 2, TEXT_CONSTANTS},
        {54, {"lowercase"}, 1, TEXTS},
        {55, {"uppercase"}, 1, TEXTS},
        {56, {"lower"}, 1, TEXTS},
        {57, {"concat"}, kAnyCount, TEXT_CONSTANTS},
        {58, {"replace"}, 3, TEXT_CONSTANTS},
        {59, {"ltrim"}, 1, TEXTS},
        {60, {"rtrim", "trimend"}, 1, TEXTS},
        {61, {"substr"}, 2, TEXT_THEN_NUMBERS},
        {62, {"substring"}, 3, TEXT_THEN_NUMBERS},
        {63, {"length"}, 1, TEXTS},
        {64, {"if"}, kUncheckedCount, ANYTHING},
        {65, {"value"}, 1, TARGET_FIELD},
        {66, {"threshold"}, kUncheckedCount, ANYTHING},
        {67, {"sysmis"}, 1, NUMERIC_FIELD},
        {68, {"recast_to_ordinal"}, 1, TARGET_FIELD},
        {69, {"recast_to_scale"}, 1, TARGET_FIELD},
        {70, {"outlierHandle"}, 6, ANYTHING},
        {71, {"imputeCatFieldMissingAgainstConTarget"}, kUncheckedCount, MEANS_AND_VARIANCES},
        {72, {"normalCDF"}, 3, NUMBERS},
        {73, {"normalPDF"}, 3, NUMBERS},
        {74, {"stdNormalCDF"}, 1, NUMBERS},
        {75, {"stdNormalPDF"}, 1, NUMBERS},
        {76, {"erf"}, 1, NUMBERS},
        {77, {"normalIDF"}, 3, NUMBERS},
        {78, {"stdNormalIDF"}, 1, NUMBERS},
    };
    return list;
}

std::string ListedWord(int number) {
    if (IsIn({{0, 19}, {22, 31}, {34, 71}}, number)) {
        return PinnedFunctions()[static_cast<std::size_t>(number)].names.front();
    }
    return "<not defined>";
}

bool IsIn(const std::vector<NumberRange>& ranges, int number) {
    return std::any_of(ranges.begin(), ranges.end(),
                       [number](const NumberRange& range) { return range.first <= number && number <= range.last; });
}

bool MayNest(int parent, int child) {
    const bool passesOn = Does(PASSES_ON, {{64, 65}}, child);
    if (Does(TAKES_NUMBERS, {{0, 39}, {66, 67}, {70, 78}}, parent)) {
        return passesOn || Does(GIVES_NUMBERS, {{0, 46}, {48, 53}, {63, 63}, {66, 67}, {70, 78}}, child);
    }
    if (Does(TAKES_TEXTS, {{54, 61}, {63, 63}}, parent)) {
        return passesOn || Does(GIVES_TEXTS, {{54, 61}}, child);
    }
    return false;
}

} // namespace veltrane::tests
