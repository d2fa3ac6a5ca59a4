#ifndef VELTRANE_PLUGINS_KIT_COLUMN_H
#define VELTRANE_PLUGINS_KIT_COLUMN_H

#include "kit/columns/block.h"

#include <cmath>
#include <optional>

namespace veltrane_kit {

/// The numbers of an expression in the chosen rows of a block; not a number is missing. Either one for each row or one
/// for all.
struct NumberColumn {
    const double* numbers = nullptr; ///< null: `same` in all rows
    /// `numbers`, where they stand in a buffer of the block's that belongs to whoever asked for the column. It is then
    /// the only buffer of numbers that was taken for the column; else none was.
    double* own = nullptr;
    double same = kMissing;

    static NumberColumn Of(double same) { return {nullptr, nullptr, same}; }
    static NumberColumn Own(double* numbers) { return {numbers, numbers, kMissing}; }
    static NumberColumn Shown(const double* numbers) { return {numbers, nullptr, kMissing}; }

    double At(std::size_t i) const { return numbers == nullptr ? same : numbers[i]; }
};

/// The values of an expression in the chosen rows of a block. One of `numbers`, `texts` and `values` is there, by the
/// type of the expression, or none and `same` in all rows.
struct Column {
    std::optional<DataType> type; ///< of the expression; none: `values`
    const double* numbers = nullptr;
    const std::string_view* texts = nullptr; ///< null data: missing
    const Value* values = nullptr;
    const std::uint8_t* invalid = nullptr; ///< beside `numbers` and `texts`; null where no row has an invalid value
    Value same;

    /// The same texts as places in a table, where they come from a dictionary; see FieldColumn.
    const std::int32_t* entries = nullptr;
    const EntryTable* table = nullptr;

    bool IsSame() const { return numbers == nullptr && texts == nullptr && values == nullptr; }

    Value At(std::size_t i) const {
        if (numbers != nullptr) {
            Value value = MakeNumber(numbers[i], *type);
            value.isInvalid = invalid != nullptr && invalid[i] != 0;
            return value;
        }
        if (texts != nullptr) {
            Value value = texts[i].data() == nullptr ? MakeMissing(DataType::STRING) : MakeText(texts[i]);
            value.isInvalid = invalid != nullptr && invalid[i] != 0;
            return value;
        }
        return values != nullptr ? values[i] : same;
    }

    /// Of a column of type STRING; null data: missing.
    std::string_view TextAt(std::size_t i) const;

    bool IsMissing(std::size_t i) const {
        return numbers != nullptr ? std::isnan(numbers[i])
               : texts != nullptr ? texts[i].data() == nullptr
                                  : (values != nullptr ? values[i] : same).isMissing;
    }
};

/// The text of a value in a column of texts.
inline std::string_view ViewOf(const Value& value) {
    using namespace std::string_view_literals;
    return value.isMissing ? std::string_view() : value.text.data() == nullptr ? ""sv : value.text;
}

inline std::string_view Column::TextAt(std::size_t i) const {
    return texts != nullptr ? texts[i] : ViewOf(same);
}

/// A column that is filled value by value. Make it before the columns that it is computed from, so that its room lies
/// below theirs.
class ColumnBuilder {
public:
    ColumnBuilder(Block& block, std::optional<DataType> type);

    /// @param value of the column's type; its text has to stay as long as the block
    void Set(std::size_t i, const Value& value) {
        if (fNumbers != nullptr) {
            fNumbers[i] = value.number;
        } else if (fTexts != nullptr) {
            fTexts[i] = ViewOf(value);
        } else {
            fValues[i] = value;
            return;
        }
        if (value.isInvalid) {
            MarkInvalid(i);
        }
    }

    /// The same for a value whose text may go.
    void SetCopy(std::size_t i, Value value);

    // Where values of the column's type stand, none of them invalid; null for a column of another type.
    double* Numbers() { return fNumbers; }
    std::string_view* Texts() { return fTexts; }

    Column Get() const;

private:
    void MarkInvalid(std::size_t i);

    Block& fBlock;
    std::optional<DataType> fType;
    double* fNumbers = nullptr;
    std::string_view* fTexts = nullptr;
    Value* fValues = nullptr;
    std::uint8_t* fFlags;
    bool fHasInvalid = false;
};

/// The column of a field in the chosen rows.
/// @param type of the field; none: its values are of any type
Column ColumnOf(Block& block, int slot, std::optional<DataType> type);
NumberColumn NumbersOf(Block& block, int slot);

/// Makes a column of the chosen rows the values of a field that stands for a while, for expressions within.
void SetField(Block& block, int slot, std::optional<DataType> type, const Column& column);

} // namespace veltrane_kit

#endif
