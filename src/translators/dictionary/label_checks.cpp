#include "translators/dictionary/label_checks.h"

#include "diagnostics/raise.h"
#include "translators/dictionary/label_duplicates.h"

#include <MCVeltrane_900/PMMLModelTags.h>
#include <MCVeltrane_900/ScoreDictVar.h>
#include <MCVeltrane_900/ScoreValue.h>
#include <MCVeltrane_900/ScoreValueLabel.h>
#include <MCVeltrane_900/ScoreValueLabelSet.h>

#include <string>
#include <vector>

namespace veltrane::translators {

using diagnostics::Message;
using diagnostics::Raise;
using MCVeltrane_900::ScoreDictVar;
using MCVeltrane_900::ScoreValue;
using MCVeltrane_900::ScoreValueLabel;
using Tags = MCVeltrane_900::PMMLModelTags;

namespace {

/// The most categories of a flag variable.
constexpr int kFlagCategories = 2;

std::string TextOf(const ScoreValue* value) {
    return value != nullptr ? value->GetString() : std::string();
}

} // namespace

void CheckCategoryCount(const ScoreDictVar& var) {
    if (var.IsFlagVariable() && var.GetNumberOfCats() > kFlagCategories) {
        Raise<Message::MORE_THAN_TWO>(Tags::XML_VAL_OT_CATEGORICAL, Tags::XML_VAL_FLAG);
    }
}

void CheckLabels(const ScoreDictVar& var) {
    const std::vector<ScoreValueLabel*>& labels = var.GetValueLabels()->GetAllValueLabels();
    const std::vector<bool> isDuplicate = FindDuplicateLabels(var, labels);
    for (std::size_t i = 0; i < labels.size(); ++i) {
        const ScoreValue* value = labels[i]->GetValue();
        if (var.IsMissingValue(value)) {
            Raise<Message::VALUE_MISSING_OR_VALID_AND_INVALID>(TextOf(value), var.GetName());
        }
        if (isDuplicate[i]) {
            Raise<Message::DUPLICATE_DEFINITION>(Tags::XML_ATT_VALUE, TextOf(value), Tags::XML_ELE_DATADICTIONARY);
        }
    }
}

} // namespace veltrane::translators
