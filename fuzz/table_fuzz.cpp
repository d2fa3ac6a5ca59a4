// Any bytes as a small table of a value map: its columns, its cells out of texts that are hard to order, and the cases
// that look a row up. The map answers a case the same whenever it is asked; an answer stands in the output column or is
// a default. Copies, which are without the map, compute too.
#include "documents.h"
#include "run.h"

#include <veltrane.h>

#include <vector>

using namespace MCVeltrane_900;
using namespace veltrane::fuzz;

namespace {

constexpr std::size_t kMostColumns = 3;
constexpr std::size_t kMostRows = 12;
constexpr int kCases = 6;
constexpr const char* kCells[] = {"a",  "b",  "",      " ", "a ",         " a",         "ab",       "1",   "1.0",
                                  "01", "-1", "1e999", "x", "2001-01-01", "1970-01-02", "10:30:00", "NaN", "\xC3\xA4"};
constexpr const char* kTypes[] = {"string", "double", "integer", "date", "time", "dateTime", "boolean"};

const char* CellOf(Bytes& bytes) {
    return kCells[bytes.Below(std::size(kCells))];
}

std::string Named(const char* name, std::size_t number) {
    return name + std::to_string(number);
}

struct Table {
    std::size_t columns;
    std::string fields;
    std::string pairs;
    std::string rows;
    std::vector<std::string> outputs;
    std::string attributes;
    std::string type;
};

void AddColumns(Bytes& bytes, Table& table) {
    for (std::size_t i = 0; i < table.columns; ++i) {
        const std::string type = kTypes[bytes.Below(std::size(kTypes))];
        const bool isNumber = type == "double" || type == "integer";
        table.fields += "<DataField name='" + Named("f", i) + "' optype='" + (isNumber ? "continuous" : "categorical") +
                        "' dataType='" + type + "'/>";
        table.pairs += "<FieldColumnPair field='" + Named("f", i) + "' column='" + Named("c", i) + "'/>";
    }
}

void AddRows(Bytes& bytes, Table& table) {
    for (std::size_t count = 1 + bytes.Below(kMostRows); count > 0; --count) {
        table.rows += "<row>";
        for (std::size_t i = 0; i < table.columns; ++i) {
            table.rows += "<" + Named("c", i) + ">" + CellOf(bytes) + "</" + Named("c", i) + ">";
        }
        table.outputs.emplace_back(CellOf(bytes));
        table.rows += "<out>" + table.outputs.back() + "</out></row>";
    }
}

Table TableOf(Bytes& bytes) {
    Table table;
    table.columns = 1 + bytes.Below(kMostColumns);
    table.type = kTypes[bytes.Below(2)];
    const std::size_t extras = bytes.Below(4);
    table.attributes = (extras & 1U) != 0 ? " defaultValue='7'" : "";
    table.attributes += (extras & 2U) != 0 ? " mapMissingTo='8'" : "";
    AddColumns(bytes, table);
    AddRows(bytes, table);
    return table;
}

std::string Document(const Table& table) {
    return "<PMML version='4.1'><DataDictionary numberOfFields='" + std::to_string(table.columns) + "'>" +
           table.fields +
           "</DataDictionary><TransformationDictionary><DerivedField name='d' "
           "optype='" +
           (table.type == "double" ? "continuous" : "categorical") + "' dataType='" + table.type +
           "'><MapValues outputColumn='out'" + table.attributes + ">" + table.pairs + "<InlineTable>" + table.rows +
           "</InlineTable></MapValues></DerivedField>"
           "</TransformationDictionary></PMML>";
}

ScoreValue* ValueOf(const ScoreDictVar& field, const std::string& cell) {
    switch (field.GetVarType()) {
    case ScoreDictVar::kNUMERIC_VAR:
        return new NumericValue(cell);
    case ScoreDictVar::DATETIME_VAR:
        return new DateTimeValue(cell, field.GetDateTimeType());
    default:
        return new StringValue(cell);
    }
}

void RequireSame(const ScoreValue* left, const ScoreValue* right) {
    Require((left == nullptr) == (right == nullptr));
    if (left != nullptr) {
        Require(left->GetType() == right->GetType() && left->GetString() == right->GetString());
    }
}

/// A text that comes out of the map stands in the table, or is one of the defaults.
void RequireFromTable(const Table& table, const ScoreValue* value) {
    if (table.type != "string" || value == nullptr || value->IsSystemMissingValue()) {
        return;
    }
    bool isThere = false;
    for (const std::string& output : table.outputs) {
        isThere = isThere || StringValue(output) == StringValue(value->GetString());
    }
    const std::string text = value->GetString();
    Require(isThere || text == "7" || text == "8" || text.empty());
}

/// The answers to the cases, asked for in order or the other way round, which a map must not remember.
std::vector<std::unique_ptr<ScoreValue>> Ask(Dictionaries& read, const std::vector<CaseRecord>& cases, bool backwards) {
    std::vector<std::unique_ptr<ScoreValue>> answers(cases.size());
    for (std::size_t i = 0; i < cases.size(); ++i) {
        const std::size_t at = backwards ? cases.size() - 1 - i : i;
        const ScoreValue* found = read.derived->GetValuesForDerivedVars(&cases[at], read.fields.get())->Get("d");
        answers[at].reset(found != nullptr ? found->Clone() : nullptr);
    }
    return answers;
}

void Look(const Table& table, Bytes& bytes, Dictionaries& read) {
    std::vector<CaseRecord> cases(kCases);
    for (CaseRecord& record : cases) {
        for (const ScoreDictVar* field : read.fields->GetScoreDictVars()) {
            record.Add(field->GetName(), ValueOf(*field, CellOf(bytes)));
        }
    }
    const auto answers = Ask(read, cases, false);
    const auto again = Ask(read, cases, true);
    for (std::size_t i = 0; i < cases.size(); ++i) {
        RequireFromTable(table, answers[i].get());
        RequireSame(answers[i].get(), again[i].get());
    }
    Compute(*read.derived, *read.fields);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Run run;
    Bytes bytes{data, data + size};
    const Table table = TableOf(bytes);
    Dictionaries read;
    MayFail([&] { ReadDictionaries({"UTF-8", Document(table)}, read); });
    if (read.derived != nullptr) {
        Look(table, bytes, read);
    }
    return 0;
}
