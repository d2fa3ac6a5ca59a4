#!/usr/bin/env python3
"""The cases and the answers of samples/fruit.pmml and its variants in bayes_answers_test.cpp, computed apart from the
plug-in with 60 digits, as the product of densities and shares. Writes fruit.csv and fruit.answers.csv; a case without
a prediction has empty cells.

    /usr/bin/python3 tests/models/bayes/bayes_answers.py
"""
import csv
import pathlib
import random

from mpmath import exp, factorial, isint, mp, mpf, pi, sqrt

mp.dps = 60
SAMPLES = pathlib.Path(__file__).parent.parent / "samples"
KINDS = ("apple", "pear", "plum")


def normal(mean, variance):
    return lambda x: exp(-(x - mpf(mean)) ** 2 / (2 * mpf(variance))) / sqrt(2 * pi * mpf(variance))


def poisson(mean):
    return lambda x: mpf(mean) ** x * exp(-mpf(mean)) / factorial(x) if isint(x) and x >= 0 else mpf(0)


def uniform(lower, upper):
    return lambda x: 1 / (mpf(upper) - mpf(lower)) if lower <= x <= upper else mpf(0)


DENSITIES = {
    "length": (normal(7, "1.5"), normal("9.5", "2.25"), normal(4, "0.5")),
    "weight": (normal(150, 900), normal(180, 1600), uniform(20, 80)),
    "pips": (poisson("6.5"), poisson(4), poisson(0)),
    "shine": (uniform(0, 10), None, uniform(4, 8)),
}
COUNTS = {
    "colour": {"green": (20, 24, 0), "red": (18, 0, 9), "yellow": (2, "4.5", "0.5")},
    "width": {"small": (5, 6, 10), "large": (35, 24, 0)},
}


def bin_of(text):
    width = float(text)
    return "small" if width < 5 else "large" if width < 12 else None


def density_at(density, x, threshold, of_zero_alone):
    if density is None:
        return threshold
    value = density(x)
    too_low = value == 0 if of_zero_alone else value < threshold
    return threshold if too_low else value


def share_at(table, value, place, threshold):
    count = mpf(table[value][place])
    return count / sum(mpf(row[place]) for row in table.values()) if count > 0 else threshold


def likelihoods(case, threshold, of_zero_alone):
    products = [mpf(40), mpf(30), mpf(10)]
    for name, densities in DENSITIES.items():
        if case[name]:
            factors = [density_at(d, mpf(case[name]), threshold, of_zero_alone) for d in densities]
            products = [p * f for p, f in zip(products, factors)]
    for name, table in COUNTS.items():
        value = bin_of(case[name]) if name == "width" and case[name] else case[name]
        if value in table:
            products = [p * share_at(table, value, i, threshold) for i, p in enumerate(products)]
    return products


def answers(case, variant):
    threshold, of_zero_alone = {"usual": ("0.01", False), "none": ("0", False), "rattle": ("0.01", True)}[variant]
    products = likelihoods(case, mpf(threshold), of_zero_alone)
    total = sum(products)
    return {f"{variant} p({kind})": mp.nstr(p / total, 17) if total else "" for kind, p in zip(KINDS, products)}


def draw(source):
    """Values that any of the kinds may have, the pips at times no count at all."""
    values = {
        "weight": round(source.uniform(10, 260), 1),
        "length": round(source.uniform(2.5, 12), 2),
        "pips": source.choice((0, 0, 0, 1, 3, 4, 5, 7, 8, 2.5, -1)),
        "shine": source.choice((0, 3, 4.5, 8, 9, 11)),
        "colour": source.choice(("green", "red", "yellow", "blue", "grey")),
        "width": round(source.uniform(2, 13), 1),
    }
    return {name: "" if source.random() < 0.08 else str(value) for name, value in values.items()}


if __name__ == "__main__":
    source = random.Random(11)
    cases = [draw(source) for _ in range(150)]
    rows = [{key: cell for variant in ("usual", "none", "rattle") for key, cell in answers(case, variant).items()}
            for case in cases]
    for name, content in (("fruit.csv", cases), ("fruit.answers.csv", rows)):
        with open(SAMPLES / name, "w", newline="", encoding="utf-8") as file:
            writer = csv.DictWriter(file, list(content[0]), lineterminator="\n")
            writer.writeheader()
            writer.writerows(content)
