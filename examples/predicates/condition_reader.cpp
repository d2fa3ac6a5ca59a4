#include "condition_reader.h"

#include <MCVeltrane_900/FalsePredicate.h>
#include <MCVeltrane_900/SetPredicate.h>
#include <MCVeltrane_900/SimplePredicate.h>
#include <MCVeltrane_900/TruePredicate.h>

#include <xercesc/dom/DOM.hpp>

using namespace MCVeltrane_900;

ScoreModel* ConditionReader::ParseFromTree(xercesc::DOMDocument* document, const std::string& encoding) {
    CreateTranscoder(encoding);
    xercesc::DOMElement* root = document->getDocumentElement();
    fFields.reset(ParseDictionary(GetChildByTagForced(root, "DataDictionary"), false));
    // Derived fields of the document and of its models alike.
    fDerived.reset(HandleTransformationDictionary(root, fFields.get()));
    if (fDerived) {
        fDerived->SetUpDerivedCaseRecord();
    }
    for (const char* tag : {"Node", "SimpleRule", "CompoundRule"}) {
        ReadConditionsOf(document, tag);
    }
    return nullptr;
}

void ConditionReader::ReadConditionsOf(xercesc::DOMDocument* document, const std::string& tag) {
    const xercesc::DOMNodeList* elements = GetElementsByTagName(document, tag);
    for (XMLSize_t i = 0; i < elements->getLength(); ++i) {
        auto* element = static_cast<xercesc::DOMElement*>(elements->item(i));
        const std::string id = ToString(GetAttribute(element, "id"));
        // A set predicate of a continuous field, and a compound of nothing, leave no condition.
        if (auto predicate = ReadConditionIn(element)) {
            fConditions.push_back({id.empty() ? tag + "#" + std::to_string(i + 1) : id, std::move(predicate)});
        }
    }
}

/// The first child that is a condition stands for its parent.
std::unique_ptr<ScorePredicate> ConditionReader::ReadConditionIn(xercesc::DOMNode* parent) {
    for (xercesc::DOMNode* child = GetFirstChildElt(parent); child != nullptr; child = GetNextSiblingElt(child)) {
        if (auto predicate = ReadCondition(child)) {
            return predicate;
        }
    }
    return nullptr;
}

std::unique_ptr<ScorePredicate> ConditionReader::ReadCondition(xercesc::DOMNode* element) {
    constexpr bool kOrdinalAsScale = false;
    const std::string tag = ToString(element->getNodeName());
    if (tag == "True") {
        return std::make_unique<TruePredicate>();
    }
    if (tag == "False") {
        return std::make_unique<FalsePredicate>();
    }
    ScorePredicate* predicate = nullptr;
    if (tag == "SimplePredicate") {
        predicate = ParsePredicate(element, fFields.get(), fDerived.get(), kOrdinalAsScale);
    } else if (tag == "SimpleSetPredicate") {
        predicate = ParseSetPredicate(element, fFields.get(), fDerived.get());
    } else if (tag == "CompoundPredicate") {
        predicate = ParseCompoundPredicate(element, fFields.get(), fDerived.get(), kOrdinalAsScale);
    }
    return std::unique_ptr<ScorePredicate>(predicate);
}
