#ifndef VELTRANE_PLUGINS_MINING_FOREIGN_MODEL_H
#define VELTRANE_PLUGINS_MINING_FOREIGN_MODEL_H

#include "kit/document/element.h"
#include "kit/model/model_plan.h"

#include <memory>
#include <vector>

namespace veltrane_mining {

/// Reads a segment's model of a kind that another plug-in knows, by the factory's road for elements. That plug-in
/// treats the fields itself, by the schema that stands in its element; it gets them as the outer model has them, the
/// derived ones and what segments before it tell too.
/// @param outer of the model that is being built, its scorer not yet; its inputs are borrowed for the life of the plan
/// @param asked the output fields of the outer model that name this segment
/// @throws VTException what the plug-in throws; 260113 where it can't be loaded, 260304 where it makes no model, 260301
///         for results that are neither categories nor numbers, 260124 for an input that there is no field for
std::unique_ptr<const veltrane_kit::ModelPlan> CompleteForeign(const veltrane_kit::Element& model,
                                                               veltrane_kit::ModelParts& outer,
                                                               const std::vector<veltrane_kit::Element>& asked);

} // namespace veltrane_mining

#endif
