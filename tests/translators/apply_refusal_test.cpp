#include "translators/derived_fields.h"

#include <gtest/gtest.h>

// What is left of Apply while no function is read.

namespace veltrane::tests {
namespace {

TEST(ApplyRefusal, NamesTheFunction) {
    ExpectReadFailure(NumericField("<Apply function='plus'/>"), 260303,
                      "Unsupported value 'plus' of attribute 'function'.");
}

TEST(ApplyRefusal, AnAbsentFunctionIsRefused) {
    ExpectReadFailure(NumericField("<Apply/>"), 260120, "Missing the attribute 'function' of 'Apply'.");
}

} // namespace
} // namespace veltrane::tests
