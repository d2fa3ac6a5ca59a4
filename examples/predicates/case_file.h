#ifndef VELTRANE_EXAMPLES_CASE_FILE_H
#define VELTRANE_EXAMPLES_CASE_FILE_H

#include <MCVeltrane_900/CaseRecord.h>
#include <MCVeltrane_900/ScoreDictionary.h>

#include <cstddef>
#include <set>
#include <string>
#include <vector>

/// The cases of a CSV file with a header of field names.
class CaseFile {
public:
    /// @param missing the texts of cells that stand for a missing value, beside the empty text
    /// @throws std::runtime_error for a file that can't be read or is no CSV
    CaseFile(const std::string& path, std::set<std::string> missing);

    std::size_t Size() const { return fRows.size(); }

    /// One case as a record: a value for each field, missing where the file has no cell for it.
    MCVeltrane_900::CaseRecord Record(std::size_t row, const MCVeltrane_900::ScoreDictionary& fields) const;

private:
    const std::string* Cell(std::size_t row, const std::string& field) const;

    std::set<std::string> fMissing;
    std::vector<std::string> fHeader;
    std::vector<std::vector<std::string>> fRows;
};

#endif
