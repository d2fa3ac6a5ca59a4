#include "diagnostics/raise.h"
#include "translators/apply/function_rules.h"
#include "translators/frame/field_lookup.h"

#include <MCVeltrane_900/PMMLModelTags.h>
#include <MCVeltrane_900/PMMLTranslator.h>

namespace MCVeltrane_900 {

using namespace veltrane::translators;
using veltrane::diagnostics::Message;
using veltrane::diagnostics::Raise;
using TD = TransformationDictionary;

namespace {

/// Where the name of a constant argument tells its type, behind "Constant_".
constexpr std::size_t kConstantTypePlace = 9;

bool ExpectsNumber(Arguments arguments, std::size_t position) {
    switch (arguments) {
    case Arguments::TEXTS:
    case Arguments::TEXT_CONSTANTS:
        return false;
    case Arguments::TEXT_THEN_NUMBERS:
        return position > 0;
    default:
        return true;
    }
}

/// The functions that take a field and nothing else.
void VerifyFieldArgument(TD::TransformFunction function, Arguments arguments, int kind, const std::string& name,
                         const FieldLookup& fields, const ScoreDictVar* target) {
    if (kind != FIELD) {
        Raise<Message::REQUIRES_IN>(PMMLModelTags::XML_ELE_FIELDREF, PMMLModelTags::XML_ELE_APPLY);
    }
    const ScoreDictVar* variable = fields.Find(name);
    if (variable == nullptr) {
        return;
    }
    if (arguments == Arguments::NUMERIC_FIELD) {
        if (variable->GetVarType() != ScoreDictVar::kNUMERIC_VAR) {
            Raise<Message::FUNCTION_PARAMETER_TYPE_MISMATCH>(PMMLTranslator::ToString(function), variable->GetName());
        }
    } else if (target != nullptr && variable->GetVarType() != target->GetVarType()) {
        Raise<Message::CONFLICTING_REFERENCE>(target->GetName(), variable->GetName());
    }
}

} // namespace

void PMMLTranslator::VerifyApplyFunction(const std::vector<std::string>& names, const std::vector<int>& kinds,
                                         const ScoreDictionary* dictionary, const ScoreDictionary* derived,
                                         TD::TransformFunction function,
                                         const std::vector<TD::TransformFunction>& childFunctions,
                                         const ScoreDictVar* target) {
    const FunctionRules& rules = RulesOf(function);
    if (rules.parameters == kUncheckedNumber) {
        return;
    }
    if (rules.parameters != kAnyNumber && names.size() != static_cast<std::size_t>(rules.parameters)) {
        Raise<Message::REQUIRES_PARAMETERS>(std::to_string(rules.parameters));
    }
    if (rules.arguments == Arguments::NOT_CHECKED || rules.arguments == Arguments::METHOD_SECOND) {
        return;
    }
    if (rules.arguments == Arguments::TARGET_FIELD || rules.arguments == Arguments::NUMERIC_FIELD) {
        VerifyFieldArgument(function, rules.arguments, kinds[0], names[0], FieldLookup(dictionary, derived), target);
        if (rules.arguments == Arguments::TARGET_FIELD) {
            return;
        }
    }
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (kinds[i] == NESTED) {
            VerifyParentAndChildFunction(function, childFunctions[i]);
        } else {
            VerifyOneElem(function, ExpectsNumber(rules.arguments, i), kinds[i] == CONSTANT, names[i], dictionary,
                          derived);
        }
    }
}

void PMMLTranslator::VerifyOneElem(TD::TransformFunction function, bool expectNumeric, bool isConstant,
                                   const std::string& name, const ScoreDictionary* dictionary,
                                   const ScoreDictionary* derived) {
    bool isNumeric = true;
    if (isConstant) {
        isNumeric = name.size() > kConstantTypePlace && name[kConstantTypePlace] == 'D';
    } else if (const ScoreDictVar* variable = FieldLookup(dictionary, derived).Find(name)) {
        isNumeric = variable->GetVarType() == ScoreDictVar::kNUMERIC_VAR;
    }
    if (isNumeric != expectNumeric) {
        Raise<Message::FUNCTION_PARAMETER_TYPE_MISMATCH>(ToString(function), name);
    }
}

void PMMLTranslator::VerifyParentAndChildFunction(TD::TransformFunction parent, TD::TransformFunction child) {
    const bool passesOn = IsMixOutputFunction(child);
    const bool isAccepted = IsNumericFunction(parent)       ? passesOn || IsOutputNumericFunction(child)
                            : IsInputStringFunction(parent) ? passesOn || IsOutputStringFunction(child)
                                                            : false;
    if (!isAccepted) {
        Raise<Message::FUNCTION_TYPE_MISMATCH>(ToString(parent), ToString(child));
    }
}

} // namespace MCVeltrane_900
