"""Output fields.

predictedValue, predictedDisplayValue, probability, confidence, residual, entityId, reasonCode, ruleValue and its kin,
transformedValue and decision.
The residual of a number is the actual value less the predicted one; that of a category is 1 or 0, whether the case has
it, less its probability. An output field with isFinalResult="false" is for others to use and isn't written.

Decision: a category that the prediction has no probability for has the probability 0.
Decision: probability and confidence without a value are those of the predicted category.
Decision: rank 1 is the prediction itself; the categories behind it go by their probabilities, of a rule set by its criterion.
A number and an entity have no second one.
Decision: an output field of another target than the model's, or of a segment, is missing.
Decision: the display value of a category is its TargetValue's, else its dictionary Value's, else itself; that of a
number is the number with all its digits.
"""
from .expressions import as_type, evaluate, expression_of, is_expression
from .values import MISSING, NotOfType, Unsupported, Value, constant, number, read, text_of

_EXPRESSIONS = ("transformedValue", "decision")


class Outputs:
    """The output fields of one case; each may use those before it."""

    def __init__(self, case, prediction):
        self._case, self._prediction = case, prediction

    def columns(self, element):
        """Name and Value of each output field that is written."""
        found = []
        for each in element if element is not None else ():
            if each.tag != "OutputField":
                continue
            value = as_type(self._value(each), each.get("dataType"), each.get("feature") in _EXPRESSIONS)
            self._case.outputs[each.get("name")] = value
            if each.get("isFinalResult", "true") in ("true", "1"):
                found.append((each.get("name"), value))
        return found

    def _value(self, element):
        feature = element.get("feature", "predictedValue")
        if element.get("segmentId") is not None or not self._case.has_target(element.get("targetField")):
            return MISSING
        if feature in _EXPRESSIONS:
            return evaluate(expression_of(element), self._case, element.get("dataType"))
        handler = getattr(self, "_" + feature, None)
        if handler is None or any(is_expression(child) for child in element):
            raise Unsupported(feature)
        return handler(element)

    def _predictedValue(self, element):
        return self._ranked(element)

    def _ranked(self, element):
        """The prediction of the field's rank."""
        rank, predicted = int(element.get("rank", "1")), self._case.predicted
        if rank == 1 or predicted is MISSING:
            return predicted
        shares = self._prediction.probabilities
        others = sorted((each for each in shares if each != text_of(predicted)), key=lambda each: -shares[each])
        if self._prediction.order:
            others = self._prediction.order[1:]
        return read(others[rank - 2], predicted.type) if rank - 2 < len(others) else MISSING

    def _predictedDisplayValue(self, element):
        predicted = self._ranked(element)
        if predicted is MISSING:
            return MISSING
        return Value("string", self._case.display_value(text_of(predicted)))

    def _share(self, element, shares):
        predicted = self._ranked(element)
        if self._case.predicted is MISSING or not shares or predicted is MISSING and element.get("value") is None:
            return MISSING
        category = element.get("value") or text_of(predicted)
        return Value("double", float(shares.get(category, 0.0)))

    def _probability(self, element):
        return self._share(element, self._prediction.probabilities)

    def _confidence(self, element):
        return self._share(element, self._prediction.confidences or self._prediction.probabilities)

    def _residual(self, element):
        actual, predicted = self._case.actual(), self._ranked(element)
        if actual is MISSING or predicted is MISSING:
            return MISSING
        if not self._prediction.probabilities:
            return Value("double", float(number(actual)) - float(number(predicted)))
        category = element.get("value", text_of(predicted))
        try:
            has = text_of(actual) == text_of(read(category, actual.type))
        except NotOfType:
            has = False
        return Value("double", float(has) - self._prediction.probabilities.get(category, 0.0))

    def _entityId(self, element):
        entity = self._prediction.entity if int(element.get("rank", "1")) == 1 else None
        return MISSING if entity is None else constant(entity, "string")

    def _reasonCode(self, element):
        reasons, rank = self._prediction.reasons, int(element.get("rank", "1"))
        return Value("string", reasons[rank - 1]) if rank <= len(reasons) else MISSING

    def _ruleValue(self, element):
        return self._of_rule(element, element.get("ruleFeature", "consequent"))

    def _consequent(self, element):
        return self._of_rule(element, "consequent")

    def _ruleId(self, element):
        return self._of_rule(element, "ruleId")

    def _support(self, element):
        return self._of_rule(element, "support")

    def _of_rule(self, element, feature):
        """What a feature says of the rule of the field's rank."""
        rules, rank = self._prediction.rules, int(element.get("rank", "1"))
        told = rules[rank - 1].get(feature) if rank <= len(rules) else None
        if told is None:
            return MISSING
        return Value("double", told) if isinstance(told, float) else Value("string", told)
