#ifndef VELTRANE_PLUGINS_GENERAL_COVARIANCE_H
#define VELTRANE_PLUGINS_GENERAL_COVARIANCE_H

#include "equation.h"
#include "kit/document/element.h"
#include "kit/model/model_plan.h"
#include "parameters.h"

#include <cmath>
#include <cstddef>
#include <vector>

namespace veltrane_general {

/// The covariances of the coefficients of a model, from its PCovMatrix: the matrix is symmetric, and each covariance
/// may stand in one of its two cells or in both.
class Covariance {
public:
    Covariance() = default;

    /// @param matrix may be no element: then there are no covariances
    /// @param terms  whose coefficients they are; covariances of parameters without a coefficient play no part
    /// @throws VTException 260120, 260285, 260153 for attributes, and for two cells that contradict each other; 260203
    ///         for a cell that comes twice; 260283 for a matrix without cells, 260159 for other elements
    Covariance(const veltrane_kit::Element& matrix, veltrane_kit::ModelParts& parts, const Parameters& parameters,
               const std::vector<Term>& terms);

    bool IsEmpty() const { return fCells.empty(); }

    /// The standard error of a sum of the terms.
    /// @param values what each coefficient is multiplied with
    /// @return not a number where the matrix is none of covariances
    double ErrorOf(const std::vector<double>& values) const;

private:
    struct Cell {
        std::size_t row; ///< place of a term
        std::size_t column;
        double value; ///< counted once for each half of the matrix
    };

    std::vector<Cell> fCells;
};

} // namespace veltrane_general

#endif
