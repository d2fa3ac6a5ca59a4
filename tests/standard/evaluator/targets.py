"""Targets: what becomes of a prediction, and of a case without one.

A number is bounded by min and max, then multiplied by rescaleFactor, then rescaleConstant is added, then castInteger
applies. A case without a prediction gets the default value of a number or the category with the highest prior
probability.

The optype of a Target overrides that of its field.
Decision: castInteger "round" takes the larger of two integers that are equally near.
Decision: the first of several categories with the same prior probability counts.
"""
import math


class Target:
    def __init__(self, element):
        self._element = element
        self.optype = None if element is None else element.get("optype")
        self._values = [] if element is None else [each for each in element if each.tag == "TargetValue"]

    def number(self, prediction):
        """A predicted number after the treatment; an int where castInteger is there."""
        if self._element is None or prediction is None:
            return prediction
        low, high = self._element.get("min"), self._element.get("max")
        if low is not None:
            prediction = max(prediction, float(low))
        if high is not None:
            prediction = min(prediction, float(high))
        prediction = prediction * float(self._element.get("rescaleFactor", "1"))
        prediction += float(self._element.get("rescaleConstant", "0"))
        cast = self._element.get("castInteger")
        if cast is None:
            return prediction
        return {"round": lambda x: math.floor(x + 0.5), "ceiling": math.ceil, "floor": math.floor}[cast](prediction)

    def default_number(self):
        texts = [each.get("defaultValue") for each in self._values if each.get("defaultValue") is not None]
        return float(texts[0]) if texts else None

    def priors(self):
        """The prior probabilities of the categories that have one, in the document's order."""
        return {each.get("value"): float(each.get("priorProbability")) for each in self._values
                if each.get("priorProbability") is not None}

    def display_value(self, category):
        """The display value of a category, or None."""
        return next((each.get("displayValue") for each in self._values if each.get("value") == category), None)
