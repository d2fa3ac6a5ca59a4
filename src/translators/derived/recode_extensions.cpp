#include "diagnostics/raise.h"
#include "translators/frame/document_text.h"
#include "translators/frame/element_walk.h"
#include "translators/frame/field_lookup.h"

#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/PMMLModelTags.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/TransformVar.h>

#include <xercesc/dom/DOMElement.hpp>

#include <algorithm>
#include <iterator>

namespace MCVeltrane_900 {

using veltrane::diagnostics::Message;
using veltrane::diagnostics::Raise;
using namespace veltrane::translators;
using xercesc::DOMElement;

namespace {

/// What reads the value of one recode extension.
struct RecodeReader {
    PMMLTranslator& translator;
    DocumentText text;
    const DOMElement* extension;
    TransformVar& var;
};

void ElseCopy(RecodeReader& reader) {
    if (reader.var.GetRecodeDefaultValue() != nullptr) {
        Raise<Message::CONFLICTING_ELEMENTS>(PMMLModelTags::XML_ATT_DEFAULTVALUE,
                                             PMMLModelTags::XML_ATT_TRAN_EXT_NAME_ELSECOPY);
    }
    reader.var.SetRecodeElseCopy(true);
}

// The message names "mapSysmisTo", though it is a mapMissingTo that stands against the copy.
void MissingCopy(RecodeReader& reader) {
    if (reader.var.GetRecodeMissValueRep() != nullptr) {
        Raise<Message::CONFLICTING_ELEMENTS>(PMMLModelTags::XML_ATT_TRAN_EXT_NAME_MAPSYSMISTO,
                                             PMMLModelTags::XML_ATT_TRAN_EXT_NAME_MISSINGCOPY);
    }
    reader.var.SetRecodeMissingCopy(true);
}

void MapSysmisTo(RecodeReader& reader) {
    if (reader.var.GetRecodeSysmisValueRep() != nullptr) {
        Raise<Message::CONFLICTING_ELEMENTS>(PMMLModelTags::XML_ATT_TRAN_EXT_NAME_MAPSYSMISTO,
                                             PMMLModelTags::XML_ATT_TRAN_EXT_NAME_MAPSYSMISTO);
    }
    const std::string value = reader.text.Forced(reader.extension, PMMLModelTags::XML_ATT_EXT_VALUE);
    reader.var.SetRecodeSysmisValue(reader.translator.CarefullyMakeVarValue(&reader.var, value));
}

void MissingToSysmis(RecodeReader& reader) {
    TransformVar& var = reader.var;
    if (var.GetVarType() != ScoreDictVar::kNUMERIC_VAR) {
        Raise<Message::PARAMETER_TYPE_MISMATCH>(PMMLModelTags::XML_ATT_TRAN_EXT_NAME_RECODEMISSINGSISMIS,
                                                var.GetName());
    }
    if (var.GetRecodeMissValueRep() != nullptr || var.IsRecodeMissingCopy() ||
        var.GetRecodeSysmisValueRep() != nullptr) {
        Raise<Message::CONFLICTING_ELEMENTS>("mapSysmisTo, recodeMissingCopy, mapMissingTo",
                                             PMMLModelTags::XML_ATT_TRAN_EXT_NAME_RECODEMISSINGSISMIS);
    }
    var.SetRecodeMissValueTo(new NumericValue(NumericValue::SYSMIS));
}

struct Recode {
    const char* name;
    void (*read)(RecodeReader&);
};
constexpr Recode kRecodes[] = {
    {PMMLModelTags::XML_ATT_TRAN_EXT_NAME_ELSECOPY, ElseCopy},
    {PMMLModelTags::XML_ATT_TRAN_EXT_NAME_MISSINGCOPY, MissingCopy},
    {PMMLModelTags::XML_ATT_TRAN_EXT_NAME_MAPSYSMISTO, MapSysmisTo},
    {PMMLModelTags::XML_ATT_TRAN_EXT_NAME_RECODEMISSINGSISMIS, MissingToSysmis},
};

} // namespace

// A mapMissingTo or defaultValue attribute is read before the extensions of its element, so it is the extension that
// is refused when the two meet.
void PMMLTranslator::HandleKORDExtensions(DOMElement* extension, ScoreDictVar* var) {
    const XMLCh* name = GetAttribute(extension, PMMLModelTags::XML_ATT_EXT_NAME);
    const auto* recode = std::find_if(std::begin(kRecodes), std::end(kRecodes),
                                      [name](const Recode& row) { return Equals(name, row.name); });
    if (recode != std::end(kRecodes)) {
        RecodeReader reader{*this, DocumentText(*this, &PMMLTranslator::ToString), extension, AsTransformVar(var)};
        recode->read(reader);
    }
}

} // namespace MCVeltrane_900
