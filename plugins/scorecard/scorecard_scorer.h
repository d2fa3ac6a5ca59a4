#ifndef VELTRANE_PLUGINS_SCORECARD_SCORECARD_SCORER_H
#define VELTRANE_PLUGINS_SCORECARD_SCORECARD_SCORER_H

#include "kit/document/element.h"
#include "kit/model/model_plan.h"
#include "scorecard.h"

#include <iosfwd>
#include <memory>

namespace veltrane_scorecard {

/// A Scorecard: of each characteristic the first attribute that holds gives its points, and all are added up. What
/// falls short of the baseline, or lies above it, is ranked as the reasons.
class ScorecardScorer : public veltrane_kit::Scorer {
public:
    /// @throws VTException what ScorecardReader throws
    ScorecardScorer(const veltrane_kit::Element& element, veltrane_kit::ModelParts& parts);

    std::unique_ptr<State> NewState() const override;
    bool Predict(const veltrane_kit::CaseView& fields, veltrane_kit::Prediction& prediction,
                 State& state) const override;
    std::unique_ptr<const veltrane_kit::BlockScorer> MakeBlockScorer() const override;
    bool MayHaveMore() const override { return true; }
    void Display(std::ostream& out, const veltrane_kit::Target& target) const override;

private:
    struct Differences;
    class Blocks;

    template <typename View>
    bool PredictFrom(const View& fields, veltrane_kit::Prediction& prediction, Differences& differences) const;
    template <typename View>
    const Attribute* Find(const Characteristic& characteristic, const View& fields) const;
    template <typename View>
    int LackingSlot(const Characteristic& characteristic, const View& fields) const;
    bool RankReasons(veltrane_kit::Prediction& prediction, Differences& differences) const;

    Scorecard fCard;
};

/// See veltrane_kit::MakeScorer.
std::unique_ptr<const veltrane_kit::Scorer> MakeScorecardScorer(const veltrane_kit::Element& element,
                                                                veltrane_kit::ModelParts& parts);

} // namespace veltrane_scorecard

#endif
