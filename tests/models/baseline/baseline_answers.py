#!/usr/bin/env python3
"""The cases and the answers of samples/traffic.pmml and its variants in baseline_answers_test.cpp, computed apart from
the plug-in with 40 digits and from the formulas alone: all sums go over the cases anew. Writes traffic.csv, lanes.csv
and traffic.answers.csv, a column for each variant; a case without a result has an empty cell.

    /usr/bin/python3 tests/models/baseline/baseline_answers.py
"""
import csv
import itertools
import pathlib
import random

from mpmath import gammainc, inf, log, loggamma, mp, mpf, pi, sqrt

mp.dps = 40
SAMPLES = pathlib.Path(__file__).parent.parent / "samples"


def gaussian(mean, variance):
    return lambda x: -((x - mean) ** 2 / mpf(variance) + log(2 * pi * variance)) / 2


def poisson(mean):
    return lambda x: x * log(mpf(mean)) - mean - loggamma(x + 1)


def uniform(lower, upper):
    return lambda x: -log(mpf(upper - lower)) if lower <= x <= upper else -inf


def last(cases, window):
    return cases[-window:] if window else cases


def standardized(cases, mean, variance, window=0):
    """Cases are numbers and weights; without a window each one is taken alone."""
    if not window:
        return (cases[-1][0] - mean) / sqrt(mpf(variance))
    chosen = last(cases, window)
    weight = sum(w for _, w in chosen)
    return None if weight == 0 else (sum(x * w for x, w in chosen) / weight - mean) / sqrt(variance / weight)


def cusum(cases, baseline, alternate, reset=0, window=0):
    if baseline(cases[-1][0]) == -inf:
        return None
    total = mpf(reset)
    for x, w in last([case for case in cases if baseline(case[0]) != -inf], window):
        gain = alternate(x) - baseline(x)
        total = max(mpf(reset), total + (w * gain if w else 0))
    return total


def tail(chi_square, degrees):
    return gammainc(mpf(degrees) / 2, mpf(chi_square) / 2, inf, regularized=True) if degrees > 0 else None


def counted(cases):
    counts = {}
    for values, weight in cases:
        counts[values] = counts.get(values, mpf(0)) + weight
    return counts


def distribution(cases, baseline, window=0):
    observed = counted(last(cases, window))
    whole, everyone = sum(baseline.values()), sum(observed.values())
    if everyone == 0:
        return None
    if any(count > 0 and not baseline.get(values) for values, count in observed.items()):
        return mpf(0)
    expected = {values: mpf(count) / whole * everyone for values, count in baseline.items() if count}
    return tail(sum((observed.get(values, 0) - e) ** 2 / e for values, e in expected.items()), len(expected) - 1)


def contingency(counts, fields):
    """Pearson's test of mutual independence, over all cells of the full table."""
    everyone = sum(counts.values())
    margins = []
    for field in range(fields):
        margin = {}
        for values, count in counts.items():
            margin[values[field]] = margin.get(values[field], mpf(0)) + count
        margins.append({value: count for value, count in margin.items() if count > 0})
    total, cells = mpf(0), 0
    for values in itertools.product(*margins):
        expected = everyone
        for field, value in enumerate(values):
            expected *= margins[field][value] / everyone
        total += (counts.get(values, 0) - expected) ** 2 / expected
        cells += 1
    return tail(total, cells - 1 - sum(len(margin) - 1 for margin in margins))


def independence(cases, baseline=None, window=0):
    observed = counted(last(cases, window))
    if sum(observed.values()) == 0:
        return None
    baseline = baseline or {}
    if baseline and len(next(iter(baseline))) == 1:
        counts = {("before", *values): mpf(count) for values, count in baseline.items()}
        counts.update({("now", *values): count for values, count in observed.items()})
        return contingency(counts, 2)
    counts = {values: observed.get(values, 0) + mpf(baseline.get(values, 0)) for values in {**baseline, **observed}}
    return contingency(counts, len(next(iter(counts))))


def product(cases, baseline, window=0):
    observed = counted(last(cases, window))
    if sum(observed.values()) == 0:
        return None
    norm = sqrt(sum(c * c for c in observed.values())) * sqrt(sum(mpf(c) ** 2 for c in baseline.values()))
    return sum(observed.get(values, 0) * count for values, count in baseline.items()) / norm


