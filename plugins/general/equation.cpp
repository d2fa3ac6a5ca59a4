#include "equation.h"

#include "kit/results/prediction.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>

namespace veltrane_general {

using veltrane_kit::Block;
using veltrane_kit::CaseView;
using veltrane_kit::RowView;

namespace {

bool IsOfKind(const Term& term, Factor::Kind kind) {
    return term.factors.size() == 1 && term.factors.front().kind == kind;
}

} // namespace

void Equation::Settle() {
    fSteps.clear();
    for (std::size_t at = 0; at < fTerms.size(); at += fSteps.back().count) {
        fSteps.push_back(StepAt(at));
    }
}

Equation::Step Equation::StepAt(std::size_t first) const {
    const Term& term = fTerms[first];
    Step step{Step::Kind::PRODUCT, 0, term.beta, first, 1, 0, {}};
    if (term.factors.empty()) {
        step.kind = Step::Kind::CONSTANT;
    } else if (IsOfKind(term, Factor::Kind::POWER) && term.factors.front().exponent == 1.0) {
        step.kind = Step::Kind::LINEAR;
        step.slot = term.factors.front().slot;
    } else if (IsOfKind(term, Factor::Kind::CATEGORY)) {
        step.kind = Step::Kind::CHOICE;
        step.slot = term.factors.front().slot;
        MakeChoice(step);
    }
    return step;
}

/// As many of the terms as follow for categories of the same factor. It ends where a category comes again, and where
/// the table would be much larger than what stands in it.
void Equation::MakeChoice(Step& step) const {
    constexpr int kMostOfOne = 4;
    constexpr int kSmall = 64;
    step.lowest = fTerms[step.first].factors.front().category;
    int highest = step.lowest;
    std::map<int, double> coefficients{{step.lowest, step.beta}};
    for (std::size_t at = step.first + 1; at < fTerms.size(); ++at) {
        const Term& next = fTerms[at];
        if (!IsOfKind(next, Factor::Kind::CATEGORY) || next.factors.front().slot != step.slot) {
            break;
        }
        const int category = next.factors.front().category;
        const int low = std::min(step.lowest, category);
        const int high = std::max(highest, category);
        const bool isWide = high - low >= kSmall && (high - low) / kMostOfOne > static_cast<int>(coefficients.size());
        if (isWide || !coefficients.emplace(category, next.beta).second) {
            break;
        }
        step.lowest = low;
        highest = high;
    }
    step.count = coefficients.size();
    step.table.assign(static_cast<std::size_t>(highest - step.lowest) + 1, 0.0);
    for (const auto& [category, beta] : coefficients) {
        step.table[static_cast<std::size_t>(category - step.lowest)] = beta;
    }
}

/// The coefficient of a category; 0 for one that none is told for.
template <typename View>
double Equation::Choose(const Step& step, const View& fields, int category) {
    const auto at = static_cast<std::int64_t>(category) - step.lowest;
    if (category >= 0 && at >= 0 && at < static_cast<std::int64_t>(step.table.size())) {
        return step.table[static_cast<std::size_t>(at)];
    }
    return fields.IsMissing(step.slot) ? kLacks : 0.0;
}

double Equation::Sum(const CaseView& fields) const {
    double sum = 0.0;
    for (const Step& step : fSteps) {
        switch (step.kind) {
        case Step::Kind::CONSTANT:
            sum += step.beta;
            break;
        case Step::Kind::LINEAR:
            sum += step.beta * (fields.IsMissing(step.slot) ? kLacks : fields.Number(step.slot));
            break;
        case Step::Kind::CHOICE:
            sum += Choose(step, fields, fields.IsMissing(step.slot) ? -1 : fields.Category(step.slot));
            break;
        default:
            sum += step.beta * fTerms[step.first].Product(fields);
        }
    }
    return sum;
}

void Equation::Sum(const Block& block, double* sums) const {
    const std::size_t rows = block.Rows();
    std::fill_n(sums, rows, 0.0);
    for (const Step& step : fSteps) {
        const double beta = step.beta;
        const double* const numbers = step.kind == Step::Kind::LINEAR ? block.Field(step.slot).numbers : nullptr;
        if (step.kind == Step::Kind::CONSTANT) {
            for (std::size_t row = 0; row < rows; ++row) {
                sums[row] += beta;
            }
        } else if (numbers != nullptr) {
            for (std::size_t row = 0; row < rows; ++row) {
                sums[row] += beta * numbers[row];
            }
        } else if (step.kind == Step::Kind::CHOICE) {
            AddChoices(step, block, sums);
        } else {
            AddProducts(fTerms[step.first], block, sums);
        }
    }
}

/// Factor by factor, each over all rows.
void Equation::AddProducts(const Term& term, const Block& block, double* sums) {
    const std::size_t rows = block.Rows();
    std::array<double, Block::kMostRows> products; // NOLINT(cppcoreguidelines-pro-type-member-init): set below
    std::fill_n(products.begin(), rows, 1.0);
    for (const Factor& factor : term.factors) {
        const double* const numbers = block.Field(factor.slot).numbers;
        if (factor.kind == Factor::Kind::POWER && factor.exponent == 1.0 && numbers != nullptr) {
            for (std::size_t row = 0; row < rows; ++row) {
                products[row] *= numbers[row];
            }
        } else {
            for (std::size_t row = 0; row < rows; ++row) {
                products[row] *= factor.Value(RowView(block, row));
            }
        }
    }
    for (std::size_t row = 0; row < rows; ++row) {
        sums[row] += term.beta * products[row];
    }
}

void Equation::AddChoices(const Step& step, const Block& block, double* sums) {
    const std::int32_t* const categories = block.Field(step.slot).categories;
    const double* const table = step.table.data();
    const auto size = static_cast<std::uint32_t>(step.table.size());
    const auto lowest = static_cast<std::uint32_t>(step.lowest);
    for (std::size_t row = 0; row < block.Rows(); ++row) {
        // A code below the lowest one lies far above the table.
        const std::uint32_t at = categories == nullptr ? size : static_cast<std::uint32_t>(categories[row]) - lowest;
        sums[row] += at < size ? table[at] : Choose(step, RowView(block, row), -1);
    }
}

int Equation::LackingSlot(const CaseView& fields) const {
    for (const Term& term : fTerms) {
        for (const Factor& factor : term.factors) {
            if (fields.IsMissing(factor.slot)) {
                return factor.slot;
            }
        }
    }
    return veltrane_kit::Prediction::kNoSlot;
}

} // namespace veltrane_general
