#include "transform/apply/child_values.h"

using namespace MCVeltrane_900;

namespace veltrane::transform {

std::string TextOfChild(const ScoreValue* value) {
    return value != nullptr ? value->GetString() : std::string();
}

const StringValue& StringOf(const ScoreValue* value, StringValue& buffer) {
    if (const auto* text = dynamic_cast<const StringValue*>(value)) {
        return *text;
    }
    buffer = StringValue(TextOfChild(value));
    return buffer;
}

int LengthOf(const ScoreValue* value) {
    if (const auto* text = dynamic_cast<const StringValue*>(value)) {
        return text->GetLength();
    }
    return ToLength(TextOfChild(value).size());
}

} // namespace veltrane::transform
