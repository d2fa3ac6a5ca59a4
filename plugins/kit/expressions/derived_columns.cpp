// Derived fields for blocks of cases.
#include "kit/expressions/derived_fields.h"

#include <algorithm>

namespace veltrane_kit {

namespace {

void Show(const Column& column, FieldColumn& field) {
    field = FieldColumn();
    field.type = column.type.value_or(DataType::DOUBLE);
    field.numbers = column.numbers;
    field.texts = column.texts;
    field.values = column.values;
    field.invalid = column.invalid;
    field.entries = column.entries;
    field.table = column.table;
}

Column Spread(Block& block, const Column& column, std::optional<DataType> type) {
    ColumnBuilder builder(block, type);
    for (std::size_t row = 0; row < block.Count(); ++row) {
        builder.Set(row, column.same);
    }
    return builder.Get();
}

/// Only the last rows count, unless values of others forget the cases before.
void EndCases(Block& block, std::size_t place) {
    Frame& frame = block.Case();
    const FrameLayout::History& history = frame.Layout().histories[place];
    std::size_t row = history.blocks.empty() && block.Rows() > history.length ? block.Rows() - history.length : 0;
    for (; row < block.Rows(); ++row) {
        frame.Field(history.field) = block.ValueAt(history.field, row);
        block.Row(row, history.blocks);
        frame.EndCase(place);
    }
}

} // namespace

void DerivedFields::Compute(Block& block) const {
    const bool isInFunction = std::any_of(fLayout.histories.begin(), fLayout.histories.end(),
                                          [](const FrameLayout::History& history) { return history.isInFunction; });
    if (isInFunction) {
        ComputeByRows(block);
        return;
    }
    for (const Field* field : fNeeded) {
        ComputeField(*field, block);
    }
    for (std::size_t history = 0; history < fLayout.histories.size(); ++history) {
        EndCases(block, history);
    }
}

bool DerivedFields::ComputeFrom(int slot) const {
    return std::any_of(fNeeded.begin(), fNeeded.end(), [slot](const Field* field) {
        return field->expression->Slot() == Expression::kNoSlot &&
               std::find(field->slots.begin(), field->slots.end(), slot) != field->slots.end();
    });
}

/// The room of a column stays taken until the next block.
void DerivedFields::ComputeField(const Field& field, Block& block) {
    const Expression& expression = *field.expression;
    Column column;
    if (expression.KeepsNumbers() && !expression.PassesFieldOn()) {
        const NumberColumn numbers = expression.Numbers(block);
        column.numbers = numbers.numbers;
        column.same = MakeNumber(numbers.same, *expression.Type());
    } else {
        column = expression.Evaluate(block);
    }
    column.type = expression.Type();
    Show(column.IsSame() ? Spread(block, column, expression.Type()) : column, block.Field(field.slot));
}

void DerivedFields::ComputeByRows(Block& block) const {
    std::vector<ColumnBuilder> builders;
    builders.reserve(fNeeded.size());
    for (const Field* field : fNeeded) {
        builders.emplace_back(block, field->expression->Type());
    }
    for (std::size_t row = 0; row < block.Rows(); ++row) {
        Frame& frame = block.Row(row);
        Compute(frame);
        for (std::size_t i = 0; i < fNeeded.size(); ++i) {
            builders[i].SetCopy(row, frame.Field(fNeeded[i]->slot));
        }
        frame.EndCase();
    }
    for (std::size_t i = 0; i < fNeeded.size(); ++i) {
        Show(builders[i].Get(), block.Field(fNeeded[i]->slot));
    }
}

} // namespace veltrane_kit
