// Naive Bayes models for blocks of cases: the logarithms of each row are added in the order of a single case.
#include "bayes_scorer.h"
#include "shares.h"

#include <algorithm>

namespace veltrane_bayes {

using veltrane_kit::Block;
using veltrane_kit::Prediction;
using veltrane_kit::PredictionBlock;

class BayesScorer::Blocks : public veltrane_kit::BlockScorer {
public:
    explicit Blocks(const BayesModel& model) : fModel(model) {}

    void Predict(Block& block, PredictionBlock& predictions, State& state) const override {
        const std::size_t rows = block.Rows();
        const std::size_t categories = fModel.categories.size();
        auto& own = static_cast<Logs&>(state);
        own.columns.resize(std::max(own.columns.size(), categories * rows));
        for (std::size_t i = 0; i < categories; ++i) {
            std::fill_n(own.columns.data() + i * rows, rows, fModel.logs[i]);
        }
        for (const BayesInput& input : fModel.inputs) {
            input.Add(block, own.columns.data(), categories);
        }
        std::fill_n(predictions.entities.begin(), rows, std::string_view());
        std::fill_n(predictions.numbers.begin(), rows, Prediction::kNone);
        for (std::size_t category = 0; category < predictions.Categories(); ++category) {
            std::fill_n(predictions.Probabilities(category), rows, 0.0);
        }
        for (std::size_t row = 0; row < rows; ++row) {
            for (std::size_t i = 0; i < categories; ++i) {
                own.logs[i] = own.columns[i * rows + row];
            }
            predictions.predicted[row] = ShareOut(own.logs) ? 1 : 0;
            if (predictions.predicted[row] != 0) {
                TakeShares(own.logs, row, predictions);
            }
        }
    }

private:
    /// See Prediction::TakeMostProbable: the first of equal ones in the target's order.
    void TakeShares(const std::vector<double>& shares, std::size_t row, PredictionBlock& predictions) const {
        int best = 0;
        double most = -1.0;
        for (std::size_t i = 0; i < shares.size(); ++i) {
            const int category = fModel.categories[i];
            predictions.Probabilities(static_cast<std::size_t>(category))[row] = shares[i];
            if (shares[i] > most || (shares[i] == most && category < best)) {
                most = shares[i];
                best = category;
            }
        }
        predictions.categories[row] = best;
    }

    const BayesModel& fModel;
};

std::unique_ptr<const veltrane_kit::BlockScorer> BayesScorer::MakeBlockScorer() const {
    return std::make_unique<const Blocks>(fModel);
}

} // namespace veltrane_bayes
