#include "blocks/column_reader.h"

#include "blocks/plain_number.h"

#include <MCVeltrane_900/NumericValue.h>

#include <kit/inputs/host_values.h>
#include <limits>

namespace veltrane::host {
namespace {

using MCVeltrane_900::NumericValue;
using MCVeltrane_900::ScoreDictVar;
using MCVeltrane_900::ScoreValue;

constexpr double kMissingNumber = std::numeric_limits<double>::quiet_NaN();

bool IsNumber(const CaseRow::Field& field) {
    return field.type == ScoreDictVar::kNUMERIC_VAR;
}

bool IsText(const CaseRow::Field& field, std::optional<DataType> type) {
    return field.type == ScoreDictVar::STRING_VAR && (!type || *type == DataType::STRING);
}

} // namespace

ColumnReader::ColumnReader(const CaseRow::Field& field, std::optional<DataType> type, std::size_t column,
                           std::size_t place)
    : fField(field), fType(type), fColumn(column), fPlace(place) {}

bool ColumnReader::CanRead(const CaseRow::Field& field, DataType type) {
    switch (field.type) {
    case ScoreDictVar::kNUMERIC_VAR:
        return veltrane_kit::IsNumber(type);
    case ScoreDictVar::STRING_VAR:
        return type == DataType::STRING || type == DataType::BOOLEAN;
    default:
        return veltrane_kit::IsMoment(type) || veltrane_kit::IsCounting(type);
    }
}

void ColumnReader::Read(const CellTable& table, CellTools& tools, TableNotes notes) {
    fUnreadable.clear();
    if (IsText(fField, fType)) {
        fTexts.resize(fType ? table.Rows() : 0);
        ReadTexts(table, tools, notes);
        return;
    }
    fNumbers.resize(table.Rows());
    if (IsNumber(fField)) {
        ReadNumbers(table, tools, notes);
    } else {
        ReadOthers(table, tools, notes);
    }
}

InputColumn ColumnReader::Column() const {
    InputColumn column;
    if (IsText(fField, fType)) {
        column.texts = fTexts.data();
    } else {
        column.numbers = fNumbers.data();
        column.unreadable = fUnreadable.data();
        column.unreadableCount = fUnreadable.size();
    }
    return column;
}

inline bool ColumnReader::IsMissing(std::string_view cell, const CellTools& tools) const {
    return cell.empty() || (tools.parser.HasTokens() && tools.parser.IsMissing(CellContent(cell, fField)));
}

void ColumnReader::ReadNumbers(const CellTable& table, CellTools& tools, TableNotes notes) {
    for (std::size_t row = 0; row < table.Rows(); ++row) {
        const std::string_view cell = table.At(row, fPlace);
        double& number = fNumbers[row];
        if (IsMissing(cell, tools)) {
            number = kMissingNumber;
        } else if (!ReadPlainNumber(cell, number)) {
            number = ReadOther(row, cell, table, tools, notes);
        }
    }
}

void ColumnReader::ReadTexts(const CellTable& table, CellTools& tools, TableNotes notes) {
    if (!fType && tools.isPlainText) {
        return;
    }
    for (std::size_t row = 0; row < table.Rows(); ++row) {
        std::string_view text = table.At(row, fPlace);
        if (tools.parser.IsMissing(text)) {
            text = {};
        } else if (const char* problem = tools.isPlainText ? nullptr : tools.parser.ProblemOfText(text)) {
            Note(row, text, problem, table, notes);
            text = {};
        }
        if (fType) {
            fTexts[row] = text;
        }
    }
}

void ColumnReader::ReadOthers(const CellTable& table, CellTools& tools, TableNotes notes) {
    for (std::size_t row = 0; row < table.Rows(); ++row) {
        const std::string_view cell = table.At(row, fPlace);
        fNumbers[row] = IsMissing(cell, tools) ? kMissingNumber : ReadOther(row, cell, table, tools, notes);
    }
}

/// Reads a cell as a single case has it, and takes from the record what a model would.
double ColumnReader::ReadOther(std::size_t row, std::string_view cell, const CellTable& table, CellTools& tools,
                               TableNotes notes) {
    const char* const problem = tools.parser.Read(cell, fField, tools.row);
    if (problem != nullptr) {
        Note(row, cell, problem, table, notes);
    }
    if (!fType) {
        return kMissingNumber;
    }
    const ScoreValue* const raw = tools.row.Get(fField.slot);
    if (IsNumber(fField) && problem == nullptr) {
        const double number = raw->GetDouble();
        return number == NumericValue::GetSysmisValue() ? kMissingNumber : number;
    }
    const Value value = veltrane_kit::FromHost(raw, *fType);
    if (value.isMissing && value.isInvalid) {
        fUnreadable.push_back({row, CellContent(cell, fField)});
    }
    return value.number;
}

void ColumnReader::Note(std::size_t row, std::string_view cell, const char* problem, const CellTable& table,
                        TableNotes notes) {
    notes.notes.push_back({RowNote::Kind::UNREADABLE, static_cast<std::uint32_t>(notes.firstRow + row),
                           table.lines[row], fColumn, cell, problem});
}

} // namespace veltrane::host
