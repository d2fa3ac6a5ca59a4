#include "translators/dictionary/label_checks.h"

#include "data/values/value_cast.h"
#include "diagnostics/raise.h"

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/PMMLModelTags.h>
#include <MCVeltrane_900/ScoreDictVar.h>
#include <MCVeltrane_900/ScoreValue.h>
#include <MCVeltrane_900/ScoreValueLabel.h>
#include <MCVeltrane_900/ScoreValueLabelSet.h>

#include <algorithm>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace veltrane::translators {

using diagnostics::Message;
using diagnostics::Raise;
using MCVeltrane_900::DateTimeValue;
using MCVeltrane_900::ScoreDictVar;
using MCVeltrane_900::ScoreValue;
using MCVeltrane_900::ScoreValueLabel;
using Tags = MCVeltrane_900::PMMLModelTags;

namespace {

using Labels = std::vector<ScoreValueLabel*>;

/// The form of a text that two texts share exactly when StringValue::Equal holds for them under the variable's rules.
std::string ComparableText(std::string text, const ScoreDictVar& var) {
    if (var.GetNoSpaceTrim()) {
        return text;
    }
    const std::size_t last = text.find_last_not_of(' ');
    if (last != std::string::npos) {
        text.resize(last + 1);
    } else if (!text.empty()) {
        text.resize(var.GetEmptyStringOK() ? 1 : 0);
    }
    return text;
}

std::vector<bool> FindDuplicateTexts(const ScoreDictVar& var, const Labels& labels) {
    std::vector<bool> isDuplicate(labels.size());
    std::unordered_map<std::string, std::size_t> first;
    first.reserve(labels.size());
    for (std::size_t i = 0; i < labels.size(); ++i) {
        if (labels[i]->GetValue() == nullptr) {
            continue;
        }
        const auto [entry, isNew] = first.emplace(ComparableText(labels[i]->GetValue()->GetString(), var), i);
        if (!isNew) {
            isDuplicate[i] = isDuplicate[entry->second] = true;
        }
    }
    return isDuplicate;
}

/// A number that orders values of one kind as their own operator tells them apart: the seconds of a date-time, whatever
/// unit it reports itself in.
double OrderOf(const ScoreValue& value) {
    if (const DateTimeValue* dateTime = data::FindDateTime(value)) {
        return dateTime->GetDoubleValue(ScoreDictVar::DT_DATETIME);
    }
    return value.GetDouble();
}

/// The operator's relative tolerance is no equivalence, but two numbers that are equal under it are each equal to
/// every number between them. So a number has an equal if and only if one of its neighbours in order is equal to it.
std::vector<bool> FindDuplicateNumbers(const Labels& labels) {
    std::vector<std::pair<double, std::size_t>> ordered;
    ordered.reserve(labels.size());
    for (std::size_t i = 0; i < labels.size(); ++i) {
        if (labels[i]->GetValue() != nullptr) {
            ordered.emplace_back(OrderOf(*labels[i]->GetValue()), i);
        }
    }
    std::sort(ordered.begin(), ordered.end());

    std::vector<bool> isDuplicate(labels.size());
    for (std::size_t k = 1; k < ordered.size(); ++k) {
        const std::size_t a = ordered[k - 1].second;
        const std::size_t b = ordered[k].second;
        if (*labels[a] == *labels[b]) {
            isDuplicate[a] = isDuplicate[b] = true;
        }
    }
    return isDuplicate;
}

} // namespace

std::vector<bool> FindDuplicateLabels(const ScoreDictVar& var, const Labels& labels) {
    return var.GetVarType() == ScoreDictVar::STRING_VAR ? FindDuplicateTexts(var, labels)
                                                        : FindDuplicateNumbers(labels);
}

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
