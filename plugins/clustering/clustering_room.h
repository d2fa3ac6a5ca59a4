#ifndef VELTRANE_PLUGINS_CLUSTERING_CLUSTERING_ROOM_H
#define VELTRANE_PLUGINS_CLUSTERING_CLUSTERING_ROOM_H

#include "clustering_scorer.h"

#include <cmath>
#include <cstdint>

namespace veltrane_clustering {

/// What a thread needs.
struct ClusteringScorer::Room : State {
    explicit Room(const Clusters& model) : point(model.comparison.Size()), affinities(model.clusters.size()) {}

    std::vector<double> point;       ///< the case
    std::vector<double> affinities;  ///< of all clusters
    std::vector<std::size_t> ranked; ///< clusters by their affinities

    // Of blocks.
    std::vector<const double*> columns;    ///< of each field
    std::vector<std::vector<double>> kept; ///< columns of fields whose numbers aren't compared themselves
    std::vector<double> sums;              ///< by row, of the cluster at hand
    std::vector<double> best;              ///< the nearest so far
    std::vector<double> places;            ///< and its place
    std::vector<std::uint8_t> lacks;       ///< whether a field is missing
    veltrane_kit::Prediction prediction;   ///< of one row
};

/// Compares a case, or a row of a block, with all clusters.
template <typename View>
bool ClusteringScorer::PredictFrom(const View& fields, veltrane_kit::Prediction& prediction, Room& room) const {
    const Comparison& comparison = fModel.comparison;
    for (std::size_t i = 0; i < comparison.Size(); ++i) {
        room.point[i] = comparison.fields[i].ValueOf(fields);
    }
    double best = comparison.Farthest();
    const Cluster* nearest = nullptr;
    for (std::size_t i = 0; i < fModel.clusters.size(); ++i) {
        const double affinity = comparison.Between(room.point.data(), fModel.CenterOf(i));
        room.affinities[i] = std::isfinite(affinity) ? affinity : veltrane_kit::Prediction::kNone;
        if (comparison.IsNearer(affinity, best)) {
            best = affinity;
            nearest = &fModel.clusters[i];
        }
    }
    if (nearest == nullptr) {
        prediction.lacking = LackingSlot(fields);
        return false;
    }
    prediction.category = nearest->category;
    prediction.entityId = &nearest->id;
    prediction.affinity = best;
    for (const std::size_t cluster : fModel.named) {
        prediction.affinities.push_back(room.affinities[cluster]);
    }
    if (fModel.ranks > 1) {
        Rank(prediction, room);
    }
    return true;
}

/// The slot of the first missing field.
template <typename View>
int ClusteringScorer::LackingSlot(const View& fields) const {
    for (const ComparedField& field : fModel.comparison.fields) {
        if (fields.IsMissing(field.slot)) {
            return field.slot;
        }
    }
    return veltrane_kit::Prediction::kNoSlot;
}

} // namespace veltrane_clustering

#endif
