#include "diagnostics/raise.h"
#include "translators/frame/document_text.h"
#include "translators/frame/element_walk.h"

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/PMMLModelTags.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/StringValue.h>

#include <xercesc/dom/DOMElement.hpp>

#include <charconv>
#include <limits>
#include <memory>

namespace MCVeltrane_900 {

using veltrane::diagnostics::Message;
using veltrane::diagnostics::Raise;
using namespace veltrane::translators;
using xercesc::DOMElement;

namespace {

std::string ReadContent(const DocumentText& text, const DOMElement* constant) {
    if (constant->getFirstChild() == nullptr) {
        Raise<Message::MISSING_NODE>(PMMLModelTags::XML_ELE_CONSTANT);
    }
    return text.FirstChildValue(constant);
}

// The text of GetNumericString, the same under every locale: what reads it knows no other.
std::string SecondsText(const DateTimeValue& value) {
    const double seconds = value.GetDoubleValue(ScoreDictVar::DT_DATETIME);
    if (!(seconds > NumericValue::GetSysmisValue())) {
        return value.GetNumericString();
    }
    constexpr int kDecimals = 6;
    char buffer[std::numeric_limits<double>::max_exponent10 + kDecimals + 4];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, seconds, std::chars_format::fixed, kDecimals).ptr;
    return std::string(buffer, end);
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
    return SecondsText(DateTimeValue(number, dateTime));
}

// A date-time is the one whose text the other form gives.
ScoreValue* PMMLTranslator::HandelConstant(DOMElement* constant) {
    double number;
    ScoreValue::ValueType type;
    const std::string content = HandelConstant(constant, number, type);
    if (type == ScoreValue::STRING_VALUE) {
        return new StringValue(content);
    }
    if (type == ScoreValue::DATETIME_VALUE) {
        return new DateTimeValue(number, ParseDateTimeType(GetAttribute(constant, PMMLModelTags::XML_ATT_DATATYPE)));
    }
    return new NumericValue(number);
}

ScoreValue* PMMLTranslator::HandelConstantDefaultStringType(DOMElement* constant) {
    const DocumentText text(*this, &PMMLTranslator::ToString);
    const std::string type = text.Attribute(constant, PMMLModelTags::XML_ATT_DATATYPE);
    if (!type.empty() && !IsTextConstant(constant)) {
        Raise<Message::INVALID_ATTRIBUTE_VALUE_IN>(type, PMMLModelTags::XML_ATT_DATATYPE,
                                                   PMMLModelTags::XML_ELE_CONSTANT);
    }
    return new StringValue(ReadContent(text, constant));
}

} // namespace MCVeltrane_900
