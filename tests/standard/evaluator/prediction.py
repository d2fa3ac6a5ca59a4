"""What a model says of a case."""


class Prediction:
    """value is a number, a category's text or None; probabilities and confidences go by category. share is the part of the case
    that the prediction speaks for, where others were left without one. reasons and rules are what it rests on, what counts
    most first; order has the predicted categories, where it isn't their probability that puts them in order."""

    def __init__(self, value=None, probabilities=None, confidences=None, entity=None, share=1.0, reasons=(), rules=(), order=()):
        self.value, self.entity, self.share = value, entity, share
        self.reasons, self.rules, self.order = reasons, rules, order
        self.probabilities = probabilities or {}
        self.confidences = confidences or {}

    @property
    def is_none(self):
        return self.value is None


def winner(weights):
    """The first of the categories with the most weight."""
    return max(weights, key=lambda category: weights[category]) if weights else None
