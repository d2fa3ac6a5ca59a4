#include "diagnostics/raise.h"
#include "translators/dictionary/category_encoder.h"
#include "translators/frame/element_walk.h"

#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/PMMLModelTags.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/ScoreValueLabel.h>
#include <MCVeltrane_900/ScoreValueLabelSet.h>

#include <xercesc/dom/DOMElement.hpp>

#include <algorithm>

namespace MCVeltrane_900 {
namespace {

using veltrane::diagnostics::Message;
using veltrane::diagnostics::Raise;

/// The position of the first of the variable's labels whose value `matches`; -1 when none does.
template <typename Matches>
int FindLabel(const ScoreDictVar& var, Matches matches) {
    const ScoreValueLabelSet* labels = var.GetValueLabels();
    if (!labels || labels->Size() == 0) {
        Raise<Message::MISSING_VALUE_LIST>(var.GetName());
    }
    const auto& all = labels->GetAllValueLabels();
    const auto found = std::find_if(all.begin(), all.end(), [&](const ScoreValueLabel* label) {
        return label->GetValue() && matches(*label->GetValue());
    });
    return found == all.end() ? -1 : static_cast<int>(found - all.begin());
}

/// What an operator makes of the position `i` among `last` + 1 values.
struct OrdinalOperator {
    const char* text;
    int result;
    int (*low)(int i);
    int (*high)(int i, int last);
};

int First(int) {
    return 0;
}
int This(int i) {
    return i;
}
int Next(int i) {
    return i + 1;
}
int ThisAtMost(int i, int) {
    return i;
}
int Previous(int i, int) {
    return i - 1;
}
int Last(int, int last) {
    return last;
}

const OrdinalOperator kOrdinalOperators[] = {
    {PMMLModelTags::XML_VAL_OPERATOR_GREATERTHAN, 1, Next, Last},
    {PMMLModelTags::XML_VAL_OPERATOR_GREATEROREQUAL, 1, This, Last},
    {PMMLModelTags::XML_VAL_OPERATOR_LESSTHAN, 1, First, Previous},
    {PMMLModelTags::XML_VAL_OPERATOR_LESSOREQUAL, 1, First, ThisAtMost},
    {PMMLModelTags::XML_VAL_OPERATOR_EQUAL, 0, This, ThisAtMost},
    {PMMLModelTags::XML_VAL_OPERATOR_NOTEQUAL, 2, This, ThisAtMost},
};

} // namespace

bool PMMLTranslator::SetupCatEncoder(ScoreDictVar* var) {
    return veltrane::translators::SetupCategoryEncoder(var);
}

bool PMMLTranslator::IsValidScoreValue(const ScoreDictVar* var, const std::string& text) {
    if (!var) {
        return false;
    }
    if (var->GetVarType() != ScoreDictVar::kNUMERIC_VAR) {
        return FindLabel(*var, [&](const ScoreValue& value) { return value.GetString() == text; }) >= 0;
    }
    const double number = NumericValue(text).GetDouble();
    return FindLabel(*var, [&](const ScoreValue& value) { return value.GetDouble() == number; }) >= 0;
}

int PMMLTranslator::GetIndexOfOrdinalValue(const std::string& text, const ScoreDictVar* var) {
    if (!var) {
        return -1;
    }
    if (var->GetVarType() != ScoreDictVar::kNUMERIC_VAR) {
        return FindLabel(*var, [&](const ScoreValue& value) { return value.GetString() == text; });
    }
    const NumericValue number(text);
    return FindLabel(*var, [&](const ScoreValue& value) { return value == number; });
}

int PMMLTranslator::HandleOrdinalVariable(xercesc::DOMElement* predicate, const ScoreDictVar* var, int& low,
                                          int& high) {
    const std::string value = ToString(GetAttributeForced(predicate, PMMLModelTags::XML_ATT_VALUE));
    const XMLCh* operatorText = GetAttributeForced(predicate, PMMLModelTags::XML_ATT_OPERATOR);
    const int index = GetIndexOfOrdinalValue(value, var);
    if (index < 0) {
        Raise<Message::INVALID_ATTRIBUTE_VALUE_IN>(value, "value", var ? var->GetName() : std::string());
    }
    const int last = var->GetNumberOfCats() - 1;
    for (const OrdinalOperator& candidate : kOrdinalOperators) {
        if (veltrane::translators::Equals(operatorText, candidate.text)) {
            low = candidate.low(index);
            high = candidate.high(index, last);
            return candidate.result;
        }
    }
    Raise<Message::INVALID_ATTRIBUTE_VALUE_IN>(ToString(operatorText), "operator", var->GetName());
}

} // namespace MCVeltrane_900
