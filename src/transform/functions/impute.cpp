#include "transform/apply/child_values.h"
#include "transform/functions/rules.h"

#include <MCVeltrane_900/ScoreValueLabel.h>
#include <MCVeltrane_900/ScoreValueLabelSet.h>

#include <cmath>
#include <stdexcept>

namespace veltrane::functions {

/// The category for the second argument, by the two arrays of the node. It is imputed whether or not the field is
/// missing: the first argument is evaluated and not looked at.
const ScoreValue* Impute(ApplyNode& node) {
    constexpr int kMeans = 0;
    constexpr int kVariances = 1;
    static const std::vector<MCVeltrane_900::ScoreValueLabel*> kNoLabels;
    std::vector<double>& targets = node.Numbers();
    for (const Argument& argument : node.GetArguments()) {
        if (argument.position > 0) {
            targets.push_back(transform::DoubleOf(argument.value));
        }
    }
    const MCVeltrane_900::ApplyNodeStats& stats = node.Stats();
    const MCVeltrane_900::ScoreValueLabelSet* labels = node.Labels();
    const ScoreValue* imputed =
        targets.empty() || stats.GetNumberOfArray() <= kVariances
            ? nullptr
            : MCVeltrane_900::TransformationDictionary::ImputeCatFieldMissingAgainstConTargetHandle(
                  targets[0], labels != nullptr ? labels->GetAllValueLabels() : kNoLabels, stats.GetArray(kMeans),
                  stats.GetArray(kVariances));
    return imputed != nullptr ? imputed : node.Result(0.0);
}

} // namespace veltrane::functions

namespace MCVeltrane_900 {

namespace {

[[noreturn]] void RaiseSubscript() {
    throw std::out_of_range("invalid vector<T> subscript");
}

} // namespace

const ScoreValue* TransformationDictionary::ImputeCatFieldMissingAgainstConTargetHandle(
    double target, const std::vector<ScoreValueLabel*>& labels, const std::vector<double>& means,
    const std::vector<double>& variances) {
    if (variances.size() < means.size()) {
        RaiseSubscript();
    }
    std::size_t nearest = 0;
    double least = 0.0;
    for (std::size_t i = 0; i < means.size(); ++i) {
        const double distance = std::fabs((target - means[i]) / std::sqrt(variances[i]));
        if (i == 0 || distance < least) {
            nearest = i;
            least = distance;
        }
    }
    if (nearest >= labels.size()) {
        RaiseSubscript();
    }
    return labels[nearest]->GetValue();
}

} // namespace MCVeltrane_900
