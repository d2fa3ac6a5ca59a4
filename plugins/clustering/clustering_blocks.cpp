// Clusters for blocks of cases: cluster by cluster, each for all rows at once, in the steps of a single case. Rows that
// lack a field go the way of one.
#include "clustering_room.h"

#include <algorithm>
#include <cmath>

namespace veltrane_clustering {

using veltrane_kit::Block;
using veltrane_kit::Prediction;
using veltrane_kit::PredictionBlock;
using veltrane_kit::RowView;

class ClusteringScorer::Blocks : public veltrane_kit::BlockScorer {
public:
    explicit Blocks(const ClusteringScorer& scorer)
        : fScorer(scorer), fModel(scorer.fModel), fNamed(fModel.clusters.size(), kNotNamed) {
        for (std::size_t named = 0; named < fModel.named.size(); ++named) {
            fNamed[fModel.named[named]] = named;
        }
    }

    void Predict(Block& block, PredictionBlock& predictions, State& state) const override {
        auto& room = static_cast<Room&>(state);
        const bool goesByRows = CountsBits(fModel.comparison.measure) || fModel.ranks > 1;
        if (!goesByRows) {
            FindColumns(block, room);
            Compare(block.Rows(), predictions, room);
            Take(block.Rows(), predictions, room);
        }
        for (std::size_t row = 0; row < block.Rows(); ++row) {
            if (goesByRows || room.lacks[row] != 0) {
                PredictRow(block, row, predictions, room);
            }
        }
    }

private:
    static constexpr std::size_t kNotNamed = static_cast<std::size_t>(-1);

    void PredictRow(Block& block, std::size_t row, PredictionBlock& predictions, Room& room) const {
        room.prediction.Clear(0);
        predictions.predicted[row] = 0;
        if (fScorer.PredictFrom(RowView(block, row), room.prediction, room)) {
            predictions.Set(row, room.prediction, block.Arena());
        }
    }

    /// A column of what is compared of each field, and the rows that lack some.
    void FindColumns(const Block& block, Room& room) const {
        const std::vector<ComparedField>& fields = fModel.comparison.fields;
        const std::size_t rows = block.Rows();
        room.columns.resize(fields.size());
        room.kept.resize(fields.size());
        room.lacks.assign(rows, 0);
        for (std::size_t i = 0; i < fields.size(); ++i) {
            room.columns[i] = block.Field(fields[i].slot).numbers;
            if (fields[i].isCode || fields[i].table != nullptr || room.columns[i] == nullptr) {
                room.kept[i].resize(block.MostRows());
                for (std::size_t row = 0; row < rows; ++row) {
                    room.kept[i][row] = fields[i].ValueOf(RowView(block, row));
                }
                room.columns[i] = room.kept[i].data();
            }
            for (std::size_t row = 0; row < rows; ++row) {
                room.lacks[row] |= static_cast<std::uint8_t>(std::isnan(room.columns[i][row]));
            }
        }
        // A center that lacks a field is compared field by field.
        if (std::any_of(fModel.centers.begin(), fModel.centers.end(), [](double at) { return std::isnan(at); })) {
            std::fill(room.lacks.begin(), room.lacks.end(), std::uint8_t{1});
        }
    }

    void Compare(std::size_t rows, PredictionBlock& predictions, Room& room) const {
        const Comparison& comparison = fModel.comparison;
        room.sums.resize(rows);
        room.best.assign(rows, comparison.Farthest());
        room.places.assign(rows, 0.0);
        predictions.NameEntities(fModel.named.size());
        for (std::size_t i = 0; i < fModel.clusters.size(); ++i) {
            comparison.Between(room.columns.data(), rows, fModel.CenterOf(i), room.sums.data());
            comparison.isDistance ? TakeNearer<true>(i, rows, room) : TakeNearer<false>(i, rows, room);
            if (fNamed[i] != kNotNamed) {
                std::transform(room.sums.begin(), room.sums.end(), predictions.Affinities(fNamed[i]),
                               [](double sum) { return std::isfinite(sum) ? sum : Prediction::kNone; });
            }
        }
    }

    template <bool kIsDistance>
    static void TakeNearer(std::size_t cluster, std::size_t rows, Room& room) {
        const double place = static_cast<double>(cluster);
        const double* const sums = room.sums.data();
        double* const best = room.best.data();
        double* const places = room.places.data();
        for (std::size_t row = 0; row < rows; ++row) {
            const bool isFinite = std::abs(sums[row]) < HUGE_VAL;
            const bool isNearer = (kIsDistance ? sums[row] < best[row] : sums[row] > best[row]) && isFinite;
            best[row] = isNearer ? sums[row] : best[row];
            places[row] = isNearer ? place : places[row];
        }
    }

    void Take(std::size_t rows, PredictionBlock& predictions, const Room& room) const {
        for (std::size_t row = 0; row < rows; ++row) {
            const Cluster& cluster = fModel.clusters[static_cast<std::size_t>(room.places[row])];
            predictions.predicted[row] = std::isfinite(room.best[row]) ? 1 : 0;
            predictions.categories[row] = cluster.category;
            predictions.entities[row] = cluster.id;
            predictions.affinities[row] = room.best[row];
        }
        std::fill_n(predictions.numbers.begin(), rows, Prediction::kNone);
    }

    const ClusteringScorer& fScorer;
    const Clusters& fModel;
    std::vector<std::size_t> fNamed; ///< of each cluster the place among those that output fields name
};

std::unique_ptr<const veltrane_kit::BlockScorer> ClusteringScorer::MakeBlockScorer() const {
    return std::make_unique<const Blocks>(*this);
}

} // namespace veltrane_clustering
