#include "links.h"

#include <MCMath_900/MCDistFun.h>

#include <cmath>

namespace veltrane_general {

using MCMath_900::MCDistFun;

namespace {

constexpr double kCauchy = 1.0; // degrees of freedom of the t distribution that is Cauchy's

/// Without the overflow of exp(-eta) for an eta far below 0.
double Logistic(double eta) {
    if (eta >= 0.0) {
        return 1.0 / (1.0 + std::exp(-eta));
    }
    const double e = std::exp(eta);
    return e / (1.0 + e);
}

double LogisticSlope(double eta) {
    const double e = std::exp(-std::fabs(eta));
    return e / ((1.0 + e) * (1.0 + e));
}

double NegativeBinomialSlope(double eta, double parameter) {
    const double less = std::expm1(-eta);
    return std::exp(-eta) / (parameter * less * less);
}

double OddsPowerSlope(double eta, double parameter) {
    const double base = 1.0 + parameter * eta;
    const double odds = std::pow(base, -1.0 / parameter);
    return odds / ((1.0 + odds) * (1.0 + odds) * base);
}

} // namespace

double Link::Inverse(double eta) const {
    switch (function) {
    case LinkFunction::CLOGLOG:
        return -std::expm1(-std::exp(eta));
    case LinkFunction::LOG:
        return std::exp(eta);
    case LinkFunction::LOGC:
        return -std::expm1(eta);
    case LinkFunction::LOGIT:
        return Logistic(eta);
    case LinkFunction::LOGLOG:
        return std::exp(-std::exp(-eta));
    case LinkFunction::NEGBIN:
        return 1.0 / (parameter * std::expm1(-eta));
    case LinkFunction::ODDSPOWER:
        return parameter == 0.0 ? Logistic(eta) : 1.0 / (1.0 + std::pow(1.0 + parameter * eta, -1.0 / parameter));
    case LinkFunction::POWER:
        return parameter == 0.0 ? std::exp(eta) : std::pow(eta, 1.0 / parameter);
    case LinkFunction::PROBIT:
        return MCDistFun::CdfStdNorm(eta);
    case LinkFunction::CAUCHIT:
        return MCDistFun::CdfT(eta, kCauchy);
    default:
        return eta;
    }
}

double Link::Slope(double eta) const {
    switch (function) {
    case LinkFunction::CLOGLOG:
        return std::exp(eta - std::exp(eta));
    case LinkFunction::LOG:
        return std::exp(eta);
    case LinkFunction::LOGC:
        return -std::exp(eta);
    case LinkFunction::LOGIT:
        return LogisticSlope(eta);
    case LinkFunction::LOGLOG:
        return std::exp(-eta - std::exp(-eta));
    case LinkFunction::NEGBIN:
        return NegativeBinomialSlope(eta, parameter);
    case LinkFunction::ODDSPOWER:
        return parameter == 0.0 ? LogisticSlope(eta) : OddsPowerSlope(eta, parameter);
    case LinkFunction::POWER:
        return parameter == 0.0 ? std::exp(eta) : std::pow(eta, 1.0 / parameter - 1.0) / parameter;
    case LinkFunction::PROBIT:
        return MCDistFun::PdfNormalStandard(eta);
    default:
        return 1.0;
    }
}

} // namespace veltrane_general
