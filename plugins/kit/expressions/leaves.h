#ifndef VELTRANE_PLUGINS_KIT_LEAVES_H
#define VELTRANE_PLUGINS_KIT_LEAVES_H

#include "kit/expressions/expression.h"

/// Expressions that hold no others: constants and fields.
namespace veltrane_kit {

class ConstantExpression : public Expression {
public:
    using Expression::Evaluate;
    /// @param value its text is copied
    explicit ConstantExpression(const Value& value) : Expression(TypeFor(value)) { fValue.Keep(value); }

    Value Evaluate(Frame&) const override { return fValue.value; }
    double Number(Frame&) const override { return fValue.value.number; }
    const Value* Constant() const override { return &fValue.value; }

protected:
    Column ComputeColumn(Block&) const override {
        Column column;
        column.type = Type();
        column.same = fValue.value;
        return column;
    }

private:
    static std::optional<DataType> TypeFor(const Value& value) { return value.type; }

    OwnedValue fValue;
};

class FieldExpression : public Expression {
public:
    /// @param order of an ordinal field of texts; null for any other
    FieldExpression(int slot, std::optional<DataType> type, OrderPtr order = nullptr)
        : Expression(type), fSlot(slot), fOrder(std::move(order)) {
        DependOnField(slot);
    }

    using Expression::Evaluate;
    Value Evaluate(Frame& frame) const override { return frame.Field(fSlot); }
    double Number(Frame& frame) const override { return frame.Field(fSlot).number; }
    bool PassesFieldOn() const override { return true; }
    int Slot() const override { return fSlot; }
    OrderPtr Order() const override { return fOrder; }

protected:
    Column ComputeColumn(Block& block) const override { return ColumnOf(block, fSlot, Type()); }
    NumberColumn ComputeNumbers(Block& block) const override { return NumbersOf(block, fSlot); }

private:
    int fSlot;
    OrderPtr fOrder;
};

/// A value, and another one where it is missing.
class DefaultExpression : public Expression {
public:
    DefaultExpression(ExpressionPtr expression, const Value& replacement);

    using Expression::Evaluate;
    Value Evaluate(Frame& frame) const override;
    double Number(Frame& frame) const override;
    bool PassesFieldOn() const override { return fExpression->PassesFieldOn(); }
    OrderPtr Order() const override { return fExpression->Order(); }

protected:
    Column ComputeColumn(Block& block) const override;
    NumberColumn ComputeNumbers(Block& block) const override;

private:
    ExpressionPtr fExpression;
    OwnedValue fReplacement;
};

/// A value as one of another type; missing where there is none.
class CastExpression : public Expression {
public:
    CastExpression(ExpressionPtr expression, DataType type, FrameLayout& layout);

    using Expression::Evaluate;
    Value Evaluate(Frame& frame) const override;
    bool PassesFieldOn() const override { return fExpression->PassesFieldOn(); }

protected:
    Column ComputeColumn(Block& block) const override;
    NumberColumn ComputeNumbers(Block& block) const override;

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
