#!/usr/bin/env python3
"""The cases and the answers of the general regressions among the samples and of their variants in
general_answers_test.cpp, computed apart from the plug-in with 40 digits and from the formulas alone. Writes NAME.csv
and NAME.answers.csv for each sample; a case without a prediction has empty cells.

    /usr/bin/python3 tests/models/general/general_answers.py
"""
import csv
import pathlib
import random

from mpmath import atan, diff, exp, mp, mpf, ncdf, pi, power, sqrt

mp.dps = 40
SAMPLES = pathlib.Path(__file__).parent.parent / "samples"


def logistic(x):
    return 1 / (1 + exp(-x))


INVERSES = {
    "cloglog": lambda x: 1 - exp(-exp(x)),
    "identity": lambda x: x,
    "log": exp,
    "logc": lambda x: 1 - exp(x),
    "logit": logistic,
    "loglog": lambda x: exp(-exp(-x)),
    "negbin": lambda x: 1 / (mpf("1.5") * (exp(-x) - 1)),
    "oddspower": lambda x: 1 / (1 + power(1 + mpf("0.75") * x, -1 / mpf("0.75"))),
    "oddspowerOfNone": logistic,
    "power": lambda x: power(x, 1 / mpf("0.75")) if x >= 0 else None,
    "powerOfNone": exp,
    "probit": ncdf,
    "cauchit": lambda x: mpf(1) / 2 + atan(x) / pi,
}


def number(cell):
    return mpf(cell) if cell else None


def written(value):
    return "" if value is None else mp.nstr(value, 17)


def write(name, cases, answers):
    for path, rows in ((f"{name}.csv", cases), (f"{name}.answers.csv", answers)):
        with open(SAMPLES / path, "w", newline="", encoding="utf-8") as file:
            writer = csv.DictWriter(file, list(rows[0]), lineterminator="\n")
            writer.writeheader()
            writer.writerows(rows)


def draw(seed, count, fields, missing=0.06):
    """Rows of texts: each field has a function that draws one."""
    source = random.Random(seed)
    return [{name: "" if source.random() < missing else str(field(source)) for name, field in fields.items()}
            for _ in range(count)]


def one_of(*words):
    return lambda source: source.choice(words)


def between(low, high, places=2):
    return lambda source: round(source.uniform(low, high), places)


# --- seedlings: a generalised linear model, by link

CONTRASTS = {"clay": ("0.5", "0.25"), "loam": ("-0.5", "0.25"), "sand": ("0", "-0.5")}
BETAS = [mpf(b) for b in ("0.35", "0.2", "-0.3", "0.125", "0.25", "0.05", "0.03")]
COVARIANCES = {(0, 0): "0.04", (0, 5): "-0.002", (1, 1): "0.02", (1, 2): "0.003", (3, 3): "0.01", (4, 4): "0.0125",
               (5, 5): "0.0009", (6, 6): "0.001", (4, 6): "-0.0005"}


def seedling_values(case):
    if not all(case[name] for name in ("soil", "sun", "water", "start")) or case["soil"] not in CONTRASTS:
        return None
    clay, loam = (mpf(c) for c in CONTRASTS[case["soil"]])
    some, high = (mpf(case["sun"] == name) for name in ("some", "high"))
    water = mpf(case["water"])
    return [mpf(1), clay, loam, some, high, water, high * water * clay]


def error_of(values, covariances):
    variance = mpf(0)
    for (i, j), value in covariances.items():
        variance += (1 if i == j else 2) * mpf(value) * values[i] * values[j]
    return sqrt(variance)


def seedling(case, inverse, trials, start=None, root=None):
    """`start` is the offset in place of the case's own, `root` the coefficient of the root of the water."""
    values = seedling_values(case if start is None else case | {"start": start})
    if values is None or (trials == "seeds" and not case["seeds"]):
        return None, None
    factor = mpf(case["seeds"]) if trials == "seeds" else mpf(trials)
    covariances = COVARIANCES
    eta = sum(b * v for b, v in zip(BETAS, values)) + mpf(start or case["start"])
    if root is not None:
        eta += mpf(root) * sqrt(mpf(case["water"]))
        covariances = covariances | {(7, 7): "0.25"}
        values = values + [sqrt(mpf(case["water"]))]
    if inverse(eta) is None:
        return None, None
    return inverse(eta) * factor, abs(diff(inverse, eta)) * factor * error_of(values, covariances)


