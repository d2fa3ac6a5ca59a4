#ifndef VELTRANE_HOST_CASE_COLUMNS_H
#define VELTRANE_HOST_CASE_COLUMNS_H

#include "cases/case_row.h"

#include <string>
#include <string_view>
#include <vector>

namespace veltrane::host {

/// The columns of a file of cases, each with the field that it fills.
class CaseColumns {
public:
    struct Column {
        std::string name;
        const CaseRow::Field* field; ///< null for a column that is no field; borrowed from the case
    };

    /// Throws a `Failure` when two columns name the same field.
    /// @param header the names of the columns
    /// @param place  the file and line of the header, for messages
    CaseColumns(const std::vector<std::string_view>& header, const CaseRow& row, const std::string& place);

    const std::vector<Column>& All() const { return fColumns; }

    /// The names of the columns that are no field, separated by commas.
    std::string IgnoredNames() const;

private:
    std::vector<Column> fColumns;
};

} // namespace veltrane::host

#endif
