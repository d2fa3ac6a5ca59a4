#ifndef VELTRANE_PLUGINS_KIT_STATED_TYPE_H
#define VELTRANE_PLUGINS_KIT_STATED_TYPE_H

#include "kit/document/element.h"
#include "kit/results/results.h"

#include <MCVeltrane_900/ScoreDictVar.h>
#include <MCVeltrane_900/ScoreValue.h>

namespace veltrane_kit {

/// What the dataType of an output field makes of its value.
struct StatedType {
    OutputType type;
    MCVeltrane_900::ScoreDictVar::DateTimeType dateTimeType = MCVeltrane_900::ScoreDictVar::DT_NONE; ///< of a moment
};

/// @throws VTException 260120, 260285, 260153 for the attribute, a type that the standard doesn't have among them
StatedType ReadStatedType(const Element& outputField);

/// The kind of the values of a type. A boolean stays a text where the values are texts.
/// @param natural the kind of the feature without a type
MCVeltrane_900::ScoreValue::ValueType KindOf(OutputType type, MCVeltrane_900::ScoreValue::ValueType natural);

} // namespace veltrane_kit

#endif
