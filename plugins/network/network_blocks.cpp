// Networks for blocks of cases, some rows at a time, so that all their nodes lie in the nearest cache.
#include "network_scorer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string_view>

namespace veltrane_network {

using veltrane_kit::Block;
using veltrane_kit::Prediction;
using veltrane_kit::PredictionBlock;

namespace {

constexpr std::size_t kRows = Network::kRows;
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

} // namespace

class NetworkScorer::Blocks : public veltrane_kit::BlockScorer {
public:
    explicit Blocks(const NetworkScorer& scorer)
        : fScorer(scorer), fNetwork(scorer.fNetwork), fTarget(scorer.fNetwork.targets.front()) {}

    void Predict(Block& block, PredictionBlock& predictions, State& state) const override {
        std::vector<double>& nodes = static_cast<Nodes&>(state).rows;
        nodes.resize(fNetwork.NodeCount() * kRows);
        std::fill_n(predictions.entities.begin(), block.Rows(), std::string_view());
        for (std::size_t first = 0; first < block.Rows(); first += kRows) {
            const std::size_t count = std::min(kRows, block.Rows() - first);
            FillInputs(block, first, count, nodes.data());
            std::array<double, kRows> spoilt;
            fNetwork.ComputeRows(nodes.data(), spoilt.data());
            for (std::size_t row = 0; row < count; ++row) {
                predictions.predicted[first + row] = std::isnan(spoilt[row]) ? 0 : 1;
            }
            fTarget.isCategory ? TakeCategories(nodes.data(), first, count, predictions)
                               : TakeNumbers(nodes.data(), first, count, predictions);
            if (fNetwork.targets.size() > 1) {
                TakeOthers(nodes.data(), spoilt.data(), first, count, predictions);
            }
        }
    }

private:
    /// A missing number spoils its row. The rows behind the last one have one that others have.
    void FillInputs(const Block& block, std::size_t first, std::size_t count, double* nodes) const {
        for (const int slot : fNetwork.inputs) {
            const double* const numbers = block.Field(slot).numbers;
            if (numbers == nullptr) {
                std::fill_n(nodes, kRows, kNotANumber);
            } else {
                std::copy_n(numbers + first, count, nodes);
                std::fill(nodes + count, nodes + kRows, numbers[first]);
            }
            nodes += kRows;
        }
    }

    void TakeNumbers(const double* nodes, std::size_t first, std::size_t count, PredictionBlock& predictions) const {
        const double* const own = nodes + fTarget.outputs.front().node * kRows;
        for (std::size_t row = 0; row < count; ++row) {
            const double number = NumberOf(fTarget, own[row]);
            predictions.numbers[first + row] = number;
            predictions.categories[first + row] = Prediction::kNoCategory;
            predictions.predicted[first + row] &= static_cast<std::uint8_t>(std::isfinite(number));
        }
    }

    void TakeCategories(const double* nodes, std::size_t first, std::size_t count, PredictionBlock& predictions) const {
        for (std::size_t category = 0; category < predictions.Categories(); ++category) {
            std::fill_n(predictions.Probabilities(category) + first, count, Prediction::kNone);
        }
        for (const NetworkOutput& output : fTarget.outputs) {
            std::copy_n(nodes + output.node * kRows, count,
                        predictions.Probabilities(static_cast<std::size_t>(output.category)) + first);
        }
        if (fTarget.rest != NetworkTarget::kNoCategory) {
            const double* const own = nodes + fTarget.outputs.front().node * kRows;
            double* const rest = predictions.Probabilities(static_cast<std::size_t>(fTarget.rest)) + first;
            for (std::size_t row = 0; row < count; ++row) {
                rest[row] = 1.0 - own[row];
            }
        }
        for (std::size_t row = first; row < first + count; ++row) {
            TakeMostProbable(row, predictions);
        }
    }

    /// Row by row, for those whose neurons have numbers.
    void TakeOthers(const double* nodes, const double* spoilt, std::size_t first, std::size_t count,
                    PredictionBlock& predictions) const {
        if (predictions.others.empty()) {
            predictions.others.resize(predictions.predicted.size());
        }
        for (std::size_t row = 0; row < count; ++row) {
            if (std::isnan(spoilt[row])) {
                predictions.ClearOthers(first + row);
            } else {
                fScorer.AnswerOthers(nodes + row, kRows, predictions.others[first + row]);
            }
        }
    }

    /// See Prediction::TakeMostProbable.
    void TakeMostProbable(std::size_t row, PredictionBlock& predictions) const {
        int best = Prediction::kNoCategory;
        double highest = Prediction::kNone;
        for (std::size_t category = 0; category < predictions.Categories(); ++category) {
            const double probability = predictions.Probabilities(category)[row];
            if (probability != Prediction::kNone && (best == Prediction::kNoCategory || probability > highest)) {
                best = static_cast<int>(category);
                highest = probability;
            }
        }
        predictions.numbers[row] = Prediction::kNone;
        predictions.categories[row] = best;
        if (predictions.predicted[row] != 0) {
            predictions.entities[row] = EntityOf(best);
        }
    }

    std::string_view EntityOf(int category) const {
        for (const NetworkOutput& output : fTarget.outputs) {
            if (output.category == category) {
                return output.id;
            }
        }
        return {};
    }

    const NetworkScorer& fScorer;
    const Network& fNetwork;
    const NetworkTarget& fTarget; ///< the first one
};

std::unique_ptr<const veltrane_kit::BlockScorer> NetworkScorer::MakeBlockScorer() const {
    return std::make_unique<const Blocks>(*this);
}

} // namespace veltrane_network
