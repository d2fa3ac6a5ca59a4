#ifndef VELTRANE_PLUGINS_CLUSTERING_CLUSTERING_SCORER_H
#define VELTRANE_PLUGINS_CLUSTERING_CLUSTERING_SCORER_H

#include "comparison.h"
#include "kit/document/element.h"
#include "kit/model/model_plan.h"

#include <cstddef>
#include <deque>
#include <iosfwd>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace veltrane_clustering {

/// A cluster, whose center stands apart.
struct Cluster {
    std::string id;
    int category = 0; ///< code of the id
};

/// The clusters of a model and how cases are compared with them.
struct Clusters {
    Comparison comparison;
    std::deque<Cluster> clusters;
    std::vector<double> centers;    ///< of each cluster in its turn a number for each field
    std::vector<std::size_t> named; ///< of the entities that output fields name, the clusters
    std::size_t ranks = 1;          ///< how many output fields ask for

    const double* CenterOf(std::size_t cluster) const { return centers.data() + cluster * comparison.Size(); }
};

/// A ClusteringModel: the cluster whose center is nearest to the case, of equally near ones the first.
class ClusteringScorer : public veltrane_kit::Scorer {
public:
    /// @throws VTException what ClusterReader throws
    ClusteringScorer(const veltrane_kit::Element& element, veltrane_kit::ModelParts& parts);

    std::unique_ptr<State> NewState() const override;
    bool Predict(const veltrane_kit::CaseView& fields, veltrane_kit::Prediction& prediction,
                 State& state) const override;
    std::unique_ptr<const veltrane_kit::BlockScorer> MakeBlockScorer() const override;
    bool MayHaveProbabilities() const override { return false; }
    bool MayHaveConfidences() const override { return false; }
    bool MayHaveMore() const override { return true; }
    void Display(std::ostream& out, const veltrane_kit::Target& target) const override;

private:
    class Blocks;
    struct Room;

    template <typename View>
    bool PredictFrom(const View& fields, veltrane_kit::Prediction& prediction, Room& room) const;
    template <typename View>
    int LackingSlot(const View& fields) const;
    void Rank(veltrane_kit::Prediction& prediction, Room& room) const;

    Clusters fModel;
};

/// See veltrane_kit::MakeScorer.
std::unique_ptr<const veltrane_kit::Scorer> MakeClusteringScorer(const veltrane_kit::Element& element,
                                                                 veltrane_kit::ModelParts& parts);

} // namespace veltrane_clustering

#endif
