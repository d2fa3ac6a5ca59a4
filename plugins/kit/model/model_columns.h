#ifndef VELTRANE_PLUGINS_KIT_MODEL_COLUMNS_H
#define VELTRANE_PLUGINS_KIT_MODEL_COLUMNS_H

#include "kit/columns/block.h"
#include "kit/model/model_plan.h"
#include "kit/results/output_columns.h"

#include <veltrane/column_scorer.h>

#include <cstddef>
#include <memory>
#include <vector>

namespace veltrane_kit {

/// A model, scored in columns: its inputs are the active fields of the mining schema, and the target where an output
/// asks for the case's own value of it; its results the predicted value and the final output fields. They are those of
/// Model::Score for each row, bit for bit.
class ModelColumns : public veltrane::ColumnScorer {
public:
    /// @param predictsDefault whether a case that can't be scored gets the target's default
    ModelColumns(std::shared_ptr<const ModelPlan> plan, bool predictsDefault);
    ~ModelColumns() override;

    const std::vector<veltrane::ColumnField>& Inputs() const override { return fInputs; }
    const std::vector<veltrane::ColumnField>& Outputs() const override { return fOutputs.Fields(); }
    bool NeedsOrder() const override { return fPlan->GetInputs().LooksBack() || fPlan->GetScorer().LooksBack(); }
    std::unique_ptr<State> NewState() const override;
    void Score(const veltrane::InputBlock& in, State& state, const veltrane::OutputBlock& out) const override;

private:
    /// So many rows are scored at once: their columns lie in the nearest cache.
    static constexpr std::size_t kRows = 256;

    struct OwnState;

    void ScoreRows(const veltrane::InputBlock& in, std::size_t first, OwnState& state,
                   const veltrane::OutputBlock& out) const;
    void Predict(OwnState& state) const;
    void Conclude(OwnState& state, std::size_t row) const;
    void ScoreInOrder(OwnState& state, const veltrane::OutputBlock& out, std::size_t first) const;

    std::shared_ptr<const ModelPlan> fPlan;
    std::vector<veltrane::ColumnField> fInputs;
    OutputColumns fOutputs;
    std::unique_ptr<const BlockScorer> fScorer;
    bool fHasDefault;
    Prediction fDefault;                    ///< for rows that can't be scored
    std::vector<Prediction> fOtherDefaults; ///< of further targets, by the policy
};

/// The scorer in columns of a model of this kit, as GiveMyColumnScorer hands it out.
/// @param model   of this plug-in
/// @param version of the host's interface
/// @return null for another version or another model; the caller owns it
veltrane::ColumnScorer* MakeColumnScorer(MCVeltrane_900::ScoreModel* model, int version);

} // namespace veltrane_kit

#endif
