#include "data/sets/category_labels.h"

#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreCatNumericEncoder.h>

#include <algorithm>

namespace MCVeltrane_900 {

ScoreCatNumericEncoder::ScoreCatNumericEncoder(int capacity) {
    fValues.reserve(std::max(capacity, 0));
}

ScoreCatNumericEncoder::ScoreCatNumericEncoder(const std::vector<double>& numbers) {
    for (const double number : numbers) {
        Encode(number);
    }
}

// Labels belong to one encoder and don't travel with a copy.
ScoreCatNumericEncoder::ScoreCatNumericEncoder(const ScoreCatNumericEncoder& other)
    : ScoreEncoder(other), fCodes(other.fCodes), fValues(other.fValues), fLastCode(other.fLastCode) {}

ScoreCatNumericEncoder& ScoreCatNumericEncoder::operator=(const ScoreCatNumericEncoder& other) {
    fCodes = other.fCodes;
    fValues = other.fValues;
    fLastCode = other.fLastCode;
    return *this;
}

ScoreCatNumericEncoder::~ScoreCatNumericEncoder() = default;

ScoreEncoder::EncoderType ScoreCatNumericEncoder::GetEncoderType() const {
    return ENCODER_CAT_NUMERIC;
}
int ScoreCatNumericEncoder::GetNumberOfCategories() const {
    return static_cast<int>(fCodes.size());
}

int ScoreCatNumericEncoder::Encode(double number) {
    const auto [entry, isNew] = fCodes.try_emplace(number, fLastCode + 1);
    if (isNew) {
        ++fLastCode;
        fValues.push_back(number);
    }
    return entry->second;
}

int ScoreCatNumericEncoder::EncodeConst(double number) const {
    const auto found = fCodes.find(number);
    return found == fCodes.end() ? -1 : found->second;
}

int ScoreCatNumericEncoder::Encode(const ScoreValue* value) {
    return Encode(value->GetDouble());
}
int ScoreCatNumericEncoder::Encode(const std::string& text) {
    return Encode(NumericValue(text).GetDouble());
}

int ScoreCatNumericEncoder::EncodeConst(const std::string& text) const {
    return EncodeConst(NumericValue(text).GetDouble());
}

int ScoreCatNumericEncoder::EncodeConst(const ScoreValue* value) const {
    return EncodeConst(value->GetDouble());
}

std::string ScoreCatNumericEncoder::Decode(int) const {
    return std::string();
}

double ScoreCatNumericEncoder::DecodeNum(int code) const {
    return code >= 0 && code < GetNumberOfCategories() ? fValues[code] : NumericValue::GetSysmisValue();
}

ScoreEncoder* ScoreCatNumericEncoder::Clone() const {
    return new ScoreCatNumericEncoder(*this);
}

void ScoreCatNumericEncoder::SetValueLabels(const std::vector<std::string>& labels) {
    fLabels = labels;
}

void ScoreCatNumericEncoder::SetValueLabel(int code, const std::string& label) {
    veltrane::data::SetCategoryLabel(fLabels, fCodes.size(), code, label);
}

const std::vector<std::string>* ScoreCatNumericEncoder::GetValueLabels() const {
    return &fLabels;
}

void ScoreCatNumericEncoder::Display(std::ostream& out) const {
    constexpr std::size_t kValuesPerLine = 7;
    out << "\tScoreCatNumericEncoder: "
        << "Last code = " << fLastCode << "\n"
        << "\t\tNumeric values of categories: ";
    for (std::size_t code = 0; code < fValues.size(); ++code) {
        out << fValues[code] << " ";
        if ((code + 1) % kValuesPerLine == 0) {
            out << "\n";
        }
    }
    out << "\n";
}

} // namespace MCVeltrane_900
