#ifndef VELTRANE_COLUMNS_ARROW_COLUMN_READER_H
#define VELTRANE_COLUMNS_ARROW_COLUMN_READER_H

#include "columns/arrow/cells.h"

#include <veltrane/column_scorer.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace veltrane::columns {

/// What a state keeps for one column from batch to batch: room, and the dictionary that was there last.
struct ColumnRoom {
    std::vector<double> numbers;
    std::vector<std::int32_t> codes;
    std::vector<std::string_view> texts;
    std::vector<UnreadableCell> unreadable;
    std::vector<std::string> unreadableTexts;

    std::vector<std::string_view> entries; ///< of the dictionary, in the batch
    std::vector<std::int32_t> entryCodes;  ///< of each; -1 for a null among them
    std::vector<double> entryNumbers;      ///< of a dictionary of anything but texts
    std::string keptBytes;                 ///< of the entries, one behind the other
    std::vector<std::size_t> keptEnds;     ///< of each in these
    std::uint64_t mark = 0;                ///< of those entries
};

/// Looks at the type of a field's column.
/// @param isUtf8 whether the texts of fields are UTF-8
/// @throws VTException 260346, and 260353 for a type that the field doesn't take
void CheckType(const ColumnField& field, const ArrowSchema& schema, bool isUtf8);

/// The column of one field in a batch: everything about it has been looked at, and its blocks can be read.
class ColumnReader {
public:
    /// @param field  borrowed, as the structs are
    /// @param schema CheckType has been through
    /// @param rows   of the batch
    /// @throws VTException 260346, 260349, 260350, 260354 to 260357
    ColumnReader(const ColumnField& field, const ArrowSchema& schema, const ArrowArray& array, const Rows& rows);

    /// Makes ready for the blocks of the batch.
    /// @param room of the field, borrowed until the last of them
    void Begin(ColumnRoom& room);

    /// @param row   the first row of a block
    /// @param count of its rows, ColumnScorer::kMostRows at most
    /// @param column filled; what it shows stays until the next block
    void Read(std::size_t row, std::size_t count, InputColumn& column);

private:
    void CheckDictionary(const ArrowArray& array);
    void BeginDictionary();
    void MarkDictionary();
    void ReadNumbers(std::size_t row, std::size_t count, InputColumn& column);
    void ReadTexts(std::size_t row, std::size_t count, InputColumn& column);
    void ReadCodes(std::size_t row, std::size_t count, InputColumn& column);
    void ReadTruths(std::size_t row, std::size_t count, InputColumn& column);
    void SetAsideUntrue(std::size_t count, InputColumn& column);

    const ColumnField& fField;
    ColumnFormat fFormat;
    ColumnFormat fEntryFormat;
    bool fHasDictionary = false;
    Cells fCells;
    Cells fEntries;
    const double* fInPlace = nullptr; ///< the numbers, or the codes, where they needn't be copied
    const std::int32_t* fCodesInPlace = nullptr;
    ColumnRoom* fRoom = nullptr;
};

} // namespace veltrane::columns

#endif
