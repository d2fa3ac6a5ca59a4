#include "translators/conditions/read_conditions.h"

#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreDictVar.h>
#include <MCVeltrane_900/ScoreEncoder.h>
#include <MCVeltrane_900/SetPredicate.h>
#include <MCVeltrane_900/SimplePredicate.h>
#include <MCVeltrane_900/StringValue.h>
#include <MCVeltrane_900/TruePredicate.h>

namespace veltrane::tests {

using namespace MCVeltrane_900;

namespace {

constexpr double kMissingCode = -2.0;

ScorePredicate* Read(PMMLTranslator& translator, xercesc::DOMNode* element, PlainCondition::Kind kind,
                     const ScoreDictionary* dictionary, bool ordinalAsScale) {
    switch (kind) {
    case PlainCondition::Kind::COMPARISON:
        return translator.ParsePredicate(element, dictionary, nullptr, ordinalAsScale);
    case PlainCondition::Kind::SET:
        return translator.ParseSetPredicate(element, dictionary, nullptr);
    default:
        return translator.ParseCompoundPredicate(element, dictionary, nullptr, ordinalAsScale);
    }
}

Truth TruthOf(ScorePredicate::PredicateResult result) {
    switch (result) {
    case ScorePredicate::PRED_TRUE:
        return Truth::IS_TRUE;
    case ScorePredicate::PRED_FALSE:
        return Truth::IS_FALSE;
    case ScorePredicate::PRED_SURROGATE_TRUE:
        return Truth::TRUE_BY_SURROGATE;
    default:
        return Truth::UNKNOWN;
    }
}

} // namespace

ReadConditions::ReadConditions(const std::vector<PlainField>& fields, const std::vector<PlainCondition>& conditions,
                               Encoders encoders, bool ordinalAsScale)
    : fFields(fields), fEncoders(encoders) {
    std::string text = "<PMML>" + ToXml(fields);
    for (const PlainCondition& condition : conditions) {
        text += ToXml(condition, fields);
    }
    const ParsedXml document(text + "</PMML>");
    xercesc::DOMNode* element = document.Root()->getFirstChild();
    fDictionary.reset(fTranslator.ParseDictionary(element, encoders != Encoders::NONE));
    for (std::size_t i = 0; i < fields.size(); ++i) {
        ScoreDictVar* var = fDictionary->GetVar(fields[i].name);
        var->SetEncodedValueIndex(static_cast<int>(i));
        if (encoders == Encoders::ALL) {
            fTranslator.SetupCatEncoder(var);
        }
    }
    for (const PlainCondition& condition : conditions) {
        element = element->getNextSibling();
        fPredicates.emplace_back(Read(fTranslator, element, condition.kind, fDictionary.get(), ordinalAsScale));
    }
}

Truth ReadConditions::Evaluate(std::size_t condition, const PlainCase& values) const {
    if (fEncoders == Encoders::ALL) {
        return TruthOf(fPredicates[condition]->Evaluate(EncodedValues(values)));
    }
    CaseRecord record;
    Fill(record, values);
    return TruthOf(fPredicates[condition]->Evaluate(&record, nullptr));
}

std::vector<double> ReadConditions::EncodedValues(const PlainCase& values) const {
    std::vector<double> encoded;
    for (std::size_t i = 0; i < fFields.size(); ++i) {
        const PlainField& field = fFields[i];
        const bool isNumber = field.kind == FieldKind::SCALE || field.kind == FieldKind::ORDINAL_NUMBER;
        if (!values[i]) {
            encoded.push_back(field.kind == FieldKind::SCALE ? NumericValue::GetSysmisValue() : kMissingCode);
        } else if (isNumber) {
            encoded.push_back(std::stod(*values[i]));
        } else {
            encoded.push_back(fDictionary->GetVar(field.name)->GetEncoder()->EncodeConst(*values[i]));
        }
    }
    return encoded;
}

void ReadConditions::Fill(CaseRecord& record, const PlainCase& values) const {
    for (std::size_t i = 0; i < fFields.size(); ++i) {
        if (!values[i]) {
            record.Add(fFields[i].name, fFields[i].IsText() ? nullptr : new NumericValue());
        } else if (fFields[i].IsText()) {
            record.Add(fFields[i].name, new StringValue(*values[i]));
        } else {
            record.Add(fFields[i].name, new NumericValue(std::stod(*values[i])));
        }
    }
}

} // namespace veltrane::tests
