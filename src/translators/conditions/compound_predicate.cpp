#include "diagnostics/raise.h"
#include "translators/conditions/predicate_operand.h"
#include "translators/frame/document_text.h"
#include "translators/frame/element_walk.h"

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

using veltrane::diagnostics::Message;
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

enum class ChildKind { SIMPLE, COMPOUND, SET, IS_TRUE, IS_FALSE };

struct ChildWord {
    const char* tag;
    ChildKind kind;
};

constexpr ChildWord kChildren[] = {
    {Tags::XML_ELE_PREDICATE, ChildKind::SIMPLE}, {Tags::XML_ELE_COMPOUNDPREDICATE, ChildKind::COMPOUND},
    {Tags::XML_ELE_SETPREDICATE, ChildKind::SET}, {Tags::XML_ELE_TRUE, ChildKind::IS_TRUE},
    {Tags::XML_ELE_FALSE, ChildKind::IS_FALSE},
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
            Raise<Message::PROCESSING_FAILED>(Tags::XML_ELE_COMPOUNDPREDICATE);
        }
        fOperator = ReadOperator(compound);
        for (DOMElement* child : ChildElements(compound)) {
            ReadChild(child);
        }
        return Result();
    }

private:
    BoolOperator ReadOperator(const DOMElement* compound) const {
        const XMLCh* text = BaseTranslator::GetAttribute(compound, Tags::XML_ATT_BOOLEANOPERATOR);
        for (const BoolOperatorWord& word : kBoolOperators) {
            if (Equals(text, word.text)) {
                return word.op;
            }
        }
        Raise<Message::INVALID_ATTRIBUTE_VALUE_IN>(fScope.text(text), Tags::XML_ATT_BOOLEANOPERATOR,
                                                   Tags::XML_ELE_COMPOUNDPREDICATE);
    }

    void ReadChild(DOMElement* element) {
        for (const ChildWord& word : kChildren) {
            if (HasTag(element, word.tag)) {
                if (OwnedPredicate child = ReadAs(word.kind, element)) {
                    fChildren.push_back(std::move(child));
                }
                return;
            }
        }
    }

    OwnedPredicate ReadAs(ChildKind kind, DOMElement* element) {
        PMMLTranslator& translator = fScope.translator;
        switch (kind) {
        case ChildKind::SIMPLE:
            return OwnedPredicate(
                translator.ParsePredicate(element, fScope.dictionary, fScope.derived, fScope.ordinalAsScale));
        case ChildKind::SET:
            return OwnedPredicate(translator.ParseSetPredicate(element, fScope.dictionary, fScope.derived));
        case ChildKind::COMPOUND:
            return CompoundReader(fScope, fDepth + 1).Read(element);
        case ChildKind::IS_TRUE:
            return Constant<TruePredicate>(ScorePredicate::BOOL_AND);
        case ChildKind::IS_FALSE:
            return Constant<FalsePredicate>(ScorePredicate::BOOL_OR);
        }
        return nullptr;
    }

    /// A constant child. Under the operator whose result it leaves as it is, it is remembered and is no child.
    template <typename Predicate>
    OwnedPredicate Constant(BoolOperator neutralUnder) {
        auto constant = std::make_unique<Predicate>();
        if (fOperator != neutralUnder) {
            return constant;
        }
        fNeutral = std::move(constant);
        return nullptr;
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

    /// What the compound comes to when it has no child but a remembered one.
    OwnedPredicate fNeutral;
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
