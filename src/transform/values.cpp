#include "transform/values.h"

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/StringValue.h>

#include <typeinfo>

using namespace MCVeltrane_900;

namespace veltrane::transform {

bool HoldsText(ScoreDictVar::VariableType type) {
    return type != ScoreDictVar::kNUMERIC_VAR && type != ScoreDictVar::DATETIME_VAR;
}

std::unique_ptr<ScoreValue> MissingValueOf(ScoreDictVar::VariableType type) {
    switch (type) {
    case ScoreDictVar::kNUMERIC_VAR:
        return std::make_unique<NumericValue>();
    case ScoreDictVar::DATETIME_VAR:
        return std::make_unique<DateTimeValue>();
    default:
        return std::make_unique<StringValue>("");
    }
}

const std::string& TextOf(const ScoreValue& value, std::string& buffer) {
    if (typeid(value) == typeid(StringValue)) {
        return static_cast<const StringValue&>(value).GetText();
    }
    buffer = value.GetString();
    return buffer;
}

} // namespace veltrane::transform
