#include "data/values/number_text.h"
#include "diagnostics/raise.h"
#include "translators/frame/local_text.h"
#include "translators/frame/number_check.h"

#include <MCVeltrane_900/BaseTranslator.h>
#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/SmartTranscoder.h>
#include <MCVeltrane_900/StringValue.h>

#include <xercesc/util/XMLString.hpp>

namespace MCVeltrane_900 {
namespace {

using veltrane::diagnostics::Message;
using veltrane::diagnostics::Raise;
using veltrane::translators::LocalText;
using veltrane::translators::LocalView;
using veltrane::translators::WideName;

int CheckedInt(std::string_view text) {
    if (!veltrane::translators::IsIntText(text)) {
        Raise<Message::INVALID_VALUE_OF_TYPE>(text, "integer");
    }
    return veltrane::data::ReadInteger(text);
}

double CheckedDouble(std::string_view text) {
    text = veltrane::translators::TrimBlanks(text);
    if (!veltrane::translators::IsDoubleText(text)) {
        Raise<Message::INVALID_VALUE_OF_TYPE>(text, "double");
    }
    return veltrane::translators::ReadDoubleText(text);
}

} // namespace

BaseTranslator::BaseTranslator() : fTranscoder(nullptr) {}

BaseTranslator::BaseTranslator(const BaseTranslator& other) = default;
BaseTranslator& BaseTranslator::operator=(const BaseTranslator& other) = default;
BaseTranslator::~BaseTranslator() = default;

ScoreModel* BaseTranslator::ParseFromTree(xercesc::DOMElement*, ScoreModel*, const std::string&) {
    return nullptr;
}

ScoreModel* BaseTranslator::ParseFromTree(xercesc::DOMElement*, ScoreDictionary*, ScoreDictionary*,
                                          const std::string&) {
    return nullptr;
}

ScoreModel* BaseTranslator::ParseFromTree(const std::string&, const std::string&) {
    return nullptr;
}

ScoreModel* BaseTranslator::ParseFromTree(std::istream&, const std::string&) {
    return nullptr;
}

ScoreModel* BaseTranslator::ParseFromTree(xercesc::DOMDocument*, ScoreDictionary*, const std::string&) {
    return nullptr;
}

ScoreModel* BaseTranslator::ParseFromTree(std::istream&, const std::string&, const std::string&) {
    return nullptr;
}

void BaseTranslator::CreateTranscoder(const std::string& encoding) {
    fTranscoderOwner =
        std::make_shared<SmartTranscoder>(encoding.empty() ? BaseTranslator::DEFAULT_ENCODING : encoding);
    fTranscoder = fTranscoderOwner.get();
}

std::string BaseTranslator::ToString(const XMLCh* text) {
    return fTranscoder ? fTranscoder->transcodeTo(text) : LocalText(text);
}

SmartTranscoder* BaseTranslator::GetTranscoder() const {
    return fTranscoder;
}

std::string BaseTranslator::TrimBlanks(const std::string& text) {
    return std::string(veltrane::translators::TrimBlanks(text));
}

bool BaseTranslator::IsEqual(SmartTranscoder* transcoder, const XMLCh* text, const std::string& literal) {
    return transcoder ? transcoder->transcodeTo(text) == literal : IsEqual(text, literal);
}

bool BaseTranslator::IsEqual(const XMLCh* text, const std::string& literal) {
    return xercesc::XMLString::equals(text, WideName(literal).Get());
}

int BaseTranslator::VerifyInt(const std::string& text) {
    return CheckedInt(text);
}

int BaseTranslator::VerifyInt(const XMLCh* text) {
    return CheckedInt(LocalView(text).Get());
}

double BaseTranslator::VerifyDouble(const std::string& text) {
    return CheckedDouble(text);
}

double BaseTranslator::VerifyDouble(const XMLCh* text) {
    return CheckedDouble(LocalView(text).Get());
}

double BaseTranslator::VerifyDateTime(const std::string& text, ScoreDictVar::DateTimeType type) {
    if (!DateTimeValue::IsValidDateTime(text, type)) {
        Raise<Message::INVALID_VALUE_OF_TYPE>(text, "dateTime");
    }
    return DateTimeValue(text, type).GetDouble();
}

double BaseTranslator::VerifyDateTime(const XMLCh* text, ScoreDictVar::DateTimeType type) {
    return VerifyDateTime(LocalText(text), type);
}

ScoreValue* BaseTranslator::CarefullyMakeVarValue(const ScoreDictVar* var, const std::string& text) {
    switch (var->GetVarType()) {
    case ScoreDictVar::STRING_VAR:
        return new StringValue(text);
    case ScoreDictVar::kNUMERIC_VAR:
        return new NumericValue(VerifyDouble(text));
    case ScoreDictVar::DATETIME_VAR:
        return new DateTimeValue(VerifyDouble(text), var->GetDateTimeType());
    }
    return nullptr;
}

ScoreValue* BaseTranslator::CarefullyMakeVarValue(const ScoreDictVar* var, const XMLCh* text) {
    switch (var->GetVarType()) {
    case ScoreDictVar::STRING_VAR:
        return new StringValue(ToString(text));
    case ScoreDictVar::kNUMERIC_VAR:
        return new NumericValue(VerifyDouble(text));
    case ScoreDictVar::DATETIME_VAR:
        return new DateTimeValue(VerifyDouble(text), var->GetDateTimeType());
    }
    return nullptr;
}

} // namespace MCVeltrane_900
