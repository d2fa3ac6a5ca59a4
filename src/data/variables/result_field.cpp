#include "data/values/value_cast.h"

#include <MCVeltrane_900/ResultField.h>
#include <MCVeltrane_900/ResultVar.h>

namespace MCVeltrane_900 {

ResultField::ResultField() = default;
ResultField::ResultField(const ResultField& other) = default;
ResultField& ResultField::operator=(const ResultField& other) = default;

ResultField::~ResultField() {
    for (const auto& [name, value] : fValues) {
        delete value;
    }
}

void ResultField::SetMapResultValue(const std::map<std::string, ScoreValue*>& values) {
    fValues = values;
}
const std::map<std::string, ScoreValue*>& ResultField::GetMapResultValue() const {
    return fValues;
}

const ScoreValue* ResultField::GetResultValue(const std::string& name) const {
    const auto found = fValues.find(name);
    return found == fValues.end() ? nullptr : found->second;
}

bool ResultField::SetResultValue(const std::string& name, const ScoreValue* value) {
    if (!value) {
        return false;
    }
    ScoreValue*& stored = fValues[name];
    if (!stored) {
        stored = value->Clone();
        return true;
    }
    if (stored->GetType() != value->GetType()) {
        return false;
    }
    // The text of a value is asked for where it is needed only.
    return veltrane::data::IsText(*stored) ? veltrane::data::PutText(*stored, value->GetString())
                                           : veltrane::data::PutNumber(*stored, value->GetDouble());
}

bool ResultField::SetResultValue(const std::string& name, const std::string& text) {
    ScoreValue*& stored = fValues[name];
    if (!stored) {
        stored = new StringValue(text);
        return true;
    }
    return veltrane::data::PutText(*stored, text);
}

bool ResultField::SetResultValue(const std::string& name, double value) {
    ScoreValue*& stored = fValues[name];
    if (!stored) {
        stored = new NumericValue(value);
        return true;
    }
    return veltrane::data::PutNumber(*stored, value);
}

ScoreResultField::ResultFeature ResultField::GetResultType(const std::string&) const {
    return RF_NONE;
}

void ResultField::AddResultField(const std::string& name, ScoreValue* value) {
    fValues.emplace(name, value);
}

std::vector<std::string> ResultField::GetResultFields() const {
    std::vector<std::string> names;
    names.reserve(fValues.size());
    for (const auto& [name, value] : fValues) {
        names.push_back(name);
    }
    return names;
}

int ResultField::GetResultSize() const {
    return static_cast<int>(fValues.size());
}

ResultVar::ResultVar(const std::string& name, VariableType type) : DictVar(name, type) {}
ResultVar::ResultVar(const ResultVar& other) = default;
ResultVar& ResultVar::operator=(const ResultVar& other) = default;
ResultVar::~ResultVar() = default;

ScoreDictVar* ResultVar::Clone() const {
    return new ResultVar(*this);
}

} // namespace MCVeltrane_900
