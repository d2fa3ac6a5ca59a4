#ifndef VELTRANE_PLUGINS_GENERAL_TARGET_CATEGORIES_H
#define VELTRANE_PLUGINS_GENERAL_TARGET_CATEGORIES_H

#include "equations.h"
#include "general_scorer.h"
#include "kit/document/element.h"
#include "kit/model/model_plan.h"

#include <vector>

namespace veltrane_general {

/// The categories of a classification in the order of its equations: those of the target in their order, but the one
/// that has none comes last and has the rest.
///
/// That is the targetReferenceCategory, else the only one that no cell of the ParamMatrix names, else, where cells name
/// none, the first of two.
/// @param reader of the matrices, read
/// @return codes
/// @throws VTException 260126 for a target of fewer than two categories; 260179 for a generalized linear model of more;
///         260120 where there is no telling which is the reference; 260153 for cells of the reference, 260116 for a
///         category without cells
std::vector<int> OrderCategories(const veltrane_kit::Element& element, ModelType type, const EquationReader& reader,
                                 veltrane_kit::ModelParts& parts);

} // namespace veltrane_general

#endif
