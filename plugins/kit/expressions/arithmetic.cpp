// Arithmetic and comparisons of two numbers.
#include "kit/columns/number_loops.h"
#include "kit/expressions/number_forms.h"

#include <cmath>
#include <functional>

namespace veltrane_kit {

namespace {

struct Quotient {
    double operator()(double a, double b) const {
        const double quotient = a / b;
        return b == 0.0 ? kMissing : quotient;
    }
};

template <typename Relation>
struct Truth {
    double operator()(double a, double b) const {
        const double truth = Relation()(a, b) ? 1.0 : 0.0;
        return std::isnan(a) || std::isnan(b) ? kMissing : truth;
    }
};

/// @tparam Operation spreads what is not a number
template <typename Operation>
class Binary final : public NumberExpression {
public:
    Binary(DataType type, Expressions& arguments)
        : NumberExpression(type), fLeft(std::move(arguments[0])), fRight(std::move(arguments[1])) {
        DependOn(*fLeft);
        DependOn(*fRight);
    }

    double Number(Frame& frame) const override { return Operation()(fLeft.Number(frame), fRight.Number(frame)); }

protected:
    NumberColumn ComputeNumbers(Block& block) const override {
        ResultRoom room(block);
        const NumberColumn left = fLeft.Numbers(block);
        const NumberColumn right = fRight.Numbers(block);
        return OfTwo<Operation>(left, right, block.Count(), room);
    }

private:
    Operand fLeft;
    Operand fRight;
};

template <typename Operation>
ExpressionPtr Make(DataType type, Expressions& arguments) {
    return std::make_unique<Binary<Operation>>(type, arguments);
}

template <typename Relation>
ExpressionPtr Make(Expressions& arguments) {
    return Make<Truth<Relation>>(DataType::BOOLEAN, arguments);
}

} // namespace

ExpressionPtr MakeArithmetic(std::string_view function, Expressions& arguments) {
    const DataType type = TypeOfNumbers(arguments);
    if (function == "+") {
        return Make<std::plus<>>(type, arguments);
    }
    if (function == "-") {
        return Make<std::minus<>>(type, arguments);
    }
    if (function == "*") {
        return Make<std::multiplies<>>(type, arguments);
    }
    return function == "/" ? Make<Quotient>(DataType::DOUBLE, arguments) : nullptr;
}

ExpressionPtr MakeComparison(std::string_view function, Expressions& arguments) {
    if (function == "equal") {
        return Make<std::equal_to<>>(arguments);
    }
    if (function == "notEqual") {
        return Make<std::not_equal_to<>>(arguments);
    }
    if (function == "lessThan") {
        return Make<std::less<>>(arguments);
    }
    if (function == "lessOrEqual") {
        return Make<std::less_equal<>>(arguments);
    }
    if (function == "greaterThan") {
        return Make<std::greater<>>(arguments);
    }
    return function == "greaterOrEqual" ? Make<std::greater_equal<>>(arguments) : nullptr;
}

} // namespace veltrane_kit
