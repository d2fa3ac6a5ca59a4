#ifndef VELTRANE_PLUGINS_MINING_COMBINATION_H
#define VELTRANE_PLUGINS_MINING_COMBINATION_H

#include "kit/results/prediction.h"
#include "kit/results/prediction_block.h"
#include "segmentation.h"

#include <cstddef>
#include <cstdint>
#include <numeric>
#include <vector>

namespace veltrane_mining {

/// The predictions of the segments of one case, or of the rows of a block, as they come to one. The number of a
/// regression, and the share of each category of a classification, is combined for itself; a vote is a whole share.
/// Where the greatest median or the highest share wins, the shares are those of the segments that it comes from.
class Combination {
public:
    /// @param categories of the target; 0 for a regression
    /// @param rows       cases; one without a block
    void Start(const Segmentation& segmentation, std::size_t categories, std::size_t rows = 1);

    /// Adds what a segment predicts for a row.
    void Add(const Segmentation& segmentation, const Segment& segment, const veltrane_kit::Prediction& prediction,
             std::size_t row = 0);
    void AddMissing(const Segmentation& segmentation, const Segment& segment, std::size_t row = 0);

    /// Adds what a segment predicts for some rows of a block.
    /// @param asked 1 for each of these rows
    void Add(const Segmentation& segmentation, const Segment& segment, const veltrane_kit::PredictionBlock& predictions,
             const std::uint8_t* asked);

    // Where all segments predict all rows, what they predict is added by whoever has it.

    /// Whether a method adds shares up, times their weights.
    static constexpr bool IsSum(Method method) {
        return method != Method::MEDIAN && method != Method::WEIGHTED_MEDIAN && method != Method::MAX;
    }
    /// The sums of a category, or of a regression, by row.
    double* Totals(std::size_t place) { return fTotals.data() + place * fRows; }
    /// Adds one share by any method.
    void AddShare(Method method, std::size_t place, double share, double weight, std::size_t row);
    /// To be called behind the shares of each segment, for one row.
    void Count(std::size_t row) { fCounts[row] += 1.0; }
    /// The same for all segments and rows.
    /// @param weight of all segments, added up in their order
    void CountAll(double count, double weight);
    /// What a segment predicts as shares of the categories of the whole model.
    /// @param shares 0 for each category; to be filled
    static void FindShares(const Segment& segment, const veltrane_kit::Prediction& prediction,
                           std::vector<double>& shares);

    /// @param prediction cleared; to be filled
    /// @return false for a case without a prediction
    bool Finish(const Segmentation& segmentation, veltrane_kit::Prediction& prediction, std::size_t row = 0);

private:
    struct Weighted {
        double value;
        double weight;
    };

    template <typename Told>
    void AddTold(const Segmentation& segmentation, const Segment& segment, const Told& told, std::size_t row);
    template <typename Told>
    void AddProbabilities(Method method, const Segment& segment, double weight, const Told& told, std::size_t row);
    /// The values that a median lies between, or the highest one twice.
    struct Chosen {
        double low;
        double high;

        double Value() const { return std::midpoint(low, high); }
    };

    /// Whether a method goes by what single segments say, not by their sum.
    bool IsChoice(Method method) const { return !IsSum(method) && (method != Method::MAX || fIsClassification); }
    bool IsTooMuchMissing(const Segmentation& segmentation, std::size_t row) const;
    double WholeOf(const Segmentation& segmentation, std::size_t row) const;
    Chosen ChosenOf(Method method, std::size_t place, double whole, std::size_t row);
    void TakeChoosers(Method method, double whole, veltrane_kit::Prediction& prediction, std::size_t row);
    void AddChoosers(std::size_t winner, double value, double factor, veltrane_kit::Prediction& prediction,
                     std::size_t row) const;

    std::size_t fRows = 1;
    std::size_t fPlaces = 1; ///< categories; one of a regression
    bool fIsClassification = false;
    std::vector<double> fShares; ///< of the row at hand, by category
    std::vector<double> fTotals; ///< sums or highest ones, the rows of a category behind those of the one before
    std::vector<std::vector<Weighted>> fValues; ///< in the same order, of methods that choose one: by segment
    std::vector<Weighted> fSorted;              ///< of those of one place
    std::vector<double> fCounts;                ///< by row, of predictions
    std::vector<double> fWeights;               ///< of these, without their signs
    std::vector<double> fLacks;                 ///< by row, of predictions that are missing
    std::vector<double> fMissing;               ///< the weights of these
};

} // namespace veltrane_mining

#endif