def write_seedlings():
    cases = draw(7, 120, {"soil": one_of("clay", "loam", "sand", "sand", "peat"),
                          "sun": one_of("low", "some", "high", "high", "dusk"), "water": between(0, 20),
                          "seeds": lambda source: source.randrange(1, 50), "start": between(-1.5, 1, 3)}, 0.03)
    variants = {link: (INVERSES[link], "seeds") for link in INVERSES if link != "cauchit"}
    variants |= {"trialsStated": (logistic, 7), "trialsOfOthers": (exp, 1), "linear": (INVERSES["identity"], 1),
                 "regression": (INVERSES["identity"], 1),
                 "offsetStated": (logistic, "seeds", "-0.25"), "rootOfWater": (logistic, "seeds", None, "-0.125")}
    answers = []
    for case in cases:
        row = {}
        for name, variant in variants.items():
            predicted, error = seedling(case, *variant)
            row |= {name: written(predicted), f"{name} error": written(error)}
        answers.append(row)
    write("seedlings", cases, answers)


# --- lunch: categories against a reference

def lunch(case):
    if not case["price"] or not case["weather"]:
        return {}
    price = mpf(case["price"])
    rain, sun = (mpf(case["weather"] == name) for name in ("rain", "sun"))
    offset = mpf("0.125")
    scores = {"soup": exp(mpf("0.5") - price / 4 + mpf("0.75") * rain + price ** 2 / 64 + offset), "stew": mpf(1),
              "salad": exp(mpf("-0.5") + price / 8 + mpf("0.75") * sun + offset)}
    return {name: score / sum(scores.values()) for name, score in scores.items()}


def write_lunch():
    cases = draw(8, 80, {"price": between(1, 30), "weather": one_of("sun", "rain", "snow")})
    shares = [lunch(case) for case in cases]
    write("lunch", cases, [{f"p({name})": written(share.get(name)) for name in ("soup", "stew", "salad")}
                           for share in shares])


# --- marks: cumulative links

def marks(case, inverse):
    if not all(case[name] for name in ("hours", "head", "rest")):
        return [None] * 4
    contrast = 1 if case["rest"] == "yes" else -1
    shift = -mpf(case["hours"]) / 4 - mpf("0.375") * contrast + mpf(case["head"])
    below = [mpf(0)] + [inverse(mpf(cut) + shift) for cut in ("-1", "0.5", "1.75")] + [mpf(1)]
    return [high - low for low, high in zip(below, below[1:])]


def write_marks():
    cases = draw(9, 80, {"hours": between(0, 12), "head": between(-1, 1), "rest": one_of("yes", "no")})
    answers = []
    for case in cases:
        row = {}
        for link in ("logit", "probit", "cloglog", "loglog", "cauchit"):
            shares = marks(case, INVERSES[link])
            row |= {f"{link} p({name})": written(share)
                    for name, share in zip(("poor", "fair", "good", "best"), shares)}
        answers.append(row)
    write("marks", cases, answers)


# --- pumps: hazards of strata

STRATA = {"north": (20, [(1, "0.01"), (4, "0.05"), ("9.5", "0.2"), (16, "0.45")]), "south": (5, [(2, "0.125")])}


def pump(case):
    if not all(case[name] for name in ("until", "works", "load", "hands")) or case["works"] not in STRATA:
        return None, None
    last, steps = STRATA[case["works"]]
    until = mpf(case["until"])
    if until > last:
        return None, None
    hazard = max([mpf(value) for time, value in steps if mpf(time) <= until], default=mpf(0))
    values = [mpf(case["load"]) - mpf("2.5"), mpf(case["hands"] == "four") - mpf("0.25")]
    hazard *= exp(mpf("0.3") * values[0] - mpf("0.6") * values[1])
    return hazard, hazard * error_of(values, {(0, 0): "0.01", (0, 1): "0.002", (1, 1): "0.09"})


def write_pumps():
    cases = draw(10, 100, {"until": lambda source: source.choice((0.5, 1, 2, 4, 9.5, 5, round(source.uniform(0, 22), 1))),
                           "works": one_of("north", "north", "south", "west"), "load": between(0, 6),
                           "hands": one_of("two", "four")}, 0.04)
    answers = []
    for case in cases:
        hazard, error = pump(case)
        survival = None if hazard is None else exp(-hazard)
        answers.append({"hazard": written(hazard), "error": written(error), "survival": written(survival)})
    write("pumps", cases, answers)


if __name__ == "__main__":
    for write_sample in (write_seedlings, write_lunch, write_marks, write_pumps):
        write_sample()
