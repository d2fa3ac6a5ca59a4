#include "data/sets/category_labels.h"
#include "data/values/value_cast.h"

#include <MCCommon_900/MCMV.h>
#include <MCVeltrane_900/ScoreCatStringEncoder.h>

#include <algorithm>

namespace MCVeltrane_900 {

namespace {

using Codes = std::map<std::string, int, std::less<>>;

/// The text as it stands comes first: a key that was learned with its blanks still matches when blanks are trimmed.
int FindWithTrimmed(const Codes& codes, std::string_view text, std::string_view trimmed) {
    auto found = codes.find(text);
    if (found == codes.end() && trimmed.size() != text.size()) {
        found = codes.find(trimmed);
    }
    return found == codes.end() ? -1 : found->second;
}

/// Only the blank ' ' counts, and only at the end. The result is as long as the text exactly when nothing was trimmed.
std::string_view Trimmed(std::string_view text, bool noSpaceTrim, bool emptyStringOK) {
    if (noSpaceTrim || text.empty()) {
        return text;
    }
    const std::size_t last = text.find_last_not_of(' ');
    if (last == std::string_view::npos) {
        return emptyStringOK ? " " : "";
    }
    return text.substr(0, last + 1);
}

} // namespace

ScoreCatStringEncoder::ScoreCatStringEncoder(int capacity) {
    fLinks.reserve(std::max(capacity, 0));
}

ScoreCatStringEncoder::ScoreCatStringEncoder(const std::vector<std::string>& texts) {
    for (const std::string& text : texts) {
        Encode(text);
    }
}

// Labels belong to one encoder and don't travel with a copy.
ScoreCatStringEncoder::ScoreCatStringEncoder(const ScoreCatStringEncoder& other)
    : ScoreEncoder(other), fCodes(other.fCodes), fLastCode(other.fLastCode), fNoSpaceTrim(other.fNoSpaceTrim),
      fEmptyStringOK(other.fEmptyStringOK) {
    CreateLinks();
}

ScoreCatStringEncoder& ScoreCatStringEncoder::operator=(const ScoreCatStringEncoder& other) {
    fCodes = other.fCodes;
    fLastCode = other.fLastCode;
    CreateLinks();
    return *this;
}

ScoreCatStringEncoder::~ScoreCatStringEncoder() = default;

ScoreEncoder::EncoderType ScoreCatStringEncoder::GetEncoderType() const {
    return ENCODER_CAT_STRING;
}
int ScoreCatStringEncoder::GetNumberOfCategories() const {
    return fLastCode + 1;
}

int ScoreCatStringEncoder::Encode(const ScoreValue* value) {
    const std::string* text = veltrane::data::StoredText(*value);
    return text ? Encode(*text) : Encode(value->GetString());
}

int ScoreCatStringEncoder::EncodeConst(const ScoreValue* value) const {
    const std::string* text = veltrane::data::StoredText(*value);
    return text ? EncodeConst(*text) : EncodeConst(value->GetString());
}

int ScoreCatStringEncoder::Encode(const std::string& text) {
    const std::string_view key = Trimmed(text, fNoSpaceTrim, fEmptyStringOK);
    int code = FindWithTrimmed(fCodes, text, key);
    if (code < 0) {
        code = ++fLastCode;
        fLinks.push_back(&fCodes.emplace(key, code).first->first);
    }
    return code;
}

int ScoreCatStringEncoder::EncodeConst(const std::string& text) const {
    return FindWithTrimmed(fCodes, text, Trimmed(text, fNoSpaceTrim, fEmptyStringOK));
}

std::string ScoreCatStringEncoder::Decode(int code) const {
    return code >= 0 && code <= fLastCode ? *fLinks[code] : std::string();
}

double ScoreCatStringEncoder::DecodeNum(int) const {
    return MCCommon_900::MCMV::Missing();
}

ScoreEncoder* ScoreCatStringEncoder::Clone() const {
    return new ScoreCatStringEncoder(*this);
}

void ScoreCatStringEncoder::SetValueLabels(const std::vector<std::string>& labels) {
    fLabels = labels;
}

void ScoreCatStringEncoder::SetValueLabel(int code, const std::string& label) {
    veltrane::data::SetCategoryLabel(fLabels, fCodes.size(), code, label);
}

const std::vector<std::string>* ScoreCatStringEncoder::GetValueLabels() const {
    return &fLabels;
}

void ScoreCatStringEncoder::Display(std::ostream& out) const {
    out << "\tScoreCatStringEncoder object:  "
        << "Last code = " << fLastCode << "\n";
    for (std::size_t code = 0; code < fLinks.size(); ++code) {
        out << "\t\t" << code << "\t\t";
        if (fLinks[code]) {
            out << *fLinks[code] << "\n";
        } else {
            out << "ERROR\n";
        }
    }
}

void ScoreCatStringEncoder::CreateLinks() {
    fLinks.assign(fLastCode + 1, nullptr);
    for (const auto& [key, code] : fCodes) {
        fLinks[code] = &key;
    }
}

} // namespace MCVeltrane_900
