#include "kit/model/scorer.h"

namespace veltrane_kit {

namespace {

class RowByRow : public BlockScorer {
public:
    explicit RowByRow(const Scorer& scorer) : fScorer(scorer) {}

    void Predict(Block& block, PredictionBlock& predictions, Scorer::State& state) const override {
        for (std::size_t row = 0; row < block.Rows(); ++row) {
            PredictRow(fScorer, block, row, predictions, state);
        }
    }

private:
    const Scorer& fScorer;
};

} // namespace

void PredictRow(const Scorer& scorer, Block& block, std::size_t row, PredictionBlock& predictions,
                Scorer::State& state) {
    Prediction& prediction = predictions.scratch;
    prediction.Clear(predictions.Categories());
    if (scorer.Predict(CaseView(block.Row(row)), prediction, state)) {
        predictions.Set(row, prediction, block.Arena());
    } else {
        predictions.predicted[row] = 0;
    }
}

std::unique_ptr<const BlockScorer> Scorer::MakeBlockScorer() const {
    return std::make_unique<const RowByRow>(*this);
}

} // namespace veltrane_kit
