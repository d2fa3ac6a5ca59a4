#ifndef VELTRANE_TRANSLATORS_NUMBER_CHECK_H
#define VELTRANE_TRANSLATORS_NUMBER_CHECK_H

#include <string_view>

/// What counts as a number in a model document, and what it reads as. All of it is independent of the locale.
namespace veltrane::translators {

/// See BaseTranslator::TrimBlanks: the result's end is a count from its start, so trailing blanks are only fully
/// removed where no blank leads.
std::string_view TrimBlanks(std::string_view text);

/// Whether the text is a decimal number as documents may write it: the places of sign, point and exponent are checked,
/// not the whole grammar, so that "1-2e-5" passes and reads as 1.
bool IsDoubleText(std::string_view text);

/// The number that a text which IsDoubleText accepts starts with. Too large a number is infinity; too large a negative
/// one is the missing number, and so is a text without a readable number such as "-e5".
double ReadDoubleText(std::string_view text);

/// Whether the text is digits with at most one sign in front.
bool IsIntText(std::string_view text);

} // namespace veltrane::translators

#endif
