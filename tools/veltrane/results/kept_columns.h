#ifndef VELTRANE_HOST_KEPT_COLUMNS_H
#define VELTRANE_HOST_KEPT_COLUMNS_H

#include "cases/case_columns.h"
#include "run/options.h"

#include <cstddef>
#include <string>
#include <unordered_set>
#include <vector>

namespace veltrane::host {

/// The input columns that are written in front of the results: none, all, or those that were asked for, in that order.
class KeptColumns {
public:
    /// Throws a `Failure` when a column is asked for that is not there.
    KeptColumns(const CaseOptions& options, const CaseColumns& columns);

    /// Where they stand among the columns of the file.
    const std::vector<std::size_t>& Places() const { return fPlaces; }
    const std::unordered_set<std::string>& Names() const { return fNames; }

private:
    void Keep(std::size_t place);

    const CaseColumns& fColumns;
    std::vector<std::size_t> fPlaces;
    std::unordered_set<std::string> fNames;
};

} // namespace veltrane::host

#endif
