#include "kit/values/value_order.h"

namespace veltrane_kit {

ValueOrder::ValueOrder(const std::vector<Value>& listed) {
    for (const Value& value : listed) {
        fPlaces.try_emplace(std::string(value.text), static_cast<double>(fPlaces.size()));
    }
}

double ValueOrder::PlaceOf(std::string_view text, double unlisted) const {
    const auto found = fPlaces.find(text);
    return found == fPlaces.end() ? unlisted : found->second;
}

OrderPtr MakeOrder(std::optional<DataType> type, const std::vector<Value>& listed) {
    return type == DataType::STRING && !listed.empty() ? std::make_shared<const ValueOrder>(listed) : nullptr;
}

} // namespace veltrane_kit
