#include "translators/conditions/split_categories.h"

#include "diagnostics/raise.h"
#include "translators/conditions/predicate_operand.h"

#include <MCVeltrane_900/DiscreteSplit.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreDictVar.h>
#include <MCVeltrane_900/ScoreEncoder.h>
#include <MCVeltrane_900/ScoreValueLabel.h>
#include <MCVeltrane_900/ScoreValueLabelSet.h>
#include <MCVeltrane_900/StringValue.h>

#include <algorithm>

namespace veltrane::translators {

using namespace MCVeltrane_900;

namespace {

void PutCategory(DiscreteSplit& split, const ScoreDictVar& var, const ScoreEncoder* encoder, const ScoreValue& value) {
    const bool isNumeric = var.GetVarType() == ScoreDictVar::kNUMERIC_VAR;
    if (encoder != nullptr) {
        const double key = isNumeric ? value.GetDouble() : static_cast<double>(encoder->EncodeConst(&value));
        split.PutSplit(key, kOnlyChild);
    } else if (isNumeric) {
        split.PutSplit(new NumericValue(value.GetDouble()), kOnlyChild);
    } else {
        split.PutSplit(new StringValue(value.GetString()), kOnlyChild);
    }
}

} // namespace

const ScoreValueLabelSet& RequireLabels(const ScoreDictVar& var) {
    const ScoreValueLabelSet* labels = var.GetValueLabels();
    if (labels == nullptr) {
        diagnostics::Raise<diagnostics::Message::MISSING_VALUE_LIST>(var.GetName());
    }
    return *labels;
}

void PutCategories(DiscreteSplit& split, const ScoreDictVar& var, const CategorySpan& span) {
    if (var.GetValueLabels() == nullptr) {
        return;
    }
    const std::vector<ScoreValueLabel*>& labels = var.GetValueLabels()->GetAllValueLabels();
    const int end = std::min(span.last + 1, static_cast<int>(labels.size()));
    for (int i = span.first; i < end; ++i) {
        const ScoreValue* value = i == span.excluded ? nullptr : labels[static_cast<std::size_t>(i)]->GetValue();
        if (value != nullptr) {
            PutCategory(split, var, var.GetEncoder(), *value);
        }
    }
}

bool HasEmptyCategory(const ScoreDictVar& var) {
    const std::vector<ScoreValueLabel*>& labels = RequireLabels(var).GetAllValueLabels();
    return std::any_of(labels.begin(), labels.end(), [](const ScoreValueLabel* label) {
        return label->GetValue() != nullptr && label->GetValue()->GetString().empty();
    });
}

ScoreEncoder* LearningEncoder(const ScoreDictVar& var) {
    return const_cast<ScoreDictVar&>(var).GetEncoder();
}

void LearnCategory(const ScoreDictVar& var, std::unique_ptr<ScoreValue> category, const std::string& label) {
    // The variable takes the value only when there is a label.
    if (category != nullptr && !label.empty()) {
        const_cast<ScoreDictVar&>(var).AddScoreValueLabel(category.release(), label);
    }
}

} // namespace veltrane::translators
