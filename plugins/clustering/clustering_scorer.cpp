#include "clustering_scorer.h"

#include "cluster_reader.h"
#include "clustering_room.h"

#include <algorithm>
#include <ostream>

namespace veltrane_clustering {

using veltrane_kit::CaseView;
using veltrane_kit::Element;
using veltrane_kit::ModelParts;
using veltrane_kit::Prediction;

ClusteringScorer::ClusteringScorer(const Element& element, ModelParts& parts)
    : fModel(ClusterReader(element, parts).Read()) {}

std::unique_ptr<veltrane_kit::Scorer::State> ClusteringScorer::NewState() const {
    return std::make_unique<Room>(fModel);
}

bool ClusteringScorer::Predict(const CaseView& fields, Prediction& prediction, State& state) const {
    return PredictFrom(fields, prediction, static_cast<Room&>(state));
}

/// The nearest clusters in their order, as many as output fields ask for.
void ClusteringScorer::Rank(Prediction& prediction, Room& room) const {
    room.ranked.clear();
    for (std::size_t i = 0; i < room.affinities.size(); ++i) {
        if (room.affinities[i] != Prediction::kNone) {
            room.ranked.push_back(i);
        }
    }
    const auto count = static_cast<std::ptrdiff_t>(std::min(fModel.ranks, room.ranked.size()));
    std::partial_sort(room.ranked.begin(), room.ranked.begin() + count, room.ranked.end(),
                      [&](std::size_t a, std::size_t b) {
                          const double one = room.affinities[a];
                          const double other = room.affinities[b];
                          return one == other ? a < b : fModel.comparison.isDistance ? one < other : one > other;
                      });
    for (std::ptrdiff_t rank = 0; rank < count; ++rank) {
        const std::size_t at = room.ranked[static_cast<std::size_t>(rank)];
        const Cluster& cluster = fModel.clusters[at];
        prediction.grounds.order.push_back(cluster.category);
        prediction.grounds.entities.push_back({&cluster.id, room.affinities[at]});
    }
}

void ClusteringScorer::Display(std::ostream& out, const veltrane_kit::Target& /*target*/) const {
    out << "clusters: " << fModel.clusters.size() << ", compared fields: " << fModel.comparison.Size() << "\n";
}

std::unique_ptr<const veltrane_kit::Scorer> MakeClusteringScorer(const Element& element, ModelParts& parts) {
    return std::make_unique<const ClusteringScorer>(element, parts);
}

} // namespace veltrane_clustering
