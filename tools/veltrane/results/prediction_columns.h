#ifndef VELTRANE_HOST_PREDICTION_COLUMNS_H
#define VELTRANE_HOST_PREDICTION_COLUMNS_H

#include "cases/date_text.h"
#include "files/csv_writer.h"

#include <string>
#include <unordered_set>
#include <vector>

namespace MCVeltrane_900 {
class ScoreModel;
class ScoreResult;
} // namespace MCVeltrane_900

namespace veltrane::host {

/// What a model predicts as columns of the output: the predicted value under the target's name, then the output fields.
class PredictionColumns {
public:
    /// The output fields are those of the model's result dictionary, in its order; where a model has none, those that
    /// its empty result holds. A predicted value whose name an output field has is called `predicted NAME`; one without
    /// a target, `prediction`.
    PredictionColumns(const MCVeltrane_900::ScoreModel& model, MCVeltrane_900::ScoreResult& emptyResult);

    /// Makes way for an input column of the target that is kept: the predicted value is called `predicted_NAME` then,
    /// and an output field of that name `output_NAME`. Other columns keep their names.
    void GiveWayTo(const std::unordered_set<std::string>& kept);

    const std::string& PredictedName() const { return fPredicted.name; }
    bool Has(const std::string& name) const;

    /// The names of all columns, in their order.
    std::vector<std::string> Names() const;
    /// In which form each column has date-times.
    std::vector<DateForm> DateForms() const;

    void WriteHeader(CsvWriter& writer) const;

    /// @param result of a case that was scored
    void WriteCase(MCVeltrane_900::ScoreResult& result, CsvWriter& writer);

    /// Empty cells, for a case that could not be scored.
    void WriteEmpty(CsvWriter& writer) const;

private:
    struct Column {
        std::string name;
        DateForm dateForm;
    };

    std::string FreeName(const std::string& prefix, std::string name,
                         const std::unordered_set<std::string>& kept) const;

    std::string fTarget; ///< the name of the target; empty for none
    Column fPredicted;
    std::vector<Column> fOutputs; ///< by the names in the results
    std::vector<std::string> fOutputNames;
    std::unordered_set<std::string> fNames; ///< of all columns
    std::string fText;
};

} // namespace veltrane::host

#endif
