#ifndef VELTRANE_TESTS_TRANSLATORS_FUNCTION_LIST_H
#define VELTRANE_TESTS_TRANSLATORS_FUNCTION_LIST_H

#include <string>
#include <vector>

/// The built-in functions of Apply as documents may use them. What is pinned is written down apart from the library's
/// own table.
namespace veltrane::tests {

/// How many arguments a function takes, where it isn't a number.
constexpr int kAnyCount = -1;
constexpr int kUncheckedCount = -2;

/// What a function's arguments have to be.
enum class Takes {
    ANYTHING,
    NUMBERS,
    TEXTS,
    TEXT_CONSTANTS, ///< texts, as which constants are read too
    TEXT_THEN_NUMBERS,
    TARGET_FIELD,
    NUMERIC_FIELD,
    MEANS_AND_VARIANCES ///< two fields, and two arrays beside them
};

struct ListedFunction {
    int number;
    std::vector<std::string> names;
    int count;
    Takes takes;
};

/// The functions that documents and plug-ins know, in the order of their numbers: what they take is pinned.
const std::vector<ListedFunction>& PinnedFunctions();

/// Those, and the library's own, from number 1,000 on, by their rows of the table.
const std::vector<ListedFunction>& ListedFunctions();

/// What messages call a function.
std::string ListedWord(int number);

/// Whether a number lies in one of these ranges, both ends included.
struct NumberRange {
    int first;
    int last;
};
bool IsIn(const std::vector<NumberRange>& ranges, int number);

/// Whether a function may stand as an argument of another whose arguments are looked at.
bool MayNest(int parent, int child);

} // namespace veltrane::tests

#endif
