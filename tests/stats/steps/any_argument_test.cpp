#include "stats/golden_functions.h"
#include "stats/numerics/steps.h"
#include "stats/steps/argument_relations.h"
#include "stats/steps/argument_source.h"
#include "support/rows.h"

#include <MCCommon_900/MCMV.h>
#include <MCMath_900/MCDistFun.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using MCCommon_900::MCMV;
using MCMath_900::MCDistFun;
using veltrane::stats::stepsTaken;
using namespace veltrane::tests;

/// A millisecond, at 8 nanoseconds a round of the slowest loop.
constexpr long kMillisecond = 125000;

/// What a search for a non-centrality may take: 55 halvings of a bracket, each with a cumulative function whose sum may
/// have 60000 terms. Every one of these steps is part of the result, so that there is no shorter way to it.
constexpr long kSearch = 36 * kMillisecond;

#ifdef VELTRANE_SANITIZED
constexpr int kFewerPatterns = 50; // a sanitizer looks at every step
#else
constexpr int kFewerPatterns = 1;
#endif

/// Random bit patterns that each argument of a function is given.
constexpr int kPatterns = 1000000 / kFewerPatterns;

/// Calls with ordinary numbers only.
constexpr int kOrdinaryCalls = 20000;

/// Of all combinations of the edges so many are taken at random where there are more.
constexpr std::size_t kEdgeCalls = 20000;

/// A function of any numbers.
struct AnyArgument {
    const char* name;
    double (*evaluate)(const std::vector<double>& arguments);
    std::size_t count;

    bool IsSearch() const { return std::string(name).rfind("FindNCParam", 0) == 0; }
    long Bound() const { return IsSearch() ? kSearch : kMillisecond; }

    /// A search takes a thousand times as long as another function and consists of calls of one that gets them all.
    int Fewer(int calls) const { return IsSearch() ? calls / 50 : calls; }
};

/// The bits of two arguments make the four integers.
double HypergeometricOfBits(const std::vector<double>& arguments) {
    const auto half = [&](std::size_t i, int shift) {
        return static_cast<int>(std::bit_cast<std::uint64_t>(arguments.at(i)) >> shift);
    };
    return MCDistFun::PdfHyper(half(0, 0), half(0, 32), half(1, 0), half(1, 32));
}

std::vector<AnyArgument> Functions() {
    std::vector<AnyArgument> functions = {{"PdfHyper", HypergeometricOfBits, 2}};
    for (const GoldenFunction& function : GoldenFunctions()) {
        const std::string name = function.name;
        // Those of grouped data take arrays.
        if (name != "GPTile" && name.rfind("Mednci", 0) != 0 && name != "PdfHyper") {
            functions.push_back({function.name, function.evaluate,
                                 veltrane::tests::DistributionTables().Points(name).front().arguments.size()});
        }
    }
    return functions;
}

/// Whether a result lies in the range of its function: a number, a probability or a density. Failures are missing.
bool IsInRange(const std::string& function, double result) {
    if (MCMV::IsMissing(result)) {
        return true;
    }
    if (!std::isfinite(result)) {
        return false;
    }
    const auto has = [&](const char* part) { return function.find(part) != std::string::npos; };
    if (has("Cdf") || has("CDF") || has("Sig") || function == "PdfBin" || function == "PdfHyper") {
        return result >= 0 && result <= 1;
    }
    if (function == "PdfNormal") {
        return true; // a negative deviation negates it
    }
    const bool isAtLeastZero = has("Pdf") || has("FindNC") || has("IdfChi") || has("IdfGam") || has("IdfF");
    return !isAtLeastZero || result >= 0;
}

class DistributionFunctionsOfAnyArgument : public testing::TestWithParam<AnyArgument> {
protected:
    /// Calls the function and notes what shouldn't be.
    void Call() {
        stepsTaken = 0;
        const double result = GetParam().evaluate(fArguments);
        const long steps = stepsTaken;
        fMost = std::max(fMost, steps);
        if (IsInRange(GetParam().name, result) && steps <= GetParam().Bound() && fRelation.Allows(fArguments, result)) {
            return;
        }
        if (fWrong++ < 5) {
            ADD_FAILURE() << result << " after " << steps << " steps at " << testing::PrintToString(fArguments);
        }
    }

    void TearDown() override { RecordProperty("steps", std::to_string(fMost)); }

    std::vector<double> fArguments = std::vector<double>(GetParam().count);

private:
    const ArgumentRelation& fRelation = RelationOf(GetParam().name);
    long fMost = 0;
    int fWrong = 0;
};

TEST_P(DistributionFunctionsOfAnyArgument, EndAtTheEdges) {
    const std::size_t count = std::size(kEdges);
    std::size_t combinations = 1;
    for (std::size_t i = 0; i < GetParam().count; ++i) {
        combinations *= count;
    }
    ArgumentSource source(1);
    const std::size_t calls = std::min<std::size_t>(combinations, GetParam().Fewer(kEdgeCalls));
    for (std::size_t call = 0; call < calls; ++call) {
        std::size_t rest = calls == combinations ? call : source.Below(combinations);
        for (double& argument : fArguments) {
            argument = kEdges[rest % count];
            rest /= count;
        }
        Call();
    }
}

TEST_P(DistributionFunctionsOfAnyArgument, EndForAnyBits) {
    ArgumentSource source(2);
    for (int call = 0; call < kPatterns; ++call) {
        for (double& argument : fArguments) {
            argument = source.Bits();
        }
        Call();
    }
}

// Half of the places hold bits, so that the others lead further inside; twice the calls give each as many patterns.
TEST_P(DistributionFunctionsOfAnyArgument, EndForAnyBitsAmongOrdinaryNumbers) {
    ArgumentSource source(3);
    for (int call = 0; call < GetParam().Fewer(2 * kPatterns); ++call) {
        for (double& argument : fArguments) {
            argument = source.Coin() ? source.Bits() : source.Below(4) == 0 ? source.Edge() : source.Ordinary();
        }
        Call();
    }
}

TEST_P(DistributionFunctionsOfAnyArgument, EndForOrdinaryNumbers) {
    ArgumentSource source(4);
    for (int call = 0; call < GetParam().Fewer(kOrdinaryCalls); ++call) {
        for (double& argument : fArguments) {
            argument = source.Ordinary();
        }
        Call();
    }
}

INSTANTIATE_TEST_SUITE_P(Functions, DistributionFunctionsOfAnyArgument, testing::ValuesIn(Functions()),
                         veltrane::tests::NameOfRow());

} // namespace
