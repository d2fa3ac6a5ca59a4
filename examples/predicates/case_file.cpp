#include "case_file.h"

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreDictVar.h>
#include <MCVeltrane_900/StringValue.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <memory>
#include <stdexcept>

extern "C" {
#include <csv.h>
}

using namespace MCVeltrane_900;

namespace {

using Rows = std::vector<std::vector<std::string>>;

/// Collects the cells of a file. The last row is the one under way.
struct Collector {
    Rows rows{1};

    static void OnCell(void* bytes, std::size_t size, void* self) noexcept {
        static_cast<Collector*>(self)->rows.back().emplace_back(static_cast<const char*>(bytes), size);
    }
    static void OnLineEnd(int, void* self) noexcept { static_cast<Collector*>(self)->rows.emplace_back(); }
};

Rows ReadCsv(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        throw std::runtime_error("cannot open " + path);
    }
    const std::string text{std::istreambuf_iterator<char>(in), {}};
    csv_parser parser;
    csv_init(&parser, CSV_STRICT | CSV_STRICT_FINI);
    const std::unique_ptr<csv_parser, void (*)(csv_parser*)> owner(&parser, csv_free);
    Collector collector;
    const std::size_t parsed =
        csv_parse(&parser, text.data(), text.size(), Collector::OnCell, Collector::OnLineEnd, &collector);
    if (parsed != text.size() || csv_fini(&parser, Collector::OnCell, Collector::OnLineEnd, &collector) != 0) {
        throw std::runtime_error(path + " is no CSV");
    }
    collector.rows.pop_back();
    return collector.rows;
}

/// A missing text has no value of its own, it is null.
ScoreValue* MakeValue(const ScoreDictVar& field, const std::string* cell) {
    switch (field.GetVarType()) {
    case ScoreDictVar::STRING_VAR:
        return cell != nullptr ? new StringValue(*cell) : nullptr;
    case ScoreDictVar::DATETIME_VAR:
        return cell != nullptr ? new DateTimeValue(*cell, field.GetDateTimeType()) : new DateTimeValue();
    default:
        return cell != nullptr ? new NumericValue(*cell) : new NumericValue();
    }
}

} // namespace

CaseFile::CaseFile(const std::string& path, std::set<std::string> missing) : fMissing(std::move(missing)) {
    fRows = ReadCsv(path);
    if (fRows.empty()) {
        throw std::runtime_error(path + " has no header");
    }
    fHeader = fRows.front();
    fRows.erase(fRows.begin());
}

const std::string* CaseFile::Cell(std::size_t row, const std::string& field) const {
    const auto column = static_cast<std::size_t>(std::find(fHeader.begin(), fHeader.end(), field) - fHeader.begin());
    if (column >= fRows[row].size()) {
        return nullptr;
    }
    const std::string& cell = fRows[row][column];
    return cell.empty() || fMissing.contains(cell) ? nullptr : &cell;
}

CaseRecord CaseFile::Record(std::size_t row, const ScoreDictionary& fields) const {
    CaseRecord record(fields.Size());
    for (const std::string& name : fields.GetVarNames()) {
        record.Add(name, MakeValue(*fields.GetVar(name), Cell(row, name)));
    }
    return record;
}
