#ifndef VELTRANE_TESTS_SUPPORT_GOLDEN_TABLES_H
#define VELTRANE_TESTS_SUPPORT_GOLDEN_TABLES_H

#include <functional>
#include <string>
#include <vector>

/// Golden tables: what tests/stats/golden/make_golden.py computed at high precision, and what is asked of it.
namespace veltrane::tests {

/// One point of a table.
struct GoldenPoint {
    std::string region;
    std::vector<double> arguments;
    bool missing;         ///< the result is the missing number
    long double expected; ///< the result, when it isn't missing
    int line;
};

/// What is asked of the points of one region of one function; a line of a regions.txt.
struct GoldenRegion {
    /// What an error is divided by: the result, nothing, or the largest argument.
    enum Measure { RELATIVE, ABSOLUTE, OF_ARGUMENTS };

    std::string function;
    std::string region;
    Measure measure;
    double tolerance;
    std::string reason; ///< why the tolerance is wider than usual; empty when it isn't
};

/// A function of the library, with its arguments in the order of its table. A failure gives the missing number.
using GoldenEvaluation = std::function<double(const std::vector<double>&)>;

/// The tables of one folder below tests/.
class GoldenFolder {
public:
    explicit GoldenFolder(const std::string& folder);

    /// The points of a table, in the order of its file.
    std::vector<GoldenPoint> Points(const std::string& table) const;

    /// All regions, in the order of regions.txt.
    const std::vector<GoldenRegion>& Regions() const { return fRegions; }
    std::vector<GoldenRegion> RegionsOf(const std::string& function) const;

    /// Expects that a function stays within the tolerance of each of its regions, and records how far off it is for
    /// docs/accuracy.md.
    void ExpectWithinTolerances(const std::string& function, const std::string& table,
                                const GoldenEvaluation& evaluate) const;

    /// Expects two hundred points, and a line in regions.txt for each of their regions.
    void ExpectComplete(const std::string& function, const std::string& table) const;

    /// Expects a row of docs/accuracy.md for every region.
    void ExpectOnPage() const;

private:
    std::string fFolder;
    std::vector<GoldenRegion> fRegions;
};

} // namespace veltrane::tests

#endif
