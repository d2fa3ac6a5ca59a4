#include "transform/derivation/derivation.h"
#include "transform/tables/table_rows.h"

#include <MCVeltrane_900/InlineTable.h>
#include <MCVeltrane_900/ScoreDictVar.h>
#include <MCVeltrane_900/ScoreValue.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace MCVeltrane_900 {

using veltrane::transform::TableRows;

const int InlineTable::OK;
const int InlineTable::InputMissing;
const int InlineTable::NoMatches;

/// The values of all rows of a table and its copies. They go from the last to the first: the key of a row from its end,
/// then its output.
struct InlineTable::RowValues {
    RowValues() = default;
    RowValues(const RowValues&) = delete;
    RowValues& operator=(const RowValues&) = delete;
    ~RowValues() {
        while (!values.empty()) {
            values.pop_back();
        }
    }
    std::vector<std::unique_ptr<ScoreValue>> values;
};

InlineTable::InlineTable() : fRows(std::make_unique<TableRows>()), fValues(std::make_shared<RowValues>()) {}

InlineTable::InlineTable(const InlineTable& other)
    : fInputFields(other.fInputFields), fRows(std::make_unique<TableRows>(*other.fRows)), fInfoCode(other.fInfoCode),
      fValues(other.fValues) {}

InlineTable& InlineTable::operator=(const InlineTable& other) {
    if (this != &other) {
        fInputFields = other.fInputFields;
        *fRows = *other.fRows;
        fInfoCode = other.fInfoCode;
        fValues = other.fValues;
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
    if (fRows->Add(std::move(inputs), output)) {
        std::move(row.begin(), row.end(), std::back_inserter(fValues->values));
    }
}

void InlineTable::GetInputValuesFromRecord(const ScoreCaseRecord* record, std::vector<ScoreValue*>& values,
                                           const ScoreDictionary* dictionary, const ScoreDictionary* transformations) {
    for (const ScoreDictVar* field : fInputFields) {
        const ScoreValue* value =
            field == nullptr ? nullptr : veltrane::transform::ReadField(*field, record, dictionary, transformations);
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
    std::vector<ScoreValue*> inputs = std::move(fInputs);
    inputs.clear();
    GetInputValuesFromRecord(record, inputs, dictionary, transformations);
    ScoreValue* output = fInfoCode == OK ? FindOutput(inputs) : nullptr;
    fInputs = std::move(inputs);
    return output;
}

ScoreValue* InlineTable::FindOutput(const std::vector<ScoreValue*>& inputs) {
    const TableRows::Row* row = fRows->Find(inputs);
    if (row == nullptr) {
        fInfoCode = NoMatches;
        return nullptr;
    }
    return row->output;
}

} // namespace MCVeltrane_900
