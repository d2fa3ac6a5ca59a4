#include "translators/dictionary/data_field_reader.h"

#include "diagnostics/raise.h"
#include "translators/dictionary/field_values.h"
#include "translators/dictionary/measure_levels.h"
#include "translators/frame/element_walk.h"

#include <MCVeltrane_900/PMMLModelTags.h>
#include <MCVeltrane_900/ScoreDictionary.h>

#include <xercesc/dom/DOMElement.hpp>

namespace veltrane::translators {

using diagnostics::Message;
using diagnostics::Raise;
using MCVeltrane_900::BaseTranslator;
using MCVeltrane_900::DictVar;
using MCVeltrane_900::PMMLModelTags;
using MCVeltrane_900::ScoreDictionary;
using MCVeltrane_900::ScoreDictVar;

namespace {

/// An attribute that must be there and must not be empty.
const XMLCh* Required(const xercesc::DOMElement* field, const char* name) {
    const XMLCh* text = BaseTranslator::GetAttributeForced(field, name);
    if (Equals(text, "")) {
        Raise<Message::NULL_ATTRIBUTE>(name, "DataField");
    }
    return text;
}

/// The type that a dataType attribute gives; other words leave the variable numeric.
void SetDataType(const XMLCh* dataType, MCVeltrane_900::PMMLTranslator& translator, DictVar& var) {
    if (Equals(dataType, PMMLModelTags::XML_VAL_STRING)) {
        var.SetVarType(ScoreDictVar::STRING_VAR);
    } else if (Equals(dataType, PMMLModelTags::XML_VAL_INTEGER)) {
        var.SetNumericDataType(ScoreDictVar::NUM_INTEGER);
    } else if (Equals(dataType, PMMLModelTags::XML_VAL_DOUBLE)) {
        var.SetNumericDataType(ScoreDictVar::NUM_DOUBLE);
    } else if (const auto dateTime = translator.ParseDateTimeType(dataType); dateTime != ScoreDictVar::DT_NONE) {
        var.SetVarType(ScoreDictVar::DATETIME_VAR);
        var.SetDateTimeType(dateTime);
    }
}

} // namespace

std::unique_ptr<DictVar> DataFieldReader::Read(xercesc::DOMElement* field, const ScoreDictionary& dictionary,
                                               bool withEncoder) {
    std::unique_ptr<DictVar> var = MakeVar(field, dictionary);
    SetLevel(field, *var);
    const Storage storage = ReadExtensions(field, *var);
    const bool isTypeExplicit = SetType(field, storage, *var);
    var->SetNoSpaceTrim(storage.noSpaceTrim);
    var->SetEmptyStringOK(storage.emptyStringOk);

    const bool isContinuous = var->GetMLevel() == ScoreDictVar::LEVEL_CONTINUOUS;
    if (isContinuous && var->IsString()) {
        Raise<Message::CONFLICTING_VALUES>("continuous", "optype", "string", "dataType");
    }
    FieldValues values(fTranslator, fText, *var, isTypeExplicit);
    if (isContinuous) {
        ReadContinuousChildren(field, values);
    } else {
        ReadCategoricalChildren(field, values);
    }
    if (withEncoder && var->IsString()) {
        fTranslator.SetupCatEncoder(var.get());
    }
    return var;
}

std::unique_ptr<DictVar> DataFieldReader::MakeVar(const xercesc::DOMElement* field,
                                                  const ScoreDictionary& dictionary) const {
    const XMLCh* nameText = Required(field, PMMLModelTags::XML_ATT_DATAFIELD_NAME);
    const std::string name = fText(nameText);
    if (dictionary.GetVar(name)) {
        Raise<Message::DUPLICATE_VARIABLE_IN>(name, "DataDictionary");
    }
    auto var = std::make_unique<DictVar>(name, ScoreDictVar::kNUMERIC_VAR);
    const XMLCh* display = BaseTranslator::GetAttribute(field, PMMLModelTags::XML_ATT_DATAFIELD_DISPLAYNAME);
    var->SetLabel(Equals(display, "") ? name : fText(display));
    return var;
}

void DataFieldReader::SetLevel(const xercesc::DOMElement* field, DictVar& var) const {
    const XMLCh* text = Required(field, PMMLModelTags::XML_ATT_DATAFIELD_OPTYPE);
    const auto level = ReadMeasureLevel(text);
    if (!level) {
        Raise<Message::INVALID_ATTRIBUTE_VALUE>(fText(text), "optype");
    }
    var.SetMLevel(*level);
}

DataFieldReader::Storage DataFieldReader::ReadExtensions(xercesc::DOMElement* field, DictVar& var) {
    Storage storage{BaseTranslator::GetAttribute(field, PMMLModelTags::XML_ATT_STORAGETYPE)};
    DescendantsByTag extensions(field, PMMLModelTags::XML_ELE_EXTENSION);
    while (xercesc::DOMElement* extension = extensions.Next()) {
        ReadExtension(extension, storage, var);
        fTranslator.ParseUsageTypeExtension(extension, &var);
    }
    return storage;
}

void DataFieldReader::ReadExtension(const xercesc::DOMElement* extension, Storage& storage, DictVar& var) const {
    const XMLCh* name = BaseTranslator::GetAttribute(extension, PMMLModelTags::XML_ATT_EXT_NAME);
    const XMLCh* value = BaseTranslator::GetAttribute(extension, PMMLModelTags::XML_ATT_EXT_VALUE);
    const bool isTrue = Equals(value, PMMLModelTags::XML_ATT_EXT_VALUE_VALUE_TRUE);
    if (isTrue && Equals(name, "noSpaceTrim")) {
        storage.noSpaceTrim = true;
    } else if (isTrue && Equals(name, "emptyStringOk")) {
        storage.emptyStringOk = true;
    } else if (Equals(name, PMMLModelTags::XML_ELE_XMEASURE) || Equals(name, "measure")) {
        SetMeasure(value, var);
    } else if (!storage.isFromExtension && Equals(name, PMMLModelTags::XML_ATT_STORAGETYPE)) {
        storage.type = value;
        storage.isFromExtension = true;
    }
}

void DataFieldReader::SetMeasure(const XMLCh* measure, DictVar& var) const {
    var.SetXMeasure(fText(measure));
    if (!Equals(measure, PMMLModelTags::XML_VAL_FLAG)) {
        return;
    }
    if (!var.SetFlagVariable(true)) {
        Raise<Message::TYPE_SUPPORTED_ONLY_BY>("flag", "categorical");
    }
}

/// @return whether the document says how the field is stored; the attribute x-storageType alone does not count
bool DataFieldReader::SetType(const xercesc::DOMElement* field, const Storage& storage, DictVar& var) {
    if (Equals(storage.type, PMMLModelTags::XML_VAL_STRING)) {
        var.SetVarType(ScoreDictVar::STRING_VAR);
        return storage.isFromExtension;
    }
    const XMLCh* dataType = BaseTranslator::GetAttribute(field, PMMLModelTags::XML_ATT_DATATYPE);
    SetDataType(dataType, fTranslator, var);
    return storage.isFromExtension || !Equals(dataType, "");
}

} // namespace veltrane::translators
