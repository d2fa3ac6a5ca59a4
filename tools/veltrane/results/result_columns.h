#ifndef VELTRANE_HOST_RESULT_COLUMNS_H
#define VELTRANE_HOST_RESULT_COLUMNS_H

#include "cases/date_text.h"
#include "files/csv_writer.h"

#include <kit/values/values.h>
#include <string>
#include <vector>

namespace MCVeltrane_900 {
class ScoreCaseRecord;
class ScoreDictVar;
class ScoreValue;
class TransformationDictionary;
} // namespace MCVeltrane_900

namespace veltrane::host {

/// The textual form in which the date-times of a field are written, whatever its storage type counts.
DateForm DateFormOf(const MCVeltrane_900::ScoreDictVar& variable);

/// The same of a date, a time, or any other type for both.
DateForm DateFormOf(veltrane_kit::DataType type);

/// Writes a value of a type of the standard, a date or a time too.
void WriteValue(const veltrane_kit::Value& value, CsvWriter& writer, std::string& scratch);

/// Writes a value as a cell: a number, a text, or a date-time in the given form; null and a missing value, whatever its
/// type, as an empty cell.
/// @param scratch holds the text of a date-time; its content is lost
void WriteValue(const MCVeltrane_900::ScoreValue* value, DateForm dateForm, CsvWriter& writer, std::string& scratch);

/// The derived fields as columns of the output, in document order.
class ResultColumns {
public:
    /// @param derivedFields set up for its first case
    explicit ResultColumns(const MCVeltrane_900::TransformationDictionary& derivedFields);

    bool Has(const std::string& name) const;
    void WriteHeader(CsvWriter& writer) const;

    /// @param record the derived values of a case
    void WriteCase(const MCVeltrane_900::ScoreCaseRecord& record, CsvWriter& writer);

private:
    struct Column {
        std::string name;
        int index; ///< in the record
        DateForm dateForm;
    };

    std::vector<Column> fColumns;
    std::string fText;
};

} // namespace veltrane::host

#endif
