#include "translators/derived/map_values_reader.h"

#include "diagnostics/raise.h"
#include "translators/derived/recode_attributes.h"
#include "translators/derived/table_rows_reader.h"
#include "translators/frame/element_walk.h"

#include <MCVeltrane_900/InlineTable.h>
#include <MCVeltrane_900/MapValues.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/PMMLModelTags.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/TransformVar.h>
#include <MCVeltrane_900/VTException.h>

#include <xercesc/dom/DOMElement.hpp>

#include <memory>

namespace veltrane::translators {

using diagnostics::Message;
using diagnostics::Raise;
using MCVeltrane_900::BaseTranslator;
using MCVeltrane_900::InlineTable;
using MCVeltrane_900::NumericValue;
using MCVeltrane_900::PMMLModelTags;
using MCVeltrane_900::ScoreDictVar;
using MCVeltrane_900::ScoreValue;
using MCVeltrane_900::VTException;
using xercesc::DOMElement;

namespace {

/// The error code of a pair whose field is unknown. It is no message of the catalogue: the detail is all the text.
constexpr int kUndefinedField = 1;

bool IsExtension(const DOMElement* element) {
    return HasTag(element, PMMLModelTags::XML_ELE_EXTENSION);
}

bool IsRecodeTargetSysmis(const DOMElement* extension) {
    return Equals(BaseTranslator::GetAttribute(extension, PMMLModelTags::XML_ATT_EXT_NAME),
                  PMMLModelTags::XML_ATT_TRAN_EXT_NAME_RECODETARGETSYSMIS);
}

} // namespace

std::string MapValuesReader::Read(DOMElement* mapValues) {
    fMap.SetOutputColumn(fText.Forced(mapValues, PMMLModelTags::XML_ATT_MAPVALUES_OUTCOLUMN));
    for (DOMElement* child : ChildElements(mapValues)) {
        ReadChild(child);
    }
    return fSourceName;
}

void MapValuesReader::ReadChild(DOMElement* child) {
    if (HasTag(child, PMMLModelTags::XML_ELE_FIELDCOLPAIR)) {
        ReadPair(child);
    } else if (HasTag(child, PMMLModelTags::XML_ELE_INLTABLE)) {
        ReadTable(child);
    } else if (IsExtension(child)) {
        ReadExtension(child);
    } else if (!HasTag(child, PMMLModelTags::XML_ELE_TABLELOCATOR)) {
        Raise<Message::INVALID_ATTRIBUTE_VALUE_IN>(fText.Tag(child), PMMLModelTags::XML_ATT_NAME,
                                                   PMMLModelTags::XML_ELE_MAPVALUES);
    }
}

void MapValuesReader::ReadPair(DOMElement* pair) {
    const std::string name = fText.Forced(pair, PMMLModelTags::XML_ATT_FIELD);
    const ScoreDictVar* field = fFields.Find(name);
    if (field == nullptr) {
        throw VTException(kUndefinedField, name + ": not predefined!");
    }
    fMap.AddInputField(field);
    fMap.AddFieldColumnPair(name, fText.Forced(pair, PMMLModelTags::XML_ATT_FIELDCOLPAIR_COLUMN));
    fSource = field;
    fSourceName = name;
}

void MapValuesReader::ReadExtension(DOMElement* extension) {
    if (!IsRecodeTargetSysmis(extension)) {
        fTranslator.HandleKORDExtensions(extension, &fVar);
        return;
    }
    RecodeTargetToSysmis(extension);
    InstallTable();
}

void MapValuesReader::ReadTable(DOMElement* element) {
    InlineTable& table = InstallTable();
    if (fSource == nullptr) {
        Raise<Message::MISSING_DEFINITION>(PMMLModelTags::XML_ELE_FIELDCOLPAIR, PMMLModelTags::XML_ELE_INLTABLE);
    }
    if (DOMElement* first = FirstChildElement(element); first != nullptr && IsExtension(first)) {
        ReadTableExtensions(first);
    }
    TableRowsReader rows(fText, fFields, fVar, fMap, table);
    rows.Read(element);
}

// The extensions at the head of a table. A recode to the missing number stands there alone; any other starts a run.
void MapValuesReader::ReadTableExtensions(DOMElement* first) {
    if (IsRecodeTargetSysmis(first)) {
        RecodeTargetToSysmis(first);
        return;
    }
    for (DOMElement* next = first; next != nullptr && IsExtension(next); next = NextElement(next)) {
        fTranslator.HandleKORDExtensions(next, &fVar);
    }
}

// The extension's value, as one of the last source field, becomes missing. Ahead of any source field there is no type
// to read it with.
void MapValuesReader::RecodeTargetToSysmis(DOMElement* extension) {
    if (fVar.GetVarType() != ScoreDictVar::kNUMERIC_VAR) {
        Raise<Message::PARAMETER_TYPE_MISMATCH>(PMMLModelTags::XML_ATT_TRAN_EXT_NAME_RECODETARGETSYSMIS,
                                                fVar.GetName());
    }
    if (fSource == nullptr) {
        Raise<Message::MISSING_DEFINITION>(PMMLModelTags::XML_ELE_FIELDCOLPAIR, PMMLModelTags::XML_ELE_MAPVALUES);
    }
    std::unique_ptr<ScoreValue> key =
        MakeCellValue(*fSource, fText.Attribute(extension, PMMLModelTags::XML_ATT_EXT_VALUE));
    fVar.AddEncodingMap(key.release(), new NumericValue(NumericValue::SYSMIS));
}

// The map gives an earlier table up without deleting it.
InlineTable& MapValuesReader::InstallTable() {
    auto table = std::make_unique<InlineTable>();
    const std::unique_ptr<InlineTable> replaced(fMap.GetTable());
    fMap.SetTable(table.release());
    return *fMap.GetTable();
}

} // namespace veltrane::translators

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
