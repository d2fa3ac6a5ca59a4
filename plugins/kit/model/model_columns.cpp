#include "kit/model/model_columns.h"

#include "kit/columns/some_rows.h"
#include "kit/model/model.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace veltrane_kit {

using veltrane::InputBlock;
using veltrane::InputColumn;
using veltrane::OutputBlock;
using veltrane::UnreadableCell;

struct alignas(kBytesApart) ModelColumns::OwnState : State {
    OwnState(const ModelPlan& plan, std::size_t categories, const OutputColumns& columns, std::size_t inputs)
        : block(plan.GetInputs().Layout(), kRows),
          predictions(categories, categories > 0 && plan.GetScorer().MayHaveConfidences(), kRows),
          scorer(plan.GetScorer().NewState()), outputs(columns.NewState(kRows)), refused(kRows), columns(inputs),
          unreadable(inputs) {}

    Block block;
    PredictionBlock predictions;
    std::unique_ptr<Scorer::State> scorer;
    std::unique_ptr<OutputColumns::State> outputs;
    std::vector<std::uint8_t> refused;
    std::vector<InputColumn> columns;
    std::vector<std::vector<UnreadableCell>> unreadable; ///< of each column
};

ModelColumns::ModelColumns(std::shared_ptr<const ModelPlan> plan, bool predictsDefault)
    : fPlan(std::move(plan)), fInputs(fPlan->GetInputs().ColumnFields()),
      fOutputs(fPlan->GetOutputs(), fPlan->GetTarget(), fPlan->Layout(), fPlan->IsClassification()),
      fScorer(fPlan->GetScorer().MakeBlockScorer()), fHasDefault(false) {
    fDefault.Clear(fPlan->Probabilities());
    fHasDefault = predictsDefault && fPlan->PredictDefault(fDefault);
    if (predictsDefault) {
        fPlan->CompleteOthers(fOtherDefaults);
    }
}

ModelColumns::~ModelColumns() = default;

std::unique_ptr<veltrane::ColumnScorer::State> ModelColumns::NewState() const {
    return std::make_unique<OwnState>(*fPlan, fPlan->Probabilities(), fOutputs, fInputs.size());
}

void ModelColumns::Score(const InputBlock& in, State& state, const OutputBlock& out) const {
    auto& own = static_cast<OwnState&>(state);
    own.block.Start(0);
    for (std::size_t first = 0; first < in.rows; first += kRows) {
        own.block.GoOn(std::min(kRows, in.rows - first));
        ScoreRows(in, first, own, out);
    }
}

void ModelColumns::ScoreRows(const InputBlock& in, std::size_t first, OwnState& own, const OutputBlock& out) const {
    const std::size_t rows = own.block.Rows();
    for (std::size_t i = 0; i < fInputs.size(); ++i) {
        own.columns[i] = RowsOf(in.columns[i], first, rows, own.unreadable[i]);
    }
    fPlan->GetInputs().ReadBlock(own.columns.data(), own.block, own.refused.data());
    own.block.SetRefused(own.refused.data());
    if (NeedsOrder()) {
        ScoreInOrder(own, out, first);
    } else {
        Predict(own);
    }
    if (out.unscored != nullptr) {
        std::transform(own.predictions.predicted.begin(),
                       own.predictions.predicted.begin() + static_cast<std::ptrdiff_t>(rows), out.unscored + first,
                       [](std::uint8_t predicted) { return static_cast<std::uint8_t>(1 - predicted); });
    }
    if (!NeedsOrder()) {
        fOutputs.Fill(own.block, own.predictions, *own.outputs, out.columns, first);
    }
}

void ModelColumns::Predict(OwnState& own) const {
    fScorer->Predict(own.block, own.predictions, *own.scorer);
    for (std::size_t row = 0; row < own.block.Rows(); ++row) {
        Conclude(own, row);
    }
}

/// What ModelPlan::Predict makes of what the scorer says of a case, and Model of one that can't be scored.
void ModelColumns::Conclude(OwnState& own, std::size_t row) const {
    PredictionBlock& predictions = own.predictions;
    bool isPredicted = predictions.predicted[row] != 0 && own.refused[row] == 0;
    if (isPredicted && fPlan->IsClassification()) {
        isPredicted = predictions.categories[row] != Prediction::kNoCategory;
    } else if (isPredicted) {
        const double number = predictions.numbers[row];
        predictions.numbers[row] = fPlan->GetTarget().Adjust(number);
        isPredicted = number != Prediction::kNone && std::isfinite(predictions.numbers[row]);
    }
    predictions.predicted[row] = isPredicted ? 1 : 0;
    if (own.refused[row] != 0) {
        predictions.ClearOthers(row);
    }
    if (isPredicted) {
        predictions.CompleteOthers(row, fOtherDefaults);
    } else if (fHasDefault) {
        predictions.SetDefault(row, fDefault, own.block.Arena());
    }
}

/// Row by row, each after those that it looks back on.
void ModelColumns::ScoreInOrder(OwnState& own, const OutputBlock& out, std::size_t first) const {
    const veltrane_kit::Inputs& inputs = fPlan->GetInputs();
    for (std::size_t row = 0; row < own.block.Rows(); ++row) {
        Frame& fields = own.block.Row(row);
        inputs.Derived().Compute(fields);
        inputs.SetDerivedCodes(fields);
        Prediction& prediction = own.predictions.scratch;
        prediction.Clear(own.predictions.Categories());
        own.predictions.predicted[row] = 0;
        // For a scorer that looks back a row with a value that the mining schema refuses is no case.
        if (own.refused[row] == 0 && fPlan->GetScorer().Predict(CaseView(fields), prediction, *own.scorer)) {
            own.predictions.Set(row, prediction, own.block.Arena());
        } else {
            own.predictions.SetOthers(row, prediction.others);
        }
        Conclude(own, row);
        if (own.refused[row] != 0) {
            inputs.ForgetTold(fields);
        }
        fOutputs.FillRow(fields, own.block.Arena(), own.predictions, row, *own.outputs, out.columns, first + row);
        fields.EndCase();
    }
}

veltrane::ColumnScorer* MakeColumnScorer(MCVeltrane_900::ScoreModel* model, int version) {
    const auto* own = dynamic_cast<Model*>(model);
    if (own == nullptr || version != veltrane::ColumnScorer::kVersion) {
        return nullptr;
    }
    const bool predictsDefault = own->GetMissingValuePolicy() == MCVeltrane_900::ScoreModel::MV_DEFAULT_PREDICTION;
    return new ModelColumns(own->Plan(), predictsDefault);
}

} // namespace veltrane_kit
