"""Output fields.

predictedValue, predictedDisplayValue, probability, confidence, residual, entityId, transformedValue and decision.
The residual of a number is the actual value less the predicted one; that of a category is 1 or 0, whether the case has
it, less its probability. An output field with isFinalResult="false" is for others to use and isn't written.

Decision: a category that the prediction has no probability for has the probability 0.
Decision: probability and confidence without a value are those of the predicted category.
Decision: the display value of a category is its TargetValue's, else its dictionary Value's, else itself; that of a
number is the number with all its digits.
"""
from .expressions import as_type, evaluate, expression_of, is_expression
from .values import MISSING, NotOfType, Unsupported, Value, constant, number, read, text_of


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
            value = as_type(self._value(each), each.get("dataType"))
            self._case.outputs[each.get("name")] = value
            if each.get("isFinalResult", "true") in ("true", "1"):
                found.append((each.get("name"), value))
        return found

    def _value(self, element):
        feature = element.get("feature", "predictedValue")
        if feature in ("transformedValue", "decision"):
            return evaluate(expression_of(element), self._case)
        handler = getattr(self, "_" + feature, None)
        if handler is None or any(is_expression(child) for child in element):
            raise Unsupported(feature)
        return handler(element)

    def _predictedValue(self, _element):
        return self._case.predicted

    def _predictedDisplayValue(self, _element):
        predicted = self._case.predicted
        if predicted is MISSING:
            return MISSING
        return Value("string", self._case.display_value(text_of(predicted)))

    def _share(self, element, shares):
        if self._case.predicted is MISSING or not shares:
            return MISSING
        category = element.get("value", text_of(self._case.predicted))
        return Value("double", float(shares.get(category, 0.0)))

    def _probability(self, element):
        return self._share(element, self._prediction.probabilities)

    def _confidence(self, element):
        return self._share(element, self._prediction.confidences or self._prediction.probabilities)

    def _residual(self, element):
        actual, predicted = self._case.actual(), self._case.predicted
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

    def _entityId(self, _element):
        entity = self._prediction.entity
        return MISSING if entity is None else constant(entity, "string")
