#include "bayes_input.h"

#include <algorithm>
#include <array>
#include <utility>

namespace veltrane_bayes {

using veltrane_kit::Block;
using veltrane_kit::CaseView;

BayesInput::BayesInput(int slot, std::vector<Density> densities, Threshold threshold)
    : fSlot(slot), fDensities(std::move(densities)), fThreshold(threshold) {
    fNeedsFactorials = std::any_of(fDensities.begin(), fDensities.end(),
                                   [](const Density& density) { return density.kind == Density::Kind::POISSON; });
}

std::size_t BayesInput::PlaceOf(int code) const {
    const auto at = static_cast<std::uint32_t>(code); // none of a value is far above all
    return at < fPlaces.size() ? fPlaces[at] : fValues;
}

void BayesInput::Add(const CaseView& fields, std::vector<double>& logs) const {
    if (IsCounted()) {
        const std::size_t place = fields.IsMissing(fSlot) ? fValues : PlaceOf(fields.Category(fSlot));
        for (std::size_t category = 0; category < logs.size(); ++category) {
            logs[category] += fLogs[category * (fValues + 1) + place];
        }
        return;
    }
    if (fields.IsMissing(fSlot)) {
        return;
    }
    const double number = fields.Number(fSlot);
    const double factorials = fNeedsFactorials ? Density::LogFactorial(number) : 0.0;
    for (std::size_t category = 0; category < logs.size(); ++category) {
        logs[category] += fThreshold.Applied(fDensities[category].At(number, factorials));
    }
}

void BayesInput::Add(const Block& block, double* logs, std::size_t categories) const {
    if (IsCounted()) {
        AddCounted(block, logs, categories);
    } else if (block.Field(fSlot).numbers != nullptr) {
        AddNumbers(block, logs);
    }
}

void BayesInput::AddCounted(const Block& block, double* logs, std::size_t categories) const {
    const std::int32_t* const codes = block.Field(fSlot).categories;
    if (codes == nullptr) {
        return;
    }
    const std::size_t rows = block.Rows();
    std::array<std::uint32_t, Block::kMostRows> places; // NOLINT(cppcoreguidelines-pro-type-member-init): set below
    for (std::size_t row = 0; row < rows; ++row) {
        places[row] = static_cast<std::uint32_t>(PlaceOf(codes[row]));
    }
    for (std::size_t category = 0; category < categories; ++category) {
        const double* const own = fLogs.data() + category * (fValues + 1);
        double* const sums = logs + category * rows;
        for (std::size_t row = 0; row < rows; ++row) {
            sums[row] += own[places[row]];
        }
    }
}

void BayesInput::AddNumbers(const Block& block, double* logs) const {
    const double* const numbers = block.Field(fSlot).numbers;
    const std::size_t rows = block.Rows();
    std::array<double, Block::kMostRows> factorials; // NOLINT(cppcoreguidelines-pro-type-member-init): set below
    std::transform(numbers, numbers + rows, factorials.begin(),
                   [this](double number) { return fNeedsFactorials ? Density::LogFactorial(number) : 0.0; });
    for (std::size_t category = 0; category < fDensities.size(); ++category) {
        AddDensity(fDensities[category], numbers, factorials.data(), rows, logs + category * rows);
    }
}

void BayesInput::AddDensity(const Density& density, const double* numbers, const double* factorials, std::size_t rows,
                            double* logs) const {
    const Threshold threshold = fThreshold;
    if (density.kind != Density::Kind::NORMAL) {
        for (std::size_t row = 0; row < rows; ++row) {
            const double number = numbers[row];
            logs[row] += std::isnan(number) ? 0.0 : threshold.Applied(density.At(number, factorials[row]));
        }
        return;
    }
    // The same without a jump, in a loop of the kind that compilers make wide.
    const double constant = density.constant;
    const double mean = density.mean;
    const double factor = density.factor;
    for (std::size_t row = 0; row < rows; ++row) {
        const double difference = numbers[row] - mean;
        double logarithm = constant - difference * difference * factor;
        logarithm = logarithm < threshold.bound ? threshold.instead : logarithm;
        logarithm = logarithm != logarithm ? 0.0 : logarithm;
        logs[row] += logarithm;
    }
}

} // namespace veltrane_bayes
