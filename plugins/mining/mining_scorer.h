#ifndef VELTRANE_PLUGINS_MINING_MINING_SCORER_H
#define VELTRANE_PLUGINS_MINING_MINING_SCORER_H

#include "combination.h"
#include "flat_ensemble.h"
#include "kit/document/element.h"
#include "kit/model/model_plan.h"
#include "kit/results/results.h"
#include "segmentation.h"

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <vector>

namespace veltrane_mining {

/// A MiningModel: segments, each a model with a condition, whose predictions are combined, or one of which has the
/// prediction.
class MiningScorer : public veltrane_kit::Scorer {
public:
    /// How the segments of an ensemble of trees are asked. The predictions are the same.
    enum class Road : std::uint8_t {
        FOREST,  ///< all at once, where they make a forest
        SEGMENTS ///< each by itself
    };

    /// @param walk of the forest
    /// @throws VTException 260159 for an element that has no place in it, and what SegmentationReader throws
    MiningScorer(const veltrane_kit::Element& element, veltrane_kit::ModelParts& parts, Road road = Road::FOREST,
                 veltrane_forest::Forest::Walk walk = veltrane_forest::Forest::Walk::FASTEST);

    std::unique_ptr<State> NewState() const override;
    bool Predict(const veltrane_kit::CaseView& fields, veltrane_kit::Prediction& prediction,
                 State& state) const override;
    std::unique_ptr<const veltrane_kit::BlockScorer> MakeBlockScorer() const override;
    bool MayHaveConfidences() const override { return fSegmentation.method >= Method::SELECT_FIRST; }
    bool MayHaveMore() const override { return fSegmentation.method >= Method::SELECT_FIRST; }
    void Display(std::ostream& out, const veltrane_kit::Target& target) const override;

    /// The segments as one forest; null where they make none.
    const FlatEnsemble* Flat() const { return fFlat.get(); }

private:
    class Blocks;
    class FlatBlocks;
    struct BlockRoom;

    /// What a thread needs of one segment.
    struct Part {
        std::unique_ptr<State> scorer;
        std::unique_ptr<veltrane_kit::OutputValues> outputs; ///< of one that tells something
    };
    struct Parts : State {
        std::vector<Part> parts;
        veltrane_kit::Prediction prediction; ///< of the segment that was asked last
        veltrane_kit::KeptValue number;      ///< of a regression
        Combination combination;
        std::unique_ptr<State> blocks; ///< made with the first one
        FlatEnsemble::Room flat;
    };

    bool Holds(const Segment& segment, const veltrane_kit::CaseView& fields) const;
    bool Ask(std::size_t index, const veltrane_kit::CaseView& fields, Parts& state) const;
    void Tell(const Segment& segment, bool isPredicted, veltrane_kit::Frame& frame, Part& part, Parts& state) const;
    void PassBy(std::size_t index, const veltrane_kit::CaseView& fields, Parts& state) const;
    void Take(const Segment& segment, Parts& state, veltrane_kit::Prediction& prediction) const;

    bool PredictBySegments(const veltrane_kit::CaseView& fields, veltrane_kit::Prediction& prediction,
                           Parts& state) const;
    bool Combine(const veltrane_kit::CaseView& fields, veltrane_kit::Prediction& prediction, Parts& state) const;
    bool Select(const veltrane_kit::CaseView& fields, veltrane_kit::Prediction& prediction, Parts& state) const;
    bool Chain(const veltrane_kit::CaseView& fields, veltrane_kit::Prediction& prediction, Parts& state) const;

    Segmentation fSegmentation;
    std::unique_ptr<const FlatEnsemble> fFlat; ///< null where all cases go segment by segment
    const veltrane_kit::Inputs& fInputs;
};

/// See veltrane_kit::MakeScorer.
std::unique_ptr<const veltrane_kit::Scorer> MakeMiningScorer(const veltrane_kit::Element& element,
                                                             veltrane_kit::ModelParts& parts);

} // namespace veltrane_mining

#endif
