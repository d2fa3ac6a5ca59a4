#ifndef VELTRANE_PLUGINS_KIT_NUMBERS_H
#define VELTRANE_PLUGINS_KIT_NUMBERS_H

#include "kit/expressions/expression.h"

#include <string_view>

/// Functions of numbers and of truth values over arguments whose types are known to keep numbers. They give what the
/// functions of their names give by the call of a function (call.h), at once. Not a number is missing, and spreads by
/// the rules of arithmetic.
namespace veltrane_kit {

/// "+", "-", "*" or "/" of two, a comparison of two, "and" and "or" of any number, "not" and "isMissing" of one, "if".
/// @param arguments taken over when there is a result
/// @return null for another function, and for arguments that don't keep numbers or are compared in another way
ExpressionPtr MakeNumberExpression(std::string_view function, Expressions& arguments);

/// A function with a kernel over numbers.
/// @return null for one without, or arguments that don't keep numbers
ExpressionPtr MakeKernelExpression(const veltrane::Function& function, Expressions& arguments);

/// The type of the results of a function.
std::optional<DataType> ResultType(const veltrane::Function& function, const Expressions& arguments);

/// Puts the arguments' places where a comparison asks which is less and one of them is an ordinal field of texts; the
/// other one counts as a text. What isn't listed is put where the comparison doesn't hold. Two fields that list
/// different texts have no order in common and stay as they are, as all arguments of other functions do.
void ComparePlaces(std::string_view function, Expressions& arguments, FrameLayout& layout);

} // namespace veltrane_kit

#endif
