#include "translators/frame/field_lookup.h"

#include "diagnostics/raise.h"

#include <MCVeltrane_900/PMMLModelTags.h>
#include <MCVeltrane_900/ScoreDictVar.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/TransformVar.h>

namespace veltrane::translators {

using MCVeltrane_900::PMMLModelTags;
using MCVeltrane_900::ScoreDictionary;
using MCVeltrane_900::ScoreDictVar;
using MCVeltrane_900::TransformVar;

const ScoreDictVar* FieldLookup::Find(const std::string& name) const {
    for (const ScoreDictionary* dictionary : {fDictionary, fDerived}) {
        if (dictionary != nullptr) {
            if (const ScoreDictVar* var = dictionary->GetVar(name)) {
                return var;
            }
        }
    }
    return nullptr;
}

const ScoreDictVar& FieldLookup::Require(const std::string& name) const {
    const ScoreDictVar* var = Find(name);
    if (var == nullptr) {
        diagnostics::Raise<diagnostics::Message::MISSING_VARIABLE_IN_BOTH>(name, PMMLModelTags::XML_ELE_DATADICTIONARY,
                                                                           PMMLModelTags::XML_ELE_TRANSFORMATION);
    }
    return *var;
}

TransformVar& AsTransformVar(ScoreDictVar* var) {
    return static_cast<TransformVar&>(*var);
}

} // namespace veltrane::translators
