#ifndef VELTRANE_PLUGINS_KIT_PREDICTION_H
#define VELTRANE_PLUGINS_KIT_PREDICTION_H

#include "kit/inputs/input_field.h"

#include <limits>
#include <string>
#include <vector>

namespace veltrane_kit {

/// What a model says of one case. It is cleared ahead of every case and keeps its memory.
///
/// A regression sets `number`. A classification sets `probabilities`, one for each category of the target, and
/// `category`, the predicted one; without a probability the missing number stands.
struct Prediction {
    static constexpr double kNone = FieldValue::kMissingNumber;
    static constexpr int kNoCategory = -1;
    static constexpr int kNoSlot = -1;

    double number = kNone;
    std::vector<double> probabilities;
    std::vector<double> confidences; ///< by category; left empty where they are the probabilities
    int category = kNoCategory;
    const std::string* entityId = nullptr; ///< what decided, a node for one; borrowed from the model
    int lacking = kNoSlot; ///< of a case without a prediction: the slot whose missing value is why, where one is

    /// @param categories of the target; 0 for a regression
    void Clear(std::size_t categories) {
        number = kNone;
        probabilities.assign(categories, kNone);
        confidences.clear();
        category = kNoCategory;
        entityId = nullptr;
        lacking = kNoSlot;
    }

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
    /// first ones of equal probability in front.
    int Ranked(int rank) const {
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

private:
    static double At(const std::vector<double>& numbers, int index) {
        const auto at = static_cast<std::size_t>(index);
        return index >= 0 && at < numbers.size() ? numbers[at] : kNone;
    }
};

} // namespace veltrane_kit

#endif
