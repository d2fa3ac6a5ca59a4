#include "formulas/stated_values.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <kit/values/values.h>
#include <optional>
#include <string_view>

namespace veltrane::host {
namespace {

using Json = nlohmann::ordered_json;

/// Up to here every whole number is a double.
constexpr double kWholeNumbers = 9007199254740992.0;

constexpr std::string_view kBoolean = "boolean";
constexpr std::string_view kTextTypes[] = {"string", kBoolean, "date", "time", "dateTime"};
constexpr std::string_view kWhiteSpace = " \t\r\n";

std::string Trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(kWhiteSpace);
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(kWhiteSpace) + 1 - first);
}

bool IsTruth(const std::string& text) {
    return !veltrane_kit::ReadValue(text, veltrane_kit::DataType::BOOLEAN).isMissing;
}

} // namespace

bool HoldsTexts(std::string_view type) {
    return std::find(std::begin(kTextTypes), std::end(kTextTypes), type) != std::end(kTextTypes);
}

Json NumberOrText(const std::string& text) {
    const std::optional<double> number = veltrane_kit::NumberIn(text);
    if (!number || !std::isfinite(*number)) {
        return text;
    }
    const bool isWhole = std::abs(*number) < kWholeNumbers && *number == std::trunc(*number);
    return isWhole ? Json(static_cast<std::int64_t>(*number)) : Json(*number);
}

std::string StatedText(const std::string& text, std::string_view type) {
    const bool isBare = type == kBoolean ? IsTruth(text) : !HoldsTexts(type) && veltrane_kit::NumberIn(text);
    return isBare ? Trimmed(text) : '"' + text + '"';
}

} // namespace veltrane::host
