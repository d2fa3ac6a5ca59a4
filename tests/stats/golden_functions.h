#ifndef VELTRANE_TESTS_STATS_GOLDEN_FUNCTIONS_H
#define VELTRANE_TESTS_STATS_GOLDEN_FUNCTIONS_H

#include "support/golden_tables.h"

#include <vector>

namespace veltrane::tests {

/// The tables of the distribution functions, each named after its function.
const GoldenFolder& DistributionTables();

/// A distribution function with its arguments in the order of its table. A failure gives the missing number.
struct GoldenFunction {
    const char* name;
    double (*evaluate)(const std::vector<double>& arguments);
};

/// Every function that has a table.
const std::vector<GoldenFunction>& GoldenFunctions();

} // namespace veltrane::tests

#endif
