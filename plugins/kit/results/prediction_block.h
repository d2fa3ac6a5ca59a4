#ifndef VELTRANE_PLUGINS_KIT_PREDICTION_BLOCK_H
#define VELTRANE_PLUGINS_KIT_PREDICTION_BLOCK_H

#include "kit/columns/text_arena.h"
#include "kit/results/prediction.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace veltrane_kit {

/// What a model says of the rows of a block: a Prediction for each, in columns. The missing number stands for none.
class PredictionBlock {
public:
    /// @param categories     of the target; 0 for a regression
    /// @param hasConfidences whether a row may have confidences that aren't its probabilities
    /// @param rows           at most in a block
    PredictionBlock(std::size_t categories, bool hasConfidences, std::size_t rows)
        : fCategories(categories), fHasConfidences(hasConfidences), fRows(rows), predicted(rows), numbers(rows),
          categories(rows), entities(rows), affinities(rows, Prediction::kNone), fProbabilities(categories * rows),
          fConfidences(hasConfidences ? categories * rows : 0) {
        scratch.Clear(categories);
    }

    std::size_t Categories() const { return fCategories; }
    bool HasConfidences() const { return fHasConfidences; }

    double* Probabilities(std::size_t category) { return fProbabilities.data() + category * fRows; }
    const double* Probabilities(std::size_t category) const { return fProbabilities.data() + category * fRows; }
    double* Confidences(std::size_t category) {
        return (fHasConfidences ? fConfidences : fProbabilities).data() + category * fRows;
    }
    const double* Confidences(std::size_t category) const {
        return (fHasConfidences ? fConfidences : fProbabilities).data() + category * fRows;
    }

    /// Makes room for the affinities of entities that output fields name.
    void NameEntities(std::size_t count) {
        if (count != fNamed) {
            fNamed = count;
            fNamedAffinities.assign(count * fRows, Prediction::kNone);
        }
    }
    std::size_t NamedEntities() const { return fNamed; }
    double* Affinities(std::size_t named) { return fNamedAffinities.data() + named * fRows; }
    const double* Affinities(std::size_t named) const { return fNamedAffinities.data() + named * fRows; }

    /// Makes a prediction that of a row.
    /// @param texts where the name of what decided is kept
    void Set(std::size_t row, const Prediction& prediction, TextArena& texts);

    /// Makes the predictions of further targets those of a row, also of one that has no prediction: its default doesn't
    /// go before them.
    void SetOthers(std::size_t row, const std::vector<Prediction>& further);

    /// Gives the further targets of a row that have no prediction another one.
    /// @param defaults of each further target; empty for none
    void CompleteOthers(std::size_t row, const std::vector<Prediction>& defaults);

    /// Makes a default the prediction of a row; its further targets keep those that they have.
    /// @param texts as for Set
    void SetDefault(std::size_t row, const Prediction& prediction, TextArena& texts);

    /// Takes the predictions of further targets from a row that has been refused.
    void ClearOthers(std::size_t row);

    /// Makes room for the standard errors of all rows; a model that has some fills them in every block from then on.
    void KeepStandardErrors() { standardErrors.resize(fRows, Prediction::kNone); }

    /// The prediction of a row.
    /// @param entity where the name of what decided is put
    void Get(std::size_t row, Prediction& prediction, std::string& entity) const;

private:
    std::size_t fCategories;
    bool fHasConfidences;
    std::size_t fRows;

public:
    std::vector<std::uint8_t> predicted;         ///< 1 for a row that has a prediction, else nothing else counts
    std::vector<double> numbers;                 ///< of a regression
    std::vector<std::int32_t> categories;        ///< of a classification
    std::vector<std::string_view> entities;      ///< null data for none; they stay as long as the block
    std::vector<double> affinities;              ///< of what decided
    std::vector<std::vector<Prediction>> others; ///< of further targets; empty until a row has some
    std::vector<Grounds> grounds;                ///< empty until a row has some
    std::vector<double> standardErrors;          ///< of a regression; empty until a row has one
    Prediction scratch;                          ///< for whoever predicts row by row

private:
    std::size_t fNamed = 0;
    std::vector<double> fNamedAffinities;
    std::vector<double> fProbabilities;
    std::vector<double> fConfidences;
};

} // namespace veltrane_kit

#endif
