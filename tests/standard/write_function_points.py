#!/usr/bin/env python3
"""Writes values of the numeric functions with many digits, tests/models/functions/points.tsv. Needs Debian's
python3-mpmath.

A line is a function, the exact result rounded to a double, the largest error of the result, in parts of it, and the
arguments. The points are drawn over the ranges of the domains below."""
import pathlib
import random

from mpmath import mp, mpf

TABLE = pathlib.Path(__file__).resolve().parents[1] / "models/functions/points.tsv"
POINTS = 25
ULPS = 2.0 ** -52
mp.dps = 60


def wide(low, high):
    """Numbers of both signs with magnitudes between two powers of ten."""
    return lambda draw: draw.choice((-1, 1)) * 10.0 ** draw.uniform(low, high)


def above(low, high):
    return lambda draw: 10.0 ** draw.uniform(low, high)


def between(low, high):
    return lambda draw: draw.uniform(low, high)


def steps(low, high):
    """Numbers with few digits, so that a deviate of them is exact."""
    return lambda draw: draw.randint(low, high) / 8.0


def std_cdf(x):
    return mp.erfc(-x / mp.sqrt(2)) / 2


def std_pdf(x):
    return mp.exp(-x * x / 2) / mp.sqrt(2 * mp.pi)


def std_idf(p):
    return -mp.sqrt(2) * mp.erfinv(1 - 2 * mpf(p)) if p > 1e-50 else mp.findroot(
        lambda x: mp.log(std_cdf(x)) - mp.log(p), -mp.sqrt(-2 * mp.log(p)))


# The exact function, the error that is allowed in units of the last place, and how each argument is drawn.
FUNCTIONS = {
    "log10": (mp.log10, 2, [above(-300, 300)]), "ln": (mp.log, 2, [above(-300, 300)]),
    "ln1p": (mp.log1p, 2, [wide(-20, -0.01)]), "exp": (mp.exp, 2, [between(-700, 700)]),
    "expm1": (mp.expm1, 2, [wide(-20, 2)]), "sqrt": (mp.sqrt, 1, [above(-300, 300)]),
    "pow": (mp.power, 2, [above(-3, 3), between(-50, 50)]), "hypot": (mp.hypot, 2, [wide(-150, 150), wide(-150, 150)]),
    "sin": (mp.sin, 2, [wide(-8, 4)]), "cos": (mp.cos, 2, [wide(-8, 4)]), "tan": (mp.tan, 2, [wide(-8, 4)]),
    "asin": (mp.asin, 2, [between(-1, 1)]), "acos": (mp.acos, 2, [between(-1, 1)]), "atan": (mp.atan, 2, [wide(-8, 8)]),
    "atan2": (mp.atan2, 2, [wide(-8, 8), wide(-8, 8)]), "sinh": (mp.sinh, 4, [wide(-8, 2.5)]),
    "cosh": (mp.cosh, 4, [wide(-8, 2.5)]), "tanh": (mp.tanh, 4, [wide(-8, 1.2)]), "erf": (mp.erf, 4, [wide(-8, 0.7)]),
    "stdNormalCDF": (std_cdf, 8, [between(-37, 8)]), "stdNormalPDF": (std_pdf, 8, [between(-37, 37)]),
    "stdNormalIDF": (std_idf, 16, [above(-300, -0.001)]),
    "normalCDF": (lambda x, m, s: std_cdf((x - m) / s), 8, [steps(-40, 40), steps(-40, 40), lambda draw: 2.0 ** draw.randint(0, 3)]),
    "normalPDF": (lambda x, m, s: std_pdf((x - m) / s) / s, 8, [steps(-40, 40), steps(-40, 40), lambda draw: 2.0 ** draw.randint(0, 3)]),
    "normalIDF": (lambda p, m, s: m + s * std_idf(p), 16, [above(-20, -2), lambda draw: -10.0 * draw.random(), above(-2, 2)]),
}


def main():
    draw = random.Random(1)
    lines = []
    for name, (function, ulps, arguments) in FUNCTIONS.items():
        for _ in range(POINTS):
            numbers = [argument(draw) for argument in arguments]
            result = float(function(*map(mpf, numbers)))
            lines.append("\t".join([name, repr(result), repr(ulps * ULPS), *map(repr, numbers)]))
    TABLE.write_text("\n".join(lines) + "\n", encoding="utf-8")


if __name__ == "__main__":
    main()
