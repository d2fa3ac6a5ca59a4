#ifndef VELTRANE_PLUGINS_NEIGHBOURS_NEIGHBOURS_SCORER_H
#define VELTRANE_PLUGINS_NEIGHBOURS_NEIGHBOURS_SCORER_H

#include "clustering/comparison.h"
#include "instances.h"
#include "kit/document/element.h"
#include "kit/model/model_plan.h"
#include "point_tree.h"
#include "votes.h"

#include <iosfwd>
#include <memory>
#include <vector>

namespace veltrane_neighbours {

/// A NearestNeighborModel: the training instances that are nearest to a case vote on its targets.
class NeighboursScorer : public veltrane_kit::Scorer {
public:
    /// @throws VTException what ComparisonReader and InstanceReader throw; 260115 without inputs, 260153 for a
    /// threshold
    ///         below 0 and for an output field that names no instance, 260159 for an element that has no place here
    NeighboursScorer(const veltrane_kit::Element& element, veltrane_kit::ModelParts& parts);

    std::unique_ptr<State> NewState() const override;
    bool Predict(const veltrane_kit::CaseView& fields, veltrane_kit::Prediction& prediction,
                 State& state) const override;
    std::unique_ptr<const veltrane_kit::BlockScorer> MakeBlockScorer() const override;
    bool MayHaveProbabilities() const override { return !fIsClustering; }
    bool MayHaveConfidences() const override { return false; }
    bool MayHaveMore() const override { return true; }
    void Display(std::ostream& out, const veltrane_kit::Target& target) const override;

private:
    class Blocks;
    struct Room;

    void ReadInputs(const veltrane_kit::Element& element, veltrane_clustering::ComparisonReader& comparison);
    void ReadVoting(const veltrane_kit::Element& element);
    void FindNamed(veltrane_kit::ModelParts& parts);
    template <typename View>
    bool PredictFrom(const View& fields, veltrane_kit::Prediction& prediction, Room& room) const;
    const std::vector<Neighbour>& Search(Room& room) const;
    void Scan(Room& room) const;
    void Tell(const std::vector<Neighbour>& neighbours, const Room& room, veltrane_kit::Prediction& prediction) const;
    bool Answer(const std::vector<Neighbour>& neighbours, veltrane_kit::Prediction& prediction, Room& room) const;

    veltrane_clustering::Comparison fComparison;
    Instances fInstances;
    std::unique_ptr<const PointTree> fTree; ///< where the comparison suits one
    Voting fVoting;
    std::size_t fNeighbours = 1;
    bool fIsClustering;
    std::vector<int> fCategories;    ///< of a clustering, that of each instance
    std::vector<std::size_t> fNamed; ///< of the entities that output fields name, the instances
};

/// See veltrane_kit::MakeScorer.
std::unique_ptr<const veltrane_kit::Scorer> MakeNeighboursScorer(const veltrane_kit::Element& element,
                                                                 veltrane_kit::ModelParts& parts);

} // namespace veltrane_neighbours

#endif
