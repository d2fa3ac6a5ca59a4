#include "transform/apply/child_values.h"
#include "transform/functions/rules.h"

namespace veltrane::functions {

using transform::LengthOf;
using transform::TextOfChild;

/// The last argument as it stands: a number as a number; anything else, a date too, as its text.
const ScoreValue* PassOn(ApplyNode& node) {
    const ScoreValue* last = nullptr;
    for (const Argument& argument : node.GetArguments()) {
        last = argument.value;
    }
    if (last == nullptr) {
        return node.Result(0.0);
    }
    return last->GetType() == ScoreValue::NUMERIC_VALUE ? node.PlainNumber(last->GetDouble())
                                                        : node.Text(TextOfChild(last), LengthOf(last));
}

} // namespace veltrane::functions
