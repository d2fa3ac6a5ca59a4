#ifndef VELTRANE_TESTS_TRANSLATORS_FUNCTION_LIST_H
#define VELTRANE_TESTS_TRANSLATORS_FUNCTION_LIST_H

#include <string>
#include <vector>

/// The built-in functions of Apply as documents may use them, written down apart from the library's own table.
namespace veltrane::tests {

/// How many arguments a function takes, where it isn't a number.
constexpr int kAnyCount = -1;
constexpr int kUncheckedCount = -2;

/// What a function's arguments have to be.
enum class Takes { ANYTHING, NUMBERS, TEXTS, TEXT_THEN_NUMBERS, TARGET_FIELD, NUMERIC_FIELD };

struct ListedFunction {
    int number;
    std::vector<std::string> names;
    int count;
    Takes takes;
};

/// All of them, in the order of their numbers.
const std::vector<ListedFunction>& ListedFunctions();

/// What messages call a function.
std::string ListedWord(int number);

/// Whether a number lies in one of these ranges, both ends included.
struct NumberRange {
    int first;
    int last;
};
bool IsIn(const std::vector<NumberRange>& ranges, int number);

/// The functions that work on numbers, those that give numbers, and those that give texts.
extern const std::vector<NumberRange> kNumericFunctions;
extern const std::vector<NumberRange> kNumberGivingFunctions;
extern const std::vector<NumberRange> kTextFunctions;

/// Whether a function may stand as an argument of another whose arguments are looked at.
bool MayNest(int parent, int child);

} // namespace veltrane::tests

#endif
