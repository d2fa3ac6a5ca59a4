#include "translators/frame/element_walk.h"

#include <MCVeltrane_900/PMMLModelTags.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/SmartTranscoder.h>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/XMLString.hpp>

#include <memory>

namespace MCVeltrane_900 {
namespace {

using veltrane::translators::ChildElements;
using veltrane::translators::Equals;
using veltrane::translators::HasTag;

struct DateTimeWord {
    const char* text;
    ScoreDictVar::DateTimeType type;
};

const DateTimeWord kDateTimeWords[] = {
    {PMMLModelTags::XML_VAL_DATE, ScoreDictVar::DT_DATE},
    {PMMLModelTags::XML_VAL_TIME, ScoreDictVar::DT_TIME},
    {PMMLModelTags::XML_VAL_DATETIME, ScoreDictVar::DT_DATETIME},
    {PMMLModelTags::XML_VAL_DATEDAYSSINCE_0, ScoreDictVar::DT_DAYS_SINCE_0},
    {PMMLModelTags::XML_VAL_DATEDAYSSINCE_1960, ScoreDictVar::DT_DAYS_SINCE_1960},
    {PMMLModelTags::XML_VAL_DATEDAYSSINCE_1970, ScoreDictVar::DT_DAYS_SINCE_1970},
    {PMMLModelTags::XML_VAL_DATEDAYSSINCE_1980, ScoreDictVar::DT_DAYS_SINCE_1980},
    {PMMLModelTags::XML_VAL_TIMESECONDS, ScoreDictVar::DT_TIME_SECONDS},
    {PMMLModelTags::XML_VAL_DATETIMESECONDSSINCE_0, ScoreDictVar::DT_SECONDS_SINCE_0},
    {PMMLModelTags::XML_VAL_DATETIMESECONDSSINCE_1960, ScoreDictVar::DT_SECONDS_SINCE_1960},
    {PMMLModelTags::XML_VAL_DATETIMESECONDSSINCE_1970, ScoreDictVar::DT_SECONDS_SINCE_1970},
    {PMMLModelTags::XML_VAL_DATETIMESECONDSSINCE_1980, ScoreDictVar::DT_SECONDS_SINCE_1980},
};

} // namespace

PMMLTranslator::PMMLTranslator() : PMMLTranslator(std::string()) {}

PMMLTranslator::PMMLTranslator(const std::string& encoding)
    : fWord(0), fEncoding(encoding), fConstant(4.0), fNodeCounter(0) {}

PMMLTranslator::PMMLTranslator(const PMMLTranslator& other) = default;
PMMLTranslator& PMMLTranslator::operator=(const PMMLTranslator& other) = default;
PMMLTranslator::~PMMLTranslator() = default;

ScoreModel* PMMLTranslator::ParseFromTree(xercesc::DOMDocument*, const std::string&) {
    return nullptr;
}

ScoreDictVar::DateTimeType PMMLTranslator::ParseDateTimeType(const XMLCh* text) {
    for (const DateTimeWord& word : kDateTimeWords) {
        if (Equals(text, word.text)) {
            return word.type;
        }
    }
    return ScoreDictVar::DT_NONE;
}

void PMMLTranslator::ParseUsageTypeExtension(xercesc::DOMElement* extension, ScoreDictVar* var) {
    if (!extension) {
        return;
    }
    for (const xercesc::DOMElement* child : ChildElements(extension)) {
        if (HasTag(child, PMMLModelTags::XML_ATT_EXTENSION_USAGETYPE) &&
            Equals(GetAttribute(child, PMMLModelTags::XML_ATT_EXT_VALUE), PMMLModelTags::XML_VAL_USAGETYPE_DISABLE)) {
            var->SetUsageType(false);
        }
    }
}

bool PMMLTranslator::XStrEqualsUTF8Str(const XMLCh* text, const char* literal) {
    if (!GetTranscoder()) {
        return false;
    }
    const std::unique_ptr<XMLCh[]> converted(GetTranscoder()->ChangeChar2XML(literal));
    return converted && xercesc::XMLString::equals(text, converted.get());
}

} // namespace MCVeltrane_900
