#ifndef VELTRANE_PLUGINS_KIT_LEAVES_H
#define VELTRANE_PLUGINS_KIT_LEAVES_H

#include "kit/expressions/expression.h"

/// Expressions that hold no others: constants and fields.
namespace veltrane_kit {

class ConstantExpression : public Expression {
public:
    /// @param value its text is copied
    explicit ConstantExpression(const Value& value) : Expression(TypeFor(value)) { fValue.Keep(value); }

    Value Evaluate(Frame&) const override { return fValue.value; }
    double Number(Frame&) const override { return fValue.value.number; }
    const Value* Constant() const override { return &fValue.value; }

private:
    static std::optional<DataType> TypeFor(const Value& value) { return value.type; }

    OwnedValue fValue;
};

class FieldExpression : public Expression {
public:
    FieldExpression(int slot, std::optional<DataType> type) : Expression(type), fSlot(slot) {}

    Value Evaluate(Frame& frame) const override { return frame.Field(fSlot); }
    double Number(Frame& frame) const override { return frame.Field(fSlot).number; }
    bool PassesFieldOn() const override { return true; }
    int Slot() const override { return fSlot; }

private:
    int fSlot;
};

/// A value, and another one where it is missing.
class DefaultExpression : public Expression {
public:
    DefaultExpression(ExpressionPtr expression, const Value& replacement);

    Value Evaluate(Frame& frame) const override;
    double Number(Frame& frame) const override;
    bool PassesFieldOn() const override { return fExpression->PassesFieldOn(); }

private:
    ExpressionPtr fExpression;
    OwnedValue fReplacement;
};

/// A value as one of another type; missing where there is none.
class CastExpression : public Expression {
public:
    CastExpression(ExpressionPtr expression, DataType type, FrameLayout& layout);

    Value Evaluate(Frame& frame) const override;
    bool PassesFieldOn() const override { return fExpression->PassesFieldOn(); }

private:
    ExpressionPtr fExpression;
    std::size_t fText;
};

/// An expression as one of a type, by a cast where it needs one.
ExpressionPtr AsType(ExpressionPtr expression, std::optional<DataType> type, FrameLayout& layout);

/// The type that two values share: theirs where it is the same, DOUBLE for numbers of different types.
std::optional<DataType> CommonType(std::optional<DataType> left, std::optional<DataType> right);

/// A value of one of the types that have the common type `type`, as one of it.
inline Value AsCommon(Value value, std::optional<DataType> type) {
    if (type && IsNumber(*type)) {
        value.type = *type;
    }
    return value;
}

} // namespace veltrane_kit

#endif
