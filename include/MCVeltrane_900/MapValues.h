#ifndef MCVELTRANE_900_MAPVALUES_H
#define MCVELTRANE_900_MAPVALUES_H

#include <veltrane_export.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace MCVeltrane_900 {

class InlineTable;
class ScoreCaseRecord;
class ScoreDictVar;
class ScoreDictionary;
class ScoreValue;
class TransformVar;

/// A value map of a derived field: input fields, the table in which their values are looked up, and what stands for a
/// missing input and for inputs that the table doesn't have.
class VELTRANE_API MapValues {
public:
    /// @param owner the derived field that the map belongs to; borrowed
    explicit MapValues(TransformVar* owner);
    MapValues(const MapValues&) = delete;
    MapValues& operator=(const MapValues&) = delete;
    ~MapValues();

    /// @param value becomes the map's; an earlier one is deleted
    void SetMapMissingValue(ScoreValue* value);
    ScoreValue* GetMapMissingValue() const { return fMapMissingValue.get(); }

    /// @param value becomes the map's; an earlier one is deleted
    void SetDefaultValue(ScoreValue* value);
    ScoreValue* GetDefaultValue() const { return fDefaultValue.get(); }

    /// @param table becomes the map's; an earlier one is not deleted
    void SetTable(InlineTable* table);
    InlineTable* GetTable() const { return fTable.get(); }

    void SetOutputColumn(const std::string& column) { fOutputColumn = column; }
    const std::string& GetOutputColumn() const { return fOutputColumn; }

    /// Ties a column to a field; a column that is known already keeps its field.
    void AddFieldColumnPair(const std::string& fieldName, const std::string& column);

    /// Column name to field name.
    const std::map<std::string, std::string>& GetColumnFields() const { return fColumnFields; }

    /// Appends an input field; borrowed.
    void AddInputField(const ScoreDictVar* field);
    const std::vector<const ScoreDictVar*>& GetInputFields() const { return fInputFields; }

    /// The value of the map for one case, borrowed, or null.
    ///
    /// With a table: the output of the matching row; the missing value when an input is missing; for inputs that no
    /// row has, the case's value of the first column's field when the derived field copies unmatched values, else the
    /// default value. Without one, a single input field is copied through with the missing value in place of a missing
    /// one; no field gives the missing value or else the default value; several give null.
    const ScoreValue* Evaluate(const ScoreCaseRecord* record, const ScoreDictionary* dictionary,
                               const ScoreDictionary* transformations);

private:
    std::map<std::string, std::string> fColumnFields;
    std::vector<const ScoreDictVar*> fInputFields;
    std::unique_ptr<InlineTable> fTable;
    TransformVar* fOwner;
    std::unique_ptr<ScoreValue> fMapMissingValue;
    std::unique_ptr<ScoreValue> fDefaultValue;
    std::string fOutputColumn;
};

} // namespace MCVeltrane_900

#endif
