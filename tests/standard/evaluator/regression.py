"""RegressionModel.

A missing number makes the case one without a prediction; a missing category adds nothing. Of an ordinal target the
tables give cumulative probabilities through the link; of others the last table takes the rest where the link is none.

Decision: with two categories each link gives the first one's probability and the second takes the rest; without a link
the first one's is bounded to 0 and 1.
Decision: with a link and more than two categories the last one has the rest; where the others leave none, they share the
whole out. Of an ordinal target a link that falls adds nothing.
Decision: a sum or a probability that isn't finite is no prediction, in every mining function.
"""
import math
from . import distributions
from .prediction import Prediction, winner
from .tables import same_as_text
from .values import MISSING, constant, number


def _power(base, exponent):
    try:
        return float(base) ** exponent if base or exponent >= 0 else math.inf
    except OverflowError:
        return -math.inf if base < 0 and exponent % 2 else math.inf


def _sum(table, env):
    """The sum of a table; None where a number is missing."""
    terms = [float(table.get("intercept"))]
    for each in table:
        if each.tag == "NumericPredictor":
            value = env.field(each.get("name", each.get("field")))
            if value is MISSING:
                return None
            terms.append(float(each.get("coefficient")) * _power(number(value), int(each.get("exponent", "1"))))
        elif each.tag == "CategoricalPredictor":
            value = env.field(each.get("name", each.get("field")))
            if value is not MISSING and same_as_text(value, each.get("value")):
                terms.append(float(each.get("coefficient")))
        elif each.tag == "PredictorTerm":
            term = _product(each, env)
            if term is None:
                return None
            terms.append(term)
    return math.fsum(terms) if all(map(math.isfinite, terms)) else sum(terms)


def _product(term, env):
    result = float(term.get("coefficient"))
    for each in term:
        if each.tag == "FieldRef":
            value = env.field(each.get("field"))
            if value is MISSING and "mapMissingTo" in each.attrib:
                value = constant(each.get("mapMissingTo"))
            if value is MISSING:
                return None
            result *= float(number(value))
    return result


def _exp(x):
    try:
        return math.exp(x)
    except OverflowError:
        return math.inf


def _logistic(y):
    return 1 / (1 + _exp(-y)) if y >= 0 else _exp(y) / (1 + _exp(y))


LINKS = {
    "none": lambda y: y, "logit": _logistic, "softmax": _logistic, "exp": _exp, "probit": distributions.std_normal_cdf,
    "cloglog": lambda y: -math.expm1(-_exp(y)), "loglog": lambda y: _exp(-_exp(-y)),
    "cauchit": lambda y: 0.5 + math.atan(y) / math.pi,
}


def score(model, env, target_optype):
    """The Prediction of a case."""
    tables = [child for child in model if child.tag == "RegressionTable"]
    method = model.get("normalizationMethod", "none")
    sums = [_sum(table, env) for table in tables]
    if any(each is None or not math.isfinite(each) for each in sums):
        return Prediction()
    if model.get("functionName") == "regression":
        value = LINKS[method](sums[0])
        return Prediction(value if math.isfinite(value) else None)
    categories = [table.get("targetCategory") for table in tables]
    shares = _ordinal(sums, method) if target_optype == "ordinal" and method not in ("softmax", "simplemax") else _nominal(sums, method)
    if shares is None or not all(map(math.isfinite, shares)):
        return Prediction()
    probabilities = dict(zip(categories, shares, strict=True))
    return Prediction(winner(probabilities), probabilities)


def _nominal(sums, method):
    if method == "softmax":
        most = max(sums)
        powers = [math.exp(each - most) for each in sums]
        return [each / math.fsum(powers) for each in powers]
    if method == "simplemax":
        total = math.fsum(sums)
        return None if total == 0 else [each / total for each in sums]
    if len(sums) == 2:
        first = min(max(LINKS[method](sums[0]), 0.0), 1.0)
        return [first, 1 - first]
    if method == "none":
        return [*sums[:-1], 1 - math.fsum(sums[:-1])]
    linked = [LINKS[method](each) for each in sums[:-1]]
    total = math.fsum(linked)
    return [*(each / max(total, 1.0) for each in linked), max(1 - total, 0.0)]


def _ordinal(sums, method):
    """Cumulative probabilities as those of single categories; the last one is certain."""
    if method == "none" and len(sums) == 2:
        return _nominal(sums, method)
    cumulative = [*(LINKS[method](each) for each in sums[:-1]), 1.0]
    if method != "none":
        cumulative = [max(cumulative[:place + 1]) for place in range(len(cumulative))]
    return [each - before for before, each in zip([0.0, *cumulative], cumulative)]
