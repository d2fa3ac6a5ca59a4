#include "scorecard_reader.h"

#include "kit/document/common_elements.h"
#include "kit/document/raise.h"

namespace veltrane_scorecard {

using veltrane_kit::ConditionReader;
using veltrane_kit::Element;
using veltrane_kit::Message;
using veltrane_kit::Narrow;
using veltrane_kit::Raise;
using veltrane_kit::Word;

namespace {

constexpr const XMLCh* kBaselineScore = u"baselineScore";
constexpr const XMLCh* kReasonCode = u"reasonCode";
constexpr const XMLCh* kPartialScore = u"partialScore";

constexpr Word<bool> kAlgorithms[] = {{u"pointsAbove", true}, {u"pointsBelow", false}};

/// How the producer came by the baselines, which stand in the document all the same.
constexpr Word<int> kMethods[] = {{u"max", 0}, {u"min", 1}, {u"mean", 2}, {u"neutral", 3}, {u"other", 4}};

} // namespace

void ScorecardReader::Read(const Element& model) {
    ReadAttributes(model);
    for (const Element child : model.Children()) {
        if (!child.Is(u"Characteristics")) {
            veltrane_kit::RequireCommonElement(child);
        }
    }
    const Element characteristics = model.RequireChild(u"Characteristics");
    for (const Element child : characteristics.Children()) {
        if (!child.Is(u"Characteristic")) {
            child.RaiseMisplaced();
        }
        ReadCharacteristic(child);
    }
    if (fCard.characteristics.empty()) {
        Raise<Message::MISSING_NODE_IN>("Characteristic", characteristics.Tag());
    }
}

void ScorecardReader::ReadAttributes(const Element& model) {
    if (fParts.IsClassification()) {
        Raise<Message::UNSUPPORTED_VALUE_IN>(model.Text(u"functionName"), "functionName", model.Tag(), "regression");
    }
    fCard.initialScore = model.NumberOr(u"initialScore", 0.0);
    fCard.tellsReasons = model.FlagOr(u"useReasonCodes", true);
    fCard.areReasonsAbove = model.OneOfOr(u"reasonCodeAlgorithm", kAlgorithms, false);
    model.OneOfOr(u"baselineMethod", kMethods, 0);
    fHasBaseline = model.Has(kBaselineScore);
    fBaseline = model.NumberOr(kBaselineScore, 0.0);
}

void ScorecardReader::ReadCharacteristic(const Element& element) {
    if (fCard.tellsReasons && !fHasBaseline && !element.Has(kBaselineScore)) {
        Raise<Message::MISSING_ATTRIBUTE_OF>(Narrow(kBaselineScore), element.Tag());
    }
    Characteristic characteristic;
    characteristic.baseline = element.NumberOr(kBaselineScore, fBaseline);
    characteristic.first = static_cast<std::int32_t>(fCard.attributes.size());
    for (const Element child : element.Children()) {
        if (!child.Is(u"Attribute")) {
            child.RaiseMisplaced();
        }
        ReadAttribute(child, element);
    }
    characteristic.count = static_cast<std::int32_t>(fCard.attributes.size()) - characteristic.first;
    if (characteristic.count == 0) {
        Raise<Message::MISSING_NODE_IN>("Attribute", element.Tag());
    }
    fCard.characteristics.push_back(characteristic);
}

/// An expression goes before points that stand beside it.
void ScorecardReader::ReadAttribute(const Element& element, const Element& characteristic) {
    Attribute attribute;
    attribute.condition = fConditions.Read(ConditionReader::RequirePredicate(element));
    if (const Element complex = element.Child(u"ComplexPartialScore")) {
        attribute.points = element.NumberOr(kPartialScore, 0.0);
        attribute.slot = fParts.inputs->Derived().AddUnnamed(complex, veltrane_kit::DataType::DOUBLE);
    } else {
        attribute.points = element.Number(kPartialScore);
    }
    attribute.reason = ReadReason(element, characteristic);
    fCard.attributes.push_back(attribute);
}

/// The code of an attribute, else that of its characteristic.
std::int32_t ScorecardReader::ReadReason(const Element& attribute, const Element& characteristic) {
    if (!attribute.Has(kReasonCode) && !characteristic.Has(kReasonCode)) {
        if (fCard.tellsReasons) {
            Raise<Message::MISSING_ATTRIBUTE_OF>(Narrow(kReasonCode), attribute.Tag());
        }
        return Attribute::kNone;
    }
    const Element& from = attribute.Has(kReasonCode) ? attribute : characteristic;
    const auto [found, isNew] =
        fReasons.emplace(from.Text(kReasonCode), static_cast<std::int32_t>(fCard.reasons.size()));
    if (isNew) {
        fCard.reasons.push_back(found->first);
    }
    return found->second;
}

} // namespace veltrane_scorecard
