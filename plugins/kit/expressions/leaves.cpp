#include "kit/expressions/leaves.h"

#include "kit/columns/number_loops.h"
#include "kit/values/single_precision.h"

namespace veltrane_kit {

namespace {

/// Whether a cast of values of a type to float rounds them: producers that compute in single precision write it so.
bool BecomesSingle(DataType from) {
    return from == DataType::DOUBLE || from == DataType::INTEGER;
}

Value Cast(const Value& value, DataType type, std::string& buffer) {
    Value cast = CastValue(value, type, buffer);
    if (type == DataType::FLOAT && !cast.isMissing && BecomesSingle(value.type)) {
        cast.number = NearestSingle(cast.number);
    }
    return cast;
}

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
    DependOn(*fExpression);
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
    : Expression(type), fExpression(std::move(expression)), fText(layout.AddText()) {
    DependOn(*fExpression);
    AddCost(IsText(type) || !fExpression->KeepsNumbers() ? kCostOfText : 0);
}

Value CastExpression::Evaluate(Frame& frame) const {
    return Cast(fExpression->Evaluate(frame), *Type(), frame.Text(fText));
}

Column DefaultExpression::ComputeColumn(Block& block) const {
    ColumnBuilder builder(block, Type());
    const Block::Scratch scratch(block);
    const Column column = fExpression->Evaluate(block);
    for (std::size_t i = 0; i < block.Count(); ++i) {
        const Value value = column.At(i);
        builder.Set(i, AsCommon(value.isMissing ? fReplacement.value : value, Type()));
    }
    return builder.Get();
}

NumberColumn DefaultExpression::ComputeNumbers(Block& block) const {
    ResultRoom room(block);
    const double replacement = fReplacement.value.number;
    return OfOne(fExpression->Numbers(block), block.Count(), room,
                 [replacement](double x) { return std::isnan(x) ? replacement : x; });
}

Column CastExpression::ComputeColumn(Block& block) const {
    ColumnBuilder builder(block, Type());
    const Block::Scratch scratch(block);
    const Column column = fExpression->Evaluate(block);
    std::string& buffer = block.Case().Text(fText);
    for (std::size_t i = 0; i < block.Count(); ++i) {
        const Value cast = Cast(column.At(i), *Type(), buffer);
        if (IsText(cast.type) && !cast.isMissing && cast.text.data() == buffer.data()) {
            builder.SetCopy(i, cast);
        } else {
            builder.Set(i, cast);
        }
    }
    return builder.Get();
}

/// Numbers of any kind are real ones as they are, but for those that become floats.
NumberColumn CastExpression::ComputeNumbers(Block& block) const {
    const std::optional<DataType> from = fExpression->Type();
    const bool isPlain = from && (IsNumber(*from) || from == DataType::BOOLEAN);
    const bool takesAll = IsOf(DataType::DOUBLE) || IsOf(DataType::FLOAT);
    if (!isPlain || !takesAll) {
        return Expression::ComputeNumbers(block);
    }
    if (!IsOf(DataType::FLOAT) || !BecomesSingle(*from)) {
        return fExpression->Numbers(block);
    }
    ResultRoom room(block);
    return OfOne(fExpression->Numbers(block), block.Count(), room,
                 [](double x) { return static_cast<double>(NearestSingle(x)); });
}

ExpressionPtr AsType(ExpressionPtr expression, std::optional<DataType> type, FrameLayout& layout) {
    if (!type || expression->IsOf(*type)) {
        return expression;
    }
    if (const Value* constant = expression->Constant()) {
        std::string buffer;
        return std::make_unique<ConstantExpression>(Cast(*constant, *type, buffer));
    }
    return std::make_unique<CastExpression>(std::move(expression), *type, layout);
}

} // namespace veltrane_kit
