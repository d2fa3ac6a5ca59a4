#ifndef VELTRANE_HOST_COLUMN_READER_H
#define VELTRANE_HOST_COLUMN_READER_H

#include "blocks/record_splitter.h"
#include "cases/case_row.h"
#include "cases/cell_parser.h"

#include <veltrane/column_scorer.h>

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace veltrane::host {

/// What a thread reads cells with. All cells but the plain ones take the road of a single case: through the slot of a
/// case's record.
struct CellTools {
    CellParser& parser;
    CaseRow& row;
    bool isPlainText = false; ///< whether all bytes of the chunk are texts in the encoding, without NUL
};

/// The place of a table's first row among the rows of the chunk, and what is told of them.
struct TableNotes {
    std::vector<RowNote>& notes;
    std::uint32_t firstRow;
};

/// Reads the cells of one column of a file into a column of a scorer's input.
class ColumnReader {
public:
    /// @param field  whose cells these are; borrowed
    /// @param type   of the scorer's input; none where the cells are only looked at
    /// @param column its number in the file, for the notes
    /// @param place  its cells' place in the tables
    ColumnReader(const CaseRow::Field& field, std::optional<DataType> type, std::size_t column, std::size_t place);

    /// Whether the cells of a field can be read as values of a type.
    static bool CanRead(const CaseRow::Field& field, DataType type);

    /// Reads the cells of all rows. What can't be read is noted.
    void Read(const CellTable& table, CellTools& tools, TableNotes notes);

    /// What was read. It points to the bytes of the chunk and into this object.
    InputColumn Column() const;

private:
    bool IsMissing(std::string_view cell, const CellTools& tools) const;
    void ReadNumbers(const CellTable& table, CellTools& tools, TableNotes notes);
    void ReadTexts(const CellTable& table, CellTools& tools, TableNotes notes);
    void ReadOthers(const CellTable& table, CellTools& tools, TableNotes notes);
    double ReadOther(std::size_t row, std::string_view cell, const CellTable& table, CellTools& tools,
                     TableNotes notes);
    void Note(std::size_t row, std::string_view cell, const char* problem, const CellTable& table, TableNotes notes);

    const CaseRow::Field& fField;
    std::optional<DataType> fType;
    std::size_t fColumn;
    std::size_t fPlace;
    std::vector<double> fNumbers;
    std::vector<std::string_view> fTexts;
    std::vector<UnreadableCell> fUnreadable;
};

} // namespace veltrane::host

#endif
