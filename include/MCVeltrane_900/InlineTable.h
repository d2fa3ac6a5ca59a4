#ifndef MCVELTRANE_900_INLINETABLE_H
#define MCVELTRANE_900_INLINETABLE_H

#include <veltrane_export.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace veltrane::transform {
class TableContent;
} // namespace veltrane::transform

namespace MCVeltrane_900 {

class ScoreCaseRecord;
class ScoreDictVar;
class ScoreDictionary;
class ScoreValue;

/// The rows of a value map: a combination of input values to an output value.
///
/// Keys are ordered element by element, numbers and texts by the ordering operators of ScoreValue, with their
/// tolerances; elements of any other kind count as equal. A key that is compared with a shorter one it hasn't differed
/// from so far throws std::out_of_range("invalid vector<T> subscript"): every row has to have as many inputs as there
/// are input fields. A lookup writes the info code, so a table serves one thread at a time.
///
/// A row stands ahead of the first one that didn't come before it when it was added, and a lookup looks for the first
/// row that doesn't come before the inputs. Where keys contradict each other, as those with blank texts or with missing
/// numbers among others can, rows that were added in another order may give another answer; the table is sound with
/// any.
class VELTRANE_API InlineTable {
public:
    /// The info codes of a lookup.
    static const int OK = 0;           ///< the inputs were read, and a row was found if one was searched for
    static const int InputMissing = 1; ///< an input field is missing for this case
    static const int NoMatches = 2;    ///< no row has these inputs

    InlineTable();

    /// A copy refers to the same input fields and shares the values of its rows with the original; they live as long
    /// as one of the two. A row that is added later is in one of the tables alone.
    InlineTable(const InlineTable& other);
    InlineTable& operator=(const InlineTable& other);
    ~InlineTable();

    /// Appends an input field, in column order; borrowed.
    void AppendInputField(const ScoreDictVar* field);
    const std::vector<const ScoreDictVar*>& GetInputFields() const { return fInputFields; }

    /// Adds a row. When there is one with an equal key, that one stays and the new values are deleted.
    /// @param inputs one value for each input field, in column order; they become the table's in any case
    /// @param output becomes the table's in any case
    void AddInputOutput(std::vector<ScoreValue*> inputs, ScoreValue* output);

    /// Appends the case's values of the input fields, borrowed, up to the first missing one, which sets the info code
    /// to InputMissing; otherwise it becomes OK.
    void GetInputValuesFromRecord(const ScoreCaseRecord* record, std::vector<ScoreValue*>& values,
                                  const ScoreDictionary* dictionary, const ScoreDictionary* transformations);

    /// The output of the row that has the case's inputs, which stays the table's; null, and an info code that says why,
    /// when an input is missing or no row matches.
    /// @param columnFields not consulted
    ScoreValue* getValue(const ScoreCaseRecord* record, const ScoreDictionary* dictionary,
                         const ScoreDictionary* transformations,
                         const std::map<std::string, std::string>& columnFields);

    /// How the last lookup went.
    int GetInfoCode() const { return fInfoCode; }

private:
    std::vector<const ScoreDictVar*> fInputFields;
    std::unique_ptr<veltrane::transform::TableContent> fRows;
    int fInfoCode = OK;
};

} // namespace MCVeltrane_900

#endif
