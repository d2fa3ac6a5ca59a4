#ifndef VELTRANE_COLUMNS_CASE_ROW_H
#define VELTRANE_COLUMNS_CASE_ROW_H

#include <MCVeltrane_900/CaseRecord.h>
#include <MCVeltrane_900/StringValue.h>
#include <veltrane/column_scorer.h>

#include <string>
#include <vector>

namespace MCVeltrane_900 {
class DateTimeValue;
class NumericValue;
} // namespace MCVeltrane_900

namespace veltrane::columns {

/// One row of a block as the record of a case, filled row after row. A missing number or date is system-missing, a
/// missing text is no value: null.
class CaseRow : public MCVeltrane_900::CaseRecord {
public:
    /// @param fields            borrowed
    /// @param keepsUnreadable whether a cell that holds no value of its type stands as its text in the record;
    /// otherwise
    ///                        it is missing
    CaseRow(const std::vector<ColumnField>& fields, bool keepsUnreadable);

    /// Begins with the rows of a block.
    /// @param columns one for each field, borrowed until the next block
    void Begin(const InputColumn* columns);

    /// Takes a row. Rows are taken in ascending order.
    void Take(std::size_t row);

    const MCVeltrane_900::ScoreValue* Get(int index) const override;
    using CaseRecord::Get;

private:
    struct Slot {
        MCVeltrane_900::NumericValue* number = nullptr; ///< one of the three; the record owns it
        MCVeltrane_900::StringValue* text = nullptr;
        MCVeltrane_900::DateTimeValue* date = nullptr;
        MCVeltrane_900::StringValue unreadable{""};
        const MCVeltrane_900::ScoreValue* given = nullptr; ///< what the record gives
        std::size_t nextUnreadable = 0;                    ///< of the block
    };

    void TakeNumber(std::size_t field, double number);
    void TakeText(std::size_t field, std::string_view text);
    bool TakeUnreadable(std::size_t field, std::size_t row);

    const std::vector<ColumnField>& fFields;
    const InputColumn* fColumns = nullptr;
    std::vector<Slot> fSlots;
    bool fKeepsUnreadable;
    std::string fText;
};

} // namespace veltrane::columns

#endif
