#ifndef VELTRANE_HOST_CASE_ROW_H
#define VELTRANE_HOST_CASE_ROW_H

#include <MCVeltrane_900/CaseRecord.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreDictVar.h>
#include <MCVeltrane_900/StringValue.h>

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace MCVeltrane_900 {
class DateTimeValue;
class ScoreDictionary;
} // namespace MCVeltrane_900

namespace veltrane::host {

/// The case under way: one slot for each field of a data dictionary, in the dictionary's order, filled over and over.
///
/// A missing number or date-time is system-missing. A missing date is no `VAL_DATE`, whatever its slot held before: a
/// copy of one divides its number by the seconds of a day, and would not be missing any more. A text is never
/// system-missing, so a missing text is no value at all: its slot answers null, which every field takes for missing.
class CaseRow : public MCVeltrane_900::CaseRecord {
public:
    using VariableType = MCVeltrane_900::ScoreDictVar::VariableType;
    using DateTimeType = MCVeltrane_900::ScoreDictVar::DateTimeType;

    struct Field {
        std::string name;
        VariableType type;
        DateTimeType dateTimeType; ///< for a field of type `DATETIME_VAR`
        int slot;
        std::vector<std::string> missingTexts = {}; ///< what cells may say for a missing value though it can't be read
    };

    /// All fields start missing.
    /// @param computed the names of fields that no cell holds: somebody computes them for each case
    explicit CaseRow(const MCVeltrane_900::ScoreDictionary& dictionary, const std::vector<std::string>& computed = {});

    /// A row with the fields of another one that has no computed ones, for another thread.
    explicit CaseRow(const std::vector<Field>& fields);

    /// Those that cells hold.
    const std::vector<Field>& Fields() const { return fFields; }

    void SetNumber(const Field& field, double number);
    void SetText(const Field& field, std::string_view text);

    /// @param number in the unit of the field's own storage type
    void SetDateNumber(const Field& field, double number);

    /// Reads the text of a date, a time or a date-time; false when there is no such moment, and then it is missing.
    /// @param fraction of its second, from 0 to 1, which is added
    bool SetDateText(const Field& field, const std::string& text, double fraction);

    void SetMissing(const Field& field);

    /// Has the cells that can't be read stand as texts in the record from now on, for those who tell them from missing
    /// ones; else they are missing. A count of days or seconds with so many digits that a date-time would lose some of
    /// them stands as a number.
    void KeepUnreadable() { fKeepsUnreadable = true; }
    bool KeepsUnreadable() const { return fKeepsUnreadable; }

    /// Has cells that can't be read be missing where they say what their field lists for that; of texts all can be
    /// read.
    /// @param texts by the names of fields
    void SetMissingTexts(const std::map<std::string, std::vector<std::string>>& texts);

    /// Takes note of a cell that can't be read as the field's value.
    void SetUnreadable(const Field& field, std::string_view text);

    /// Sets a computed field.
    /// @param value borrowed until the next one; null for a missing one
    void SetComputed(int slot, const MCVeltrane_900::ScoreValue* value);

    const MCVeltrane_900::ScoreValue* Get(int index) const override;

    /// The same for those who take a cell that can't be read for missing and counts for date-times, whatever stands
    /// for them in the record.
    const MCVeltrane_900::ScoreValue* Readable(int index) const;
    using CaseRecord::Get;

private:
    /// The value in a slot, by its kind; the record owns it.
    union Slot {
        MCVeltrane_900::NumericValue* number;
        MCVeltrane_900::StringValue* text;
        MCVeltrane_900::DateTimeValue* date;
    };

    /// What the record gives for a field: the value in its slot, nothing, the text of the cell, a number for a
    /// date-time, or what is computed.
    enum class State : char { READ, MISSING_TEXT, UNREADABLE, COUNT, COMPUTED };

    void AddField(Field field);

    std::vector<Field> fFields;
    std::vector<Slot> fSlots;
    std::vector<State> fState; ///< by slot
    bool fKeepsUnreadable = false;
    std::vector<std::unique_ptr<MCVeltrane_900::StringValue>> fUnreadable; ///< by slot, made when one comes
    std::vector<std::unique_ptr<MCVeltrane_900::NumericValue>> fCounts;    ///< the same
    std::vector<const MCVeltrane_900::ScoreValue*> fComputed;              ///< by slot, null for other fields
    std::string fText;
};

} // namespace veltrane::host

#endif
