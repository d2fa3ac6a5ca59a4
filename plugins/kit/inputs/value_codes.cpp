#include "kit/inputs/value_codes.h"

#include <cstddef>

namespace veltrane_kit {

namespace {

/// Up to so many values a walk over them is faster than an index.
constexpr std::size_t kFew = 8;

} // namespace

int ValueCodes::Add(const Value& value) {
    if (const int code = Find(value); code != kUnknown) {
        return code;
    }
    if (fHoldsTexts) {
        if (fTexts.Size() < TextCodes::kMost) {
            fTexts.Add(value.text);
        } else {
            fMoreTexts.emplace(value.text, Size());
        }
    } else {
        fNumbers.push_back(value.number);
        fNumberCodes.emplace(value.number, Size() - 1);
    }
    return Size() - 1;
}

int ValueCodes::Find(const Value& value) const {
    return value.isMissing ? kUnknown : fHoldsTexts ? FindText(value.text) : FindNumber(value.number);
}

int ValueCodes::FindMore(std::string_view text) const {
    const auto found = fMoreTexts.find(text);
    return found == fMoreTexts.end() ? kUnknown : found->second;
}

int ValueCodes::FindNumber(double number) const {
    if (fNumbers.size() > kFew) {
        const auto found = fNumberCodes.find(number);
        return found == fNumberCodes.end() ? kUnknown : found->second;
    }
    for (std::size_t code = 0; code < fNumbers.size(); ++code) {
        if (fNumbers[code] == number) {
            return static_cast<int>(code);
        }
    }
    return kUnknown;
}

} // namespace veltrane_kit
