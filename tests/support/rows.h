#ifndef VELTRANE_TESTS_SUPPORT_ROWS_H
#define VELTRANE_TESTS_SUPPORT_ROWS_H

#include <gtest/gtest.h>

#include <string>

namespace veltrane::tests {

/// Names the tests of a table by the `name` of its rows; the last argument of INSTANTIATE_TEST_SUITE_P.
struct NameOfRow {
    template <class Row>
    std::string operator()(const testing::TestParamInfo<Row>& row) const {
        return row.param.name;
    }
};

} // namespace veltrane::tests

#endif
