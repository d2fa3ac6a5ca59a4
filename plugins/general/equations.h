#ifndef VELTRANE_PLUGINS_GENERAL_EQUATIONS_H
#define VELTRANE_PLUGINS_GENERAL_EQUATIONS_H

#include "equation.h"
#include "kit/document/element.h"
#include "kit/model/model_plan.h"
#include "parameters.h"
#include "predictors.h"

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace veltrane_general {

/// What a ParamMatrix and a PPMatrix come to: the terms that all categories of the target have in common, and those of
/// each category alone. A regression has common ones alone.
struct Equations {
    Equation common;
    std::map<int, Equation> own; ///< by category
};

/// Reads them: the cells of both matrices, and from these the equations, once it is known which categories have one.
class EquationReader {
public:
    /// How many terms may come of parameters that all categories have in common, where cells of the PPMatrix are of
    /// single categories: such a parameter has a term for each.
    static constexpr std::size_t kMostTerms = 1000000;

    /// All are borrowed.
    EquationReader(veltrane_kit::ModelParts& parts, const Parameters& parameters, Predictors& predictors)
        : fParts(parts), fParameters(parameters), fPredictors(predictors) {}

    /// @param element the model
    /// @throws VTException 260120, 260285, 260153 for attributes, names and categories; 260203 for a cell that comes
    ///         twice; 260115, 260272, 260159 for elements
    void Read(const veltrane_kit::Element& element);

    /// The categories that cells of the ParamMatrix name, each with the first such cell.
    const std::map<int, veltrane_kit::Element>& Named() const { return fNamed; }

    /// Whether some cell of the ParamMatrix is of all categories.
    bool HasCommon() const { return fHasCommon; }

    /// @param categories that have an equation, all that are named among them
    /// @throws VTException 260227 for more than kMostTerms
    Equations Build(const std::vector<int>& categories) const;

private:
    using Key = std::pair<int, std::size_t>; ///< a category, kNoCategory for all, and a parameter
    struct Cell {
        int category;
        std::size_t parameter;
        double beta;
    };

    int ReadCategory(const veltrane_kit::Element& cell);
    void ReadPredictorCells(const veltrane_kit::Element& matrix);
    void ReadCells(const veltrane_kit::Element& matrix);
    Term TermOf(const Cell& cell, int category) const;

    veltrane_kit::ModelParts& fParts;
    const Parameters& fParameters;
    Predictors& fPredictors;
    std::map<Key, std::vector<Factor>> fFactors;
    std::set<std::size_t> fOfSingle; ///< parameters with factors of single categories
    std::vector<Cell> fCells;        ///< of the ParamMatrix
    std::map<int, veltrane_kit::Element> fNamed;
    bool fHasCommon = false;
};

} // namespace veltrane_general

#endif
