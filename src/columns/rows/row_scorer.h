#ifndef VELTRANE_COLUMNS_ROW_SCORER_H
#define VELTRANE_COLUMNS_ROW_SCORER_H

#include "columns/opening/model_source.h"

#include <veltrane/column_scorer.h>

#include <memory>
#include <mutex>
#include <vector>

namespace veltrane::columns {

/// The columns of a model whose plug-in has no form of it for columns: every row is a case of ScoreModel::Score. A
/// model belongs to one thread, so each state has its own, built anew of the document.
class RowScorer : public ColumnScorer {
public:
    /// @param source of the model; kept for the models of further states
    /// @param built  the model of the first state
    /// @throws VTException 260304 for a model whose results can't be used
    RowScorer(std::unique_ptr<const ModelSource> source, BuiltModel built);

    const std::vector<ColumnField>& Inputs() const override { return fInputs; }
    const std::vector<ColumnField>& Outputs() const override { return fOutputs; }

    /// What a plug-in looks back on can't be known; a document with a Lag is taken to be one that does.
    bool NeedsOrder() const override { return fNeedsOrder; }

    /// @throws VTException as building a model does
    std::unique_ptr<State> NewState() const override;

    void Score(const InputBlock& in, State& state, const OutputBlock& out) const override;

private:
    struct Case;

    std::unique_ptr<const ModelSource> fSource;
    std::vector<ColumnField> fInputs;
    std::vector<ColumnField> fOutputs;
    bool fNeedsOrder;
    mutable std::mutex fMutex;
    mutable BuiltModel fFirst; ///< until the first state takes it
};

} // namespace veltrane::columns

#endif
