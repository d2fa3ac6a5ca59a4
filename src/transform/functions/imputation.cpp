#include <MCVeltrane_900/ScoreValueLabel.h>
#include <MCVeltrane_900/TransformationDictionary.h>

#include <cmath>
#include <stdexcept>

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
