#ifndef VELTRANE_PLUGINS_BASELINE_BASELINE_SCORER_H
#define VELTRANE_PLUGINS_BASELINE_BASELINE_SCORER_H

#include "baseline_reader.h"
#include "kit/document/element.h"
#include "kit/model/model_plan.h"

#include <iosfwd>
#include <memory>

namespace veltrane_baseline {

/// A BaselineModel: each case and those before it are tested against a baseline.
class BaselineScorer : public veltrane_kit::Scorer {
public:
    /// @throws VTException what BaselineReader throws; 260115 and 260272 for a model that hasn't one TestDistributions,
    ///         260179 for a function that isn't regression
    BaselineScorer(const veltrane_kit::Element& element, veltrane_kit::ModelParts& parts);

    std::unique_ptr<State> NewState() const override;
    bool Predict(const veltrane_kit::CaseView& fields, veltrane_kit::Prediction& prediction,
                 State& state) const override;
    bool LooksBack() const override { return fTest.looksBack; }
    void Display(std::ostream& out, const veltrane_kit::Target& target) const override;

private:
    struct Memory;

    int LackingSlot(const veltrane_kit::CaseView& fields) const;

    BaselineTest fTest;
};

/// See veltrane_kit::MakeScorer.
std::unique_ptr<const veltrane_kit::Scorer> MakeBaselineScorer(const veltrane_kit::Element& element,
                                                               veltrane_kit::ModelParts& parts);

} // namespace veltrane_baseline

#endif
