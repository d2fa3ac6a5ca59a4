#!/usr/bin/env python3
"""The answers of the samples and of the normalisations, computed apart from the plug-ins with 50 digits.

Writes samples/*.expected.csv and normalizations.csv beside this file. The models stand here as formulas, not as
documents, so that a fault in reading one can't hide.
"""
import csv
import pathlib

from mpmath import atan, erfc, exp, mp, mpf, pi, sqrt

mp.dps = 50
HERE = pathlib.Path(__file__).parent


def text(number):
    return mp.nstr(mpf(number), 17, strip_zeros=True)


def rows(name):
    with open(HERE / "samples" / f"{name}.csv", newline="") as f:
        return list(csv.DictReader(f))


def write(path, header, lines):
    with open(path, "w", newline="") as f:
        writer = csv.writer(f, lineterminator="\n")
        writer.writerow(header)
        writer.writerows(lines)


# ---- prices: a regression with everything that a table can hold --------------------------------------------------

def price(row):
    if row["area"] == "":
        return mpf(150000)  # no number for a predictor: the target's default
    area = min(max(mpf(row["area"]), 20), 400)
    rooms = mpf(3) if row["rooms"] in ("", "-9") else mpf(row["rooms"])
    quarter = row["quarter"] if row["quarter"] in ("north", "south", "harbour") else ""
    value = mpf("12000.5") + mpf("1500.25") * area - mpf("0.75") * area**2 + 2500 * rooms
    value += mpf("-820.125") * sqrt(2020 - mpf(row["built"]))
    value += 30000 if quarter == "harbour" else 0
    value += {"south": -9000, "north": 4000}.get(quarter, 0)
    value += 7000 if row["lift"] == "true" else 0
    return value + mpf("12.5") * area * rooms


def prices():
    lines = []
    for row in rows("prices"):
        value = price(row)
        residual = text(mpf(row["price"]) - value) if row["price"] else ""
        lines.append([text(value), residual, text(value / 1000)])
    write(HERE / "samples" / "prices.expected.csv", ["predicted", "residual", "thousands"], lines)


# ---- health: cumulative links of an ordinal target ---------------------------------------------------------------

def logistic(y):
    return 1 / (1 + exp(-y))


def health():
    labels = {"poor": "in poor health", "fair": "in fair health", "good": "in good health"}
    lines = []
    for row in rows("health"):
        if row["age"] == "":
            p = {"poor": mpf("0.125"), "fair": mpf("0.625"), "good": mpf("0.25")}
        else:
            rest = mpf("0.0375") * mpf(row["age"])
            rest += mpf("1.125") if row["smokes"] == "1" else 0
            rest -= mpf("0.875") if row["sport"] == "weekly" else 0
            poor, fair = logistic(mpf("-3.25") + rest), logistic(mpf("-1.5") + rest)
            p = {"poor": poor, "fair": fair - poor, "good": 1 - fair}
        best = max(p, key=lambda name: p[name])
        lines.append([best, labels[best], *(text(p[n]) for n in ("poor", "fair", "good")), text(p[best]),
                      text(p["good"])])
    write(HERE / "samples" / "health.expected.csv",
          ["state.predicted", "label", "P.poor", "P.fair", "P.good", "P", "confidence"], lines)


# ---- every normalisation with every function ---------------------------------------------------------------------

LINKS = {
    "none": lambda y: y,
    "logit": logistic,
    "probit": lambda y: erfc(-y / sqrt(2)) / 2,
    "cloglog": lambda y: 1 - exp(-exp(y)),
    "loglog": lambda y: exp(-exp(-y)),
    "cauchit": lambda y: atan(y) / pi + mpf("0.5"),
}
METHODS = ["none", "simplemax", "softmax", "logit", "probit", "cloglog", "loglog", "cauchit", "exp"]

# Sums of the tables: three of them, so that the last category is not only the rest of one other.
SUMS = [("0", "0.5", "1"), ("-2.25", "-0.5", "0.75"), ("0.125", "0.25", "3"), ("-6", "-5.5", "4"), ("1.5", "2", "0"),
        ("-30", "0.0625", "2"), ("0.2", "0.3", "0.5"), ("0.75", "-1.25", "0"), ("-3", "-2.5", "9")]


def categorical(method, sums):
    if method == "softmax":
        total = sum(exp(y) for y in sums)
        return [exp(y) / total for y in sums]
    if method == "simplemax":
        return [y / sum(sums) for y in sums] if sum(sums) != 0 else None
    p = [LINKS[method](y) for y in sums[:-1]]
    if method != "none" and sum(p) > 1:  # nothing is left for the last one
        return [q / sum(p) for q in p] + [mpf(0)]
    return p + [1 - sum(p)]


def ordinal(method, sums):
    if method in ("softmax", "simplemax"):
        return categorical(method, sums)
    cumulative = [LINKS[method](y) for y in sums[:-1]] + [mpf(1)]
    if method != "none":  # they never fall
        cumulative = [max(cumulative[:place + 1]) for place in range(len(cumulative))]
    return [c - b for c, b in zip(cumulative, [mpf(0)] + cumulative)]


def normalizations():
    lines = []
    for method in METHODS:
        for texts in SUMS:
            sums = [mpf(y) for y in texts]
            if method != "simplemax":
                link = {"exp": exp, "softmax": logistic}.get(method) or LINKS[method]
                lines.append(["regression", "continuous", method, *texts, text(link(sums[0])), "", ""])
            if method != "exp":
                for level, p in (("categorical", categorical(method, sums)), ("ordinal", ordinal(method, sums))):
                    if p is not None:
                        lines.append(["classification", level, method, *texts, *(text(q) for q in p)])
    write(HERE / "normalizations.csv", ["function", "level", "method", "y1", "y2", "y3", "p1", "p2", "p3"], lines)


prices()
health()
normalizations()
