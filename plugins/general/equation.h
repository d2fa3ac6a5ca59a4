#ifndef VELTRANE_PLUGINS_GENERAL_EQUATION_H
#define VELTRANE_PLUGINS_GENERAL_EQUATION_H

#include "factor.h"
#include "kit/columns/block.h"
#include "kit/inputs/case_view.h"

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace veltrane_general {

/// A parameter with its coefficient: the coefficient times the product of its factors, which is 1 without any.
struct Term {
    std::size_t parameter; ///< its place in the ParameterList
    double beta;
    std::vector<Factor> factors;

    /// What the coefficient is multiplied with.
    template <typename View>
    double Product(const View& fields) const {
        double product = 1.0;
        for (const Factor& factor : factors) {
            product *= factor.Value(fields);
        }
        return product;
    }
};

/// A sum of terms in the order of the document. The coefficients of the categories of one factor, which follow one
/// another nearly always, are looked up in a table.
class Equation {
public:
    void Add(Term term) { fTerms.push_back(std::move(term)); }

    /// To be called once, when all terms are there.
    void Settle();

    const std::vector<Term>& Terms() const { return fTerms; }
    bool IsEmpty() const { return fTerms.empty(); }

    /// The sum for a case; kLacks when a value is missing.
    double Sum(const veltrane_kit::CaseView& fields) const;

    /// The same for the rows of a block, bit for bit.
    /// @param sums room for one of each row
    void Sum(const veltrane_kit::Block& block, double* sums) const;

    /// The slot of the first missing value that the sum needs; Prediction::kNoSlot when none is missing.
    int LackingSlot(const veltrane_kit::CaseView& fields) const;

private:
    struct Step {
        enum class Kind { CONSTANT, LINEAR, CHOICE, PRODUCT };

        Kind kind;
        int slot;
        double beta;
        std::size_t first;         ///< of its terms
        std::size_t count;         ///< of them
        int lowest;                ///< code of a choice
        std::vector<double> table; ///< coefficients of a choice from that code on; 0 for categories between them
    };

    Step StepAt(std::size_t first) const;
    void MakeChoice(Step& step) const;
    template <typename View>
    static double Choose(const Step& step, const View& fields, int category);
    static void AddProducts(const Term& term, const veltrane_kit::Block& block, double* sums);
    static void AddChoices(const Step& step, const veltrane_kit::Block& block, double* sums);

    std::vector<Term> fTerms;
    std::vector<Step> fSteps;
};

} // namespace veltrane_general

#endif
