"""What the points of the golden tables are drawn with."""
import math
import random

MISSING = "missing"


def span(low, high):
    """A range as region names have it."""
    return f"{number(low)} to {number(high)}"


def number(x):
    if 0.01 <= x < 1e4:
        return f"{x:.15g}"
    power = math.floor(math.log10(x) + 1e-9)
    return f"{x / 10.0 ** power:.10g}e{power}"


class Draw:
    """Draws doubles from a seed of their own."""

    # The points of a region come from so many seeds, an equal share from each. A check of fresh points sets another.
    SHARES = 3
    seeds = tuple(range(SHARES))

    def __init__(self, seed):
        self.seed = seed
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

    def region(self, name, count, draw, accept=lambda row: True):
        """A region of so many points, from all seeds of the tables together.

        Its seeds are its own, so that other regions don't move its points.
        draw gives the arguments of a point, or None where there is none.
        """
        rows = []
        for seed in self.seeds:
            d = Draw(f"{self.seed} {name} {seed}")
            wanted = len(rows) + count // self.SHARES
            while len(rows) < wanted:
                row = draw(d)
                if row is not None and accept(row):
                    rows.append(row)
        return name, rows


def values_of(points, function):
    """Regions of arguments, completed with the results."""
    def rows(d):
        for region, arguments in points(d):
            yield region, [(row, function(*row)) for row in arguments]
    return rows
