#include "translators/derived/table_rows_reader.h"

#include "diagnostics/raise.h"
#include "translators/frame/element_walk.h"

#include <MCVeltrane_900/InlineTable.h>
#include <MCVeltrane_900/MapValues.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/PMMLModelTags.h>
#include <MCVeltrane_900/ScoreDictVar.h>
#include <MCVeltrane_900/StringValue.h>

#include <xercesc/dom/DOMElement.hpp>

#include <utility>

namespace veltrane::translators {

using diagnostics::Message;
using diagnostics::Raise;
using MCVeltrane_900::BaseTranslator;
using MCVeltrane_900::NumericValue;
using MCVeltrane_900::PMMLModelTags;
using MCVeltrane_900::ScoreDictVar;
using MCVeltrane_900::ScoreValue;
using MCVeltrane_900::StringValue;
using xercesc::DOMElement;

std::unique_ptr<ScoreValue> MakeCellValue(const ScoreDictVar& var, const std::string& text) {
    if (var.GetVarType() == ScoreDictVar::kNUMERIC_VAR) {
        return std::make_unique<NumericValue>(BaseTranslator::VerifyDouble(text));
    }
    return std::make_unique<StringValue>(text);
}

void TableRowsReader::Read(DOMElement* element) {
    DescendantsByTag rows(element, PMMLModelTags::XML_ELE_ROW);
    while (DOMElement* row = rows.Next()) {
        ReadRow(row);
        fInFirstRow = false;
    }
}

void TableRowsReader::ReadRow(DOMElement* row) {
    std::vector<std::unique_ptr<ScoreValue>> inputs;
    inputs.reserve(fWidth);
    std::unique_ptr<ScoreValue> output;
    std::size_t position = 0;
    for (DOMElement* cell : ChildElements(row)) {
        const Column& column = FindColumn(cell, position++);
        if (fInFirstRow && !column.isOutput) {
            fTable.AppendInputField(column.var);
        }
        std::unique_ptr<ScoreValue> value = MakeCellValue(*column.var, fText.FirstChildValue(cell));
        if (column.isOutput) {
            output = std::move(value);
        } else {
            inputs.push_back(std::move(value));
        }
    }
    CheckWidth(inputs.size());
    fWidth = inputs.size();
    std::vector<ScoreValue*> key;
    key.reserve(inputs.size());
    for (std::unique_ptr<ScoreValue>& input : inputs) {
        key.push_back(input.release());
    }
    fTable.AddInputOutput(std::move(key), output.release());
}

// A table has one width: the order of its keys has no place for a row that is shorter or longer than the first.
void TableRowsReader::CheckWidth(std::size_t inputs) const {
    if (!fInFirstRow && inputs != fWidth) {
        Raise<Message::NUMBERS_MISMATCH>(std::to_string(inputs), PMMLModelTags::XML_ATT_FIELDCOLPAIR_COLUMN,
                                         PMMLModelTags::XML_ELE_ROW, std::to_string(fWidth),
                                         PMMLModelTags::XML_ATT_FIELDCOLPAIR_COLUMN, PMMLModelTags::XML_ELE_INLTABLE);
    }
}

// Rows mostly repeat the columns of the row before, and the names of one document are shared texts: so the column of
// the same place is tried first, by address.
const TableRowsReader::Column& TableRowsReader::FindColumn(const DOMElement* cell, std::size_t position) {
    if (position == fColumns.size()) {
        fColumns.push_back(ReadColumn(cell));
    } else if (fColumns[position].tag != cell->getTagName()) {
        fColumns[position] = ReadColumn(cell);
    }
    return fColumns[position];
}

TableRowsReader::Column TableRowsReader::ReadColumn(const DOMElement* cell) const {
    const XMLCh* tag = cell->getTagName();
    const std::string name = fText(tag);
    if (name == fMap.GetOutputColumn()) {
        return {tag, &fVar, true};
    }
    const auto& columns = fMap.GetColumnFields();
    const auto pair = columns.find(name);
    if (pair == columns.end()) {
        Raise<Message::MISSING_VARIABLE_IN_BOTH>(name, PMMLModelTags::XML_ELE_DATADICTIONARY,
                                                 PMMLModelTags::XML_ELE_TRANSFORMATION);
    }
    return {tag, &fFields.Require(pair->second), false};
}

} // namespace veltrane::translators
