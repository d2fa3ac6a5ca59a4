#ifndef VELTRANE_PLUGINS_VECTORS_VECTORS_SCORER_H
#define VELTRANE_PLUGINS_VECTORS_VECTORS_SCORER_H

#include "kit/document/element.h"
#include "kit/model/model_plan.h"
#include "machines.h"

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <vector>

namespace veltrane_vectors {

/// A SupportVectorMachineModel: a number, or the category that its machines decide for.
class VectorsScorer : public veltrane_kit::Scorer {
public:
    /// @throws VTException what MachinesReader throws
    VectorsScorer(const veltrane_kit::Element& element, veltrane_kit::ModelParts& parts);

    std::unique_ptr<State> NewState() const override;
    bool Predict(const veltrane_kit::CaseView& fields, veltrane_kit::Prediction& prediction,
                 State& state) const override;
    std::unique_ptr<const veltrane_kit::BlockScorer> MakeBlockScorer() const override;
    bool MayHaveConfidences() const override { return false; }
    void Display(std::ostream& out, const veltrane_kit::Target& target) const override;

private:
    /// Used anew for every case or block.
    struct Sums;
    class Blocks;

    template <typename View>
    bool ReadCase(const View& fields, double* x, int& lacking) const;
    bool Compute(Sums& sums) const;
    int CategoryOf(const double* numbers, std::size_t step, std::vector<std::int32_t>& votes) const;

    Machines fMachines;
    bool fIsClassification;
    std::size_t fCategories; ///< of the target
};

/// See veltrane_kit::MakeScorer.
std::unique_ptr<const veltrane_kit::Scorer> MakeVectorsScorer(const veltrane_kit::Element& element,
                                                              veltrane_kit::ModelParts& parts);

} // namespace veltrane_vectors

#endif
