#ifndef VELTRANE_COLUMNS_ARROW_RESULT_COLUMN_H
#define VELTRANE_COLUMNS_ARROW_RESULT_COLUMN_H

#include "columns/arrow/exported.h"

#include <veltrane/column_scorer.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace veltrane::columns {

/// How the results of one field become a column.
struct ResultFormat {
    ColumnField field;
    std::string format; ///< of the column, or of its codes
    bool isUtf8 = true;
    std::shared_ptr<const ArrayParts> dictionary; ///< of its categories; null without them

    bool HasCategories() const { return dictionary != nullptr; }
    std::string DictionaryFormat() const { return HasCategories() ? (isUtf8 ? "u" : "z") : ""; }
};

/// @param isUtf8              whether texts are UTF-8
/// @param wholeNumbersAsDoubles whether results of type INTEGER are to be float64
/// @throws VTException 260359 for categories that are too long
ResultFormat ResultFormatOf(const ColumnField& field, bool isUtf8, bool wholeNumbersAsDoubles);

/// Room for a block of results that are no doubles or codes in their column; a state keeps it.
struct ResultRoom {
    std::vector<double> numbers;
    std::vector<std::string_view> texts;
};

/// The column of one field for a batch, filled block by block.
class ResultColumn {
public:
    /// @param format borrowed
    /// @param rows   of the batch
    /// @throws std::bad_alloc
    ResultColumn(const ResultFormat& format, std::size_t rows);

    /// Where a scorer puts the results of a block.
    /// @param room  borrowed until Take
    /// @param row   the first one, a multiple of 8
    OutputColumn PlaceFor(ResultRoom& room, std::size_t row, std::size_t count);

    /// Takes what the scorer has put there.
    /// @throws VTException 260356, 260358 or 260359
    void Take(const ResultRoom& room, std::size_t row, std::size_t count);

    Held<ArrowArray> Finish();

private:
    void TakeTexts(const ResultRoom& room, std::size_t row, std::size_t count);
    void TakeTruths(const ResultRoom& room, std::size_t row, std::size_t count);
    template <typename Whole>
    void TakeWhole(const ResultRoom& room, std::size_t row, std::size_t count);
    void Append(std::string_view text);
    template <typename IsThere>
    void Mark(std::size_t row, std::size_t count, IsThere isThere);

    const ResultFormat& fFormat;
    std::size_t fRows;
    bool fHasDoubles;
    double fUnits; ///< of the column's whole numbers in one of the field's
    std::shared_ptr<Memory> fValues;
    std::shared_ptr<Memory> fValidity;
    std::shared_ptr<Memory> fBytes;
    std::size_t fUsedBytes = 0;
    std::size_t fNulls = 0;
};

} // namespace veltrane::columns

#endif
