#include "results/kept_columns.h"

#include "files/encoding.h"
#include "files/failure.h"
#include "run/nearest_name.h"
#include "run/report.h"

#include <fmt/format.h>

namespace veltrane::host {
namespace {

[[noreturn]] void Refuse(const std::string& cases, const std::string& name, const CaseColumns& columns) {
    std::vector<std::string> names;
    for (const CaseColumns::Column& column : columns.All()) {
        names.push_back(column.name);
    }
    throw Failure(
        fmt::format("{}: there is no column \"{}\" to keep{}", cases, Escaped(name), Suggestion(name, names)));
}

} // namespace

KeptColumns::KeptColumns(const CaseOptions& options, const CaseColumns& columns) : fColumns(columns) {
    if (options.keep && options.keptColumns.empty()) {
        for (std::size_t place = 0; place < columns.All().size(); ++place) {
            Keep(place);
        }
    }
    const Encoding encoding(options.encoding);
    for (const std::string& asked : options.keptColumns) {
        const std::string name = encoding.FromUtf8(asked);
        if (fNames.count(name) > 0) {
            continue;
        }
        for (std::size_t place = 0; place < columns.All().size(); ++place) {
            if (columns.All()[place].name == name) {
                Keep(place);
            }
        }
        if (fNames.count(name) == 0) {
            Refuse(options.cases, asked, columns);
        }
    }
}

void KeptColumns::Keep(std::size_t place) {
    fPlaces.push_back(place);
    fNames.insert(fColumns.All()[place].name);
}

} // namespace veltrane::host
