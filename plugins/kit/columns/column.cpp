#include "kit/columns/column.h"

#include <algorithm>

namespace veltrane_kit {

namespace {

/// What stands in the chosen rows.
template <typename T>
const T* Gather(const Block& block, const T* from, T* to) {
    const std::uint32_t* const chosen = block.Chosen();
    for (std::size_t i = 0; i < block.Count(); ++i) {
        to[i] = from[chosen[i]];
    }
    return to;
}

template <typename T>
const T* Gather(const Block& block, const T* from, BufferStack<T>& buffers) {
    return from == nullptr || block.Chosen() == nullptr ? from : Gather(block, from, buffers.Take());
}

/// What stands in the chosen rows, put there.
template <typename T>
const T* Scatter(const Block& block, const T* from, BufferStack<T>& buffers) {
    if (from == nullptr || block.Chosen() == nullptr) {
        return from;
    }
    T* const to = buffers.Take();
    for (std::size_t i = 0; i < block.Count(); ++i) {
        to[block.Chosen()[i]] = from[i];
    }
    return to;
}

/// A column of another type, or with the same value in all rows, as one of this type with a value for each.
Column Spread(Block& block, std::optional<DataType> type, const Column& column) {
    ColumnBuilder builder(block, type);
    for (std::size_t i = 0; i < block.Count(); ++i) {
        builder.Set(i, column.At(i));
    }
    return builder.Get();
}

} // namespace

ColumnBuilder::ColumnBuilder(Block& block, std::optional<DataType> type)
    : fBlock(block), fType(type), fFlags(block.Flags().Take()) {
    if (!type) {
        fValues = block.Values().Take();
    } else if (IsText(*type)) {
        fTexts = block.Views().Take();
    } else {
        fNumbers = block.Numbers().Take();
    }
}

void ColumnBuilder::SetCopy(std::size_t i, Value value) {
    if (IsText(value.type) && !value.isMissing) {
        value.text = fBlock.Arena().Keep(value.text);
        if (value.text.data() == nullptr) {
            value = MakeMissing(value.type);
        }
    }
    Set(i, value);
}

void ColumnBuilder::MarkInvalid(std::size_t i) {
    if (!fHasInvalid) {
        std::fill(fFlags, fFlags + fBlock.MostRows(), std::uint8_t{0});
        fHasInvalid = true;
    }
    fFlags[i] = 1;
}

Column ColumnBuilder::Get() const {
    Column column;
    column.type = fType;
    column.numbers = fNumbers;
    column.texts = fTexts;
    column.values = fValues;
    column.invalid = fHasInvalid ? fFlags : nullptr;
    return column;
}

Column ColumnOf(Block& block, int slot, std::optional<DataType> type) {
    const FieldColumn& field = block.Field(slot);
    Column column;
    column.type = type;
    if (!field.IsThere()) {
        column.same.type = type.value_or(DataType::DOUBLE);
        return column;
    }
    if (!type) {
        ColumnBuilder builder(block, type);
        for (std::size_t i = 0; i < block.Count(); ++i) {
            builder.Set(i, block.ValueAt(slot, block.Chosen() == nullptr ? i : block.Chosen()[i]));
        }
        return builder.Get();
    }
    column.numbers = Gather(block, field.numbers, block.Numbers());
    column.texts = field.numbers == nullptr ? Gather(block, block.Texts(slot), block.Views()) : nullptr;
    column.invalid = Gather(block, field.invalid, block.Flags());
    if (block.Chosen() == nullptr) {
        column.entries = field.entries;
        column.table = field.table;
    }
    return column;
}

NumberColumn NumbersOf(Block& block, int slot) {
    const double* const numbers = block.Field(slot).numbers;
    if (numbers == nullptr) {
        return NumberColumn::Of(kMissing);
    }
    if (block.Chosen() == nullptr) {
        return NumberColumn::Shown(numbers);
    }
    double* const own = block.Numbers().Take();
    Gather(block, numbers, own);
    return NumberColumn::Own(own);
}

void SetField(Block& block, int slot, std::optional<DataType> type, const Column& column) {
    const bool isOfType = type && column.type == type && !column.IsSame();
    const Column spread = isOfType || (!type && column.values != nullptr) ? column : Spread(block, type, column);
    FieldColumn& field = block.Field(slot);
    field = FieldColumn();
    field.type = type.value_or(DataType::DOUBLE);
    field.numbers = Scatter(block, spread.numbers, block.Numbers());
    field.texts = Scatter(block, spread.texts, block.Views());
    field.values = Scatter(block, spread.values, block.Values());
    field.invalid = Scatter(block, spread.invalid, block.Flags());
}

} // namespace veltrane_kit
