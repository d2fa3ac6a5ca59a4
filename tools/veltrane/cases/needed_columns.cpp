#include "cases/needed_columns.h"

#include "cases/cell_parser.h"
#include "cases/delimiter_hint.h"
#include "run/nearest_name.h"
#include "run/report.h"

#include <fmt/format.h>

#include <algorithm>
#include <unordered_set>

namespace veltrane::host {
namespace {

/// A complaint names this many columns and counts the others.
constexpr std::size_t kNamed = 10;

} // namespace

NeededColumns::NeededColumns(const std::vector<std::string>& needed, const CaseColumns& columns, const CaseRow& row)
    : fColumns(columns), fCase(row) {
    std::unordered_set<std::string_view> known;
    for (const CaseColumns::Column& column : columns.All()) {
        known.insert(column.name);
    }
    for (const std::string& name : needed) {
        if (known.insert(name).second) {
            fMissing.push_back(name);
        }
    }
}

std::string NeededColumns::MissingNames() const {
    std::string names;
    for (const std::string& name : fMissing) {
        names += (names.empty() ? "\"" : ", \"") + Escaped(name) + "\"";
    }
    return names;
}

std::string NeededColumns::Complaint(std::string_view line, char delimiter) const {
    const bool one = fMissing.size() == 1;
    const std::string hint = HasNoField() ? HeaderHint(line, delimiter) : "";
    std::string text =
        one ? "the document needs a column that is not there: " : "the document needs columns that are not there: ";
    text += NamedColumns(hint.empty());
    if (HasNoField()) {
        text += "; the header has none of the document's fields";
    }
    if (HasNoField() && hint.empty() && LooksLikeACase()) {
        text += "; it looks like a case, but the first line has to name the fields";
    }
    return text + hint +
           (one ? "; --missing-columns takes it for missing" : "; --missing-columns takes them for missing");
}

/// What seems to be the matter with a header that has none of the fields. Spreadsheet programs take their delimiter
/// from a first line `sep=;`.
std::string NeededColumns::HeaderHint(std::string_view line, char delimiter) const {
    if (line.starts_with("sep=") && line.size() == 5) {
        return "; the first line is a note to a spreadsheet program: leave it out";
    }
    return DelimiterHint(line, delimiter, fCase);
}

/// @param withNearest whether each has the nearest of the columns beside it that are no field
std::string NeededColumns::NamedColumns(bool withNearest) const {
    std::vector<std::string> others;
    for (const CaseColumns::Column& column : fColumns.All()) {
        if (!column.field && withNearest) {
            others.push_back(column.name);
        }
    }
    std::string text;
    for (std::size_t at = 0; at < std::min(fMissing.size(), kNamed); ++at) {
        const std::string nearest = NearestName(fMissing[at], others);
        text += fmt::format("{}\"{}\"", at == 0 ? "" : ", ", Escaped(fMissing[at]));
        if (!nearest.empty()) {
            text += fmt::format(" (the nearest name is \"{}\")", Escaped(nearest));
        }
    }
    if (fMissing.size() > kNamed) {
        text += fmt::format(" and {} more", fMissing.size() - kNamed);
    }
    return text;
}

std::string NeededColumns::DelimiterHint(std::string_view line, char delimiter, const CaseRow& row) {
    std::unordered_set<std::string_view> fields;
    for (const CaseRow::Field& field : row.Fields()) {
        fields.insert(field.name);
    }
    const std::optional<char> likely = LikelyDelimiter(line, delimiter, fields);
    return likely
               ? fmt::format("; another character seems to stand between its names: try {}", DelimiterOption(*likely))
               : "";
}

bool NeededColumns::HasNoField() const {
    return std::none_of(fColumns.All().begin(), fColumns.All().end(),
                        [](const CaseColumns::Column& column) { return column.field != nullptr; });
}

/// Numbers are seldom names.
bool NeededColumns::LooksLikeACase() const {
    return std::any_of(fColumns.All().begin(), fColumns.All().end(), [](const auto& column) {
        double number = 0;
        return ReadNumber(column.name, number) == nullptr;
    });
}

} // namespace veltrane::host
