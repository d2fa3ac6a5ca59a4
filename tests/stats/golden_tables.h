#ifndef VELTRANE_TESTS_STATS_GOLDEN_TABLES_H
#define VELTRANE_TESTS_STATS_GOLDEN_TABLES_H

#include <string>
#include <vector>

namespace veltrane::tests {

/// One point of a golden table: what golden/make_golden.py computed at high precision.
struct GoldenPoint {
    std::string region;
    std::vector<double> arguments;
    bool missing;         ///< the result is the missing number
    long double expected; ///< the result, when it isn't missing
    int line;
};

/// The points of one function, in the order of its file.
std::vector<GoldenPoint> ReadGoldenTable(const std::string& function);

/// What is asked of the points of one region of one function; a line of golden/regions.txt.
struct GoldenRegion {
    std::string function;
    std::string region;
    bool absolute; ///< the tolerance is an absolute one
    double tolerance;
    std::string reason; ///< why the tolerance is wider than usual; empty when it isn't
};

/// All regions, in the order of the file.
const std::vector<GoldenRegion>& GoldenRegions();

/// A function of the library with its arguments in the order of its table. A failure gives the missing number.
struct GoldenFunction {
    const char* name;
    double (*evaluate)(const std::vector<double>& arguments);
};

/// Every function that has a table.
const std::vector<GoldenFunction>& GoldenFunctions();

} // namespace veltrane::tests

#endif
