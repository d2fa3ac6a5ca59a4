#ifndef VELTRANE_PLUGINS_KIT_LAG_H
#define VELTRANE_PLUGINS_KIT_LAG_H

#include "kit/expressions/expression.h"

#include <string>

namespace veltrane_kit {

/// Lag: the value that a field had some cases ago, or one number of all values since then.
class LagExpression final : public Expression {
public:
    enum class Aggregate { NONE, AVG, MAX, MEDIAN, MIN, PRODUCT, SUM, STDDEV };

    /// @param history of the field, in the frame
    /// @param type    of the field
    LagExpression(std::size_t history, std::size_t cases, Aggregate aggregate, std::optional<DataType> type,
                  FrameLayout& layout);

    using Expression::Evaluate;
    Value Evaluate(Frame& frame) const override;

protected:
    Column ComputeColumn(Block& block) const override;

private:
    class Past;
    struct Room;

    double Of(std::vector<double>& numbers) const;

    std::size_t fHistory;
    std::size_t fCases;
    Aggregate fAggregate;
    std::size_t fText;
};

/// Aggregate over a field that has one value in a case: that is its collection.
class AggregateExpression final : public Expression {
public:
    AggregateExpression(ExpressionPtr field, bool counts)
        : Expression(counts ? DataType::INTEGER : field->Type()), fField(std::move(field)), fCounts(counts) {
        DependOn(*fField);
    }

    using Expression::Evaluate;
    Value Evaluate(Frame& frame) const override { return Of(fField->Evaluate(frame)); }
    bool PassesFieldOn() const override { return !fCounts; }

protected:
    Column ComputeColumn(Block& block) const override {
        ColumnBuilder builder(block, Type());
        const Block::Scratch scratch(block);
        const Column column = fField->Evaluate(block);
        for (std::size_t row = 0; row < block.Count(); ++row) {
            builder.Set(row, Of(column.At(row)));
        }
        return builder.Get();
    }

private:
    Value Of(const Value& value) const {
        return fCounts ? MakeNumber(value.isMissing ? 0.0 : 1.0, DataType::INTEGER) : value;
    }

    ExpressionPtr fField;
    bool fCounts;
};

} // namespace veltrane_kit

#endif
