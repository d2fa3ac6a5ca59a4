#ifndef VELTRANE_PLUGINS_GENERAL_LINKS_H
#define VELTRANE_PLUGINS_GENERAL_LINKS_H

namespace veltrane_general {

/// The link functions of a generalized linear model. Those of cumulative probabilities are some of them.
enum class LinkFunction {
    CLOGLOG,
    IDENTITY,
    LOG,
    LOGC,
    LOGIT,
    LOGLOG,
    NEGBIN,
    ODDSPOWER,
    POWER,
    PROBIT,
    CAUCHIT ///< of cumulative probabilities alone
};

/// A link function with its parameter.
///
/// The inverse of each, with eta for the sum of a model and c for the parameter:
///
///     cloglog    1 - exp(-exp(eta))
///     identity   eta
///     log        exp(eta)
///     logc       1 - exp(eta)
///     logit      1 / (1 + exp(-eta))
///     loglog     exp(-exp(-eta))
///     negbin     1 / (c (exp(-eta) - 1))
///     oddspower  1 / (1 + (1 + c eta)^(-1/c)), for c = 0 as logit
///     power      eta^(1/c), for c = 0 as log
///     probit     the standard normal distribution at eta
///     cauchit    1/2 + arctan(eta) / pi
struct Link {
    LinkFunction function = LinkFunction::IDENTITY;
    double parameter = 0.0;

    /// The predicted number for a sum; what is no finite number where there is none.
    /// @param eta finite
    double Inverse(double eta) const;

    /// How fast the predicted number grows with the sum, of a link of numbers.
    double Slope(double eta) const;
};

} // namespace veltrane_general

#endif
