#ifndef VELTRANE_PLUGINS_REGRESSION_NORMALIZATION_H
#define VELTRANE_PLUGINS_REGRESSION_NORMALIZATION_H

#include <vector>

namespace veltrane_regression {

/// How the sum of a regression table becomes a prediction; the normalizationMethod of the document.
enum class Normalization { NONE, SIMPLEMAX, SOFTMAX, LOGIT, PROBIT, CLOGLOG, LOGLOG, CAUCHIT, EXP };

/// The inverse of a link function, for all methods but simplemax. Softmax of a single sum is the logistic function.
///
///     none      y
///     logit     1 / (1 + exp(-y))
///     probit    the standard normal distribution at y
///     cloglog   1 - exp(-exp(y))
///     loglog    exp(-exp(-y))
///     cauchit   1/2 + arctan(y) / pi
///     exp       exp(y)
double InverseLink(Normalization method, double y);

/// Turns the sums of all tables into the probabilities of their categories, in place.
///
/// Softmax and simplemax share out the exponentials, or the sums themselves. With every other method the inverse link
/// gives each category but the last its probability, or, for an ordinal target, the probability of it and all before;
/// the last category has the rest, which is never negative but for more than two categories without any link. Of two
/// categories without a link the first one's sum is held within 0 and 1.
/// @param sums      one for each category, in the target's order where that is ordinal
/// @param isOrdinal whether the links are cumulative
/// @return false when there are no probabilities: a sum that isn't finite, or simplemax of sums that add up to 0
bool Normalize(Normalization method, bool isOrdinal, std::vector<double>& sums);

} // namespace veltrane_regression

#endif
