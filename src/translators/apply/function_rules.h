#ifndef VELTRANE_TRANSLATORS_FUNCTION_RULES_H
#define VELTRANE_TRANSLATORS_FUNCTION_RULES_H

#include <MCVeltrane_900/TransformationDictionary.h>

#include <string_view>

/// What the readers of an Apply know of a function, made from the table of built-in functions.
namespace veltrane::translators {

/// What an argument of an Apply is, as PMMLTranslator::VerifyApplyFunction counts it.
enum ArgumentKind : int { NESTED = 0, FIELD = 1, CONSTANT = 2 };

/// What the arguments of a function have to be.
enum class Arguments {
    NOT_CHECKED,
    NUMBERS,             ///< all numbers
    TEXTS,               ///< all texts
    TEXT_CONSTANTS,      ///< all texts, and constants are texts unless they say otherwise
    TEXT_THEN_NUMBERS,   ///< a text, then numbers
    TARGET_FIELD,        ///< a field of the target's variable type
    NUMERIC_FIELD,       ///< a numeric field
    METHOD_SECOND,       ///< anything, and a constant text is a method of treatment
    MEANS_AND_VARIANCES, ///< two fields, beside two arrays of one length
};

/// The families, as a set of flags.
enum Family : unsigned int {
    NO_FAMILY = 0,
    ARITHMETIC = 1U << 0U,
    MATHEMATICS = 1U << 1U,
    STATISTIC = 1U << 2U,
    DATE_TIME = 1U << 3U,
    LOGIC = 1U << 4U,
    STRING = 1U << 5U,
    MIX_OUTPUT = 1U << 6U,
    MIX_INPUT = 1U << 7U,
    NUMERIC_RESULT = 1U << 8U, ///< numbers in and out, though of no other family
    INPUT_STRING = 1U << 9U,
    OUTPUT_NUMERIC = 1U << 10U,
    WORDLESS = 1U << 11U, ///< no family: messages have no word for it
};

inline constexpr int kAnyNumber = -1;
inline constexpr int kUncheckedNumber = -2;

/// What messages call a function that they have no word for.
inline constexpr std::string_view kNoWord = "<not defined>";

struct FunctionRules {
    int parameters; ///< how many; kAnyNumber, or kUncheckedNumber, which leaves the arguments alone too
    Arguments arguments;
    unsigned int families;
    std::string_view word; ///< what messages call it
};

/// @param function any number; one that is no function has no family and nothing to check
const FunctionRules& RulesOf(MCVeltrane_900::TransformationDictionary::TransformFunction function);

} // namespace veltrane::translators

#endif
