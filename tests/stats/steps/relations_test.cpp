#include "stats/steps/argument_source.h"
#include "support/rows.h"

#include <MCCommon_900/MCMV.h>
#include <MCMath_900/MCDistFun.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>
#include <string>
#include <vector>

/// What holds between the results of the distribution functions whatever their arguments: a cumulative function rises,
/// its tails make 1, a quantile leads back to its probability. Parameters are drawn from 1e-6 to 1e12, tails to 1e-300.
namespace {

using MCCommon_900::MCMV;
using MCMath_900::MCDistFun;
using veltrane::tests::ArgumentSource;

constexpr double kEpsilon = 0x1p-52;
constexpr int kDraws = 20000;

using Parameters = std::vector<double>;

/// A family of distributions, as functions of its parameters.
struct Family {
    const char* name;
    int parameters;
    std::function<double(double x, const Parameters& of)> lower;    ///< the probability of at most x
    std::function<double(double x, const Parameters& of)> upper;    ///< the probability of more
    std::function<double(double p, const Parameters& of)> quantile; ///< of the lower tail
    std::function<double(const Parameters& of)> tailError;          ///< relative, of either tail
    std::function<double(double p, const Parameters& of)> quantileError;
};

constexpr double kSmallError = 2e-12;

/// The continued fraction of the beta ratio ends at a change of 10 (a + b) machine epsilons.
double FractionError(double sum) {
    return std::min(kSmallError + 40 * kEpsilon * sum, 0.5);
}

/// The logarithm of a quantile moves by 1 / parameter of the rounding of a probability.
double RoundingError(double parameter) {
    return kSmallError + 40 * kEpsilon / parameter;
}

double Smallest(const Parameters& of) {
    return *std::min_element(of.begin(), of.end());
}

double Sum(const Parameters& of) {
    return std::accumulate(of.begin(), of.end(), 0.0);
}

const Family kFamilies[] = {
    {"Normal", 0, [](double x, const Parameters&) { return MCDistFun::CdfStdNorm(x); },
     [](double x, const Parameters&) { return MCDistFun::CdfStdNorm(-x); },
     [](double p, const Parameters&) { return MCDistFun::IdfStdNorm(p); },
     [](const Parameters&) { return kSmallError; }, [](double, const Parameters&) { return 1e-14; }},
    {"Student", 1, [](double x, const Parameters& of) { return MCDistFun::CdfT(x, of[0]); },
     [](double x, const Parameters& of) { return MCDistFun::CdfT(-x, of[0]); },
     [](double p, const Parameters& of) { return MCDistFun::IdfT(p, of[0]); },
     [](const Parameters& of) { return FractionError(std::min(of[0], 1e8)); },
     [](double, const Parameters& of) { return RoundingError(of[0]); }},
    {"F", 2, [](double x, const Parameters& of) { return MCDistFun::CdfF(x, of[0], of[1]); },
     [](double x, const Parameters& of) { return MCDistFun::SigF(x, of[0], of[1]); },
     [](double p, const Parameters& of) { return MCDistFun::IdfF(p, of[0], of[1]); },
     [](const Parameters& of) { return FractionError(Sum(of)); },
     [](double, const Parameters& of) { return RoundingError(Smallest(of)); }},
    {"ChiSquare", 1, [](double x, const Parameters& of) { return MCDistFun::CdfChi(x, of[0]); },
     [](double x, const Parameters& of) { return MCDistFun::SigChi(x, of[0]); },
     [](double p, const Parameters& of) { return MCDistFun::IdfChi(p, of[0]); },
     [](const Parameters&) { return kSmallError; },
     [](double p, const Parameters& of) { return p < 1e-50 ? 1e-8 : RoundingError(of[0]); }},
    {"Gamma", 2, [](double x, const Parameters& of) { return MCDistFun::CdfGam(x, of[0], of[1]); },
     [](double x, const Parameters& of) { return MCDistFun::SigChi(2 * x * of[1], 2 * of[0]); },
     [](double p, const Parameters& of) { return MCDistFun::IdfGam(p, of[0], of[1]); },
     [](const Parameters& of) { return kSmallError + 80 * kEpsilon * std::sqrt(of[0]); },
     [](double p, const Parameters& of) { return p < 1e-50 ? 1e-8 : RoundingError(of[0]); }},
    {"Beta", 2, [](double x, const Parameters& of) { return MCDistFun::CdfBeta(x, of[0], of[1]); },
     [](double x, const Parameters& of) { return MCDistFun::CdfBeta(1 - x, of[1], of[0]); },
     [](double p, const Parameters& of) { return MCDistFun::IdfBeta(p, of[0], of[1]); },
     [](const Parameters& of) { return FractionError(Sum(of)); },
     [](double, const Parameters& of) { return RoundingError(Smallest(of)); }},
};

/// A draw of parameters, and a value at a probability of theirs.
struct Draw {
    Draw(const Family& family, ArgumentSource& source) {
        for (int i = 0; i < family.parameters; ++i) {
            of.push_back(source.Coin() ? source.Log(1e-6, 1e12) : source.Log(0.1, 1e3));
        }
        p = source.Probability();
        x = family.quantile(p, of);
    }

