#ifndef VELTRANE_PLUGINS_KIT_DATA_TYPES_H
#define VELTRANE_PLUGINS_KIT_DATA_TYPES_H

#include "kit/document/element.h"

#include <veltrane/value.h>

#include <optional>
#include <string_view>

namespace veltrane_kit {

using veltrane::DataType;
using veltrane::Value;

/// The type that a word of a document names; none for another word.
std::optional<DataType> DataTypeOf(const XMLCh* word);

/// The word of a type.
std::string_view WordOf(DataType type);

/// The type that an attribute names.
/// @return none for an absent attribute
/// @throws VTException 260153 for another word
std::optional<DataType> ReadDataType(const Element& element, const XMLCh* attribute);

constexpr bool IsNumber(DataType type) {
    return type == DataType::INTEGER || type == DataType::FLOAT || type == DataType::DOUBLE;
}

/// Types that count days or seconds from an epoch; their values are numbers to everything that asks for one.
constexpr bool IsCounting(DataType type) {
    return type >= DataType::DATE_DAYS_SINCE_0;
}

/// Dates, times and both, which are no numbers.
constexpr bool IsMoment(DataType type) {
    return type >= DataType::DATE && type <= DataType::DATE_TIME;
}

constexpr bool IsText(DataType type) {
    return type == DataType::STRING;
}

} // namespace veltrane_kit

#endif
