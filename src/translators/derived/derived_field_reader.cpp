#include "translators/derived/derived_field_reader.h"

#include "diagnostics/raise.h"
#include "translators/dictionary/measure_levels.h"
#include "translators/frame/element_walk.h"

#include <MCVeltrane_900/DictVar.h>
#include <MCVeltrane_900/PMMLModelTags.h>
#include <MCVeltrane_900/ScoreValueLabel.h>
#include <MCVeltrane_900/ScoreValueLabelSet.h>

#include <xercesc/dom/DOMElement.hpp>

#include <algorithm>
#include <iterator>

namespace veltrane::translators {

using diagnostics::Message;
using diagnostics::Raise;
using MCVeltrane_900::BaseTranslator;
using MCVeltrane_900::DictVar;
using MCVeltrane_900::PMMLModelTags;
using MCVeltrane_900::PMMLTranslator;
using MCVeltrane_900::ScoreDictVar;
using MCVeltrane_900::ScoreValueLabel;
using MCVeltrane_900::TransformationDictionary;
using MCVeltrane_900::TransformVar;
using xercesc::DOMElement;

namespace {

ScoreDictVar::MeasureLevel ReadLevel(const DocumentText& text, const DOMElement* element) {
    const XMLCh* word = BaseTranslator::GetAttribute(element, PMMLModelTags::XML_ATT_DATAFIELD_OPTYPE);
    if (Equals(word, "")) {
        Raise<Message::NULL_ATTRIBUTE>(PMMLModelTags::XML_ATT_DATAFIELD_OPTYPE, PMMLModelTags::XML_ELE_DERIVEDFIELD);
    }
    const auto level = ReadMeasureLevel(word);
    if (!level) {
        Raise<Message::INVALID_ATTRIBUTE_VALUE>(text(word), PMMLModelTags::XML_ATT_DATAFIELD_OPTYPE);
    }
    return *level;
}

bool IsWidthName(const XMLCh* name) {
    return Equals(name, PMMLModelTags::XML_ATT_WIDTH) ||
           Equals(name, PMMLModelTags::XML_ATT_TRAN_EXT_NAME_STRINGLENGTH);
}

} // namespace

TransformVar& DerivedFieldReader::Field::Var() const {
    if (var == nullptr) {
        Raise<Message::CONFLICTING_VALUES>(PMMLModelTags::XML_VAL_OT_CONTINUOUS,
                                           PMMLModelTags::XML_ATT_DATAFIELD_OPTYPE, PMMLModelTags::XML_VAL_STRING,
                                           PMMLModelTags::XML_ATT_DATATYPE);
    }
    return *var;
}

void DerivedFieldReader::Read(DOMElement* element) {
    Field field{element, ReadName(element), nullptr};
    field.var = MakeVar(element, field.name);
    for (DOMElement* child : ChildElements(element)) {
        ReadChild(child, field);
    }
    CheckCosts(field);
    fDerived.AddVar(field.name, &field.Var());
    field.var.release();
    fDerived.AddDerievedVarName(field.name);
}

// A field that could not be evaluated for any case is refused here rather than scored without.
void DerivedFieldReader::CheckCosts(const Field& field) {
    const TransformVar& var = field.Var();
    if (!fCosts.Add(var, FieldLookup(fDictionary, &fDerived).Find(var.GetFieldName()))) {
        Raise<Message::PROCESSING_VARIABLE_FAILED>(PMMLModelTags::XML_ELE_DERIVEDFIELD, field.name);
    }
}

// A field may neither shadow an input nor be defined twice; both are reported as a clash with the data dictionary.
std::string DerivedFieldReader::ReadName(DOMElement* element) const {
    std::string name = fText.Forced(element, PMMLModelTags::XML_ATT_NAME);
    if (name.empty()) {
        Raise<Message::NULL_ATTRIBUTE>(PMMLModelTags::XML_ATT_NAME, PMMLModelTags::XML_ELE_DERIVEDFIELD);
    }
    if (FieldLookup(fDictionary, &fDerived).Find(name) != nullptr) {
        Raise<Message::DUPLICATE_VARIABLE_IN>(name, PMMLModelTags::XML_ELE_DATADICTIONARY);
    }
    return name;
}

// The variable with what the field's attributes say; null for a continuous text field.
std::unique_ptr<TransformVar> DerivedFieldReader::MakeVar(DOMElement* element, const std::string& name) {
    auto var = std::make_unique<TransformVar>(name, ScoreDictVar::kNUMERIC_VAR);
    const std::string label = fText.Attribute(element, PMMLModelTags::XML_ATT_DATAFIELD_DISPLAYNAME);
    var->SetLabel(label.empty() ? name : label);
    var->SetMLevel(ReadLevel(fText, element));
    if (!SetDataType(element, *var)) {
        var.reset();
    }
    return var;
}

// False for a type that the field's level rules out. A text that is no type leaves a plain numeric variable.
bool DerivedFieldReader::SetDataType(DOMElement* element, TransformVar& var) {
    const XMLCh* type = BaseTranslator::GetAttributeForced(element, PMMLModelTags::XML_ATT_DATATYPE);
    if (Equals(type, PMMLModelTags::XML_VAL_STRING)) {
        var.SetVarType(ScoreDictVar::STRING_VAR);
        return var.GetMLevel() != ScoreDictVar::LEVEL_CONTINUOUS;
    }
    if (Equals(type, PMMLModelTags::XML_VAL_INTEGER)) {
        var.SetNumericDataType(ScoreDictVar::NUM_INTEGER);
    } else if (Equals(type, PMMLModelTags::XML_VAL_DOUBLE)) {
        var.SetNumericDataType(ScoreDictVar::NUM_DOUBLE);
    } else if (const auto dateTime = fTranslator.ParseDateTimeType(type); dateTime != ScoreDictVar::DT_NONE) {
        var.SetVarType(ScoreDictVar::DATETIME_VAR);
        var.SetDateTimeType(dateTime);
    }
    return true;
}

void DerivedFieldReader::ReadChild(DOMElement* child, Field& field) {
    if (HasTag(child, PMMLModelTags::XML_ELE_EXTENSION)) {
        ReadExtension(child, field);
    } else if (HasTag(child, PMMLModelTags::XML_ELE_VALUE)) {
        ReadValues(field);
    } else {
        ReadOther(child, field);
    }
}

void DerivedFieldReader::ReadExtension(DOMElement* extension, Field& field) {
    const XMLCh* name = BaseTranslator::GetAttribute(extension, PMMLModelTags::XML_ATT_EXT_NAME);
    if (Equals(name, PMMLModelTags::XML_ATT_TRAN_EXT_NAME_MISSINGVALUES)) {
        fTranslator.handleDerivedVarMissingValue(extension, &field.Var());
    } else if (IsWidthName(name)) {
        const int width = BaseTranslator::VerifyInt(fText.Forced(extension, PMMLModelTags::XML_ATT_EXT_VALUE));
        if (width > 0) {
            field.Var().SetWidth(width);
        }
    }
    ReadUsageType(extension, field);
}

// An extension that says nothing of the usage type needs no variable: where there is none, a stand-in shows whether it
// does.
void DerivedFieldReader::ReadUsageType(DOMElement* extension, Field& field) {
    if (field.var != nullptr) {
        fTranslator.ParseUsageTypeExtension(extension, field.var.get());
        return;
    }
    DictVar standIn(field.name, ScoreDictVar::STRING_VAR);
    fTranslator.ParseUsageTypeExtension(extension, &standIn);
    if (!standIn.IsUsageTypeEnable()) {
        field.Var();
    }
}

// The first Value child brings all of them; the others are then passed over.
void DerivedFieldReader::ReadValues(Field& field) {
    if (field.valuesSeen) {
        return;
    }
    TransformVar& var = field.Var();
    fTranslator.HandleValueList(field.element, &var);
    for (const ScoreValueLabel* label : var.GetValueLabels()->GetAllValueLabels()) {
        if (var.IsMissingValue(label->GetValue())) {
            Raise<Message::VALUE_MISSING_OR_VALID_AND_INVALID>(label->GetLabel(), field.name);
        }
    }
    field.valuesSeen = true;
}

// A child that is neither an extension nor a value. Without an expression so far it must be one, unless a value list
// came first; behind an expression nothing else may come.
void DerivedFieldReader::ReadOther(DOMElement* child, Field& field) {
    if (field.expressionSeen) {
        Raise<Message::MORE_THAN_ONE_EXPRESSION>(PMMLModelTags::XML_ELE_DERIVEDFIELD);
    }
    if (const Expression* expression = FindExpression(child)) {
        (this->*expression->read)(child, field);
        field.expressionSeen = true;
    } else if (!field.valuesSeen) {
        Raise<Message::INVALID_ATTRIBUTE_VALUE>(fText.Tag(child), PMMLModelTags::XML_ATT_NAME);
    }
}

void DerivedFieldReader::ReadApply(DOMElement* apply, Field& field) {
    TransformVar& var = field.Var();
    var.AddFieldNameAndTransExpression("", TransformationDictionary::TE_APPLY);
    var.SetRoot(fTranslator.HandleApply(apply, &var, nullptr, fDictionary, &fDerived));
}

void DerivedFieldReader::ReadAggregate(DOMElement*, Field&) {
    Raise<Message::UNSUPPORTED_VALUE>(PMMLModelTags::XML_ELE_AGGREGATE, PMMLModelTags::XML_ATT_NAME);
}

// Only the text stays: the variable's own type decides how it is read.
void DerivedFieldReader::ReadConstant(DOMElement* constant, Field& field) {
    TransformVar& var = field.Var();
    var.AddFieldNameAndTransExpression("", TransformationDictionary::TE_CONSTANT);
    double number;
    MCVeltrane_900::ScoreValue::ValueType type;
    var.SetConstString(fTranslator.HandelConstant(constant, number, type));
}

void DerivedFieldReader::ReadFieldRef(DOMElement* fieldRef, Field& field) {
    TransformVar& var = field.Var();
    var.AddFieldNameAndTransExpression(fTranslator.HandleFieldRef(fieldRef, fDictionary, &fDerived, &var),
                                       TransformationDictionary::TE_FIELD_REF);
}

template <DerivedFieldReader::SourcedReader Reader, TransformationDictionary::TransExpression Kind>
void DerivedFieldReader::ReadSourced(DOMElement* expression, Field& field) {
    TransformVar& var = field.Var();
    var.AddFieldNameAndTransExpression((fTranslator.*Reader)(expression, &var, fDictionary, &fDerived), Kind);
}

const DerivedFieldReader::Expression DerivedFieldReader::kExpressions[] = {
    {PMMLModelTags::XML_ELE_APPLY, &DerivedFieldReader::ReadApply},
    {PMMLModelTags::XML_ELE_AGGREGATE, &DerivedFieldReader::ReadAggregate},
    {PMMLModelTags::XML_ELE_CONSTANT, &DerivedFieldReader::ReadConstant},
    {PMMLModelTags::XML_ELE_FIELDREF, &DerivedFieldReader::ReadFieldRef},
    {PMMLModelTags::XML_ELE_DISCRETIZE,
     &DerivedFieldReader::ReadSourced<&PMMLTranslator::HandleDiscritize, TransformationDictionary::TE_DISCRETIZE>},
    {PMMLModelTags::XML_ELE_MAPVALUES,
     &DerivedFieldReader::ReadSourced<&PMMLTranslator::HandleMapValues, TransformationDictionary::TE_MAP_VALUES>},
    {PMMLModelTags::XML_ELE_NORMCONTINUOUS,
     &DerivedFieldReader::ReadSourced<&PMMLTranslator::HandleNormContinuous,
                                      TransformationDictionary::TE_NORM_CONTINUOUS>},
    {PMMLModelTags::XML_ELE_NORMDISCRETE,
     &DerivedFieldReader::ReadSourced<&PMMLTranslator::HandleNormDiscrete, TransformationDictionary::TE_NORM_DISCRETE>},
    {PMMLModelTags::XML_ELE_LAG,
     &DerivedFieldReader::ReadSourced<&PMMLTranslator::HandleLag, TransformationDictionary::TE_LAG>},
};

const DerivedFieldReader::Expression* DerivedFieldReader::FindExpression(const DOMElement* child) {
    const auto* found = std::find_if(std::begin(kExpressions), std::end(kExpressions),
                                     [child](const Expression& row) { return HasTag(child, row.tag); });
    return found == std::end(kExpressions) ? nullptr : found;
}

} // namespace veltrane::translators
