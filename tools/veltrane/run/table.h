#ifndef VELTRANE_HOST_TABLE_H
#define VELTRANE_HOST_TABLE_H

#include <string>
#include <vector>

namespace veltrane::host {

/// A table for a terminal: a line of headings, a rule, a line for each row. Columns are as wide as their widest cell,
/// counted in terminal columns, and stand two blanks apart.
class Table {
public:
    explicit Table(std::vector<std::string> headings) : fHeadings(std::move(headings)) {}

    /// @param cells UTF-8, as many as there are headings; control characters are written as escapes
    void AddRow(std::vector<std::string> cells);

    std::string Text() const;

private:
    std::vector<std::string> fHeadings;
    std::vector<std::vector<std::string>> fRows;
};

} // namespace veltrane::host

#endif
