#include "diagnostics/raise.h"
#include "translators/document_text.h"
#include "translators/element_walk.h"

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/PMMLModelTags.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/StringValue.h>

#include <xercesc/dom/DOMElement.hpp>

#include <memory>

namespace MCVeltrane_900 {

using veltrane::diagnostics::Raise;
using namespace veltrane::translators;
using xercesc::DOMElement;

namespace {

std::string ReadContent(const DocumentText& text, const DOMElement* constant) {
    if (constant->getFirstChild() == nullptr) {
        Raise(260114, PMMLModelTags::XML_ELE_CONSTANT);
    }
    return text.FirstChildValue(constant);
}

bool IsTextConstant(const DOMElement* constant) {
    return Equals(BaseTranslator::GetAttribute(constant, PMMLModelTags::XML_ATT_DATATYPE),
                  PMMLModelTags::XML_VAL_STRING);
}

} // namespace

// A constant is a text only when it says so; the content never decides. A date-time constant is a number, counted as
// its type counts, and its text becomes that of the internal seconds.
std::string PMMLTranslator::HandelConstant(DOMElement* constant, double& number, ScoreValue::ValueType& type) {
    number = NumericValue::GetSysmisValue();
    std::string content = ReadContent(DocumentText(*this, &PMMLTranslator::ToString), constant);
    if (IsTextConstant(constant)) {
        type = ScoreValue::STRING_VALUE;
        return content;
    }
    number = VerifyDouble(content);
    const auto dateTime = ParseDateTimeType(GetAttribute(constant, PMMLModelTags::XML_ATT_DATATYPE));
    if (dateTime == ScoreDictVar::DT_NONE) {
        type = ScoreValue::NUMERIC_VALUE;
        return content;
    }
    type = ScoreValue::DATETIME_VALUE;
    return DateTimeValue(number, dateTime).GetNumericString();
}

// The numeric text of a date-time is already in internal seconds, so it is taken as it stands and only the kind comes
// from the type.
ScoreValue* PMMLTranslator::HandelConstant(DOMElement* constant) {
    double number;
    ScoreValue::ValueType type;
    const std::string content = HandelConstant(constant, number, type);
    if (type == ScoreValue::STRING_VALUE) {
        return new StringValue(content);
    }
    if (type == ScoreValue::DATETIME_VALUE) {
        const auto dateTime = ParseDateTimeType(GetAttribute(constant, PMMLModelTags::XML_ATT_DATATYPE));
        return new DateTimeValue(NumericValue(content).GetDouble(), DateTimeValue::GetValType(dateTime));
    }
    return new NumericValue(number);
}

ScoreValue* PMMLTranslator::HandelConstantDefaultStringType(DOMElement* constant) {
    const DocumentText text(*this, &PMMLTranslator::ToString);
    const std::string type = text.Attribute(constant, PMMLModelTags::XML_ATT_DATATYPE);
    if (!type.empty() && !IsTextConstant(constant)) {
        Raise(260153, type, PMMLModelTags::XML_ATT_DATATYPE, PMMLModelTags::XML_ELE_CONSTANT);
    }
    return new StringValue(ReadContent(text, constant));
}

} // namespace MCVeltrane_900
