#ifndef VELTRANE_PLUGINS_KIT_EXPRESSION_H
#define VELTRANE_PLUGINS_KIT_EXPRESSION_H

#include "kit/columns/column.h"
#include "kit/values/frame.h"
#include "kit/values/value_order.h"

#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace veltrane_kit {

class Expression;
using ExpressionPtr = std::unique_ptr<const Expression>;
using Expressions = std::vector<ExpressionPtr>;

/// An expression of a document. It doesn't change once it is read, so threads share it; what it needs for a case stands
/// in the frame, and for a block of cases in the block.
///
/// Case by case is what counts: a column holds the same values, bit for bit.
class Expression {
public:
    virtual ~Expression() = default;
    Expression(const Expression&) = delete;
    Expression& operator=(const Expression&) = delete;

    /// The value for the case in the frame. Its text stays until the expression is evaluated again.
    virtual Value Evaluate(Frame& frame) const = 0;

    /// The number of an expression whose type keeps numbers; not a number where the value is missing.
    virtual double Number(Frame& frame) const { return Evaluate(frame).number; }

    /// The values for the chosen rows of a block. They stay until the end of the Scratch around the call.
    Column Evaluate(Block& block) const { return IsOfEntries(block) ? EvaluateEntries(block) : ComputeColumn(block); }

    /// The numbers of an expression whose type keeps numbers.
    NumberColumn Numbers(Block& block) const {
        return IsOfEntries(block) ? NumbersOnly(block, true) : ComputeNumbers(block);
    }

    /// The type of all values that aren't missing; none where it depends on the case.
    std::optional<DataType> Type() const { return fType; }
    bool KeepsNumbers() const { return fType && !IsText(*fType); }
    bool IsOf(DataType type) const { return fType == type; }

    /// Whether a value may be that of a field, with what is known of its validity.
    virtual bool PassesFieldOn() const { return false; }

    static constexpr int kNoSlot = -1;

    /// The slot of an expression that is a field; kNoSlot for any other.
    virtual int Slot() const { return kNoSlot; }

    /// The order of an expression that is an ordinal field of texts, with or without a replacement for missing ones;
    /// null for any other.
    virtual OrderPtr Order() const { return nullptr; }

    /// The value, where it is the same in every case; null otherwise.
    virtual const Value* Constant() const { return nullptr; }

    /// Up to such a cost an expression is computed for all rows rather than for those that need it.
    static constexpr std::size_t kCheap = 8;
    /// What looking at a text costs.
    static constexpr std::size_t kCostOfText = 16;

    /// About how much a value costs, in additions.
    std::size_t Cost() const { return fCost; }

protected:
    explicit Expression(std::optional<DataType> type) : fType(type) {}

    /// What an expression depends on, to be told by its constructor: the expressions in it, a field, the cases before.
    void DependOn(const Expression& inner);
    void DependOn(const Expressions& inner);
    void DependOnField(int slot);
    void DependOnOtherCases() { fSource = kManySources; }
    void AddCost(std::size_t cost) { fCost += cost; }

    /// Evaluate() for a block. The default goes row by row. An override takes the room of its results before anything
    /// else, and gives back what it takes beside.
    virtual Column ComputeColumn(Block& block) const;
    /// Numbers() for a block. An override leaves one more buffer of numbers taken, which is the column's own, or none.
    virtual NumberColumn ComputeNumbers(Block& block) const { return NumbersOnly(block, false); }

private:
    static constexpr int kNoSource = -1;
    static constexpr int kManySources = -2;

    /// Whether all that an expression depends on is one field whose texts come from a dictionary: then it is evaluated
    /// once for an entry.
    bool IsOfEntries(const Block& block) const {
        return fSource >= 0 && fIsWorthKeeping && block.Field(fSource).entries != nullptr;
    }
    Column EvaluateEntries(Block& block) const;
    NumberColumn NumbersOnly(Block& block, bool isOfEntries) const;

    std::optional<DataType> fType;
    int fSource = kNoSource; ///< the slot of the only field that counts
    bool fIsWorthKeeping = false;
    std::size_t fCost = 1;
};

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

    NumberColumn Numbers(Block& block) const {
        return fSlot == kConstant ? NumberColumn::Of(fConstant) : fExpression->Numbers(block);
    }

    const Expression& operator*() const { return *fExpression; }
    const Expression* operator->() const { return fExpression.get(); }

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
    using Expression::Evaluate;
    Value Evaluate(Frame& frame) const final { return MakeNumber(Number(frame), *Type()); }
    double Number(Frame& frame) const override = 0;

protected:
    explicit NumberExpression(DataType type) : Expression(type) {}

    void DependOnAll(const Operands& operands) {
        for (const Operand& operand : operands) {
            DependOn(*operand);
        }
    }

    Column ComputeColumn(Block& block) const final;
    NumberColumn ComputeNumbers(Block& block) const override = 0;
};

} // namespace veltrane_kit

#endif
