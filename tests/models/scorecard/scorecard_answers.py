#!/usr/bin/env python3
"""The cases and the answers of samples/credit.pmml, computed apart from the plug-in. The card stands here as conditions
and points, not as a document, so that a fault in reading one can't hide. Writes credit.csv, and the answers under both
algorithms for reasons, where a case without a score has empty ones.

    /usr/bin/python3 tests/models/scorecard/scorecard_answers.py
"""
import csv
import itertools
import pathlib

SAMPLES = pathlib.Path(__file__).parent.parent / "samples"
OUTPUTS = ["score", "reason1", "reason2", "reason3", "reason4", "reason5", "letter"]


def income(row):
    if row["income"] is None:
        return 5, "INC", 20
    if row["income"] < 1000:
        return -10, "INC_LOW", 20
    return 15 if row["income"] < 3000 else min(40.0, 10 + row["income"] / 1000 * 2.5), "INC", 20


def age(row):
    """A missing age is decided by the home, and a missing home by nothing."""
    if row["age"] is not None:
        is_young = row["age"] < 25
    else:
        is_young = row["home"] == "parents"
    if is_young:
        return 2, "AGE", 10
    is_known = row["age"] is not None and row["late"] is not None
    return 8 if is_known and (row["age"] > 60) != (row["late"] > 2) else 18, "AGE", 10


def home(row):
    if row["home"] is None:
        return None
    return (25, "HOME_OWN", 10) if row["home"] in ("own", "shared") else (4, "AGE", 10)


def late(row):
    if row["late"] is None:
        return None
    return 30 - 7.5 * row["late"] if row["late"] <= 2 else -20, "LATE", 30


def answers(row, sign):
    parts = [income(row), age(row), home(row), late(row)]
    if None in parts:
        return [""] * len(OUTPUTS)
    differences = {}
    for points, code, baseline in parts:
        differences[code] = differences.get(code, 0) + sign * (points - baseline)
    reasons = sorted((code for code in differences if differences[code] >= 0), key=lambda code: -differences[code])
    reasons += [""] * (5 - len(reasons))
    return [repr(50.5 + sum(points for points, _, _ in parts)), *reasons, reasons[0][:1]]


def write(name, header, lines):
    with open(SAMPLES / name, "w", newline="", encoding="utf-8") as file:
        writer = csv.writer(file, lineterminator="\n")
        writer.writerow(header)
        writer.writerows(lines)


def main():
    cells = list(itertools.product(["", "500", "1000", "2999.5", "6000", "30000"], ["", "20", "40", "70"],
                                   ["", "own", "shared", "rent", "parents"], ["", "0", "1", "2", "5"]))
    rows = [{"income": float(money) if money else None, "age": int(years) if years else None, "home": where or None,
             "late": int(times) if times else None} for money, years, where, times in cells]
    write("credit.csv", ["income", "age", "home", "late"], cells)
    write("credit.below.csv", OUTPUTS, [answers(row, -1) for row in rows])
    write("credit.above.csv", OUTPUTS, [answers(row, 1) for row in rows])


main()
