#ifndef VELTRANE_PLUGINS_REGRESSION_REGRESSION_TABLE_H
#define VELTRANE_PLUGINS_REGRESSION_REGRESSION_TABLE_H

#include "kit/document/element.h"
#include "kit/inputs/case_view.h"
#include "kit/inputs/inputs.h"

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <vector>

namespace veltrane_regression {

/// A RegressionTable: a sum of terms of the fields.
class RegressionTable {
public:
    /// A table without terms.
    RegressionTable() = default;

    /// @throws VTException 260120, 260285, 260153 for attributes, 260125 and 260161 for fields, 260187 for a text where
    ///         a number has to be, 260203 for a predictor that comes twice, 260115 for a term without fields, 260159
    ///         for an element that has no place here
    RegressionTable(const veltrane_kit::Element& element, veltrane_kit::Inputs& inputs);

    /// The sum for a case. A missing category adds nothing.
    /// @return false when a number that the sum needs is missing and nothing stands in for it
    bool Sum(const veltrane_kit::CaseView& fields, double& sum) const;

    /// The same for the rows of a block.
    /// @param sums   room for one of each row
    /// @param lacks  set to 1 for each row for which Sum() is false; the others are left alone
    void Sum(const veltrane_kit::Block& block, double* sums, std::uint8_t* lacks) const;

    /// The slot of the first missing number that the sum needs; kNoSlot when none is missing.
    int LackingSlot(const veltrane_kit::CaseView& fields) const;

    /// Writes the number of its parts.
    void Display(std::ostream& out) const;

private:
    struct NumericPredictor {
        int slot;
        double exponent;
        double coefficient;
    };
    struct Coefficient {
        int category;
        double coefficient;
    };
    /// The predictors of one field, in the order of the codes of their categories.
    struct CategoricalField {
        int slot;
        std::vector<Coefficient> coefficients;
    };
    struct Factor {
        int slot;
        std::optional<double> ifMissing; ///< what stands in for a missing value
    };
    struct Term {
        double coefficient;
        std::vector<Factor> factors;
    };

    /// What was read already, while a table is read.
    struct Known;

    void ReadNumeric(const veltrane_kit::Element& element, veltrane_kit::Inputs& inputs, Known& known);
    void ReadCategorical(const veltrane_kit::Element& element, veltrane_kit::Inputs& inputs, Known& known);
    void ReadTerm(const veltrane_kit::Element& element, veltrane_kit::Inputs& inputs);
    bool AddTerms(const veltrane_kit::CaseView& fields, double& sum) const;
    static void AddNumeric(const NumericPredictor& predictor, const veltrane_kit::Block& block, double* sums,
                           std::uint8_t* lacks);
    static void AddCategorical(const CategoricalField& field, const veltrane_kit::Block& block, double* sums);
    static void AddTerm(const Term& term, const veltrane_kit::Block& block, double* sums, std::uint8_t* lacks);

    double fIntercept = 0.0;
    std::vector<NumericPredictor> fNumeric;
    std::vector<CategoricalField> fCategorical;
    std::vector<Term> fTerms;
};

} // namespace veltrane_regression

#endif
