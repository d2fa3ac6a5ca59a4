#include "stats/golden_functions.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <limits>

namespace {

using veltrane::tests::GoldenFunction;
using veltrane::tests::GoldenFunctions;

/// Numbers that data may hold: the ends of every range, and ordinary ones between.
constexpr double kArguments[] = {
    0.0,
    -0.0,
    5e-324,
    1e-20,
    0.5,
    1.0,
    7.5,
    1e5,
    1e18,
    1e300,
    std::numeric_limits<double>::infinity(),
    -1e-300,
    -3.0,
    -1e300,
    -std::numeric_limits<double>::infinity(),
    -std::numeric_limits<double>::max(),
    std::numeric_limits<double>::quiet_NaN(),
};

/// Every function that takes numbers only, with the number of its arguments.
struct AnyArgument {
    const GoldenFunction* function;
    std::size_t count;
};

std::vector<AnyArgument> Functions() {
    std::vector<AnyArgument> functions;
    for (const GoldenFunction& function : GoldenFunctions()) {
        const std::string name = function.name;
        // These take arrays, or integers that every double here isn't.
        if (name != "GPTile" && name.rfind("Mednci", 0) != 0 && name != "PdfHyper")
            functions.push_back(
                {&function, veltrane::tests::DistributionTables().Points(name).front().arguments.size()});
    }
    return functions;
}

class DistributionFunctionsOfAnyArgument : public testing::TestWithParam<AnyArgument> {};

TEST_P(DistributionFunctionsOfAnyArgument, GiveANumberInTime) {
    using Clock = std::chrono::steady_clock;
    const std::size_t values = std::size(kArguments);
    std::size_t combinations = 1;
    for (std::size_t i = 0; i < GetParam().count; ++i)
        combinations *= values;
    const std::size_t stride = combinations > 6000 ? 97 : 1;
    Clock::duration longest{};
    for (std::size_t combination = 0; combination < combinations; combination += stride) {
        std::vector<double> arguments;
        for (std::size_t i = 0, rest = combination; i < GetParam().count; ++i, rest /= values)
            arguments.push_back(kArguments[rest % values]);
        const Clock::time_point start = Clock::now();
        const double result = GetParam().function->evaluate(arguments);
        longest = std::max(longest, Clock::now() - start);
        EXPECT_FALSE(std::isnan(result)) << testing::PrintToString(arguments);
    }
    EXPECT_LT(longest, std::chrono::seconds(20));
}

INSTANTIATE_TEST_SUITE_P(Functions, DistributionFunctionsOfAnyArgument, testing::ValuesIn(Functions()),
                         [](const auto& info) { return std::string(info.param.function->name); });

} // namespace
