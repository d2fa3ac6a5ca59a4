#ifndef VELTRANE_TRANSLATORS_TABLE_ROWS_READER_H
#define VELTRANE_TRANSLATORS_TABLE_ROWS_READER_H

#include "translators/frame/document_text.h"
#include "translators/frame/field_lookup.h"

#include <MCVeltrane_900/ScoreValue.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace MCVeltrane_900 {
class InlineTable;
class MapValues;
} // namespace MCVeltrane_900

namespace veltrane::translators {

/// A cell's text as a value of a variable: a number for a numeric variable, a text for every other.
/// @throws VTException 260151 when a numeric variable's text is no number
std::unique_ptr<MCVeltrane_900::ScoreValue> MakeCellValue(const MCVeltrane_900::ScoreDictVar& var,
                                                          const std::string& text);

/// Reads the rows of an InlineTable. All arguments are borrowed.
class TableRowsReader {
public:
    /// @param var   the derived field, the type of which the outputs have
    /// @param map   holds the output column and the fields of the other columns
    /// @param table takes the rows
    TableRowsReader(const DocumentText& text, const FieldLookup& fields, const MCVeltrane_900::ScoreDictVar& var,
                    const MCVeltrane_900::MapValues& map, MCVeltrane_900::InlineTable& table)
        : fText(text), fFields(fields), fVar(var), fMap(map), fTable(table) {}

    /// Reads all row elements below an element, at any depth.
    void Read(xercesc::DOMElement* element);

private:
    /// A cell's column: the variable that the cell has a value of, null for an unknown column.
    struct Column {
        const XMLCh* tag = nullptr; ///< borrowed from the document
        const MCVeltrane_900::ScoreDictVar* var = nullptr;
        bool isOutput = false;
    };

    void ReadRow(xercesc::DOMElement* row);
    const Column& FindColumn(const xercesc::DOMElement* cell, std::size_t position);
    Column ReadColumn(const xercesc::DOMElement* cell) const;
    void CheckWidth(std::size_t inputs) const;

    DocumentText fText;
    FieldLookup fFields;
    const MCVeltrane_900::ScoreDictVar& fVar;
    const MCVeltrane_900::MapValues& fMap;
    MCVeltrane_900::InlineTable& fTable;
    std::vector<Column> fColumns; ///< of the last row that had a cell at the position
    bool fInFirstRow = true;
    std::size_t fWidth = 0; ///< number of inputs of the first row
};

} // namespace veltrane::translators

#endif
