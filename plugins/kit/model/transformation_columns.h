#ifndef VELTRANE_PLUGINS_KIT_TRANSFORMATION_COLUMNS_H
#define VELTRANE_PLUGINS_KIT_TRANSFORMATION_COLUMNS_H

#include "kit/columns/block.h"
#include "kit/model/transformations.h"

#include <veltrane/column_scorer.h>

#include <memory>
#include <vector>

namespace veltrane_kit {

/// The derived fields of a document, computed in columns. Its inputs are the fields that they ask for, its outputs all
/// derived fields in the order of the document. A derived field without a type of its own, whose values may be of
/// several, gives texts.
class TransformationColumns : public veltrane::ColumnScorer {
public:
    explicit TransformationColumns(std::shared_ptr<const Transformations> transformations);

    const std::vector<veltrane::ColumnField>& Inputs() const override { return fInputs; }
    const std::vector<veltrane::ColumnField>& Outputs() const override { return fOutputs; }
    bool NeedsOrder() const override { return fTransformations->Derived().LookBack(); }
    std::unique_ptr<State> NewState() const override;
    void Score(const veltrane::InputBlock& in, State& state, const veltrane::OutputBlock& out) const override;

private:
    /// So many rows are computed at once: their columns lie in the nearest cache.
    static constexpr std::size_t kRows = 256;

    struct OwnState;

    void ScoreRows(const veltrane::InputBlock& in, std::size_t first, std::size_t rows, OwnState& state) const;
    void Write(OwnState& state, std::size_t output, std::size_t first, const veltrane::OutputColumn& column) const;

    std::shared_ptr<const Transformations> fTransformations;
    std::vector<veltrane::ColumnField> fInputs;
    std::vector<veltrane::ColumnField> fOutputs;
    std::vector<int> fSlots;                   ///< of the outputs
    std::vector<InputField::Repeats> fRepeats; ///< of the inputs
};

} // namespace veltrane_kit

#endif
