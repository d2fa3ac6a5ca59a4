#ifndef VELTRANE_PLUGINS_KIT_NUMBER_FORMS_H
#define VELTRANE_PLUGINS_KIT_NUMBER_FORMS_H

#include "kit/expressions/expression.h"

#include <string_view>

/// The expressions that MakeNumberExpression() chooses among. Each takes its arguments over when there is a result, and
/// gives null for another function.
namespace veltrane_kit {

/// "+", "-", "*" or "/" of two arguments that keep numbers.
ExpressionPtr MakeArithmetic(std::string_view function, Expressions& arguments);

/// A comparison of two arguments that keep numbers on one scale.
ExpressionPtr MakeComparison(std::string_view function, Expressions& arguments);

/// A comparison of two texts.
ExpressionPtr MakeTextComparison(std::string_view function, Expressions& arguments);

/// "isIn" and "isNotIn" among constants of the first argument's own kind, numbers or texts.
ExpressionPtr MakeMembership(std::string_view function, Expressions& arguments);

/// "and", "or" and "not" of truth values, "isMissing" and "isNotMissing" of anything.
ExpressionPtr MakeLogic(std::string_view function, Expressions& arguments);

/// "if" with a condition that is a truth value: only the branch that is taken is evaluated.
ExpressionPtr MakeBranch(Expressions& arguments);

bool KeepNumbers(const Expressions& arguments);

/// INTEGER where all arguments are integers, else DOUBLE.
DataType TypeOfNumbers(const Expressions& arguments);

} // namespace veltrane_kit

#endif
