#include "kit/expressions/leaves.h"

namespace veltrane_kit {

namespace {

std::optional<DataType> DefaultType(const Expression& expression, const Value& replacement) {
    return CommonType(expression.Type(), replacement.type);
}

} // namespace

std::optional<DataType> CommonType(std::optional<DataType> left, std::optional<DataType> right) {
    if (left == right) {
        return left;
    }
    const bool areNumbers = left && right && IsNumber(*left) && IsNumber(*right);
    return areNumbers ? std::optional<DataType>(DataType::DOUBLE) : std::nullopt;
}

DefaultExpression::DefaultExpression(ExpressionPtr expression, const Value& replacement)
    : Expression(DefaultType(*expression, replacement)), fExpression(std::move(expression)) {
    fReplacement.Keep(replacement);
}

Value DefaultExpression::Evaluate(Frame& frame) const {
    const Value value = fExpression->Evaluate(frame);
    return AsCommon(value.isMissing ? fReplacement.value : value, Type());
}

double DefaultExpression::Number(Frame& frame) const {
    const double number = fExpression->Number(frame);
    return std::isnan(number) ? fReplacement.value.number : number;
}

CastExpression::CastExpression(ExpressionPtr expression, DataType type, FrameLayout& layout)
    : Expression(type), fExpression(std::move(expression)), fText(layout.AddText()) {}

Value CastExpression::Evaluate(Frame& frame) const {
    return CastValue(fExpression->Evaluate(frame), *Type(), frame.Text(fText));
}

ExpressionPtr AsType(ExpressionPtr expression, std::optional<DataType> type, FrameLayout& layout) {
    if (!type || expression->IsOf(*type)) {
        return expression;
    }
    if (const Value* constant = expression->Constant()) {
        std::string buffer;
        return std::make_unique<ConstantExpression>(CastValue(*constant, *type, buffer));
    }
    return std::make_unique<CastExpression>(std::move(expression), *type, layout);
}

} // namespace veltrane_kit