    /// Quantiles of small parameters may leave the range of a double, and those of beta come to an end.
    bool IsWithin() const { return p < 1 && !MCMV::IsMissing(x) && std::fabs(x) > 1e-290 && x != 1; }

    /// The complement of a small value of the beta distribution is rounded, and so is its upper tail.
    bool HasUpperTail(const Family& family) const { return family.name != std::string("Beta") || x >= 0.5; }

    Parameters of;
    double p, x;
};

class Relations : public testing::TestWithParam<Family> {
protected:
    /// Calls a check for draws whose value is within the range.
    template <class Check>
    void ForDraws(std::uint64_t seed, Check check) {
        ArgumentSource source(seed);
        int within = 0;
        for (int i = 0; i < kDraws; ++i) {
            const Draw draw(GetParam(), source);
            if (!draw.IsWithin()) {
                continue;
            }
            ++within;
            if (!check(draw, source) && fWrong++ < 5) {
                ADD_FAILURE() << "p " << draw.p << ", x " << draw.x << ", of " << testing::PrintToString(draw.of);
            }
        }
        EXPECT_GT(within, kDraws / 4);
    }

private:
    int fWrong = 0;
};

TEST_P(Relations, TailsMakeOne) {
    const Family& family = GetParam();
    ForDraws(11, [&](const Draw& draw, ArgumentSource&) {
        if (!draw.HasUpperTail(family)) {
            return true;
        }
        const double whole = family.lower(draw.x, draw.of) + family.upper(draw.x, draw.of);
        return std::fabs(whole - 1) <= family.tailError(draw.of) + 4 * kEpsilon;
    });
}

TEST_P(Relations, TheLowerTailRisesAndTheUpperFalls) {
    const Family& family = GetParam();
    ForDraws(12, [&](const Draw& draw, ArgumentSource& source) {
        const double above = draw.x + std::fabs(draw.x) * source.Log(1e-16, 1);
        const double error = 1 + 2 * family.tailError(draw.of);
        if (family.lower(draw.x, draw.of) > family.lower(above, draw.of) * error + 1e-307) {
            return false;
        }
        return !draw.HasUpperTail(family) ||
               family.upper(draw.x, draw.of) * error + 1e-307 >= family.upper(above, draw.of);
    });
}

// A value less by the error of the quantile has a smaller probability, one that is larger by it a larger one.
TEST_P(Relations, AQuantileLeadsBack) {
    const Family& family = GetParam();
    ForDraws(13, [&](const Draw& draw, ArgumentSource&) {
        const double move = std::fabs(draw.x) * family.quantileError(draw.p, draw.of);
        const double error = 1 + 2 * family.tailError(draw.of);
        if (draw.p <= 0.5 || !draw.HasUpperTail(family)) {
            return family.lower(draw.x - move, draw.of) <= draw.p * error &&
                   family.lower(draw.x + move, draw.of) * error >= draw.p;
        }
        return family.upper(draw.x - move, draw.of) * error >= 1 - draw.p &&
               family.upper(draw.x + move, draw.of) <= (1 - draw.p) * error;
    });
}

TEST_P(Relations, QuantilesRise) {
    const Family& family = GetParam();
    ForDraws(14, [&](const Draw& draw, ArgumentSource& source) {
        const double p = std::min(draw.p * (1 + source.Log(1e-15, 1)), 1 - 0x1p-53);
        const double next = family.quantile(p, draw.of);
        const double error = 2 * family.quantileError(draw.p, draw.of) + 2 * family.tailError(draw.of);
        return MCMV::IsMissing(next) || next >= draw.x - std::fabs(draw.x) * error;
    });
}

INSTANTIATE_TEST_SUITE_P(Families, Relations, testing::ValuesIn(kFamilies), veltrane::tests::NameOfRow());

/// The families that are symmetric around 0.
class SymmetricRelations : public Relations {};

TEST_P(SymmetricRelations, OppositeProbabilitiesHaveOppositeDeviates) {
    const Family& family = GetParam();
    ForDraws(15, [&](const Draw& draw, ArgumentSource&) {
        if (draw.p < 0.5) {
            return draw.x < 0;
        }
        return family.quantile(1 - draw.p, draw.of) == -draw.x && draw.x >= 0;
    });
}

INSTANTIATE_TEST_SUITE_P(Families, SymmetricRelations, testing::ValuesIn({kFamilies[0], kFamilies[1]}),
                         veltrane::tests::NameOfRow());

} // namespace
