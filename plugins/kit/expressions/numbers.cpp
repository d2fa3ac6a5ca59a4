#include "kit/expressions/numbers.h"

#include "kit/expressions/leaves.h"
#include "kit/expressions/number_forms.h"

#include <algorithm>

namespace veltrane_kit {

namespace {

/// Values of two types that measure time are brought to the same scale first, which is not done here.
bool CompareAsNumbers(const Expressions& arguments) {
    const DataType left = *arguments[0]->Type();
    const DataType right = *arguments[1]->Type();
    const bool areDates = (IsMoment(left) || IsCounting(left)) && (IsMoment(right) || IsCounting(right));
    return left == right || !areDates;
}

bool IsComparison(std::string_view function) {
    return function == "equal" || function == "notEqual" || function == "lessThan" || function == "lessOrEqual" ||
           function == "greaterThan" || function == "greaterOrEqual";
}

/// A text that is compared with what keeps numbers is read as one.
void ReadConstant(Expressions& arguments, std::size_t place) {
    const Value* constant = arguments[place]->Constant();
    const Expression& other = *arguments[1 - place];
    if (constant == nullptr || constant->isMissing || !IsText(constant->type) || !other.KeepsNumbers()) {
        return;
    }
    const Value read = ReadValue(constant->text, *other.Type());
    if (!read.isMissing) {
        arguments[place] = std::make_unique<ConstantExpression>(read);
    }
}

ExpressionPtr MakeOfTwo(std::string_view function, Expressions& arguments) {
    if (KeepNumbers(arguments)) {
        if (ExpressionPtr made = MakeArithmetic(function, arguments)) {
            return made;
        }
    }
    if (!IsComparison(function)) {
        return nullptr;
    }
    if (ExpressionPtr made = MakeTextComparison(function, arguments)) {
        return made;
    }
    ReadConstant(arguments, 0);
    ReadConstant(arguments, 1);
    return KeepNumbers(arguments) && CompareAsNumbers(arguments) ? MakeComparison(function, arguments) : nullptr;
}

} // namespace

bool KeepNumbers(const Expressions& arguments) {
    return std::all_of(arguments.begin(), arguments.end(),
                       [](const ExpressionPtr& argument) { return argument->KeepsNumbers(); });
}

DataType TypeOfNumbers(const Expressions& arguments) {
    const bool areIntegers = std::all_of(arguments.begin(), arguments.end(), [](const ExpressionPtr& argument) {
        return argument->IsOf(DataType::INTEGER);
    });
    return areIntegers ? DataType::INTEGER : DataType::DOUBLE;
}

ExpressionPtr MakeNumberExpression(std::string_view function, Expressions& arguments) {
    if (function == "if") {
        return MakeBranch(arguments);
    }
    for (const auto make : {MakeLogic, MakeMembership}) {
        if (ExpressionPtr made = make(function, arguments)) {
            return made;
        }
    }
    return arguments.size() == 2 ? MakeOfTwo(function, arguments) : nullptr;
}

std::optional<DataType> ResultType(const veltrane::Function& function, const Expressions& arguments) {
    using Result = veltrane::Function::Result;
    switch (function.result) {
    case Result::REAL:
        return DataType::DOUBLE;
    case Result::INTEGER:
        return DataType::INTEGER;
    case Result::TRUTH:
        return DataType::BOOLEAN;
    case Result::TEXT:
        return DataType::STRING;
    case Result::SAME_KIND:
        return std::all_of(arguments.begin(), arguments.end(),
                           [](const ExpressionPtr& argument) { return argument->Type().has_value(); })
                   ? std::optional<DataType>(TypeOfNumbers(arguments))
                   : std::nullopt;
    default:
        break;
    }
    // The first argument of "if" chooses among the others.
    const std::size_t first = function.name == "if" ? 1 : 0;
    std::optional<DataType> type = arguments[first]->Type();
    for (std::size_t i = first + 1; i < arguments.size(); ++i) {
        type = CommonType(type, arguments[i]->Type());
    }
    return type;
}

} // namespace veltrane_kit
