#include "kit/values/data_types.h"

#include <array>

namespace veltrane_kit {

namespace {

/// In the order of the types.
constexpr std::array<std::string_view, 17> kWords{
    "string",
    "boolean",
    "integer",
    "float",
    "double",
    "date",
    "time",
    "dateTime",
    "dateDaysSince[0]",
    "dateDaysSince[1960]",
    "dateDaysSince[1970]",
    "dateDaysSince[1980]",
    "timeSeconds",
    "dateTimeSecondsSince[0]",
    "dateTimeSecondsSince[1960]",
    "dateTimeSecondsSince[1970]",
    "dateTimeSecondsSince[1980]",
};

} // namespace

std::optional<DataType> DataTypeOf(const XMLCh* word) {
    const std::string narrow = Narrow(word);
    for (std::size_t type = 0; type < kWords.size(); ++type) {
        if (kWords[type] == narrow) {
            return static_cast<DataType>(type);
        }
    }
    return std::nullopt;
}

std::string_view WordOf(DataType type) {
    return kWords[static_cast<std::size_t>(type)];
}

std::optional<DataType> ReadDataType(const Element& element, const XMLCh* attribute) {
    if (!element.Has(attribute)) {
        return std::nullopt;
    }
    const std::optional<DataType> type = DataTypeOf(element.Raw(attribute));
    if (!type) {
        element.RaiseInvalid(attribute);
    }
    return type;
}

} // namespace veltrane_kit
