#ifndef VELTRANE_PLUGINS_KIT_CALL_H
#define VELTRANE_PLUGINS_KIT_CALL_H

#include "kit/expressions/expression.h"
#include "kit/functions/texts/views.h"

namespace veltrane_kit {

/// The call of a function with any arguments, whatever their types turn out to be.
class CallExpression final : public Expression {
public:
    /// @param function     borrowed from its library
    /// @param mapMissingTo the result where any argument is missing; the function isn't called then. Null for none.
    CallExpression(const veltrane::Function& function, Expressions arguments, const Value* mapMissingTo,
                   FrameLayout& layout);

    using Expression::Evaluate;
    Value Evaluate(Frame& frame) const override;
    bool PassesFieldOn() const override;

protected:
    Column ComputeColumn(Block& block) const override;

private:
    class Room;

    template <typename ArgumentAt>
    Value Call(Frame& frame, Value* arguments, ArgumentAt argumentAt) const;
    void ComputeRow(Block& block, Room& room, std::size_t row, ColumnBuilder& builder) const;
    Value Run(Frame& frame, const Value* arguments, std::size_t count) const;
    DataType TypeOf(const Value* arguments, std::size_t count) const;

    const veltrane::Function& fFunction;
    Expressions fArguments;
    bool fMapsMissing;
    OwnedValue fMapMissingTo;
    std::unique_ptr<const standard::ViewFunction> fOfViews; ///< null for none
    std::size_t fText;
    std::size_t fMemory;
};

/// A function that the document defines: an expression over parameters, which have slots of their own.
struct DefinedFunction {
    struct Parameter {
        int slot;
        std::optional<DataType> type;
    };

    std::vector<Parameter> parameters;
    ExpressionPtr body;
    std::size_t cost = 0;  ///< expressions that a call evaluates at most
    std::size_t depth = 0; ///< how many of them within one another
};

/// The call of a function that the document defines.
class DefinedCallExpression final : public Expression {
public:
    /// @param function     borrowed
    /// @param mapMissingTo the result where any argument is missing; null for none
    DefinedCallExpression(const DefinedFunction& function, Expressions arguments, const Value* mapMissingTo,
                          FrameLayout& layout);

    using Expression::Evaluate;
    Value Evaluate(Frame& frame) const override;
    double Number(Frame& frame) const override;
    bool PassesFieldOn() const override { return fFunction.body->PassesFieldOn(); }

protected:
    Column ComputeColumn(Block& block) const override;
    NumberColumn ComputeNumbers(Block& block) const override;

private:
    bool SetParameters(Frame& frame) const;
    const std::uint8_t* SetParameters(Block& block) const;

    const DefinedFunction& fFunction;
    Expressions fArguments; ///< of the parameters' types
    bool fMapsMissing;
    OwnedValue fMapMissingTo;
    std::size_t fText;
};

} // namespace veltrane_kit

#endif
