#include "kit/document/categories.h"

#include "kit/document/document_text.h"

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/StringValue.h>

#include <iterator>
#include <memory>
#include <typeinfo>

namespace veltrane_kit {

using namespace MCVeltrane_900;

namespace {

/// Up to so many categories a walk over them is faster than an index.
constexpr std::size_t kFew = 8;

} // namespace

Categories::Categories(const ScoreDictVar& var)
    : fHoldsTexts(var.GetVarType() == ScoreDictVar::STRING_VAR), fBlanksCount(var.GetNoSpaceTrim()) {}

std::string_view Categories::Key(std::string_view text) const {
    while (!fBlanksCount && !text.empty() && text.back() == ' ') {
        text.remove_suffix(1);
    }
    return text;
}

int Categories::Add(const ScoreValue& value) {
    if (const int code = Find(value); code != kUnknown) {
        return code;
    }
    if (!fHoldsTexts) {
        fNumbers.push_back(value.GetDouble());
        fNumberCodes.emplace(value.GetDouble(), Size() - 1);
        return Size() - 1;
    }
    const std::string text = value.GetString();
    fTexts.emplace_back(Key(text));
    fCodes.emplace(fTexts.back(), Size() - 1);
    return Size() - 1;
}

int Categories::Find(const ScoreValue& value) const {
    if (!fHoldsTexts) {
        return Find(value.GetDouble());
    }
    std::string buffer;
    return Find(std::string_view(TextOf(value, buffer)));
}

int Categories::Find(double number) const {
    if (fNumbers.size() > kFew) {
        // Equal numbers lie beside each other: the nearest one on either side decides.
        const auto above = fNumberCodes.lower_bound(number);
        if (above != fNumberCodes.end() && NumericValue::IsEqual(above->first, number)) {
            return above->second;
        }
        const bool isBelow = above != fNumberCodes.begin() && NumericValue::IsEqual(std::prev(above)->first, number);
        return isBelow ? std::prev(above)->second : kUnknown;
    }
    for (std::size_t code = 0; code < fNumbers.size(); ++code) {
        if (NumericValue::IsEqual(fNumbers[code], number)) {
            return static_cast<int>(code);
        }
    }
    return kUnknown;
}

int Categories::Find(std::string_view text) const {
    const std::string_view key = Key(text);
    if (fTexts.size() > kFew) {
        const auto found = fCodes.find(key);
        return found == fCodes.end() ? kUnknown : found->second;
    }
    for (std::size_t code = 0; code < fTexts.size(); ++code) {
        if (fTexts[code] == key) {
            return static_cast<int>(code);
        }
    }
    return kUnknown;
}

const std::string& TextOf(const ScoreValue& value, std::string& buffer) {
    if (typeid(value) == typeid(StringValue)) {
        return static_cast<const StringValue&>(value).GetText();
    }
    buffer = value.GetString();
    return buffer;
}

ScoreValue* MakeValue(const ScoreDictVar& var, const std::string& text) {
    double number = 0.0;
    switch (var.GetVarType()) {
    case ScoreDictVar::STRING_VAR:
        return new StringValue(text);
    case ScoreDictVar::DATETIME_VAR: {
        auto value = std::make_unique<DateTimeValue>(text, var.GetDateTimeType());
        return text.empty() || value->IsSystemMissingValue() ? nullptr : value.release();
    }
    default:
        return ReadNumber(Widen(text).c_str(), number) ? new NumericValue(number) : nullptr;
    }
}

} // namespace veltrane_kit
