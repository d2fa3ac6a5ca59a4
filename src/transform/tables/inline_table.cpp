#include "transform/derivation/derivation.h"
#include "transform/tables/table_rows.h"

#include <MCVeltrane_900/InlineTable.h>
#include <MCVeltrane_900/ScoreDictVar.h>
#include <MCVeltrane_900/ScoreValue.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace veltrane::transform {

/// The values of all rows of a table and its copies. They go from the last to the first: the key of a row from its end,
/// then its output.
struct RowValues {
    RowValues() = default;
    RowValues(const RowValues&) = delete;
    RowValues& operator=(const RowValues&) = delete;
    ~RowValues() {
        while (!values.empty()) {
            values.pop_back();
        }
    }
    std::vector<std::unique_ptr<MCVeltrane_900::ScoreValue>> values;
};

/// What a table holds beside its input fields.
class TableContent {
public:
    TableContent() = default;
    TableContent(const TableContent& other) : rows(other.rows), values(other.values) {}
    TableContent& operator=(const TableContent&) = delete;

    TableRows rows;
    std::shared_ptr<RowValues> values = std::make_shared<RowValues>(); ///< shared with copies
    TableKey inputs;                                                   ///< of a lookup, reused
};

} // namespace veltrane::transform

namespace MCVeltrane_900 {

using veltrane::transform::TableContent;
using veltrane::transform::TableRows;

const int InlineTable::OK;
const int InlineTable::InputMissing;
const int InlineTable::NoMatches;

InlineTable::InlineTable() : fRows(std::make_unique<TableContent>()) {}

InlineTable::InlineTable(const InlineTable& other)
    : fInputFields(other.fInputFields), fRows(std::make_unique<TableContent>(*other.fRows)),
      fInfoCode(other.fInfoCode) {}

InlineTable& InlineTable::operator=(const InlineTable& other) {
    if (this != &other) {
        fInputFields = other.fInputFields;
        fRows = std::make_unique<TableContent>(*other.fRows);
        fInfoCode = other.fInfoCode;
    }
    return *this;
}

InlineTable::~InlineTable() = default;

void InlineTable::AppendInputField(const ScoreDictVar* field) {
    fInputFields.push_back(field);
}

void InlineTable::AddInputOutput(std::vector<ScoreValue*> inputs, ScoreValue* output) {
    std::vector<std::unique_ptr<ScoreValue>> row;
    row.reserve(inputs.size() + 1);
    row.emplace_back(output);
    for (ScoreValue* input : inputs) {
        row.emplace_back(input);
    }
    if (fRows->rows.Add(std::move(inputs), output)) {
        std::move(row.begin(), row.end(), std::back_inserter(fRows->values->values));
    }
}

void InlineTable::GetInputValuesFromRecord(const ScoreCaseRecord* record, std::vector<ScoreValue*>& values,
                                           const ScoreDictionary* dictionary, const ScoreDictionary* transformations) {
    for (const ScoreDictVar* field : fInputFields) {
        const ScoreValue* value =
            field == nullptr ? nullptr : veltrane::transform::ReadField(*field, {record, dictionary, transformations});
        if (value == nullptr || field->IsMissingValue(value)) {
            fInfoCode = InputMissing;
            return;
        }
        // A key is made of plain pointers; a lookup only reads through them.
        values.push_back(const_cast<ScoreValue*>(value));
    }
    fInfoCode = OK;
}

ScoreValue* InlineTable::getValue(const ScoreCaseRecord* record, const ScoreDictionary* dictionary,
                                  const ScoreDictionary* transformations,
                                  const std::map<std::string, std::string>& /*columnFields*/) {
    // Taken out of the member for as long as it is filled: an input can be a derived field that looks up this table.
    std::vector<ScoreValue*> inputs = std::move(fRows->inputs);
    inputs.clear();
    GetInputValuesFromRecord(record, inputs, dictionary, transformations);
    const TableRows::Row* row = fInfoCode == OK ? fRows->rows.Find(inputs) : nullptr;
    if (fInfoCode == OK && row == nullptr) {
        fInfoCode = NoMatches;
    }
    fRows->inputs = std::move(inputs);
    return row == nullptr ? nullptr : row->output;
}

} // namespace MCVeltrane_900
