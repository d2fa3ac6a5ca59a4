// Each function of the standard against values that were computed apart.
#include "calls.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <set>
#include <thread>

using namespace veltrane::tests;
using veltrane::DataType;
using veltrane::Function;
using veltrane::Value;

namespace {

constexpr double kMissing = std::numeric_limits<double>::quiet_NaN();

/// Whole results of rows are exact, digits that were worked out elsewhere hold to a few units of the last place.
bool IsAsWanted(const Value& found, const Value& wanted) {
    if (found.type != DataType::DOUBLE || wanted.type != DataType::DOUBLE || found.isMissing || wanted.isMissing) {
        return WriteCell(found) == WriteCell(wanted);
    }
    return found.number == wanted.number || std::fabs(found.number - wanted.number) <= 2e-15 * std::fabs(wanted.number);
}

std::vector<Value> ReadArguments(const std::vector<std::string>& row, std::size_t first) {
    std::vector<Value> arguments;
    for (std::size_t i = first; i < row.size(); ++i) {
        arguments.push_back(ReadCell(row[i]));
    }
    return arguments;
}

TEST(StandardFunctions, GiveWhatTheRowsSay) {
    for (const std::vector<std::string>& row : ReadTable("rows.tsv")) {
        const Value found = Call(row[0], ReadArguments(row, 2));
        std::string written = row[0];
        for (std::size_t i = 2; i < row.size(); ++i) {
            written += " " + row[i];
        }
        EXPECT_TRUE(IsAsWanted(found, ReadCell(row[1]))) << written << ": " << WriteCell(found) << ", not " << row[1];
    }
}

TEST(StandardFunctions, AreAllReachedByARow) {
    std::set<std::string> reached;
    for (const std::vector<std::string>& row : ReadTable("rows.tsv")) {
        reached.insert(row[0]);
    }
    std::set<std::string> names;
    for (const Function& function : veltrane_kit::StandardFunctions().All()) {
        names.insert(function.name);
    }
    EXPECT_EQ(reached, names);
}

/// The arguments of a function's rows.
std::vector<std::vector<std::string>> RowsOf(const std::vector<std::vector<std::string>>& table,
                                             const std::string& name) {
    std::vector<std::vector<std::string>> rows;
    for (const std::vector<std::string>& row : table) {
        if (row[0] == name) {
            rows.emplace_back(row.begin() + 2, row.end());
        }
    }
    return rows;
}

bool IsMissingCell(const std::string& cell) {
    return cell == "missing";
}
bool IsInvalidCell(const std::string& cell) {
    return cell.starts_with("invalid:");
}

/// Whether one of the rows has such a cell at a place.
bool HasAt(const std::vector<std::vector<std::string>>& rows, std::size_t place, bool (*is)(const std::string&)) {
    return std::any_of(rows.begin(), rows.end(),
                       [&](const std::vector<std::string>& row) { return row.size() > place && is(row[place]); });
}

// Each argument missing and invalid; where missing ones are skipped, all of them missing and some; and none of it.
TEST(StandardFunctions, HaveARowForEachRuleOfMissingAndInvalidValues) {
    const std::vector<std::vector<std::string>> table = ReadTable("rows.tsv");
    for (const Function& function : veltrane_kit::StandardFunctions().All()) {
        const std::vector<std::vector<std::string>> rows = RowsOf(table, function.name);
        for (std::size_t place = 0; place < function.fewest; ++place) {
            EXPECT_TRUE(HasAt(rows, place, IsMissingCell)) << function.name << ": none is missing at " << place;
            EXPECT_TRUE(HasAt(rows, place, IsInvalidCell)) << function.name << ": none is invalid at " << place;
        }
        int whole = 0;
        int empty = 0;
        int partial = 0;
        for (const std::vector<std::string>& row : rows) {
            const auto missing = std::count_if(row.begin(), row.end(), IsMissingCell);
            const auto invalid = std::count_if(row.begin(), row.end(), IsInvalidCell);
            whole += missing == 0 && invalid == 0 ? 1 : 0;
            empty += missing == static_cast<long>(row.size()) ? 1 : 0;
            partial += missing > 0 && missing < static_cast<long>(row.size()) ? 1 : 0;
        }
        EXPECT_GT(whole, 0) << function.name;
        if (function.missing == Function::Missing::IS_SKIPPED) {
            EXPECT_TRUE(empty > 0 && partial > 0) << function.name;
        }
    }
}

TEST(StandardFunctions, KeepTheDigitsOfManyPoints) {
    std::set<std::string> reached;
    for (const std::vector<std::string>& row : ReadTable("points.tsv")) {
        std::vector<Value> arguments;
        std::string written = row[0];
        for (std::size_t i = 3; i < row.size(); ++i) {
            arguments.push_back(Number(std::stod(row[i])));
            written += " " + row[i];
        }
        const double wanted = std::strtod(row[1].c_str(), nullptr);
        const double found = Call(row[0], arguments).number;
        EXPECT_LE(std::fabs(found - wanted), std::stod(row[2]) * std::fabs(wanted)) << written << ": " << found;
        reached.insert(row[0]);
    }
    EXPECT_EQ(reached.size(), 25U);
}

TEST(StandardFunctions, TellPeopleWhatTheyDo) {
    for (const Function& function : veltrane_kit::StandardFunctions().All()) {
        EXPECT_FALSE(function.summary.empty()) << function.name;
        EXPECT_FALSE(function.missingRule.empty()) << function.name;
    }
}

const double kNumbers[] = {0.0,
                           -0.0,
                           1.0,
                           -1.0,
                           0.5,
                           2.0,
                           -3.0,
                           1e-300,
                           1e300,
                           -1e300,
                           0.3,
                           10.0,
                           709.0,
                           -7.25,
                           1e15,
                           -2.5,
                           3.5,
                           kMissing,
                           std::numeric_limits<double>::infinity(),
                           -std::numeric_limits<double>::infinity()};

TEST(StandardFunctions, HaveKernelsThatPassMissingNumbersOn) {
    for (const Function& function : veltrane_kit::StandardFunctions().All()) {
        if (function.ofOne != nullptr) {
            EXPECT_TRUE(std::isnan(function.ofOne(kMissing))) << function.name;
        }
        for (const double number : kNumbers) {
            if (function.ofTwo != nullptr) {
                EXPECT_TRUE(std::isnan(function.ofTwo(kMissing, number))) << function.name << " " << number;
                EXPECT_TRUE(std::isnan(function.ofTwo(number, kMissing))) << function.name << " " << number;
            }
        }
    }
}

/// The same bits; any two that are no numbers are the same.
void ExpectSameBits(double found, double wanted, const std::string& what) {
    EXPECT_TRUE(std::isnan(found) ? std::isnan(wanted) : found == wanted && std::signbit(found) == std::signbit(wanted))
        << what << ": " << found << ", not " << wanted;
}

/// All combinations of the numbers in so many columns.
std::vector<std::vector<double>> Combinations(std::size_t columns) {
    std::vector<std::vector<double>> made(columns);
    std::size_t rows = 1;
    for (std::size_t i = 0; i < columns; ++i) {
        rows *= std::size(kNumbers);
    }
    for (std::size_t row = 0; row < rows; ++row) {
        std::size_t rest = row;
        for (std::vector<double>& column : made) {
            column.push_back(kNumbers[rest % std::size(kNumbers)]);
            rest /= std::size(kNumbers);
        }
    }
    return made;
}

TEST(StandardFunctions, GiveTheSameBitsForColumns) {
    std::size_t compared = 0;
    for (const Function& function : veltrane_kit::StandardFunctions().All()) {
        if (function.ofColumns == nullptr) {
            continue;
        }
        ++compared;
        const std::size_t count = std::min<std::size_t>(function.most, 3);
        const std::vector<std::vector<double>> columns = Combinations(count);
        std::vector<double> results = columns.back(); // which they may stand in
        std::vector<const double*> read;
        read.reserve(count);
        for (const std::vector<double>& column : columns) {
            read.push_back(column.data());
        }
        read.back() = results.data();
        function.ofColumns(read.data(), count, results.size(), results.data());
        for (std::size_t row = 0; row < results.size(); ++row) {
            std::vector<Value> arguments;
            std::string what = function.name;
            for (const std::vector<double>& column : columns) {
                arguments.push_back(Number(column[row]));
                what += " " + std::to_string(column[row]);
            }
            Place place;
            ExpectSameBits(results[row], Call(function, arguments, place).number, what);
        }
    }
    EXPECT_GT(compared, 30U);
}

TEST(StandardFunctionsThreads, AreCalledSideBySide) {
    const std::vector<std::vector<std::string>> rows = ReadTable("rows.tsv");
    std::vector<int> wrong(4);
    std::vector<std::thread> threads;
    threads.reserve(wrong.size());
    for (int& each : wrong) {
        threads.emplace_back([&each, &rows] {
            for (const std::vector<std::string>& row : rows) {
                Place place;
                const Value found = Call(StandardFunction(row[0]), ReadArguments(row, 2), place);
                each += IsAsWanted(found, ReadCell(row[1])) ? 0 : 1;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(wrong, std::vector<int>(4));
}

} // namespace
