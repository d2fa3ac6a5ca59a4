#ifndef VELTRANE_PLUGINS_KIT_EXPRESSION_H
#define VELTRANE_PLUGINS_KIT_EXPRESSION_H

#include "kit/expressions/frame.h"

#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace veltrane_kit {

/// An expression of a document. It doesn't change once it is read, so threads share it; what it needs for a case stands
/// in the frame.
class Expression {
public:
    virtual ~Expression() = default;
    Expression(const Expression&) = delete;
    Expression& operator=(const Expression&) = delete;

    /// The value for the case in the frame. Its text stays until the expression is evaluated again.
    virtual Value Evaluate(Frame& frame) const = 0;

    /// The number of an expression whose type keeps numbers; not a number where the value is missing.
    virtual double Number(Frame& frame) const { return Evaluate(frame).number; }

    /// The type of all values that aren't missing; none where it depends on the case.
    std::optional<DataType> Type() const { return fType; }
    bool KeepsNumbers() const { return fType && !IsText(*fType); }
    bool IsOf(DataType type) const { return fType == type; }

    /// Whether a value may be that of a field, with what is known of its validity.
    virtual bool PassesFieldOn() const { return false; }

    static constexpr int kNoSlot = -1;

    /// The slot of an expression that is a field; kNoSlot for any other.
    virtual int Slot() const { return kNoSlot; }

    /// The value, where it is the same in every case; null otherwise.
    virtual const Value* Constant() const { return nullptr; }

protected:
    explicit Expression(std::optional<DataType> type) : fType(type) {}

private:
    std::optional<DataType> fType;
};

using ExpressionPtr = std::unique_ptr<const Expression>;
using Expressions = std::vector<ExpressionPtr>;

/// The number of an expression, read at once where that is a field or a constant.
class Operand {
public:
    explicit Operand(ExpressionPtr expression) : fExpression(std::move(expression)), fSlot(fExpression->Slot()) {
        if (const Value* constant = fExpression->Constant()) {
            fConstant = constant->number;
            fSlot = kConstant;
        }
    }

    double Number(Frame& frame) const {
        return fSlot >= 0 ? frame.Field(fSlot).number : fSlot == kConstant ? fConstant : fExpression->Number(frame);
    }

private:
    static constexpr int kConstant = -2;

    ExpressionPtr fExpression;
    double fConstant = 0.0;
    int fSlot;
};

using Operands = std::vector<Operand>;

/// An expression that computes numbers.
class NumberExpression : public Expression {
public:
    Value Evaluate(Frame& frame) const final { return MakeNumber(Number(frame), *Type()); }
    double Number(Frame& frame) const override = 0;

protected:
    explicit NumberExpression(DataType type) : Expression(type) {}
};

} // namespace veltrane_kit

#endif
