#ifndef VELTRANE_TRANSFORM_FUNCTIONS_DELETE_VALUES_H
#define VELTRANE_TRANSFORM_FUNCTIONS_DELETE_VALUES_H

#include <MCVeltrane_900/ScoreValue.h>

#include <vector>

namespace veltrane::functions {

/// Ends the ownership of values that were handed over in a vector.
inline void DeleteAll(std::vector<MCVeltrane_900::ScoreValue*>& values) {
    for (MCVeltrane_900::ScoreValue* value : values) {
        delete value;
    }
    values.clear();
}

} // namespace veltrane::functions

#endif
