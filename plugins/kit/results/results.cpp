#include "kit/results/results.h"

#include "kit/inputs/host_values.h"
#include "kit/inputs/missing_value.h"
#include "kit/results/typed_value.h"

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/StringValue.h>

#include <typeinfo>
#include <utility>

namespace veltrane_kit {

using namespace MCVeltrane_900;

namespace {

const std::string kNoText;

/// Null for a value of any other class, also for one of a host's own that only reports to be a date-time.
const DateTimeValue* FindDateTime(const ScoreValue& value) {
    return value.GetType() == ScoreValue::DATETIME_VALUE ? dynamic_cast<const DateTimeValue*>(&value) : nullptr;
}

/// Stores a value in one of the same kind; SetValue would take a date's days for seconds.
/// @param to of the same class as `from`, or of the library's own for its kind
void Store(const ScoreValue& from, ScoreValue& to) {
    if (typeid(from) == typeid(StringValue)) {
        static_cast<StringValue&>(to).SetString(static_cast<const StringValue&>(from).GetText());
    } else if (const DateTimeValue* dateTime = FindDateTime(from)) {
        static_cast<DateTimeValue&>(to) = *dateTime;
    } else {
        to.SetValue(&from);
    }
}

} // namespace

OutputValues::OutputValues(const ResultLayout& layout) : fLayout(layout) {
    for (const ResultLayout::Output& output : layout.outputs) {
        std::unique_ptr<ScoreValue> value = MakeMissing(output.kind);
        fByPosition.push_back(value.get());
        if (output.isFinal) {
            AddResultField(output.name, value.release());
        } else {
            fHidden.push_back(std::move(value));
        }
    }
}

void OutputValues::SetMapResultValue(const std::map<std::string, ScoreValue*>& values) {
    for (std::size_t at = 0; at < fByPosition.size(); ++at) {
        fByPosition[at] = fLayout.outputs[at].isFinal ? nullptr : fByPosition[at];
    }
    ResultField::SetMapResultValue(values);
}

const ScoreValue* OutputValues::GetResultValue(const std::string& name) const {
    const ScoreValue* known = ResultField::GetResultValue(name);
    for (std::size_t at = 0; known == nullptr && at < fByPosition.size(); ++at) {
        if (!fLayout.outputs[at].isFinal && fLayout.outputs[at].name == name) {
            known = fByPosition[at];
        }
    }
    return known;
}

void OutputValues::Clear() {
    for (std::size_t position = 0; position < fLayout.outputs.size(); ++position) {
        SetMissing(static_cast<int>(position));
    }
}

void OutputValues::SetMissing(int position) {
    const auto at = static_cast<std::size_t>(position);
    if (fLayout.outputs[at].kind == ScoreValue::STRING_VALUE) {
        PutText(at, kNoText);
    } else {
        PutNumber(at, NumericValue::GetSysmisValue());
    }
}

void OutputValues::SetNumber(int position, double number) {
    const auto at = static_cast<std::size_t>(position);
    const ResultLayout::Output& output = fLayout.outputs[at];
    if (output.takesItsKind && output.kind == ScoreValue::NUMERIC_VALUE) {
        PutNumber(at, number);
    } else if (number == NumericValue::GetSysmisValue()) {
        SetMissing(position);
    } else {
        PutCast(at, MakeNumber(number, DataType::DOUBLE));
    }
}

void OutputValues::SetText(int position, const std::string& text) {
    const auto at = static_cast<std::size_t>(position);
    const ResultLayout::Output& output = fLayout.outputs[at];
    if (output.takesItsKind && output.kind == ScoreValue::STRING_VALUE) {
        PutText(at, text);
    } else {
        PutCast(at, text.empty() ? Value() : MakeText(text));
    }
}

void OutputValues::SetTyped(int position, const Value& typed, const ScoreValue& host) {
    const auto at = static_cast<std::size_t>(position);
    if (fLayout.outputs[at].takesItsKind && host.GetType() == fLayout.outputs[at].kind) {
        Set(position, &host);
    } else {
        PutCast(at, typed);
    }
}

void OutputValues::Set(int position, const ScoreValue* value) {
    const auto at = static_cast<std::size_t>(position);
    const ResultLayout::Output& output = fLayout.outputs[at];
    if (value == nullptr) {
        SetMissing(position);
    } else if (!output.takesItsKind || value->GetType() != output.kind) {
        PutCast(at, TypedValue(*value, fBuffer));
    } else if (fByPosition[at] == nullptr) {
        SetResultValue(output.name, value);
    } else {
        Store(*value, *fByPosition[at]);
    }
}

/// Without a type a value only has to be of the output's kind.
void OutputValues::PutCast(std::size_t at, const Value& value) {
    const ResultLayout::Output& output = fLayout.outputs[at];
    const DataType natural = output.kind == ScoreValue::STRING_VALUE     ? DataType::STRING
                             : output.kind == ScoreValue::DATETIME_VALUE ? DataType::DATE_TIME
                                                                         : DataType::DOUBLE;
    const Value cast = CastValue(value, output.type.value_or(natural), fCast);
    if (cast.isMissing) {
        SetMissing(static_cast<int>(at));
    } else if (output.kind == ScoreValue::DATETIME_VALUE) {
        PutMoment(at, MakeMoment(cast));
    } else if (output.kind == ScoreValue::STRING_VALUE) {
        fText.assign(TextOf(cast, fCast));
        PutText(at, fText);
    } else {
        PutNumber(at, cast.number);
    }
}

void OutputValues::PutNumber(std::size_t at, double number) {
    if (fByPosition[at] == nullptr) {
        SetResultValue(fLayout.outputs[at].name, number);
    } else {
        static_cast<NumericValue*>(fByPosition[at])->SetDoubleValue(number);
    }
}

void OutputValues::PutText(std::size_t at, const std::string& text) {
    if (fByPosition[at] == nullptr) {
        SetResultValue(fLayout.outputs[at].name, text);
    } else {
        static_cast<StringValue*>(fByPosition[at])->SetString(text);
    }
}

void OutputValues::PutMoment(std::size_t at, const DateTimeValue& moment) {
    if (fByPosition[at] == nullptr) {
        SetResultValue(fLayout.outputs[at].name, &moment);
    } else {
        Store(moment, *fByPosition[at]);
    }
}

const ScoreValue* OutputValues::At(int position) const {
    const auto at = static_cast<std::size_t>(position);
    return fByPosition[at] == nullptr ? GetResultValue(fLayout.outputs[at].name) : fByPosition[at];
}

void KeptValue::Set(const ScoreValue* value) {
    fIsSet = value != nullptr;
    if (!fIsSet) {
        return;
    }
    ScoreValue* kept = fValue.get();
    if (kept != nullptr && typeid(*kept) == typeid(*value)) {
        Store(*value, *kept);
    } else {
        fValue.reset(value->Clone());
    }
}

void KeptValue::SetNumber(double number) {
    fIsSet = true;
    ScoreValue* kept = fValue.get();
    if (kept != nullptr && typeid(*kept) == typeid(NumericValue)) {
        static_cast<NumericValue*>(kept)->SetDoubleValue(number);
    } else {
        fValue = std::make_unique<NumericValue>(number);
    }
}

ClassificationResult::ClassificationResult(std::shared_ptr<const ResultLayout> layout, int kind)
    : CommonResult(std::move(layout)), fKind(kind),
      fProbabilities(Layout().categories.size(), NumericValue::GetSysmisValue()) {}

const ScoreValue& ClassificationResult::At(std::size_t index) const {
    const std::size_t known = Layout().categories.size();
    return index < known ? *Layout().categories[index] : *fOthers[index - known];
}

/// The category that has a text with all its blanks.
int ClassificationResult::FindExact(const std::string& text) const {
    const std::size_t count = fProbabilities.size();
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t index = (fNext + i) % count;
        const ScoreValue& at = At(index);
        if (typeid(at) == typeid(StringValue) && static_cast<const StringValue&>(at).GetText() == text) {
            fNext = index + 1;
            return static_cast<int>(index);
        }
    }
    return -1;
}

