#include "combination.h"

#include <algorithm>
#include <cmath>

namespace veltrane_mining {

using veltrane_kit::Prediction;
using veltrane_kit::PredictionBlock;

namespace {

constexpr bool IsMedian(Method method) {
    return method == Method::MEDIAN || method == Method::WEIGHTED_MEDIAN;
}

/// Whether sums are parts of a whole.
constexpr bool IsShare(Method method) {
    return IsVote(method) || method == Method::AVERAGE || method == Method::WEIGHTED_AVERAGE;
}

/// What a segment tells of one case.
struct OfCase {
    const Prediction& prediction;

    double Number() const { return prediction.number; }
    int Category() const { return prediction.category; }
    double Probability(std::size_t code) const { return prediction.probabilities[code]; }
};

/// The same of a row of a block.
struct OfRow {
    const PredictionBlock& predictions;
    std::size_t row;

    double Number() const { return predictions.numbers[row]; }
    int Category() const { return predictions.categories[row]; }
    double Probability(std::size_t code) const { return predictions.Probabilities(code)[row]; }
};

/// A segment that tells no probabilities is sure of its category.
template <typename Told>
void FillShares(const Segment& segment, const Told& told, std::vector<double>& shares) {
    bool tells = false;
    for (std::size_t code = 0; code < segment.categories.size(); ++code) {
        const double probability = told.Probability(code);
        if (probability != Prediction::kNone) {
            tells = true;
            shares[segment.categories[code]] += probability;
        }
    }
    if (!tells) {
        shares[segment.categories[static_cast<std::size_t>(told.Category())]] = 1.0;
    }
}

} // namespace

void Combination::FindShares(const Segment& segment, const Prediction& prediction, std::vector<double>& shares) {
    FillShares(segment, OfCase{prediction}, shares);
}

void Combination::CountAll(double count, double weight) {
    std::fill(fCounts.begin(), fCounts.end(), count);
    std::fill(fWeights.begin(), fWeights.end(), weight);
}

void Combination::Start(const Segmentation& segmentation, std::size_t categories, std::size_t rows) {
    fRows = rows;
    fPlaces = std::max<std::size_t>(categories, 1);
    fIsClassification = categories > 0;
    fShares.resize(fPlaces);
    fTotals.assign(fPlaces * rows, 0.0);
    fCounts.assign(rows, 0.0);
    fWeights.assign(rows, 0.0);
    fMissing.assign(rows, 0.0);
    if (IsMedian(segmentation.method)) {
        fValues.resize(fPlaces * rows);
        for (std::vector<Weighted>& values : fValues) {
            values.clear();
        }
    }
}

void Combination::AddShare(Method method, std::size_t place, double share, double weight, std::size_t row) {
    const std::size_t at = place * fRows + row;
    if (IsMedian(method)) {
        fValues[at].push_back({share, weight});
    } else if (method == Method::MAX) {
        fTotals[at] = fCounts[row] == 0.0 ? share : std::max(fTotals[at], share);
    } else {
        fTotals[at] += weight * share;
    }
}

template <typename Told>
void Combination::AddProbabilities(Method method, const Segment& segment, double weight, const Told& told,
                                   std::size_t row) {
    std::fill(fShares.begin(), fShares.end(), 0.0);
    FillShares(segment, told, fShares);
    for (std::size_t place = 0; place < fPlaces; ++place) {
        AddShare(method, place, fShares[place], weight, row);
    }
}

template <typename Told>
void Combination::AddTold(const Segmentation& segmentation, const Segment& segment, const Told& told, std::size_t row) {
    const Method method = segmentation.method;
    const double weight = segmentation.WeightOf(segment);
    if (!fIsClassification) {
        AddShare(method, 0, told.Number(), weight, row);
    } else if (IsVote(method)) {
        fTotals[segment.categories[static_cast<std::size_t>(told.Category())] * fRows + row] += weight;
    } else {
        AddProbabilities(method, segment, weight, told, row);
    }
    fWeights[row] += weight;
    fCounts[row] += 1.0;
}

void Combination::Add(const Segmentation& segmentation, const Segment& segment, const Prediction& prediction,
                      std::size_t row) {
    AddTold(segmentation, segment, OfCase{prediction}, row);
}

void Combination::Add(const Segmentation& segmentation, const Segment& segment, const PredictionBlock& predictions,
                      const std::uint8_t* asked) {
    for (std::size_t row = 0; row < fRows; ++row) {
        if (asked[row] == 0) {
            continue;
        }
        if (predictions.predicted[row] != 0) {
            AddTold(segmentation, segment, OfRow{predictions, row}, row);
        } else {
            AddMissing(segmentation, segment, row);
        }
    }
}

/// What the totals of a row are shares of.
double Combination::WholeOf(const Segmentation& segmentation, std::size_t row) const {
    if (!fIsClassification || (segmentation.method != Method::SUM && segmentation.method != Method::WEIGHTED_SUM)) {
        return fWeights[row] + (segmentation.missing == MissingPrediction::CONTINUE ? fMissing[row] : 0.0);
    }
    double whole = 0.0;
    for (std::size_t place = 0; place < fPlaces; ++place) {
        whole += fTotals[place * fRows + row];
    }
    return whole;
}

/// Missing predictions that aren't skipped have a vote, and leave nothing to reckon with otherwise.
bool Combination::Finish(const Segmentation& segmentation, Prediction& prediction, std::size_t row) {
    const Method method = segmentation.method;
    const double missing = fMissing[row];
    const bool counts = segmentation.missing == MissingPrediction::CONTINUE;
    const bool isTooMuch = missing / (fWeights[row] + missing) > segmentation.threshold;
    if (fCounts[row] == 0.0 || isTooMuch || (counts && missing > 0.0 && !IsVote(method))) {
        return false;
    }
    const double whole = WholeOf(segmentation, row);
    const bool isOfWhole = IsShare(method) || IsMedian(method) || fIsClassification;
    if (isOfWhole && (!(whole > 0.0) || !std::isfinite(whole))) {
        return false;
    }
    if (!fIsClassification) {
        prediction.number = ResultOf(method, 0, whole, row);
        return true;
    }
    for (std::size_t category = 0; category < fPlaces; ++category) {
        prediction.probabilities[category] = ResultOf(method, category, whole, row);
    }
    prediction.TakeMostProbable();
    const bool isOutvoted = counts && prediction.ProbabilityOf(prediction.category) < missing / whole;
    return !(IsVote(method) && isOutvoted);
}

double Combination::ResultOf(Method method, std::size_t place, double whole, std::size_t row) {
    const std::size_t at = place * fRows + row;
    switch (method) {
    case Method::MEDIAN:
        return MedianOf(fValues[at]);
    case Method::WEIGHTED_MEDIAN:
        return WeightedMedianOf(fValues[at], whole);
    case Method::MAX:
        return fTotals[at];
    default:
        return IsShare(method) || fIsClassification ? fTotals[at] / whole : fTotals[at];
    }
}

/// The middle value, or what lies between the two in the middle.
double Combination::MedianOf(std::vector<Weighted>& values) {
    std::sort(values.begin(), values.end(), [](const Weighted& a, const Weighted& b) { return a.value < b.value; });
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle].value : (values[middle - 1].value + values[middle].value) / 2.0;
}

/// The lowest value that with those below it has half of the weight.
double Combination::WeightedMedianOf(std::vector<Weighted>& values, double whole) {
    std::sort(values.begin(), values.end(), [](const Weighted& a, const Weighted& b) { return a.value < b.value; });
    double weight = 0.0;
    for (const Weighted& each : values) {
        weight += each.weight;
        if (weight >= 0.5 * whole) {
            return each.value;
        }
    }
    return values.back().value;
}

} // namespace veltrane_mining
