#include "votes.h"

#include "kit/values/values.h"

#include <algorithm>
#include <cmath>

namespace veltrane_neighbours {

using veltrane_kit::Prediction;

namespace {

/// The weights of neighbours: the inverse of a distance, or a similarity, with the threshold added. Where some are
/// infinite, at no distance, these count alone and alike. A weight below 0, of a table that has such numbers, would
/// make shares that are none: it counts nothing.
void WeighAll(const Voting& voting, const std::vector<Neighbour>& neighbours, std::vector<double>& weights) {
    weights.clear();
    bool isAnyInfinite = false;
    for (const Neighbour& neighbour : neighbours) {
        const double sum = neighbour.affinity + voting.threshold;
        weights.push_back(voting.isDistance ? 1.0 / sum : sum);
        isAnyInfinite = isAnyInfinite || std::isinf(weights.back());
    }
    for (double& weight : weights) {
        weight = !isAnyInfinite ? std::max(weight, 0.0) : std::isinf(weight) ? 1.0 : 0.0;
    }
}

double Median(std::vector<double>& values) {
    std::sort(values.begin(), values.end());
    const std::size_t half = values.size() / 2;
    return values.size() % 2 == 1 ? values[half] : 0.5 * values[half - 1] + 0.5 * values[half];
}

/// @return not finite where there is none
double Mean(const std::vector<double>& values, const std::vector<double>& weights) {
    double sum = 0.0;
    double whole = 0.0;
    for (std::size_t i = 0; i < values.size(); ++i) {
        sum += weights[i] * values[i];
        whole += weights[i];
    }
    return sum / whole;
}

bool PredictNumber(const Voting& voting, const std::vector<Neighbour>& neighbours, const TargetColumn& target,
                   VoteRoom& room, Prediction& prediction) {
    room.values.clear();
    std::size_t kept = 0;
    for (std::size_t i = 0; i < neighbours.size(); ++i) {
        const double value = target.numbers[neighbours[i].point];
        if (!std::isnan(value)) {
            room.values.push_back(value);
            room.weights[kept++] = room.weights[i];
        }
    }
    if (room.values.empty()) {
        return false;
    }
    const double number =
        voting.continuous == ContinuousMethod::MEDIAN ? Median(room.values) : Mean(room.values, room.weights);
    prediction.number = std::isfinite(number) ? number : Prediction::kNone;
    return std::isfinite(number);
}

/// Whether a category wins over another one with as many votes: the more frequent one among all instances, of equally
/// frequent ones that with the lower value.
bool WinsTie(const TargetColumn& target, std::size_t category, std::size_t over) {
    if (target.counts[category] != target.counts[over]) {
        return target.counts[category] > target.counts[over];
    }
    return veltrane_kit::Order(target.target->CategoryValue(static_cast<int>(category)),
                               target.target->CategoryValue(static_cast<int>(over))) < 0;
}

bool PredictCategory(const std::vector<Neighbour>& neighbours, const TargetColumn& target, VoteRoom& room,
                     Prediction& prediction) {
    room.votes.assign(target.counts.size(), 0.0);
    double whole = 0.0;
    for (std::size_t i = 0; i < neighbours.size(); ++i) {
        const int code = target.codes[neighbours[i].point];
        if (code != Prediction::kNoCategory) {
            room.votes[static_cast<std::size_t>(code)] += room.weights[i];
            whole += room.weights[i];
        }
    }
    if (!(whole > 0.0) || !std::isfinite(whole)) {
        return false;
    }
    std::size_t winner = 0;
    prediction.probabilities.resize(room.votes.size());
    for (std::size_t code = 0; code < room.votes.size(); ++code) {
        const double votes = room.votes[code];
        prediction.probabilities[code] = votes / whole;
        if (votes > room.votes[winner] || (votes == room.votes[winner] && WinsTie(target, code, winner))) {
            winner = code;
        }
    }
    prediction.category = static_cast<int>(winner);
    return true;
}

} // namespace

bool Vote(const Voting& voting, const std::vector<Neighbour>& neighbours, const TargetColumn& target, VoteRoom& room,
          Prediction& prediction) {
    const bool isWeighted = target.isCategory ? voting.categorical == CategoricalMethod::WEIGHTED_MAJORITY_VOTE
                                              : voting.continuous == ContinuousMethod::WEIGHTED_AVERAGE;
    if (isWeighted) {
        WeighAll(voting, neighbours, room.weights);
    } else {
        room.weights.assign(neighbours.size(), 1.0);
    }
    return target.isCategory ? PredictCategory(neighbours, target, room, prediction)
                             : PredictNumber(voting, neighbours, target, room, prediction);
}

} // namespace veltrane_neighbours
