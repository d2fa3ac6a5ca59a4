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
    fLacks.assign(rows, 0.0);
    fMissing.assign(rows, 0.0);
    if (IsChoice(segmentation.method)) {
        fValues.resize(fPlaces * rows);
        for (std::vector<Weighted>& values : fValues) {
            values.clear();
        }
    }
}

void Combination::AddShare(Method method, std::size_t place, double share, double weight, std::size_t row) {
    const std::size_t at = place * fRows + row;
    if (IsChoice(method)) {
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
    fWeights[row] += std::abs(weight);
    fCounts[row] += 1.0;
}

void Combination::AddMissing(const Segmentation& segmentation, const Segment& segment, std::size_t row) {
    fMissing[row] += std::abs(segmentation.WeightOf(segment));
    fLacks[row] += 1.0;
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

/// Segments that weigh nothing together are no part of a whole.
bool Combination::IsTooMuchMissing(const Segmentation& segmentation, std::size_t row) const {
    return fMissing[row] / (fWeights[row] + fMissing[row]) > segmentation.threshold;
}

/// Missing predictions that aren't skipped have a vote, and leave nothing to reckon with otherwise.
bool Combination::Finish(const Segmentation& segmentation, Prediction& prediction, std::size_t row) {
    const Method method = segmentation.method;
    const bool counts = segmentation.missing == MissingPrediction::CONTINUE;
    if (fCounts[row] == 0.0 || IsTooMuchMissing(segmentation, row) ||
        (counts && fLacks[row] > 0.0 && !IsVote(method))) {
        return false;
    }
    const double whole = WholeOf(segmentation, row);
    const bool isOfWhole = IsShare(method) || IsMedian(method) || fIsClassification;
    if (isOfWhole && (!(whole > 0.0) || !std::isfinite(whole))) {
        return false;
    }
    if (!fIsClassification) {
        const double total = IsShare(method) ? fTotals[row] / whole : fTotals[row];
        prediction.number = IsMedian(method) ? ChosenOf(method, 0, whole, row).Value() : total;
        return true;
    }
    if (IsChoice(method)) {
        TakeChoosers(method, whole, prediction, row);
        return true;
    }
    for (std::size_t category = 0; category < fPlaces; ++category) {
        prediction.probabilities[category] = fTotals[category * fRows + row] / whole;
    }
    prediction.TakeMostProbable();
    const bool isOutvoted = counts && prediction.ProbabilityOf(prediction.category) < fMissing[row] / whole;
    return !(IsVote(method) && isOutvoted);
}

/// The middle value, or the two in the middle; with weights the lowest value that with those below it has half of the
/// weight.
Combination::Chosen Combination::ChosenOf(Method method, std::size_t place, double whole, std::size_t row) {
    const std::vector<Weighted>& values = fValues[place * fRows + row];
    fSorted.assign(values.begin(), values.end());
    std::sort(fSorted.begin(), fSorted.end(), [](const Weighted& a, const Weighted& b) { return a.value < b.value; });
    if (method == Method::MAX) {
        return {fSorted.back().value, fSorted.back().value};
    }
    const std::size_t middle = fSorted.size() / 2;
    if (method == Method::MEDIAN) {
        return {fSorted[fSorted.size() % 2 == 1 ? middle : middle - 1].value, fSorted[middle].value};
    }
    double weight = 0.0;
    double value = fSorted.back().value;
    for (const Weighted& each : fSorted) {
        weight += each.weight;
        if (weight >= 0.5 * whole) {
            value = each.value;
            break;
        }
    }
    return {value, value};
}

/// The category whose share is the greatest wins, the first among equals; the probabilities are the means of the
/// segments that have said this share of it. Of a median between two shares each of these counts for a half.
void Combination::TakeChoosers(Method method, double whole, Prediction& prediction, std::size_t row) {
    std::size_t winner = 0;
    Chosen best = ChosenOf(method, 0, whole, row);
    for (std::size_t place = 1; place < fPlaces; ++place) {
        const Chosen chosen = ChosenOf(method, place, whole, row);
        if (chosen.Value() > best.Value()) {
            winner = place;
            best = chosen;
        }
    }
    std::fill(prediction.probabilities.begin(), prediction.probabilities.end(), 0.0);
    if (best.low == best.high) {
        AddChoosers(winner, best.low, 1.0, prediction, row);
    } else {
        AddChoosers(winner, best.low, 0.5, prediction, row);
        AddChoosers(winner, best.high, 0.5, prediction, row);
    }
    prediction.probabilities[winner] = best.Value();
    prediction.category = static_cast<int>(winner);
}

/// Adds the weighted mean of the segments that have given the winner a share, times a factor.
void Combination::AddChoosers(std::size_t winner, double value, double factor, Prediction& prediction,
                              std::size_t row) const {
    const std::vector<Weighted>& ofWinner = fValues[winner * fRows + row];
    double weights = 0.0;
    for (const Weighted& each : ofWinner) {
        weights += each.value == value ? each.weight : 0.0;
    }
    for (std::size_t place = 0; place < fPlaces; ++place) {
        const std::vector<Weighted>& shares = fValues[place * fRows + row];
        double sum = 0.0;
        for (std::size_t segment = 0; segment < shares.size(); ++segment) {
            sum += ofWinner[segment].value == value ? shares[segment].weight * shares[segment].value : 0.0;
        }
        prediction.probabilities[place] += factor * (sum / weights);
    }
}

} // namespace veltrane_mining
