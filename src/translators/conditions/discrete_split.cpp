#include "diagnostics/raise.h"
#include "translators/conditions/predicate_operand.h"
#include "translators/conditions/split_categories.h"
#include "translators/frame/document_text.h"

#include <MCVeltrane_900/DiscreteSplit.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/PMMLModelTags.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/ScoreEncoder.h>
#include <MCVeltrane_900/StringValue.h>

#include <xercesc/dom/DOMElement.hpp>

#include <algorithm>
#include <memory>

// From an operator and a category to the list of categories for which the condition holds.

namespace MCVeltrane_900 {

using veltrane::diagnostics::Message;
using veltrane::diagnostics::Raise;
using namespace veltrane::translators;

namespace {

/// What HandleOrdinalVariable gives for "notEqual".
constexpr int kAllButOne = 2;

bool IsText(const ScoreDictVar& var) {
    return var.GetVarType() == ScoreDictVar::STRING_VAR;
}

/// The span of all categories, cut down to what an operator leaves of them.
void Narrow(CategorySpan& span, int start, int end, int result) {
    if (result == kAllButOne) {
        span.excluded = start;
        return;
    }
    span.first = std::max(start, span.first);
    span.last = std::min(end, span.last);
}

/// Sets the split up for a test of missing values.
void MakeMissingTest(DiscreteSplit& split, bool& isMissing) {
    split.SetMissvalMap(kOnlyChild);
    isMissing = true;
}

/// The operand as the variable's labels are compared with it.
std::unique_ptr<ScoreValue> MakeOperand(const ScoreDictVar& var, const std::string& text) {
    if (IsText(var)) {
        return std::make_unique<StringValue>(text);
    }
    return std::make_unique<NumericValue>(text);
}

} // namespace

DiscreteSplit* PMMLTranslator::HandleNodeDiscreteSplit(xercesc::DOMNode* node, const ScoreDictVar* var, std::string& op,
                                                       bool& isMissing, std::string& value) {
    isMissing = false;
    auto split = std::make_unique<DiscreteSplit>(var);
    CategorySpan span{0, var->GetNumberOfCats() - 1, -1};
    bool expand = true;
    if (xercesc::DOMElement* element = AsElement(node, PMMLModelTags::XML_ELE_PREDICATE)) {
        const DocumentText text(*this, &PMMLTranslator::ToString);
        const PredicateOperand operand = ReadOperand(text, element, op, value);
        const bool isEmptyCategory = operand.form == OperandForm::EMPTY && IsText(*var) && HasEmptyCategory(*var);
        if (operand.form == OperandForm::IS_MISSING) {
            MakeMissingTest(*split, isMissing);
            expand = false;
        } else if (operand.form == OperandForm::IS_NOT_MISSING) {
            PutCategories(*split, *var, span);
            expand = false;
        } else if (operand.form == OperandForm::EMPTY && !isEmptyCategory) {
            MakeMissingTest(*split, isMissing);
            expand = !IsText(*var);
        } else if (var->GetMLevel() == ScoreDictVar::LEVEL_NOMINAL) {
            SetDiscreteSplitValue(var, split.get(), operand.value, kOnlyChild);
        } else {
            int start = 0;
            int end = 0;
            const int result = HandleOrdinalVariable(element, var, start, end);
            Narrow(span, start, end, result);
        }
    }
    if (expand && var->GetMLevel() == ScoreDictVar::LEVEL_ORDINAL) {
        RequireLabels(*var);
        PutCategories(*split, *var, span);
    }
    return split.release();
}

void PMMLTranslator::SetDiscreteSplitValue(const ScoreDictVar* var, DiscreteSplit* split, const XMLCh* value,
                                           int index) {
    if (value == nullptr) {
        Raise<Message::MISSING_ATTRIBUTE>(PMMLModelTags::XML_ATT_VALUE);
    }
    const std::string text = ToString(value);
    std::unique_ptr<ScoreValue> operand = MakeOperand(*var, text);
    RequireLabels(*var);
    if (!var->IsValidValue(operand.get())) {
        // The one other category that is right is a new one, of a variable that the document gave none.
        if (var->IsEmptyCateValues()) {
            LearnCategory(*var, std::unique_ptr<ScoreValue>(CarefullyMakeVarValue(var, value)), text);
        }
        if (!var->IsEmptyCateValues() || !var->IsValidValue(operand.get())) {
            Raise<Message::NO_VALID_VALUE>(var->GetName());
        }
    }
    if (ScoreEncoder* encoder = LearningEncoder(*var)) {
        split->PutSplit(static_cast<double>(encoder->Encode(operand.get())), index);
    } else {
        split->PutSplit(operand.release(), index);
    }
}

} // namespace MCVeltrane_900
