#include "stats/steps/argument_relations.h"

#include <MCCommon_900/MCMV.h>
#include <MCMath_900/MCDistFun.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace veltrane::tests {

namespace {

using MCCommon_900::MCMV;
using MCMath_900::MCDistFun;
using Arguments = ArgumentRelation::Arguments;

constexpr double kEpsilon = 0x1p-52;

/// What two tails that make 1 may differ by when each is rounded by itself.
constexpr double kRounding = 4 * kEpsilon;

/// What the non-central sums leave out, at either end.
constexpr double kLeftOut = 4e-12;

/// From here on t is normal.
constexpr double kNormalFrom = 1e8;

bool IsNear(double a, double b, double tolerance) {
    return std::fabs(a - b) <= tolerance;
}

/// Whether two numbers agree but for their rounding; below the normal numbers there is no telling.
bool IsSame(double a, double b, double tolerance = 1e-12) {
    return a == b || (std::isfinite(a) && std::isfinite(b) &&
                      std::fabs(a - b) <= tolerance * std::max(std::fabs(a), std::fabs(b)) + 1e-305);
}

/// What the beta ratio may be off by: the continued fraction ends at a change of 10 (a + b) machine epsilons, the
/// series of a parameter of at most 1 at a term of 1e-15, which ten thousand more may follow.
double BetaError(double a, double b) {
    return (std::min(a, b) <= 1 ? 1e-8 : 1e-13) + 40 * kEpsilon * (a + b);
}

/// What two tails of chi-square may be off by: near the mean of many degrees either comes from a form of its own.
double ChiError(double df) {
    return df > 1e7 ? 1e-9 : 1e-13;
}

/// Whether a cumulative value and that of the rest make 1. A rest that can't be had says nothing.
bool MakeOne(double lower, double upper, double tolerance = kRounding) {
    return MCMV::IsMissing(upper) || IsNear(lower + upper, 1, tolerance);
}

bool HasExactComplement(double p) {
    return 1 - (1 - p) == p;
}

/// A larger probability, short of 1.
double Larger(double p) {
    return p + (1 - p) / 2;
}

bool IsWithinUnit(double p) {
    return p > 0 && p < 1;
}
bool IsProbability(double p) {
    return p >= 0 && p <= 1;
}
bool IsFraction(double p) {
    return p >= 0 && p < 1;
}

/// Whether a quantile isn't above that of a larger probability, but for an error that leaves it some digits.
bool IsInOrder(double quantile, double ofMore, double error = 1e-6) {
    return MCMV::IsMissing(ofMore) || error > 0.01 || quantile <= ofMore * (1 + error) || quantile <= ofMore + 1e-300;
}

/// Whether parameters are so far within the range of a double that no product or quotient of them leaves it.
bool AreSound(const Arguments& a, std::size_t first) {
    return std::all_of(a.begin() + static_cast<std::ptrdiff_t>(first), a.end(),
                       [](double parameter) { return parameter > 1e-150 && parameter < 1e150; });
}

double DeviateOf(const Arguments& a) {
    return (a[0] - a[1]) / a[2];
}

bool IsTDomain(const Arguments& a) {
    return a[1] > 0 && !std::isnan(a[0]);
}
bool IsFDomain(const Arguments& a) {
    return a[1] > 0 && a[2] > 0 && !std::isnan(a[0]);
}
bool IsBinomialDomain(const Arguments& a) {
    return a[1] >= 1 && IsProbability(a[2]);
}

// Each cumulative function beside its other tail, which is often one of the reflected arguments.

bool NormalTails(const Arguments& a, double r) {
    return MakeOne(r, MCDistFun::CdfStdNorm(-a[0]));
}
bool LocatedNormalTails(const Arguments& a, double r) {
    return MakeOne(r, MCDistFun::CdfNorm(-a[0], -a[1], a[2]));
}
bool TTails(const Arguments& a, double r) {
    return MakeOne(r, MCDistFun::CdfT(-a[0], a[1])) && (a[1] > kNormalFrom || MakeOne(r, MCDistFun::SigT(a[0], a[1])));
}
bool UpperTTails(const Arguments& a, double r) {
    return MakeOne(r, MCDistFun::SigT(-a[0], a[1]));
}
bool FTails(const Arguments& a, double r) {
    const bool isNormal = a[1] == 1 && a[2] > kNormalFrom;
    return isNormal || MakeOne(r, MCDistFun::SigF(a[0], a[1], a[2]), BetaError(a[1] / 2, a[2] / 2));
}
bool UpperFTails(const Arguments& a, double r) {
    const bool isNormal = a[1] == 1 && a[2] > kNormalFrom;
    return isNormal || MakeOne(r, MCDistFun::CdfF(a[0], a[1], a[2]), BetaError(a[1] / 2, a[2] / 2));
}
bool ChiTails(const Arguments& a, double r) {
    return MakeOne(r, MCDistFun::SigChi(a[0], a[1]), ChiError(a[1]));
}
bool UpperChiTails(const Arguments& a, double r) {
    return MakeOne(r, MCDistFun::CdfChi(a[0], a[1]), ChiError(a[1]));
}
// The scale goes by a power of 2, which rounds nothing within the range.
bool GammaScales(const Arguments& a, double r) {
    return !(a[0] > 1e-300 && a[0] < 1e300 && a[2] < 1e300) ||
           IsSame(r, MCDistFun::CdfGam(a[0] / 4, a[1], a[2] * 4), 1e-9);
}
bool BetaTails(const Arguments& a, double r) {
    return !HasExactComplement(a[0]) || MakeOne(r, MCDistFun::CdfBeta(1 - a[0], a[2], a[1]), BetaError(a[1], a[2]));
}
bool BinomialTails(const Arguments& a, double r) {
    long code = 0;
    const double more = std::floor(a[0]) + 1;
    if (!HasExactComplement(a[2]) || !(a[1] < 0x1p52)) {
        return true;
    }
    const double upper = MCDistFun::CdfBin(a[1] - more, a[1], 1 - a[2], code);
    return MakeOne(r, upper, 1e-12);
}
bool HypergeometricSymmetry(const Arguments& a, double r) {
    int code = 0;
    return IsNear(r, MCDistFun::CDFHyper(a[0], a[1], a[3], a[2], code), 1e-9);
}

// Densities beside those of the reflected or scaled arguments.

bool IsEvenNormal(const Arguments& a, double r) {
    return r == MCDistFun::PdfNormalStandard(-a[0]);
}
bool IsReflectedNormal(const Arguments& a, double r) {
    return r == MCDistFun::PdfNormal(-a[0], -a[1], a[2]) && (r == 0 || (r > 0) == (a[2] > 0));
}
bool IsEvenT(const Arguments& a, double r) {
    long code = 0;
    return r == MCDistFun::PdfT(-a[0], a[1], code);
}
bool GammaDensityScales(const Arguments& a, double r) {
    if (!(a[0] > 1e-290 && a[0] < 1e290 && a[2] > 1e-290 && a[2] < 1e290 && r > 1e-290 && r < 1e290)) {
        return true;
    }
    return IsSame(r * 4, MCDistFun::PdfGamma(a[0] / 4, a[1], a[2] * 4), 1e-9);
}
bool IsWithinBinomialCumulative(const Arguments& a, double r) {
    long code = 0;
    const double atMost = MCDistFun::CdfBin(a[0], a[1], a[2], code);
    return code != 0 || a[0] != std::floor(a[0]) || r <= atMost * (1 + 1e-10) + 1e-305;
}
bool IsEvenNonCentralT(const Arguments& a, double r) {
    long code = 0;
    return IsSame(r, MCDistFun::NonCentralPdfT(-a[0], a[1], -a[2], code));
}

// Quantiles beside that of a larger probability, or that of the complement.

bool NormalQuantile(const Arguments& a, double r) {
    const bool isOnItsSide = a[0] == 0.5 ? r == 0 : (r > 0) == (a[0] > 0.5);
    return isOnItsSide && (!HasExactComplement(a[0]) || r == -MCDistFun::IdfStdNorm(1 - a[0])) &&
           IsSame(std::min(a[0], 1 - a[0]), MCDistFun::CdfStdNorm(-std::fabs(r)), 1e-11);
}
bool LocatedQuantile(const Arguments& a, double r) {
    return a[0] == 0.5 ? r == a[1] : a[0] < 0.5 ? r <= a[1] : r >= a[1];
}
bool TQuantile(const Arguments& a, double r) {
    const bool isOnItsSide = a[0] == 0.5 ? r == 0 : a[0] < 0.5 ? r <= 0 : r >= 0;
    return isOnItsSide && (!HasExactComplement(a[0]) || r == -MCDistFun::IdfT(1 - a[0], a[1]));
}
bool FQuantile(const Arguments& a, double r) {
    return IsInOrder(r, MCDistFun::IdfF(Larger(a[0]), a[1], a[2]), 1e-6 + BetaError(a[1], a[2]));
}
bool ChiQuantile(const Arguments& a, double r) {
    return IsInOrder(r, MCDistFun::IdfChi(Larger(a[0]), a[1]));
}
bool GammaQuantile(const Arguments& a, double r) {
    return IsInOrder(r, MCDistFun::IdfGam(Larger(a[0]), a[1], a[2]));
}
bool BetaQuantile(const Arguments& a, double r) {
    if (a[0] == 0 || a[0] == 1) {
        return r == a[0];
    }
    if (!(a[1] > 0 && a[2] > 0 && IsProbability(a[0]))) {
        return r == -1;
    }
    const double larger = MCDistFun::IdfBeta(Larger(a[0]), a[1], a[2]);
    return r == -1 || (IsProbability(r) && (larger == -1 || IsInOrder(r, larger, 1e-6 + BetaError(a[1], a[2]))));
}
bool BinomialQuantile(const Arguments& a, double r) {
    long code = 0;
    // The guess is taken where it is within 128 machine epsilons of p.
    const bool hasOrder = a[0] > 1e-12 && a[0] < 1 - 1e-12;
    return r == std::floor(r) && r >= -1 && r <= a[1] &&
           (!hasOrder || r <= MCDistFun::IdfBin(Larger(a[0]), a[1], a[2], code));
}

// Non-central functions beside the central ones: a non-centrality moves the distribution up.

bool IsBelowCentralChi(const Arguments& a, double r) {
    const double central = MCDistFun::CdfChi(a[0], a[1]);
    return MCMV::IsMissing(central) || r <= central + kLeftOut;
}
bool IsBelowCentralF(const Arguments& a, double r) {
    const double central = MCDistFun::CdfF(a[0], a[1], a[2]);
    const bool isNormal = a[1] == 1 && a[2] > kNormalFrom;
    const bool isAtEnd = !(a[0] * (a[1] / a[2]) < 1e290);
    return isNormal || isAtEnd || !(a[4] <= 1e-12) || MCMV::IsMissing(central) ||
           r <= central + kLeftOut + BetaError(a[1], a[2]);
}
bool NonCentralTTails(const Arguments& a, double r) {
    return MakeOne(r, MCDistFun::NonCentralCdfT(-a[0], a[1], -a[2]), kLeftOut);
}

/// Whether a non-centrality that was found lies where its cumulative function passes p.
/// @param cumulative the function of the non-centrality, which falls with it
template <class Cumulative>
bool IsCrossing(Cumulative cumulative, double found, double p, double tol) {
    const double error = tol + kLeftOut, reach = tol + 1e-14 * found;
    if (found == 0) {
        return cumulative(0) <= p;
    }
    const double before = cumulative(std::max(found - reach, 0.0)), after = cumulative(found + reach);
    return (MCMV::IsMissing(before) || before >= p - error) && (MCMV::IsMissing(after) || after <= p + error);
}
bool IsChiCrossing(const Arguments& a, double r) {
    return IsCrossing([&](double ncp) { return MCDistFun::NonCentralCdfChi(a[0], a[1], ncp); }, r, a[2], a[3]);
}
bool IsFCrossing(const Arguments& a, double r) {
    const auto at = [&](double ncp) { return MCDistFun::NonCentralCdfF(a[0], a[1], a[2], ncp, 1e-12); };
    return IsCrossing(at, r, a[3], a[4]);
}
bool IsTCrossing(const Arguments& a, double r) {
    constexpr double kLargestX = 1e150; // whose square is near the end of the range
    if (std::fabs(a[0]) > kLargestX) {
        return true;
    }
    return IsCrossing([&](double ncp) { return MCDistFun::NonCentralCdfT(a[0], a[1], ncp); }, r, a[2], a[3]);
}

bool IsRecurrentLogGamma(const Arguments& a, double r) {
    const double scale = 1 + std::fabs(r);
    return !(a[0] < 1e15) || IsNear(MCDistFun::korddnlgam(a[0] + 1), r + std::log(a[0]), 1e-13 * scale);
}

constexpr auto kAlways = ArgumentRelation::ALWAYS;
constexpr auto kWhenSound = ArgumentRelation::WHEN_SOUND;
constexpr auto kMayFail = ArgumentRelation::MAY_FAIL;

const ArgumentRelation kRelations[] = {
    {"CdfStdNorm", [](const Arguments& a) { return !std::isnan(a[0]); }, kAlways, NormalTails},
    {"PdfNormalStandard", [](const Arguments& a) { return !std::isnan(a[0]); }, kAlways, IsEvenNormal},
    {"IdfStdNorm", [](const Arguments& a) { return IsWithinUnit(a[0]); }, kAlways, NormalQuantile},
    {"CdfNorm", [](const Arguments& a) { return a[2] > 0 && !std::isnan(DeviateOf(a)); }, kAlways, LocatedNormalTails},
    {"PdfNormal", [](const Arguments& a) { return a[2] != 0 && !std::isnan(DeviateOf(a)); }, kMayFail,
     IsReflectedNormal},
    {"IdfNorm", [](const Arguments& a) { return IsWithinUnit(a[0]) && a[2] > 0; }, kMayFail, LocatedQuantile},
    {"CdfT", IsTDomain, kWhenSound, TTails},
    {"SigT", IsTDomain, kWhenSound, UpperTTails},
    {"PdfT", IsTDomain, kMayFail, IsEvenT},
    {"IdfT", [](const Arguments& a) { return IsWithinUnit(a[0]) && a[1] > 0; }, kMayFail, TQuantile},
    {"CdfF", IsFDomain, kWhenSound, FTails},
    {"SigF", IsFDomain, kWhenSound, UpperFTails},
    {"IdfF", [](const Arguments& a) { return IsFraction(a[0]) && a[1] > 0 && a[2] > 0; }, kMayFail, FQuantile},
    {"CdfChi", IsTDomain, kWhenSound, ChiTails},
    {"SigChi", IsTDomain, kWhenSound, UpperChiTails},
    {"IdfChi", [](const Arguments& a) { return IsFraction(a[0]) && a[1] > 0; }, kMayFail, ChiQuantile},
    {"CdfGam", IsFDomain, kWhenSound, GammaScales},
    {"PdfGamma", IsFDomain, kMayFail, GammaDensityScales},
    {"IdfGam", [](const Arguments& a) { return IsFraction(a[0]) && a[1] >= 0 && a[2] > 0; }, kMayFail, GammaQuantile},
    {"CdfBeta", IsFDomain, kWhenSound, BetaTails},
    {"IdfBeta", [](const Arguments&) { return true; }, kAlways, BetaQuantile},
    {"PdfBin", IsBinomialDomain, kMayFail, IsWithinBinomialCumulative},
    {"CdfBin", [](const Arguments& a) { return IsBinomialDomain(a) && !std::isnan(a[0]); }, kMayFail, BinomialTails},
    {"IdfBin", [](const Arguments& a) { return IsBinomialDomain(a) && IsProbability(a[0]); }, kMayFail,
     BinomialQuantile},
    {"PdfHyper", [](const Arguments&) { return true; }, kMayFail, [](const Arguments&, double) { return true; }},
    {"CDFHyper", [](const Arguments& a) { return a[1] <= 2147483647 && a[2] <= a[1] && a[3] <= a[1]; }, kMayFail,
     HypergeometricSymmetry},
    {"NonCentralCdfChi", [](const Arguments& a) { return IsTDomain(a) && a[2] >= 0; }, kMayFail, IsBelowCentralChi},
    {"NonCentralCdfF", [](const Arguments& a) { return IsFDomain(a) && a[3] >= 0; }, kMayFail, IsBelowCentralF},
    {"NonCentralCdfT", [](const Arguments& a) { return IsTDomain(a) && !std::isnan(a[2]); }, kMayFail,
     NonCentralTTails},
    {"NonCentralPdfT", [](const Arguments& a) { return IsTDomain(a) && !std::isnan(a[2]); }, kMayFail,
     IsEvenNonCentralT},
    {"FindNCParamChi", [](const Arguments& a) { return IsTDomain(a) && IsProbability(a[2]) && a[3] >= 0; }, kMayFail,
     IsChiCrossing},
    {"FindNCParamF", [](const Arguments& a) { return IsFDomain(a) && IsProbability(a[3]) && a[4] >= 0; }, kMayFail,
     IsFCrossing},
    {"FindNCParamT", [](const Arguments& a) { return IsTDomain(a) && IsProbability(a[2]) && a[3] >= 0; }, kMayFail,
     IsTCrossing},
    {"korddnlgam", [](const Arguments& a) { return a[0] > 0; }, kMayFail, IsRecurrentLogGamma},
};

} // namespace

bool ArgumentRelation::Allows(const Arguments& arguments, double result) const {
    const bool isWithin = isInDomain(arguments);
    if (MCMV::IsMissing(result)) {
        return !isWithin || presence == MAY_FAIL || (presence == WHEN_SOUND && !AreSound(arguments, 1));
    }
    return isWithin && holds(arguments, result);
}

const ArgumentRelation& RelationOf(const std::string& function) {
    for (const ArgumentRelation& relation : kRelations) {
        if (relation.function == function) {
            return relation;
        }
    }
    throw std::out_of_range(function);
}

} // namespace veltrane::tests
