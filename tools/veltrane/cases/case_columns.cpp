#include "cases/case_columns.h"

#include "files/failure.h"
#include "run/report.h"

#include <map>

namespace veltrane::host {

CaseColumns::CaseColumns(const std::vector<std::string_view>& header, const CaseRow& row, const std::string& place) {
    std::map<std::string_view, const CaseRow::Field*> unused;
    for (const CaseRow::Field& field : row.Fields()) {
        unused.emplace(field.name, &field);
    }
    for (const std::string_view name : header) {
        const auto found = unused.find(name);
        if (found != unused.end() && !found->second) {
            throw Failure(place + ": two columns are named \"" + Escaped(name) + "\"");
        }
        fColumns.push_back({std::string(name), found == unused.end() ? nullptr : found->second});
        if (found != unused.end()) {
            found->second = nullptr;
        }
    }
}

std::string CaseColumns::IgnoredNames() const {
    std::string names;
    for (const Column& column : fColumns) {
        if (!column.field) {
            names += (names.empty() ? "\"" : ", \"") + Escaped(column.name) + "\"";
        }
    }
    return names;
}

} // namespace veltrane::host
