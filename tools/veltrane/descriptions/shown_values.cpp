#include "descriptions/shown_values.h"

#include <fmt/format.h>

namespace veltrane::host {
namespace {

using Json = nlohmann::ordered_json;

constexpr std::size_t kShownValues = 6;

} // namespace

std::string ValueText(const Json& value) {
    if (!value.is_number()) {
        return value.is_string() ? value.get<std::string>() : "";
    }
    return fmt::format("{:.15g}", value.get<double>());
}

std::string RangeText(const Json& range) {
    if (!range.is_object()) {
        return ValueText(range);
    }
    const Json& low = range["low"];
    const Json& high = range["high"];
    const bool lowIncluded = range["lowIncluded"];
    const bool highIncluded = range["highIncluded"];
    if (low.is_null() && high.is_null()) {
        return "all";
    }
    if (low.is_null()) {
        return (highIncluded ? "<= " : "< ") + ValueText(high);
    }
    if (high.is_null()) {
        return (lowIncluded ? ">= " : "> ") + ValueText(low);
    }
    return fmt::format("{}{}, {}{}", lowIncluded ? '[' : '(', ValueText(low), ValueText(high),
                       highIncluded ? ']' : ')');
}

std::string CategoryText(const Json& category) {
    const std::string value = ValueText(category["value"]);
    const auto& label = category["label"].get_ref<const std::string&>();
    return label == value ? value : value + "=" + label;
}

std::string ListText(const Json& list, std::string (*textOf)(const Json&)) {
    std::string text;
    for (std::size_t at = 0; at < list.size(); ++at) {
        if (at > 0) {
            text += ", ";
        }
        if (at == kShownValues) {
            return text + "... (" + std::to_string(list.size()) + ")";
        }
        text += textOf(list[at]);
    }
    return text;
}

} // namespace veltrane::host
