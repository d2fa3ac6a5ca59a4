#include "transform/derivation/values.h"

#include "data/values/value_cast.h"

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/StringValue.h>

using namespace MCVeltrane_900;

namespace veltrane::transform {

bool HoldsText(ScoreDictVar::VariableType type) {
    return type != ScoreDictVar::kNUMERIC_VAR && type != ScoreDictVar::DATETIME_VAR;
}

std::unique_ptr<ScoreValue> MissingValueOf(ScoreDictVar::VariableType type) {
    switch (type) {
    case ScoreDictVar::kNUMERIC_VAR:
        return MissingValue<NumericValue>();
    case ScoreDictVar::DATETIME_VAR:
        return MissingValue<DateTimeValue>();
    default:
        return MissingValue<StringValue>();
    }
}

const std::string& TextOf(const ScoreValue& value, std::string& buffer) {
    if (const std::string* stored = data::StoredText(value)) {
        return *stored;
    }
    buffer = value.GetString();
    return buffer;
}

} // namespace veltrane::transform
