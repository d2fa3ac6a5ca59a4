#include <MCMath_900/MCDistFun.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

/// The densities beside their plain formulas in long double. The library's own forms cancel the large parts of the
/// logarithms beforehand; where a plain formula has its digits, both are the same number.
namespace {

using MCMath_900::MCDistFun;

/// What the rounding of ln Gamma of this size leaves of a plain formula.
double Tolerance(long double largestLog) {
    return 1e-14 + 8 * static_cast<double>(std::fabs(largestLog) * std::numeric_limits<long double>::epsilon());
}

TEST(DensityFormula, Normal) {
    for (double z = -37; z <= 37; z += 0.125) {
        const double plain = static_cast<double>(std::exp(-0.5L * z * z) * 0.3989422804014327L);
        EXPECT_NEAR(MCDistFun::PdfNormalStandard(z) / plain, 1, 1e-15) << z;
        EXPECT_NEAR(MCDistFun::PdfNormal(3 + 2 * z, 3, 2) / (plain / 2), 1, 1e-15) << z;
    }
}

TEST(DensityFormula, Student) {
    long code = 0;
    for (const double df : {0.1, 1.0, 2.5, 30.0, 1e4, 1e6}) {
        for (const double x : {-20.0, -1.5, 0.0, 0.3, 4.0}) {
            const long double half = df / 2.0L;
            const long double size = std::lgamma(half + 0.5L);
            const long double plain = std::exp(size - std::lgamma(half) - 0.5723649429247001L -
                                               std::log(1.0L * df) / 2 - (half + 0.5L) * std::log1p(1.0L * x * x / df));
            EXPECT_NEAR(static_cast<double>(MCDistFun::PdfT(x, df, code) / plain), 1, Tolerance(size) + 2e-13)
                << x << ", " << df;
        }
    }
}

TEST(DensityFormula, Gamma) {
    for (const double shape : {0.01, 0.5, 1.0, 3.0, 40.0, 1e4}) {
        for (const double rate : {0.1, 1.0, 7.0}) {
            for (const double part : {0.5, 0.9, 1.0, 1.1, 2.0}) {
                const double x = part * shape / rate;
                const long double scaled = 1.0L * x * rate;
                const long double size = shape == 1 ? 0 : std::lgamma(1.0L * shape);
                const long double log =
                    std::log(1.0L * rate) - scaled + (shape == 1 ? 0 : (shape - 1) * std::log(scaled) - size);
                if (log < -700) {
                    continue;
                }
                EXPECT_NEAR(static_cast<double>(MCDistFun::PdfGamma(x, shape, rate) / std::exp(log)), 1,
                            Tolerance(size) + 2e-13)
                    << x << ", " << shape << ", " << rate;
            }
        }
    }
}

TEST(DensityFormula, Binomial) {
    long code = 0;
    for (const double n : {1.0, 12.0, 33.0, 34.0, 1e4}) {
        for (const double prob : {1e-3, 0.25, 0.9}) {
            for (const double part : {0.0, 0.1, 0.5, 0.9, 1.0}) {
                const long double x = std::floor(n * part);
                const long double size = std::lgamma(n + 1.0L);
                const long double log = size - std::lgamma(x + 1) - std::lgamma(n - x + 1) + x * std::log(1.0L * prob) +
                                        (n - x) * std::log1p(-1.0L * prob);
                if (log < -700) {
                    continue;
                }
                EXPECT_NEAR(
                    static_cast<double>(MCDistFun::PdfBin(static_cast<double>(x), n, prob, code) / std::exp(log)), 1,
                    Tolerance(size) + 4e-13)
                    << n << ", " << prob << ", " << part;
            }
        }
    }
}

TEST(DensityFormula, AreFiniteOrMissingForTheLargestArguments) {
    long code = 0;
    EXPECT_LE(MCDistFun::PdfT(3e150, 1e303, code), 0.4);
    EXPECT_NEAR(MCDistFun::PdfT(0, 1e300, code), 0.3989422804014327, 1e-12);
    EXPECT_NEAR(MCDistFun::PdfGamma(1e-200, 1 + 1e-10, 1e-200) / 1e-200, 1, 1e-6);
}

} // namespace
