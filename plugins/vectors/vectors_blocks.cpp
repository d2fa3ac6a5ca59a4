// Support vectors for blocks of cases, some rows at a time: each row takes the same steps in the same order as a single
// case.
#include "vectors_state.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string_view>

namespace veltrane_vectors {

using veltrane_kit::Block;
using veltrane_kit::Prediction;
using veltrane_kit::PredictionBlock;

namespace {

constexpr std::size_t kRows = Vectors::kRows;
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

} // namespace

class VectorsScorer::Blocks : public veltrane_kit::BlockScorer {
public:
    explicit Blocks(const VectorsScorer& scorer) : fScorer(scorer), fMachines(scorer.fMachines) {}

    void Predict(Block& block, PredictionBlock& predictions, State& state) const override {
        auto& sums = static_cast<Sums&>(state);
        std::fill_n(predictions.entities.begin(), block.Rows(), std::string_view());
        if (!fMachines.vectors.AreWhole() && !fMachines.areOfFields) {
            for (std::size_t row = 0; row < block.Rows(); ++row) {
                veltrane_kit::PredictRow(fScorer, block, row, predictions, state);
            }
            return;
        }
        sums.rowsOfX.resize(fMachines.fields.size() * kRows);
        sums.rowsOfKernels.resize(fMachines.vectors.Count() * kRows);
        sums.rowsOfNumbers.resize(fMachines.machines.size() * kRows);
        for (std::size_t category = 0; category < predictions.Categories(); ++category) {
            std::fill_n(predictions.Probabilities(category), block.Rows(), Prediction::kNone);
        }
        for (std::size_t first = 0; first < block.Rows(); first += kRows) {
            const std::size_t count = std::min(kRows, block.Rows() - first);
            FillFields(block, first, count, sums.rowsOfX.data());
            std::array<double, kRows> spoilt{};
            Spoil(sums.rowsOfX, spoilt);
            ComputeNumbers(sums);
            Spoil(sums.rowsOfNumbers, spoilt);
            Take(sums, spoilt, first, count, predictions);
        }
    }

private:
    /// A number that is missing spoils its row. The rows behind the last one have what the first one has.
    void FillFields(const Block& block, std::size_t first, std::size_t count, double* x) const {
        for (const VectorField& field : fMachines.fields) {
            const veltrane_kit::FieldColumn& column = block.Field(field.slot);
            if (field.category != VectorField::kNoCategory) {
                for (std::size_t row = 0; row < count; ++row) {
                    const bool has = column.categories != nullptr && column.categories[first + row] == field.category;
                    x[row] = has ? field.coefficient : 0.0;
                }
            } else if (column.numbers == nullptr) {
                std::fill_n(x, count, field.ifMissing.value_or(kNotANumber));
            } else {
                std::copy_n(column.numbers + first, count, x);
                for (std::size_t row = 0; field.ifMissing && row < count; ++row) {
                    x[row] = std::isnan(x[row]) ? *field.ifMissing : x[row];
                }
            }
            std::fill(x + count, x + kRows, x[0]);
            x += kRows;
        }
    }

    /// A number less itself is 0, or not a number where it isn't finite.
    static void Spoil(const std::vector<double>& numbers, std::array<double, kRows>& spoilt) {
        for (std::size_t i = 0; i < numbers.size(); i += kRows) {
            for (std::size_t row = 0; row < kRows; ++row) {
                spoilt[row] += numbers[i + row] - numbers[i + row];
            }
        }
    }

    void ComputeNumbers(Sums& sums) const {
        const double* factors = sums.rowsOfX.data();
        if (!fMachines.areOfFields) {
            for (const std::uint32_t vector : fMachines.used) {
                double* const kernels = sums.rowsOfKernels.data() + vector * kRows;
                fMachines.vectors.SumRows(fMachines.kernel, vector, sums.rowsOfX.data(), kernels);
                TakeKernel(kernels);
            }
            factors = sums.rowsOfKernels.data();
        }
        for (std::size_t i = 0; i < fMachines.machines.size(); ++i) {
            const Machine& machine = fMachines.machines[i];
            std::array<double, kRows> own{};
            for (std::size_t at = 0; at < machine.coefficients.size(); ++at) {
                const double coefficient = machine.coefficients[at];
                const double* const numbers = factors + (fMachines.areOfFields ? at : machine.places[at]) * kRows;
                for (std::size_t row = 0; row < kRows; ++row) {
                    own[row] += coefficient * numbers[row];
                }
            }
            for (std::size_t row = 0; row < kRows; ++row) {
                sums.rowsOfNumbers[i * kRows + row] = own[row] + machine.bias;
            }
        }
    }

    void TakeKernel(double* sums) const {
        const Kernel kernel = fMachines.kernel;
        for (std::size_t row = 0; row < kRows; ++row) {
            sums[row] = kernel.Of(sums[row]);
        }
    }

    void Take(Sums& sums, const std::array<double, kRows>& spoilt, std::size_t first, std::size_t count,
              PredictionBlock& predictions) const {
        for (std::size_t row = 0; row < count; ++row) {
            const double* const numbers = sums.rowsOfNumbers.data() + row;
            const bool isPredicted = !std::isnan(spoilt[row]);
            predictions.predicted[first + row] = isPredicted ? 1 : 0;
            predictions.numbers[first + row] = fScorer.fIsClassification ? Prediction::kNone : numbers[0];
            predictions.categories[first + row] = isPredicted && fScorer.fIsClassification
                                                      ? fScorer.CategoryOf(numbers, kRows, sums.votes)
                                                      : Prediction::kNoCategory;
        }
    }

    const VectorsScorer& fScorer;
    const Machines& fMachines;
};

std::unique_ptr<const veltrane_kit::BlockScorer> VectorsScorer::MakeBlockScorer() const {
    return std::make_unique<const Blocks>(*this);
}

} // namespace veltrane_vectors
