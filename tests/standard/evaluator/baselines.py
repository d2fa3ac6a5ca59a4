"""BaselineModel.

A case is tested together with those before it; with a window only the last so many count. What is rational is computed
in fractions, so that nothing is lost but in the last step.

Decision: a case that the schema refuses, that lacks a value or a weight, or whose weight is negative is none for the test.
Decision: a zValue without a window is that of the case alone, with one that of the mean of its cases, by their weights.
Decision: a cumulative sum with a window is the one that begins with the window's first case. A case that can't be under
the baseline is none; one that can't be under the alternate takes the sum back.
Decision: values that nothing mentions are one value. Under chiSquareDistribution a value that the table doesn't have, or
has no cases of, leaves no chance.
Decision: chiSquareIndependence adds the counts of the table to those of the cases; of a table of one field it tests whether a
value depends on where it comes from.
Decision: a test without a degree of freedom, and one of cases that weigh nothing, gives no result.
"""
import itertools
import math
from fractions import Fraction

from .prediction import Prediction
from .values import MISSING, number, read, text_of


def _fraction(element, name):
    return Fraction(float(element.get(name)))


class _Distribution:
    def __init__(self, element):
        self.kind = element.tag
        if self.kind == "UniformDistribution":
            self.lower, self.upper = _fraction(element, "lower"), _fraction(element, "upper")
            self.mean, self.variance = (self.lower + self.upper) / 2, (self.upper - self.lower) ** 2 / 12
        else:
            self.mean = _fraction(element, "mean")
            self.variance = self.mean if self.kind == "PoissonDistribution" else _fraction(element, "variance")

    def log_density(self, x):
        """The logarithm as its rational part and the rest; None where nothing can be."""
        if self.kind == "GaussianDistribution":
            return -(x - self.mean) ** 2 / self.variance / 2, -math.log(2 * math.pi * self.variance) / 2
        if self.kind == "PoissonDistribution":
            if x < 0 or x.denominator != 1:
                return None
            return -self.mean, float(x) * math.log(self.mean) - math.lgamma(x + 1)
        if not self.lower <= x <= self.upper:
            return None
        return Fraction(0), -math.log(self.upper - self.lower)


def _tail(chi_square, degrees):
    """The upper tail of the chi-square distribution for a whole number of degrees, as a finite sum."""
    if degrees <= 0:
        return None
    half = float(chi_square) / 2
    if half == 0:
        return 1.0
    total, exponent = (math.erfc(math.sqrt(half)), 0.5) if degrees % 2 else (0.0, 0.0)
    terms = [total]
    while exponent < degrees / 2:
        terms.append(math.exp(exponent * math.log(half) - half - math.lgamma(exponent + 1)))
        exponent += 1
    return math.fsum(terms)


def _counted(events):
    counts = {}
    for values, weight in events:
        counts[values] = counts.get(values, 0) + weight
    return counts


def _contingency(counts):
    """Pearson's test of mutual independence over all cells of the full table."""
    everyone = sum(counts.values())
    margins = []
    for place in range(len(next(iter(counts)))):
        margin = {}
        for values, count in counts.items():
            margin[values[place]] = margin.get(values[place], 0) + count
        margins.append({value: count for value, count in margin.items() if count > 0})
    total, cells = Fraction(0), 0
    for values in itertools.product(*margins):
        wanted = Fraction(everyone)
        for place, value in enumerate(values):
            wanted *= margins[place][value] / Fraction(everyone)
        total += (counts.get(values, 0) - wanted) ** 2 / wanted
        cells += 1
    return _tail(total, cells - 1 - sum(len(margin) - 1 for margin in margins))


