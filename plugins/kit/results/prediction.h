#ifndef VELTRANE_PLUGINS_KIT_PREDICTION_H
#define VELTRANE_PLUGINS_KIT_PREDICTION_H

#include "kit/inputs/input_field.h"

#include <limits>
#include <string>
#include <vector>

namespace veltrane_kit {

struct Rule;

/// A cluster or a training instance that a case was compared with.
struct Entity {
    const std::string* id;
    double affinity; ///< distance or similarity
};

/// What a prediction rests on, of models that tell; what comes first counts most. The texts and rules are borrowed from
/// the scorer, so they stay for as long as it does.
struct Grounds {
    std::vector<const std::string*> reasons; ///< reason codes
    std::vector<const Rule*> rules;          ///< that hold for the case
    std::vector<Entity> entities;            ///< that the case is nearest to; of a model of clusters only where output
                                             ///< fields ask for their ranks
    std::vector<int> order;                  ///< the categories that are predicted, where it isn't their probability
                                             ///< that puts them in order

    bool IsEmpty() const { return reasons.empty() && rules.empty() && entities.empty() && order.empty(); }

    void Clear() {
        reasons.clear();
        rules.clear();
        entities.clear();
        order.clear();
    }
};

/// What a model says of one case. It is cleared ahead of every case and keeps its memory.
///
/// A regression sets `number`. A classification sets `probabilities`, one for each category of the target, and
/// `category`, the predicted one; without a probability the missing number stands.
struct Prediction {
    static constexpr double kNone = FieldValue::kMissingNumber;
    static constexpr int kNoCategory = -1;
    static constexpr int kNoSlot = -1;

    double number = kNone;
    double standardError = kNone; ///< of the number, by models that know it
    std::vector<double> probabilities;
    std::vector<double> confidences; ///< by category; left empty where they are the probabilities
    int category = kNoCategory;
    const std::string* entityId = nullptr; ///< what decided, a node for one; borrowed from the model
    double affinity = kNone;               ///< of a cluster or an instance that decided: its distance or similarity
    std::vector<double> affinities;        ///< of those that output fields name, as AskedEntities has them
    std::vector<Prediction> others;        ///< of the model's further targets
    Grounds grounds;
    int lacking = kNoSlot; ///< of a case without a prediction: the slot whose missing value is why, where one is

    /// @param categories of the target; 0 for a regression
    void Clear(std::size_t categories) {
        number = kNone;
        standardError = kNone;
        probabilities.assign(categories, kNone);
        confidences.clear();
        category = kNoCategory;
        entityId = nullptr;
        affinity = kNone;
        affinities.clear();
        for (Prediction& other : others) {
            other.Clear(other.probabilities.size());
        }
        grounds.Clear();
        lacking = kNoSlot;
    }

    /// Whether a further target has a prediction.
    bool IsThere() const { return category != kNoCategory || number != kNone; }

    /// Makes the category with the highest probability the predicted one, the first among equals.
    void TakeMostProbable() {
        for (std::size_t i = 0; i < probabilities.size(); ++i) {
            const bool isHigher =
                category == kNoCategory || probabilities[i] > probabilities[static_cast<std::size_t>(category)];
            if (probabilities[i] != kNone && isHigher) {
                category = static_cast<int>(i);
            }
        }
    }

    /// The category that comes so many places behind the predicted one when all are ordered by their probabilities, the
    /// first ones of equal probability in front, or as the model orders them.
    int Ranked(int rank) const {
        if (!grounds.order.empty()) {
            const auto at = static_cast<std::size_t>(rank) - 1;
            return at < grounds.order.size() ? grounds.order[at] : kNoCategory;
        }
        int last = category;
        double bound = std::numeric_limits<double>::infinity();
        for (int at = 1; at < rank && last != kNoCategory; ++at) {
            int next = kNoCategory;
            for (int code = 0; code < static_cast<int>(probabilities.size()); ++code) {
                const double probability = ProbabilityOf(code);
                const bool isBehind = probability < bound || (probability == bound && code > last);
                if (code != category && probability != kNone && isBehind &&
                    (next == kNoCategory || probability > ProbabilityOf(next))) {
                    next = code;
                }
            }
            last = next;
            bound = ProbabilityOf(next);
        }
        return last;
    }

    double ProbabilityOf(int of) const { return At(probabilities, of); }
    double ConfidenceOf(int of) const { return confidences.empty() ? ProbabilityOf(of) : At(confidences, of); }

    /// How sure the prediction is: by its probability, or its confidence where it has no probability.
    double ResultConfidence() const {
        const double probability = ProbabilityOf(category);
        return probability == kNone ? ConfidenceOf(category) : probability;
    }

private:
    static double At(const std::vector<double>& numbers, int index) {
        const auto at = static_cast<std::size_t>(index);
        return index >= 0 && at < numbers.size() ? numbers[at] : kNone;
    }
};

} // namespace veltrane_kit

#endif
