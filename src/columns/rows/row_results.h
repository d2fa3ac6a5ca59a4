#ifndef VELTRANE_COLUMNS_ROW_RESULTS_H
#define VELTRANE_COLUMNS_ROW_RESULTS_H

#include <veltrane/column_scorer.h>

#include <deque>
#include <memory>
#include <string>
#include <vector>

namespace MCVeltrane_900 {
class ScoreModel;
class ScoreResult;
class ScoreValue;
} // namespace MCVeltrane_900

namespace veltrane::columns {

/// An empty result of a model, which is what its kind says: who believed a wrong kind would call operations that aren't
/// there.
/// @throws VTException 260304 for a model that gives none, or one that isn't
std::unique_ptr<MCVeltrane_900::ScoreResult> MakeResult(const MCVeltrane_900::ScoreModel& model);

/// The columns of a model's results: the predicted value under the target's name, or as "prediction" without one, then
/// the output fields of its result dictionary, in its order; where it has none, those that its empty result holds. A
/// predicted value whose name an output field has is called `predicted NAME`.
std::vector<ColumnField> ResultColumnsOf(const MCVeltrane_900::ScoreModel& model,
                                         MCVeltrane_900::ScoreResult& emptyResult);

/// Texts that stay where they are until all are let go.
class TextStore {
public:
    void Clear() { fCount = 0; }
    std::string& Next();

private:
    std::deque<std::string> fTexts;
    std::size_t fCount = 0;
};

/// Writes a value into one row of a column, as a value of the column's type; a value that the type hasn't is missing.
/// @param value null for a missing one
void WriteValue(const MCVeltrane_900::ScoreValue* value, DataType type, const OutputColumn& column, std::size_t row,
                TextStore& texts);

} // namespace veltrane::columns

#endif
