#include "transform/apply/child_values.h"
#include "transform/functions/rules.h"

namespace veltrane::functions {

/// The stored length of the first argument, not the size of its text: for a field that is the width of the field.
const ScoreValue* Length(ApplyNode& node) {
    double result = 0.0;
    for (const Argument& argument : node.GetArguments()) {
        if (argument.position == 0) {
            result = transform::LengthOf(argument.value);
        }
    }
    return node.Result(result);
}

} // namespace veltrane::functions
