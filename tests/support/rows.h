#ifndef VELTRANE_TESTS_SUPPORT_ROWS_H
#define VELTRANE_TESTS_SUPPORT_ROWS_H

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace veltrane::tests {

/// Names the tests of a table by the `name` of its rows; the last argument of INSTANTIATE_TEST_SUITE_P.
struct NameOfRow {
    template <class Row>
    std::string operator()(const testing::TestParamInfo<Row>& row) const {
        return row.param.name;
    }
};

/// The same for tests whose parameters are names of files.
struct NameOfFile {
    std::string operator()(const testing::TestParamInfo<const char*>& file) const {
        std::string name = file.param;
        std::replace(name.begin(), name.end(), '-', '_');
        return name;
    }
};

} // namespace veltrane::tests

#endif
