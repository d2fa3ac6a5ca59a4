"""What the points of the golden tables are drawn with."""
import math
import random

MISSING = "missing"


class Draw:
    """Draws doubles from a seed of their own."""

    def __init__(self, seed):
        self.random = random.Random(seed)

    def between(self, low, high):
        return self.random.uniform(low, high)

    def log(self, low, high):
        return 10 ** self.random.uniform(math.log10(low), math.log10(high))

    def sign(self):
        return self.random.choice((-1, 1))

    def whole(self, low, high):
        return self.random.randint(low, high)

    def logwhole(self, low, high):
        return min(high, max(low, round(self.log(low, high))))


def repeat(count, draw):
    return [draw() for _ in range(count)]


def values_of(points, function):
    """Regions of arguments, completed with the results."""
    def rows(d):
        for region, arguments in points(d):
            yield region, [(row, function(*row)) for row in arguments]
    return rows
