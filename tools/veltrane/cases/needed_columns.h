#ifndef VELTRANE_HOST_NEEDED_COLUMNS_H
#define VELTRANE_HOST_NEEDED_COLUMNS_H

#include "cases/case_columns.h"
#include "cases/case_row.h"

#include <string>
#include <string_view>
#include <vector>

namespace veltrane::host {

/// The columns of a file of cases held against the fields that a document needs. Without one of them every case sees a
/// missing value, which is seldom meant.
class NeededColumns {
public:
    /// @param needed  the names of the fields that a case has to have
    /// @param columns those of the file, borrowed like the case
    NeededColumns(const std::vector<std::string>& needed, const CaseColumns& columns, const CaseRow& row);

    bool AreThere() const { return fMissing.empty(); }

    /// The names that are needed and not there, separated by commas.
    std::string MissingNames() const;

    /// What is wrong, for a person: the names that are not there with the nearest ones that are, and what seems to be
    /// the matter with a header that has none of the fields.
    /// @param line      the first line of the file as it stands there
    /// @param delimiter that it was read with
    std::string Complaint(std::string_view line, char delimiter) const;

    /// What seems to be the matter with a header that cannot be read, as the end of a sentence; empty for nothing
    /// known.
    static std::string DelimiterHint(std::string_view line, char delimiter, const CaseRow& row);

private:
    std::string HeaderHint(std::string_view line, char delimiter) const;
    std::string NamedColumns(bool withNearest) const;
    bool HasNoField() const;
    bool LooksLikeACase() const;

    const CaseColumns& fColumns;
    const CaseRow& fCase;
    std::vector<std::string> fMissing;
};

} // namespace veltrane::host

#endif
