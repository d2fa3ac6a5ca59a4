#include "diagnostics/raise.h"
#include "translators/document_text.h"
#include "translators/element_walk.h"
#include "translators/predicate_operand.h"

#include <MCVeltrane_900/CompoundPredicate.h>
#include <MCVeltrane_900/FalsePredicate.h>
#include <MCVeltrane_900/PMMLModelTags.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/SetPredicate.h>
#include <MCVeltrane_900/SimplePredicate.h>
#include <MCVeltrane_900/TruePredicate.h>

#include <xercesc/dom/DOMElement.hpp>

#include <memory>

namespace MCVeltrane_900 {

using veltrane::diagnostics::Raise;
using namespace veltrane::translators;

namespace {

using xercesc::DOMElement;
using BoolOperator = ScorePredicate::CompoundBoolOperator;
using OwnedPredicate = std::unique_ptr<ScorePredicate>;
using Tags = PMMLModelTags;

/// Compounds within compounds. Documents are bounded below this, but a plug-in may hand in a DOM that is not; reading,
/// evaluating, copying and deleting compounds all go down from one to the next.
constexpr int kDeepestCompound = 1000;

struct BoolOperatorWord {
    const char* text;
    BoolOperator op;
};

constexpr BoolOperatorWord kBoolOperators[] = {
    {Tags::XML_VAL_AND, ScorePredicate::BOOL_AND},
    {Tags::XML_VAL_OR, ScorePredicate::BOOL_OR},
    {Tags::XML_VAL_XOR, ScorePredicate::BOOL_XOR},
    {Tags::XML_VAL_SURROGATE, ScorePredicate::BOOL_SURROGATE},
};

/// What every compound of one call is read with.
struct CompoundScope {
    PMMLTranslator& translator;
    const DocumentText& text;
    const ScoreDictionary* dictionary;
    const ScoreDictionary* derived;
    bool ordinalAsScale;
};

/// Reads one CompoundPredicate. What was read of it is freed with the reader.
class CompoundReader {
public:
    CompoundReader(const CompoundScope& scope, int depth) : fScope(scope), fDepth(depth) {}

    /// Null when nothing is left of the compound.
    OwnedPredicate Read(const DOMElement* compound) {
        if (fDepth > kDeepestCompound) {
            Raise(260221, Tags::XML_ELE_COMPOUNDPREDICATE);
        }
        fOperator = ReadOperator(compound);
        for (DOMElement* child : ChildElements(compound)) {
            ReadChild(child);
        }
        return Result();
    }

private:
    using ReadPredicate = OwnedPredicate (CompoundReader::*)(DOMElement* element);
    struct ChildRule {
        const char* tag;
        ReadPredicate read;
    };
    static const ChildRule kChildRules[];

    BoolOperator ReadOperator(const DOMElement* compound) const {
        const XMLCh* text = BaseTranslator::GetAttribute(compound, Tags::XML_ATT_BOOLEANOPERATOR);
        for (const BoolOperatorWord& word : kBoolOperators) {
            if (Equals(text, word.text)) {
                return word.op;
            }
        }
        Raise(260153, fScope.text(text), Tags::XML_ATT_BOOLEANOPERATOR, Tags::XML_ELE_COMPOUNDPREDICATE);
    }

    void ReadChild(DOMElement* child) {
        for (const ChildRule& rule : kChildRules) {
            if (HasTag(child, rule.tag)) {
                if (OwnedPredicate predicate = (this->*rule.read)(child)) {
                    fChildren.push_back(std::move(predicate));
                }
                return;
            }
        }
    }

    OwnedPredicate ReadSimple(DOMElement* element) {
        return OwnedPredicate(
            fScope.translator.ParsePredicate(element, fScope.dictionary, fScope.derived, fScope.ordinalAsScale));
    }
    OwnedPredicate ReadCompound(DOMElement* element) { return CompoundReader(fScope, fDepth + 1).Read(element); }
    OwnedPredicate ReadSet(DOMElement* element) {
        return OwnedPredicate(fScope.translator.ParseSetPredicate(element, fScope.dictionary, fScope.derived));
    }

    // A child that leaves its compound's result as it is, is only remembered.
    OwnedPredicate ReadTrue(DOMElement*) {
        if (fOperator == ScorePredicate::BOOL_AND) {
            fNeutral = std::make_unique<TruePredicate>();
            return nullptr;
        }
        return std::make_unique<TruePredicate>();
    }
    OwnedPredicate ReadFalse(DOMElement*) {
        if (fOperator == ScorePredicate::BOOL_OR) {
            fNeutral = std::make_unique<FalsePredicate>();
            return nullptr;
        }
        return std::make_unique<FalsePredicate>();
    }

    OwnedPredicate Result() {
        if (fChildren.empty()) {
            return std::move(fNeutral);
        }
        if (fChildren.size() == 1) {
            return std::move(fChildren.front());
        }
        auto compound = std::make_unique<CompoundPredicate>(fOperator);
        for (OwnedPredicate& child : fChildren) {
            compound->AddPredicate(child.release());
        }
        return compound;
    }

    const CompoundScope& fScope;
    int fDepth;
    BoolOperator fOperator = ScorePredicate::BOOL_OR;
    std::vector<OwnedPredicate> fChildren;

    /// What the compound comes to when nothing but children without an effect stands in it.
    OwnedPredicate fNeutral;
};

const CompoundReader::ChildRule CompoundReader::kChildRules[] = {
    {Tags::XML_ELE_PREDICATE, &CompoundReader::ReadSimple},
    {Tags::XML_ELE_COMPOUNDPREDICATE, &CompoundReader::ReadCompound},
    {Tags::XML_ELE_SETPREDICATE, &CompoundReader::ReadSet},
    {Tags::XML_ELE_TRUE, &CompoundReader::ReadTrue},
    {Tags::XML_ELE_FALSE, &CompoundReader::ReadFalse},
};

} // namespace

ScorePredicate* PMMLTranslator::ParseCompoundPredicate(xercesc::DOMNode* node, const ScoreDictionary* dictionary,
                                                       const ScoreDictionary* derived, bool ordinalAsScale) {
    const DOMElement* element = RequireElement(node, PMMLModelTags::XML_ELE_COMPOUNDPREDICATE);
    const DocumentText text(*this, &PMMLTranslator::ToString);
    const CompoundScope scope{*this, text, dictionary, derived, ordinalAsScale};
    return CompoundReader(scope, 1).Read(element).release();
}

} // namespace MCVeltrane_900
