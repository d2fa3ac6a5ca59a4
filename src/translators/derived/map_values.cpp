#include "translators/derived/map_values_reader.h"
#include "translators/derived/recode_attributes.h"

#include <MCVeltrane_900/MapValues.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/TransformVar.h>

namespace MCVeltrane_900 {

using namespace veltrane::translators;

// The map has the two replacements as values of its own, beside those of the field.
std::string PMMLTranslator::HandleMapValues(xercesc::DOMElement* element, ScoreDictVar* var,
                                            const ScoreDictionary* dictionary, const ScoreDictionary* derived) {
    const DocumentText text(*this, &PMMLTranslator::ToString);
    TransformVar& target = AsTransformVar(var);
    auto* map = new MapValues(&target);
    target.SetMapValues(map);
    if (const std::string missing = ReadMapMissingTo(*this, text, element, target); !missing.empty()) {
        map->SetMapMissingValue(CarefullyMakeVarValue(var, missing));
    }
    if (const std::string fallback = ReadDefaultValue(*this, text, element, target); !fallback.empty()) {
        map->SetDefaultValue(CarefullyMakeVarValue(var, fallback));
    }
    return MapValuesReader(*this, text, FieldLookup(dictionary, derived), target, *map).Read(element);
}

} // namespace MCVeltrane_900
