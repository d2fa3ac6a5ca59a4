#ifndef VELTRANE_PLUGINS_NEIGHBOURS_VOTES_H
#define VELTRANE_PLUGINS_NEIGHBOURS_VOTES_H

#include "instances.h"
#include "kit/results/prediction.h"
#include "point_tree.h"

#include <vector>

namespace veltrane_neighbours {

enum class ContinuousMethod { MEDIAN, AVERAGE, WEIGHTED_AVERAGE };
enum class CategoricalMethod { MAJORITY_VOTE, WEIGHTED_MAJORITY_VOTE };

/// How neighbours give a prediction.
struct Voting {
    ContinuousMethod continuous = ContinuousMethod::AVERAGE;
    CategoricalMethod categorical = CategoricalMethod::MAJORITY_VOTE;
    double threshold = 0.001; ///< added to distances and similarities that become weights
    bool isDistance = true;
};

/// What a vote needs.
struct VoteRoom {
    std::vector<double> weights; ///< of the neighbours
    std::vector<double> values;
    std::vector<double> votes; ///< of the categories
};

/// The prediction of neighbours for a target. Those that lack the target have no say.
/// @param neighbours the nearest first
/// @param prediction cleared; its number is adjusted by whoever asks
/// @return false where they give none
bool Vote(const Voting& voting, const std::vector<Neighbour>& neighbours, const TargetColumn& target, VoteRoom& room,
          veltrane_kit::Prediction& prediction);

} // namespace veltrane_neighbours

#endif
