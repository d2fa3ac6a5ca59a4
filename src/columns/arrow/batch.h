#ifndef VELTRANE_COLUMNS_ARROW_BATCH_H
#define VELTRANE_COLUMNS_ARROW_BATCH_H

#include "columns/arrow/column_reader.h"

#include <veltrane/arrow.h>
#include <veltrane/column_scorer.h>

#include <cstddef>
#include <optional>
#include <vector>

namespace veltrane::columns {

/// The columns of a batch that belong to fields. Everything about them has been looked at; other columns have not.
class Batch {
public:
    /// @param array  borrowed, as the others are
    /// @param fields that want columns
    /// @param isUtf8 whether the texts of fields are UTF-8
    /// @throws VTException 260345 to 260357 but for the state
    Batch(const ArrowArray* array, const ArrowSchema* schema, const std::vector<ColumnField>& fields, bool isUtf8);

    std::size_t Rows() const { return fRows; }

    /// Makes ready for the blocks.
    /// @param rooms one for each field, borrowed until the last block
    void Begin(std::vector<ColumnRoom>& rooms);

    /// @param columns one for each field, filled
    void Read(std::size_t row, std::size_t count, std::vector<InputColumn>& columns);

private:
    std::size_t fRows = 0;
    std::vector<std::optional<ColumnReader>> fReaders; ///< by field; none for one without a column
};

} // namespace veltrane::columns

#endif
