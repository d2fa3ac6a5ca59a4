#include "stats/golden_tables.h"

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace veltrane::tests {

namespace {

const std::string kFolder = VELTRANE_SAMPLES "/../stats/golden/";

std::vector<std::string> Fields(const std::string& line, char separator) {
    std::vector<std::string> fields;
    std::istringstream in(line);
    for (std::string field; std::getline(in, field, separator);)
        fields.push_back(field);
    return fields;
}

std::ifstream Open(const std::string& name) {
    std::ifstream in(kFolder + name);
    if (!in)
        throw std::runtime_error("cannot read " + kFolder + name);
    return in;
}

} // namespace

std::vector<GoldenPoint> ReadGoldenTable(const std::string& function) {
    std::vector<GoldenPoint> points;
    std::ifstream in = Open(function + ".txt");
    int number = 0;
    for (std::string line; std::getline(in, line);) {
        const std::vector<std::string> fields = Fields(line, '\t');
        GoldenPoint point{fields.front(), {}, fields.back() == "missing", 0, ++number};
        for (std::size_t i = 1; i + 1 < fields.size(); ++i)
            point.arguments.push_back(std::strtod(fields[i].c_str(), nullptr));
        if (!point.missing)
            point.expected = std::strtold(fields.back().c_str(), nullptr);
        points.push_back(point);
    }
    return points;
}

const std::vector<GoldenRegion>& GoldenRegions() {
    static const std::vector<GoldenRegion> regions = [] {
        std::vector<GoldenRegion> read;
        std::ifstream in = Open("regions.txt");
        for (std::string line; std::getline(in, line);) {
            if (line.empty() || line.front() == '#')
                continue;
            const std::vector<std::string> fields = Fields(line, '|');
            read.push_back({fields.at(0), fields.at(1), fields.at(2) == "absolute", std::stod(fields.at(3)),
                            fields.size() > 4 ? fields[4] : ""});
        }
        return read;
    }();
    return regions;
}

} // namespace veltrane::tests
