#ifndef VELTRANE_PLUGINS_MINING_KINDS_H
#define VELTRANE_PLUGINS_MINING_KINDS_H

#include "kit/document/element.h"
#include "kit/model/scorer.h"

namespace veltrane_mining {

/// What makes the scorer of a model that is a part of another one, by its element.
/// @return null for an element of no kind that is known here
veltrane_kit::MakeScorer MakerOf(const veltrane_kit::Element& element);

} // namespace veltrane_mining

#endif
