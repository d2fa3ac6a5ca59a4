// General regressions for blocks of cases: the sum of each row takes the same steps in the same order as that of a
// single case.
#include "general_scorer.h"

#include <algorithm>
#include <cmath>

namespace veltrane_general {

using veltrane_kit::Block;
using veltrane_kit::Prediction;
using veltrane_kit::PredictionBlock;
using veltrane_kit::RowView;

class GeneralScorer::Blocks : public veltrane_kit::BlockScorer {
public:
    explicit Blocks(const GeneralScorer& scorer) : fScorer(scorer) {}

    void Predict(Block& block, PredictionBlock& predictions, State& state) const override {
        auto& own = static_cast<Sums&>(state);
        std::fill_n(predictions.entities.begin(), block.Rows(), std::string_view());
        own.common.resize(std::max(own.common.size(), block.Rows()));
        fScorer.fCommon.Sum(block, own.common.data());
        if (fScorer.fIsClassification) {
            PredictCategories(block, predictions, own);
        } else {
            PredictNumbers(block, predictions, own);
        }
    }

private:
    void PredictNumbers(Block& block, PredictionBlock& predictions, Sums& own) const {
        std::fill_n(predictions.categories.begin(), block.Rows(), Prediction::kNoCategory);
        const bool hasErrors = !fScorer.fCovariance.IsEmpty();
        if (hasErrors && predictions.standardErrors.empty()) {
            predictions.KeepStandardErrors();
        }
        if (fScorer.fType == ModelType::LINEAR && !hasErrors && fScorer.fOffset.slot == Prediction::kNoSlot) {
            return TakeSums(block.Rows(), predictions, own);
        }
        for (std::size_t row = 0; row < block.Rows(); ++row) {
            const RowView fields(block, row);
            const double eta = own.common[row] + fScorer.fOffset.At(fields);
            const double number = fScorer.NumberOf(eta, fields);
            predictions.numbers[row] = number;
            predictions.predicted[row] = std::isfinite(number) ? 1 : 0;
            if (hasErrors && std::isfinite(number)) {
                predictions.standardErrors[row] = fScorer.ErrorOf(eta, fields, own.values);
            }
        }
    }

    /// The sums are the predictions.
    void TakeSums(std::size_t rows, PredictionBlock& predictions, const Sums& own) const {
        const double offset = fScorer.fOffset.value;
        for (std::size_t row = 0; row < rows; ++row) {
            predictions.numbers[row] = own.common[row] + offset;
        }
        for (std::size_t row = 0; row < rows; ++row) {
            predictions.predicted[row] = std::isfinite(predictions.numbers[row]) ? 1 : 0;
        }
    }

    void PredictCategories(Block& block, PredictionBlock& predictions, Sums& own) const {
        const std::size_t rows = block.Rows();
        const std::vector<Category>& categories = fScorer.fCategories;
        own.columns.resize(std::max(own.columns.size(), categories.size() * rows));
        for (std::size_t i = 0; i + 1 < categories.size(); ++i) {
            categories[i].equation.Sum(block, own.columns.data() + i * rows);
        }
        std::fill_n(predictions.numbers.begin(), rows, Prediction::kNone);
        for (std::size_t category = 0; category < predictions.Categories(); ++category) {
            std::fill_n(predictions.Probabilities(category), rows, 0.0);
        }
        for (std::size_t row = 0; row < rows; ++row) {
            const double offset = fScorer.fOffset.At(RowView(block, row));
            for (std::size_t i = 0; i + 1 < categories.size(); ++i) {
                own.sums[i] = own.common[row] + own.columns[i * rows + row] + offset;
            }
            predictions.predicted[row] = fScorer.Share(own.sums) ? 1 : 0;
            if (predictions.predicted[row] != 0) {
                TakeProbabilities(own.sums, row, predictions);
            }
        }
    }

    /// See Prediction::TakeMostProbable.
    void TakeProbabilities(const std::vector<double>& shares, std::size_t row, PredictionBlock& predictions) const {
        for (std::size_t i = 0; i < shares.size(); ++i) {
            predictions.Probabilities(static_cast<std::size_t>(fScorer.fCategories[i].code))[row] = shares[i];
        }
        std::size_t best = 0;
        for (std::size_t category = 1; category < predictions.Categories(); ++category) {
            if (predictions.Probabilities(category)[row] > predictions.Probabilities(best)[row]) {
                best = category;
            }
        }
        predictions.categories[row] = static_cast<std::int32_t>(best);
    }

    const GeneralScorer& fScorer;
};

std::unique_ptr<const veltrane_kit::BlockScorer> GeneralScorer::MakeBlockScorer() const {
    return std::make_unique<const Blocks>(*this);
}

} // namespace veltrane_general
