#ifndef VELTRANE_TESTS_MODELS_FAULT_H
#define VELTRANE_TESTS_MODELS_FAULT_H

#include <gtest/gtest.h>

#include <string>

namespace veltrane::tests {

/// A fault that a test makes in a document with Replaced, and the failure that it ends in.
struct Fault {
    const char* name;
    const char* from;
    const char* to;
    int id;
    const char* text;
};

/// Names the test of a fault.
inline std::string NameOf(const testing::TestParamInfo<Fault>& info) {
    return info.param.name;
}

} // namespace veltrane::tests

#endif