class _Test:
    def __init__(self, element, env):
        self._element, self._env = element, env
        self._window = int(element.get("windowSize", "0"))
        self._statistic = element.get("testStatistic")
        self._baseline = next(child for child in element if child.tag == "Baseline")
        self._fields, self._table, self._known = [], {}, {}
        first = self._baseline[0]
        if first.tag == "FieldRef":
            self._fields = [child.get("field") for child in self._baseline]
            self._known = {name: {text_of(read(text, env.type(name))) for text in env.valid(name)} for name in self._fields}
        elif first.tag in ("CountTable", "NormalizedCountTable"):
            self._read_table(first)

    def _read_table(self, element):
        cells = []

        def walk(parent, path):
            for child in parent:
                name = child.get("field")
                way = {**path, name: text_of(read(child.get("value"), self._env.type(name)))}
                if child.tag == "FieldValueCount":
                    cells.append((way, _fraction(child, "count")))
                else:
                    walk(child, way)

        walk(element, {})
        self._fields = list(cells[0][0])
        unit = 1
        if element.tag == "NormalizedCountTable" and self._statistic == "chiSquareIndependence":
            unit = _fraction(element, "sample")
        self._table = {tuple(way[name] for name in self._fields): count * unit for way, count in cells}
        self._known = {name: {way[name] for way, _ in cells} for name in self._fields}

    def _event(self, case):
        """What the test takes of a case, and its weight; None for a case that is none."""
        if case.is_refused():
            return None
        tested = self._element.get("field")
        read_ = [case.field(name) for name in self._fields] if self._fields else [case.field(tested)]
        weight = self._element.get("weightField")
        weighed = None if weight is None else case.field(weight)
        if MISSING in read_ or weight is not None and weighed is MISSING:
            return None
        size = Fraction(1) if weight is None else Fraction(number(weighed))
        if size < 0:
            return None
        if not self._fields:
            return Fraction(number(read_[0])), size
        texts = [text_of(value) for value in read_]
        return tuple(text if text in self._known[name] else "" for text, name in zip(texts, self._fields)), size

    def result(self):
        latest = self._event(self._env)
        if latest is None:
            return None
        events = [event for event in map(self._event, self._env.past()) if event is not None] + [latest]
        return getattr(self, "_" + self._statistic)(events)

    def _last(self, events):
        return events[-self._window:] if self._window else events

    def _zValue(self, events):
        known = _Distribution(self._baseline[0])
        if not self._window:
            return float(events[-1][0] - known.mean) / math.sqrt(known.variance)
        chosen = self._last(events)
        weight = sum(size for _, size in chosen)
        if weight == 0:
            return None
        return float(sum(x * size for x, size in chosen) / weight - known.mean) / math.sqrt(known.variance / weight)

    def _CUSUM(self, events):
        known = _Distribution(self._baseline[0])
        other = _Distribution(next(child for child in self._element if child.tag == "Alternate")[0])
        if known.log_density(events[-1][0]) is None:
            return None
        reset = Fraction(float(self._element.get("resetValue", "0")))
        total = reset
        for x, size in self._last([event for event in events if known.log_density(event[0]) is not None]):
            below, above = known.log_density(x), other.log_density(x)
            if size:
                total = reset if above is None else max(reset, total + size * (above[0] - below[0] + Fraction(above[1] - below[1])))
        return float(total)

    def _chiSquareDistribution(self, events):
        observed = _counted(self._last(events))
        everyone, whole = sum(observed.values()), sum(self._table.values())
        if everyone == 0:
            return None
        if any(count > 0 and not self._table.get(values) for values, count in observed.items()):
            return 0.0
        wanted = {values: count / whole * everyone for values, count in self._table.items() if count}
        return _tail(sum((observed.get(values, 0) - each) ** 2 / each for values, each in wanted.items()), len(wanted) - 1)

    def _chiSquareIndependence(self, events):
        observed = _counted(self._last(events))
        if sum(observed.values()) == 0:
            return None
        if self._table and len(self._fields) == 1:
            return _contingency({**{("table", *values): count for values, count in self._table.items()},
                                 **{("cases", *values): count for values, count in observed.items()}})
        return _contingency({values: observed.get(values, 0) + self._table.get(values, 0)
                             for values in {**self._table, **observed}})

    def _scalarProduct(self, events):
        observed = _counted(self._last(events))
        if sum(observed.values()) == 0:
            return None
        product = sum(observed.get(values, 0) * count for values, count in self._table.items())
        squares = sum(count ** 2 for count in observed.values()) * sum(count ** 2 for count in self._table.values())
        return math.sqrt(product ** 2 / squares)


def score(model, env, _target):
    """The Prediction of a case."""
    return Prediction(_Test(next(child for child in model if child.tag == "TestDistributions"), env).result())