KINDS = {("car",): 60, ("truck",): 30, ("bike",): 10}
SHARES = {("car",): mpf(60) / 100, ("truck",): mpf(25) / 100, ("bike",): mpf(15) / 100, ("boat",): 0}
LANES = {("car", "1"): 40, ("car", "2"): 20, ("truck", "1"): 28, ("truck", "2"): 2, ("bike", "1"): 10, ("bike", "2"): 0}
# name, fields, whether the load weighs, test of the cases so far
VARIANTS = [
    ("z", ["speed"], False, lambda cases: standardized(cases, 50, 64)),
    ("zAny", ["speed"], False, lambda cases: standardized(cases, 50, 64, 5)),
    ("zPoisson", ["axles"], False, lambda cases: standardized(cases, 2.5, 2.5)),
    ("zUniform", ["speed"], True, lambda cases: standardized(cases, 55, mpf(70 * 70) / 12, 3)),
    ("cusum", ["speed"], False, lambda cases: cusum(cases, gaussian(50, 64), gaussian(60, 64))),
    ("cusumReset", ["axles"], False, lambda cases: cusum(cases, poisson(2.5), poisson(4), -1.5)),
    ("cusumWindow", ["speed"], False, lambda cases: cusum(cases, uniform(20, 90), gaussian(60, 64), 0.25, 4)),
    ("cusumWeight", ["speed"], True, lambda cases: cusum(cases, gaussian(50, 64), uniform(30, 80))),
    ("distribution", ["kind"], False, lambda cases: distribution(cases, KINDS)),
    ("distributionWindow", ["kind"], True, lambda cases: distribution(cases, SHARES, 6)),
    ("distributionOfTwo", ["kind", "lane"], False, lambda cases: distribution(cases, LANES, 12)),
    ("independence", ["kind", "lane"], False, independence),
    ("independenceOfTable", ["kind", "lane"], True, lambda cases: independence(cases, LANES, 5)),
    ("independenceOfOne", ["kind"], False, lambda cases: independence(cases, KINDS)),
    ("independenceOfShares", ["kind"], False,
     lambda cases: independence(cases, {values: share * 80 for values, share in SHARES.items()}, 10)),
    ("product", ["kind"], False, lambda cases: product(cases, KINDS)),
    ("productWindow", ["kind", "lane"], True, lambda cases: product(cases, LANES, 4)),
]


def answers(rows, fields, is_weighed, test):
    """A case that lacks a value isn't one for the test."""
    cases = []
    for row in rows:
        needed = fields + (["load"] if is_weighed else [])
        if any(row[field] == "" for field in needed) or (is_weighed and float(row["load"]) < 0):
            yield ""
            continue
        weight = mpf(row["load"]) if is_weighed else mpf(1)
        if fields[0] in ("speed", "axles"):
            cases.append((mpf(row[fields[0]]), weight))
        else:
            cases.append((tuple("?" if row[field] in ("bus", "3") else row[field] for field in fields), weight))
        result = test(cases)
        yield "" if result is None else mp.nstr(result, 17, strip_zeros=True)


def make_rows():
    draw = random.Random(7)
    rows = []
    for i in range(120):
        speed = round(draw.gauss(50 if i < 60 else 58, 9), 1)
        rows.append({"speed": "" if i % 23 == 11 else str(speed), "axles": "" if i % 31 == 5 else str(draw.randint(0, 6)),
                     "kind": "" if i % 17 == 4 else "bus" if i == 70 else
                             draw.choices(["car", "truck", "bike"], [6, 3, 1] if i < 60 else [3, 5, 2])[0],
                     "lane": "" if i % 29 == 8 else "3" if i == 75 else str(draw.choices([1, 2], [3, 1])[0]),
                     "load": "" if i % 19 == 2 else "-1" if i == 40 else str(draw.choice([0, 0.5, 1, 2, 3.25]))})
    return rows


def write(name, header, lines):
    with open(SAMPLES / name, "w", newline="", encoding="utf-8") as file:
        writer = csv.writer(file, lineterminator="\n")
        writer.writerow(header)
        writer.writerows(lines)


def main():
    rows = make_rows()
    for name in ("traffic.csv", "lanes.csv"):  # the second is the sample of independenceOfTable
        write(name, list(rows[0]), [list(row.values()) for row in rows])
    columns = [list(answers(rows, fields, is_weighed, test)) for _, fields, is_weighed, test in VARIANTS]
    write("traffic.answers.csv", [name for name, *_ in VARIANTS], zip(*columns))


main()
