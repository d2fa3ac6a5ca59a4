// Regressions for blocks of cases: the sum of each row takes the same steps in the same order as that of a single case.
#include "regression_scorer.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace veltrane_regression {

using veltrane_kit::Block;
using veltrane_kit::Prediction;
using veltrane_kit::PredictionBlock;

namespace {

/// A field that no case has.
void LackAll(const Block& block, std::uint8_t* lacks) {
    std::fill_n(lacks, block.Rows(), std::uint8_t{1});
}

} // namespace

void RegressionTable::Sum(const Block& block, double* sums, std::uint8_t* lacks) const {
    std::fill_n(sums, block.Rows(), fIntercept);
    for (const NumericPredictor& predictor : fNumeric) {
        AddNumeric(predictor, block, sums, lacks);
    }
    for (const CategoricalField& field : fCategorical) {
        AddCategorical(field, block, sums);
    }
    for (const Term& term : fTerms) {
        AddTerm(term, block, sums, lacks);
    }
}

void RegressionTable::AddNumeric(const NumericPredictor& predictor, const Block& block, double* sums,
                                 std::uint8_t* lacks) {
    const double* const x = block.Field(predictor.slot).numbers;
    if (x == nullptr) {
        LackAll(block, lacks);
        return;
    }
    const double coefficient = predictor.coefficient;
    const double exponent = predictor.exponent;
    for (std::size_t row = 0; row < block.Rows(); ++row) {
        lacks[row] |= static_cast<std::uint8_t>(std::isnan(x[row]));
    }
    if (exponent == 1.0) {
        for (std::size_t row = 0; row < block.Rows(); ++row) {
            sums[row] += coefficient * x[row];
        }
    } else {
        for (std::size_t row = 0; row < block.Rows(); ++row) {
            sums[row] += coefficient * std::pow(x[row], exponent);
        }
    }
}

void RegressionTable::AddCategorical(const CategoricalField& field, const Block& block, double* sums) {
    const std::int32_t* const categories = block.Field(field.slot).categories;
    if (categories == nullptr) {
        return;
    }
    const Coefficient* const first = field.coefficients.data();
    const Coefficient* const end = first + field.coefficients.size();
    for (std::size_t row = 0; row < block.Rows(); ++row) {
        const int category = categories[row];
        if (category == veltrane_kit::FieldValue::kUnknownCategory) {
            continue;
        }
        const Coefficient* const found = std::lower_bound(
            first, end, category, [](const Coefficient& entry, int code) { return entry.category < code; });
        if (found != end && found->category == category) {
            sums[row] += found->coefficient;
        }
    }
}

void RegressionTable::AddTerm(const Term& term, const Block& block, double* sums, std::uint8_t* lacks) {
    for (std::size_t row = 0; row < block.Rows(); ++row) {
        double product = term.coefficient;
        for (const Factor& factor : term.factors) {
            const double* const numbers = block.Field(factor.slot).numbers;
            if (numbers != nullptr && !std::isnan(numbers[row])) {
                product *= numbers[row];
            } else if (factor.ifMissing) {
                product *= *factor.ifMissing;
            } else {
                lacks[row] = 1;
            }
        }
        sums[row] += product;
    }
}

class RegressionScorer::Blocks : public veltrane_kit::BlockScorer {
public:
    explicit Blocks(const RegressionScorer& scorer) : fScorer(scorer) {}

    void Predict(Block& block, PredictionBlock& predictions, State& state) const override {
        auto& own = static_cast<Sums&>(state);
        own.lacks.assign(block.Rows(), 0);
        std::fill_n(predictions.entities.begin(), block.Rows(), std::string_view());
        if (fScorer.fIsClassification) {
            PredictCategories(block, predictions, own);
        } else {
            PredictNumbers(block, predictions, own);
        }
    }

private:
    void PredictNumbers(Block& block, PredictionBlock& predictions, Sums& own) const {
        double* const numbers = predictions.numbers.data();
        std::fill_n(predictions.categories.begin(), block.Rows(), Prediction::kNoCategory);
        fScorer.fTables.front().table.Sum(block, numbers, own.lacks.data());
        if (fScorer.fNormalization != Normalization::NONE) {
            for (std::size_t row = 0; row < block.Rows(); ++row) {
                if (own.lacks[row] == 0 && std::isfinite(numbers[row])) {
                    numbers[row] = InverseLink(fScorer.fNormalization, numbers[row]);
                }
            }
        }
        for (std::size_t row = 0; row < block.Rows(); ++row) {
            predictions.predicted[row] = own.lacks[row] == 0 && std::isfinite(numbers[row]) ? 1 : 0;
        }
    }

    void PredictCategories(Block& block, PredictionBlock& predictions, Sums& own) const {
        const std::size_t rows = block.Rows();
        const std::vector<CategoryTable>& tables = fScorer.fTables;
        own.columns.resize(tables.size() * rows);
        for (std::size_t i = 0; i < tables.size(); ++i) {
            tables[i].table.Sum(block, own.columns.data() + i * rows, own.lacks.data());
        }
        for (std::size_t category = 0; category < predictions.Categories(); ++category) {
            std::fill_n(predictions.Probabilities(category), rows, 0.0);
        }
        for (std::size_t row = 0; row < rows; ++row) {
            for (std::size_t i = 0; i < tables.size(); ++i) {
                own.sums[i] = own.columns[i * rows + row];
            }
            predictions.numbers[row] = Prediction::kNone;
            predictions.predicted[row] =
                own.lacks[row] == 0 && Normalize(fScorer.fNormalization, fScorer.fIsOrdinal, own.sums) ? 1 : 0;
            if (predictions.predicted[row] != 0) {
                TakeProbabilities(own.sums, row, predictions);
            }
        }
    }

    /// See Prediction::TakeMostProbable.
    void TakeProbabilities(const std::vector<double>& sums, std::size_t row, PredictionBlock& predictions) const {
        for (std::size_t i = 0; i < sums.size(); ++i) {
            predictions.Probabilities(static_cast<std::size_t>(fScorer.fTables[i].category))[row] = sums[i];
        }
        int best = Prediction::kNoCategory;
        for (std::size_t category = 0; category < predictions.Categories(); ++category) {
            const double probability = predictions.Probabilities(category)[row];
            if (probability != Prediction::kNone &&
                (best == Prediction::kNoCategory ||
                 probability > predictions.Probabilities(static_cast<std::size_t>(best))[row])) {
                best = static_cast<int>(category);
            }
        }
        predictions.categories[row] = best;
    }

    const RegressionScorer& fScorer;
};

std::unique_ptr<const veltrane_kit::BlockScorer> RegressionScorer::MakeBlockScorer() const {
    return std::make_unique<const Blocks>(*this);
}

} // namespace veltrane_regression
