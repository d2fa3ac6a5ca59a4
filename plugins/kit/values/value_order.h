#ifndef VELTRANE_PLUGINS_KIT_VALUE_ORDER_H
#define VELTRANE_PLUGINS_KIT_VALUE_ORDER_H

#include "kit/values/values.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veltrane_kit {

/// The texts that an ordinal field lists, in their order.
class ValueOrder {
public:
    explicit ValueOrder(const std::vector<Value>& listed);

    /// The place of a text that is listed, counted from 0; `unlisted` for any other.
    double PlaceOf(std::string_view text, double unlisted) const;

    /// Places that no listed text has.
    double Below() const { return -1.0; }
    double Above() const { return static_cast<double>(fPlaces.size()); }

    bool operator==(const ValueOrder& other) const { return fPlaces == other.fPlaces; }

private:
    std::map<std::string, double, std::less<>> fPlaces;
};

using OrderPtr = std::shared_ptr<const ValueOrder>;

/// @param listed the valid values of an ordinal field
/// @return null for a field that isn't one of texts or lists nothing
OrderPtr MakeOrder(std::optional<DataType> type, const std::vector<Value>& listed);

} // namespace veltrane_kit

#endif