/// Texts that differ by trailing blanks are different categories; hosts may leave blanks out where there is but one.
int ClassificationResult::Find(const ScoreValue* category) const {
    if (category != nullptr && typeid(*category) == typeid(StringValue)) {
        if (const int exact = FindExact(static_cast<const StringValue*>(category)->GetText()); exact >= 0) {
            return exact;
        }
    }
    const std::size_t count = fProbabilities.size();
    for (std::size_t i = 0; category != nullptr && i < count; ++i) {
        const std::size_t index = (fNext + i) % count;
        if (At(index) == *category) {
            fNext = index + 1;
            return static_cast<int>(index);
        }
    }
    return -1;
}

void ClassificationResult::SetCategoryProbability(ScoreValue* category, double probability) {
    if (category == nullptr) {
        return;
    }
    const int known = Find(category);
    if (known >= 0) {
        fProbabilities[static_cast<std::size_t>(known)] = probability;
        return;
    }
    fOthers.emplace_back(category->Clone());
    fProbabilities.push_back(probability);
}

double ClassificationResult::GetCategoryProbability(const ScoreValue* category) const {
    const int known = Find(category);
    return known < 0 ? NumericValue::GetSysmisValue() : fProbabilities[static_cast<std::size_t>(known)];
}

std::vector<const ScoreValue*> ClassificationResult::GetCategories() const {
    const std::size_t known = Layout().categories.size();
    std::vector<const ScoreValue*> set;
    for (std::size_t i = 0; i < fProbabilities.size(); ++i) {
        if (fProbabilities[i] != NumericValue::GetSysmisValue()) {
            set.push_back(i < known ? Layout().categories[i].get() : fOthers[i - known].get());
        }
    }
    return set;
}

void ClassificationResult::Clear() {
    ClearCommon();
    fProbabilities.assign(fProbabilities.size(), NumericValue::GetSysmisValue());
}

void ClassificationResult::SetPrediction(int category, const std::vector<double>& probabilities, double confidence) {
    const std::size_t known = Layout().categories.size();
    Value().Set(Layout().categories[static_cast<std::size_t>(category)].get());
    SetResultConfidence(confidence);
    for (std::size_t i = 0; i < fProbabilities.size(); ++i) {
        fProbabilities[i] = i < known && i < probabilities.size() ? probabilities[i] : NumericValue::GetSysmisValue();
    }
}

void RegressionResult::Clear() {
    ClearCommon();
    fError = NumericValue::GetSysmisValue();
}

} // namespace veltrane_kit
