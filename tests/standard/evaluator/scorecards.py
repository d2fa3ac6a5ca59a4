"""Scorecard.

Of each characteristic the first attribute that holds gives its points; the score is the initial score and all points. The
differences between points and baselines rank the reason codes.

Decision: a case without an attribute that holds, or whose complex partial score is no number, can't be scored.
Decision: a difference below 0 is no reason; equal ones stay in the order of the characteristics.
Decision: a code of several characteristics is one reason, with the sum of their differences, at the place of the first.
Decision: the complex partial score goes before the partial score, the code of the attribute before that of its
characteristic, the baseline of the characteristic before that of the card.
"""
import math

from .expressions import as_type, evaluate as evaluate_expression, expression_of
from .predicates import evaluate, predicate_of
from .prediction import Prediction
from .values import MISSING, number


def _points(attribute, env):
    """None where there is no number."""
    computed = next((child for child in attribute if child.tag == "ComplexPartialScore"), None)
    if computed is None:
        return float(attribute.get("partialScore"))
    value = as_type(evaluate_expression(expression_of(computed), env, "double"), "double")
    return None if value is MISSING else float(number(value))


def _reason(attribute, characteristic):
    return attribute.get("reasonCode", characteristic.get("reasonCode"))


def score(model, env, _target):
    """The Prediction of a case."""
    tells = model.get("useReasonCodes", "true") in ("true", "1")
    sign = 1.0 if model.get("reasonCodeAlgorithm", "pointsBelow") == "pointsAbove" else -1.0
    total, differences = [float(model.get("initialScore", "0"))], {}
    for characteristic in next(child for child in model if child.tag == "Characteristics"):
        attribute = next((child for child in characteristic
                          if child.tag == "Attribute" and evaluate(predicate_of(child), env) is True), None)
        points = None if attribute is None else _points(attribute, env)
        if points is None or not math.isfinite(points):
            return Prediction()
        total.append(points)
        if tells:
            code = _reason(attribute, characteristic)
            baseline = float(characteristic.get("baselineScore", model.get("baselineScore")))
            differences[code] = differences.get(code, 0.0) + sign * (points - baseline)
    result = sum(total)
    if not math.isfinite(result):
        return Prediction()
    reasons = sorted((code for code in differences if differences[code] >= 0), key=lambda code: -differences[code])
    return Prediction(result, reasons=reasons)
