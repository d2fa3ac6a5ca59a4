#include "support/golden_tables.h"

#include "support/folders.h"

#include <MCCommon_900/MCMV.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <limits>
#include <set>
#include <sstream>
#include <stdexcept>

namespace veltrane::tests {

namespace {

using MCCommon_900::MCMV;

std::vector<std::string> Fields(const std::string& line, char separator) {
    std::vector<std::string> fields;
    std::istringstream in(line);
    for (std::string field; std::getline(in, field, separator);) {
        fields.push_back(field);
    }
    return fields;
}

std::ifstream Open(const std::string& path) {
    std::ifstream in(path);
    if (!in) {
        throw std::runtime_error("cannot read " + path);
    }
    return in;
}

GoldenRegion::Measure MeasureOf(const std::string& word) {
    return word == "absolute"    ? GoldenRegion::ABSOLUTE
           : word == "arguments" ? GoldenRegion::OF_ARGUMENTS
                                 : GoldenRegion::RELATIVE;
}

long double LargestArgument(const GoldenPoint& point) {
    double largest = 0;
    for (const double argument : point.arguments) {
        if (!MCMV::IsMissing(argument)) {
            largest = std::max(largest, std::fabs(argument));
        }
    }
    return largest;
}

double ErrorOf(double result, const GoldenPoint& point, GoldenRegion::Measure measure) {
    constexpr double kWrong = std::numeric_limits<double>::infinity();
    if (point.missing || MCMV::IsMissing(result)) {
        return point.missing == MCMV::IsMissing(result) ? 0 : kWrong;
    }
    if (result == point.expected || (std::isnan(result) && std::isnan(point.expected))) {
        return 0;
    }
    const long double error = std::fabs(static_cast<long double>(result) - point.expected);
    if (std::isnan(error)) {
        return kWrong;
    }
    switch (measure) {
    case GoldenRegion::ABSOLUTE:
        return static_cast<double>(error);
    case GoldenRegion::OF_ARGUMENTS:
        return static_cast<double>(error / LargestArgument(point));
    default:
        return static_cast<double>(error / std::fabs(point.expected));
    }
}

std::string Describe(const GoldenPoint& point, double result) {
    std::ostringstream out;
    out.precision(17);
    out << "line " << point.line << ", at";
    for (const double argument : point.arguments) {
        out << " " << argument;
    }
    out << ": " << result << " instead of ";
    if (point.missing) {
        out << "missing";
    } else {
        out << point.expected;
    }
    return out.str();
}

/// Where the tables are: beside the tests, or where a check of fresh points has drawn its own.
std::string TablesFolder() {
    const char* own = std::getenv("VELTRANE_GOLDEN_TABLES");
    return own != nullptr ? own : TestsFolder();
}

} // namespace

GoldenFolder::GoldenFolder(const std::string& folder) : fFolder(TablesFolder() + "/" + folder + "/") {
    std::ifstream in = Open(TestsFolder() + "/" + folder + "/regions.txt");
    for (std::string line; std::getline(in, line);) {
        if (line.empty() || line.front() == '#') {
            continue;
        }
        const std::vector<std::string> fields = Fields(line, '|');
        fRegions.push_back({fields.at(0), fields.at(1), MeasureOf(fields.at(2)), std::stod(fields.at(3)),
                            fields.size() > 4 ? fields[4] : ""});
    }
}

std::vector<GoldenPoint> GoldenFolder::Points(const std::string& table) const {
    std::vector<GoldenPoint> points;
    std::ifstream in = Open(fFolder + table + ".txt");
    int number = 0;
    for (std::string line; std::getline(in, line);) {
        const std::vector<std::string> fields = Fields(line, '\t');
        GoldenPoint point{fields.front(), {}, fields.back() == "missing", 0, ++number};
        for (std::size_t i = 1; i + 1 < fields.size(); ++i) {
            point.arguments.push_back(std::strtod(fields[i].c_str(), nullptr));
        }
        if (!point.missing) {
            point.expected = std::strtold(fields.back().c_str(), nullptr);
        }
        points.push_back(point);
    }
    return points;
}

std::vector<GoldenRegion> GoldenFolder::RegionsOf(const std::string& function) const {
    std::vector<GoldenRegion> own;
    std::copy_if(fRegions.begin(), fRegions.end(), std::back_inserter(own),
                 [&](const GoldenRegion& region) { return region.function == function; });
    return own;
}

void GoldenFolder::ExpectWithinTolerances(const std::string& function, const std::string& table,
                                          const GoldenEvaluation& evaluate) const {
    const std::vector<GoldenPoint> points = Points(table);
    for (const GoldenRegion& region : RegionsOf(function)) {
        double largest = 0;
        int count = 0;
        std::string worst;
        for (const GoldenPoint& point : points) {
            if (point.region != region.region) {
                continue;
            }
            ++count;
            const double result = evaluate(point.arguments);
            const double error = ErrorOf(result, point, region.measure);
            if (error > largest) {
                largest = error;
                worst = Describe(point, result);
            }
        }
        EXPECT_LE(largest, region.tolerance) << function << ", " << region.region << ", " << worst;
        EXPECT_GT(count, 0) << region.region;
        std::ostringstream measured;
        measured << count << " " << largest;
        testing::Test::RecordProperty(function + "|" + region.region, measured.str());
    }
}

void GoldenFolder::ExpectComplete(const std::string& function, const std::string& table) const {
    const std::vector<GoldenPoint> points = Points(table);
    EXPECT_GE(points.size(), 200U);
    std::set<std::string> inTable, listed;
    for (const GoldenPoint& point : points) {
        inTable.insert(point.region);
    }
    for (const GoldenRegion& region : RegionsOf(function)) {
        listed.insert(region.region);
    }
    EXPECT_EQ(inTable, listed);
}

void GoldenFolder::ExpectOnPage() const {
    std::ifstream in = Open(TestsFolder() + "/../docs/accuracy.md");
    const std::string page((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    for (const GoldenRegion& region : fRegions) {
        const std::size_t at = page.find("| `" + region.function + "` | " + region.region + " |");
        ASSERT_NE(at, std::string::npos) << region.function << ", " << region.region;
        const std::string line = page.substr(at, page.find('\n', at) - at);
        std::ostringstream tolerance;
        tolerance << "| " << region.tolerance << " | " << region.reason;
        EXPECT_NE(line.find(tolerance.str()), std::string::npos) << line;
    }
}

} // namespace veltrane::tests
