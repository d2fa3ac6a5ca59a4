#ifndef VELTRANE_HOST_SHOWN_VALUES_H
#define VELTRANE_HOST_SHOWN_VALUES_H

#include <nlohmann/json.hpp>

#include <string>

namespace veltrane::host {

/// How tables show the values of a description.

/// A number or a text; nothing for null. Numbers are rounded to 15 digits: a bound that stands a step of the last digit
/// beside a round number reads as that.
std::string ValueText(const nlohmann::ordered_json& value);

/// A single value, or a range: `< 0`, `[0, 10)`, `all`.
std::string RangeText(const nlohmann::ordered_json& range);

/// A category, with its label where that is another text: `S=small`.
std::string CategoryText(const nlohmann::ordered_json& category);

/// The texts of a list, behind one another and cut where there are many.
std::string ListText(const nlohmann::ordered_json& list, std::string (*textOf)(const nlohmann::ordered_json&));

} // namespace veltrane::host

#endif
