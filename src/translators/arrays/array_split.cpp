#include "diagnostics/raise.h"
#include "translators/conditions/predicate_operand.h"
#include "translators/conditions/split_categories.h"
#include "translators/frame/document_text.h"
#include "translators/frame/element_walk.h"

#include <MCVeltrane_900/DiscreteSplit.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/PMMLModelTags.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/ScoreEncoder.h>
#include <MCVeltrane_900/StringValue.h>

#include <xercesc/dom/DOMElement.hpp>

#include <memory>

// From the array of a SimpleSetPredicate to the categories for which the condition holds.

namespace MCVeltrane_900 {

using veltrane::diagnostics::Message;
using veltrane::diagnostics::Raise;
using namespace veltrane::translators;

namespace {

using Tags = PMMLModelTags;
using Strings = std::vector<std::string>;

enum class ArrayKind { TEXT, NUMERIC, UNKNOWN };

/// By the array's type, and by the variable's where the array states none.
ArrayKind KindOf(const XMLCh* type, const ScoreDictVar& var) {
    if (Equals(type, Tags::XML_VAL_ARRAY_TYPE_STRING)) {
        return ArrayKind::TEXT;
    }
    if (Equals(type, Tags::XML_VAL_ARRAY_TYPE_REAL) || Equals(type, Tags::XML_VAL_ARRAY_TYPE_INT)) {
        return ArrayKind::NUMERIC;
    }
    const bool isUntyped = Equals(type, "");
    if (isUntyped && var.GetVarType() == ScoreDictVar::STRING_VAR) {
        return ArrayKind::TEXT;
    }
    return isUntyped && var.GetVarType() == ScoreDictVar::kNUMERIC_VAR ? ArrayKind::NUMERIC : ArrayKind::UNKNOWN;
}

/// Puts the elements of one array into a split, and their codes or numbers into the list that a plug-in reads. Which of
/// both happens, and by which number, differs from row to row here; plug-ins were built against each.
class ElementSink {
public:
    ElementSink(const ScoreDictVar& var, DiscreteSplit& split, std::vector<double>& array)
        : fVar(var), fSplit(split), fArray(array), fEncoder(LearningEncoder(var)) {}

    /// Elements that are in the set, each checked first.
    void PutTexts(const Strings& elements) {
        for (const std::string& element : elements) {
            auto value = std::make_unique<StringValue>(element);
            Check(*value, element, element);
            if (fEncoder == nullptr) {
                fSplit.PutSplit(value.release(), kOnlyChild);
                continue;
            }
            const double code = fEncoder->Encode(value.get());
            fArray.push_back(code);
            fSplit.PutSplit(code, kOnlyChild);
        }
    }
    void PutNumbers(const Strings& elements) {
        for (const std::string& element : elements) {
            auto value = std::make_unique<NumericValue>(element);
            Check(*value, element, value->GetString());
            if (fEncoder == nullptr) {
                PutNumber(std::move(value));
            } else {
                fSplit.PutSplit(IsOrdinal() ? value->GetDouble() : fEncoder->Encode(value.get()), kOnlyChild);
            }
        }
    }

    /// Categories that are left outside the set.
    void PutOtherTexts(const Strings& elements) {
        for (const std::string& element : elements) {
            if (fEncoder == nullptr) {
                fSplit.PutSplit(new StringValue(element), kOnlyChild);
                continue;
            }
            fArray.push_back(fEncoder->Encode(element));
            fSplit.PutSplit(static_cast<double>(fEncoder->EncodeConst(element)), kOnlyChild);
        }
    }
    void PutOtherNumbers(const Strings& elements) {
        for (const std::string& element : elements) {
            auto value = std::make_unique<NumericValue>(element);
            if (fEncoder == nullptr) {
                PutNumber(std::move(value));
            } else {
                fSplit.PutSplit(IsOrdinal() ? value->GetDouble() : fEncoder->Encode(element), kOnlyChild);
            }
        }
    }

private:
    bool IsOrdinal() const { return fVar.GetMLevel() == ScoreDictVar::LEVEL_ORDINAL; }

    void PutNumber(std::unique_ptr<NumericValue> value) {
        fArray.push_back(value->GetDouble());
        fSplit.PutSplit(value.release(), kOnlyChild);
    }

    /// The value has to be a category; a variable that the document gave none learns it.
    void Check(const ScoreValue& value, const std::string& element, const std::string& label) const {
        if (fVar.IsEmptyCateValues()) {
            LearnCategory(fVar, std::unique_ptr<ScoreValue>(value.Clone()), label);
        } else if (!fVar.IsValidValue(&value)) {
            Raise<Message::INVALID_ATTRIBUTE_VALUE>(element, Tags::XML_ATT_VALUE);
        }
    }

    const ScoreDictVar& fVar;
    DiscreteSplit& fSplit;
    std::vector<double>& fArray;
    ScoreEncoder* fEncoder;
};

/// Whether the operator is "isIn".
/// @throws VTException 260153 when it isn't "isNotIn" either
bool IsIn(const std::string& op, const ScoreDictVar& var) {
    const bool isIn = op == Tags::XML_KORD_TRANFUNC_ISIN;
    if (!isIn && op != Tags::XML_KORD_TRANFUNC_ISNOTIN) {
        Raise<Message::INVALID_ATTRIBUTE_VALUE_IN>(op, Tags::XML_ATT_OPERATOR, var.GetName());
    }
    return isIn;
}

} // namespace

DiscreteSplit* PMMLTranslator::HandleArrayDiscreteSplit(xercesc::DOMNode* node, const ScoreDictVar* var,
                                                        std::string& op, std::vector<double>& array) {
    auto split = std::make_unique<DiscreteSplit>(var);
    const DocumentText text(*this, &PMMLTranslator::ToString);
    const XMLCh* type = nullptr;
    Strings elements;
    if (xercesc::DOMElement* element = AsElement(node, PMMLModelTags::XML_ELE_SETPREDICATE)) {
        op = text.Forced(element, PMMLModelTags::XML_ATT_BOOLEANOPERATOR);
        xercesc::DOMElement* arrayElement = RequireElement(GetArrayNode(element), PMMLModelTags::XML_ELE_ARRAY);
        type = GetAttribute(arrayElement, PMMLModelTags::XML_ATT_ARRAY_TYPE);
        elements = GetArrayElements(arrayElement, type, var);
    }
    // A variable without categories learns them from a typed array as they are; an untyped one has to begin with a
    // number.
    if (Equals(type, "") && var->IsEmptyCateValues() && var->GetVarType() == ScoreDictVar::kNUMERIC_VAR &&
        !elements.empty()) {
        VerifyDouble(elements.front());
    }
    const ArrayKind kind = KindOf(type, *var);
    if (kind == ArrayKind::UNKNOWN) {
        Raise<Message::PROCESSING_ATTRIBUTE_FAILED>(text(type), PMMLModelTags::XML_ATT_ARRAY_TYPE);
    }
    const bool isIn = IsIn(op, *var);
    if (!isIn) {
        elements = Remove(var, std::move(elements));
    }
    ElementSink sink(*var, *split, array);
    if (kind == ArrayKind::TEXT) {
        isIn ? sink.PutTexts(elements) : sink.PutOtherTexts(elements);
    } else {
        isIn ? sink.PutNumbers(elements) : sink.PutOtherNumbers(elements);
    }
    return split.release();
}

} // namespace MCVeltrane_900
