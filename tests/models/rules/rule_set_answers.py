#!/usr/bin/env python3
"""The cases and the answers of samples/sorting.pmml under each criterion, computed apart from the plug-in. The rules
stand here as conditions, not as a document, so that a fault in reading one can't hide. Writes sorting.csv and the three
files of answers.

    /usr/bin/python3 tests/models/rules/rule_set_answers.py
"""
import csv
import itertools
import pathlib

SAMPLES = pathlib.Path(__file__).parent.parent / "samples"
CATEGORIES = ["letter", "parcel", "bulky", "return"]
OUTPUTS = ["way1", "way2", "way3", "confidence1", "confidence2", "c_letter", "c_return", "p_letter", "p_parcel",
           "p_bulky", "entity", "id1", "id2", "id3", "consequent2", "confidence_of2", "support1", "lift1",
           "antecedent1", "rule2"]


def below(value, bound):
    return value is not None and value < bound


def above(value, bound):
    return value is not None and value > bound


def is_near_or_far(row):
    return above(row["length"], 20) and row["zone"] in ("home", "over sea")


LONG = "length > 20 and "
ZONE = LONG + 'zone in {home, "over sea"} and '
# id, what has to hold, as a text, score, confidence, weight, right records, probabilities, confidences of the others
RULES = [
    ("light", lambda row: below(row["grams"], 50) and row["length"] is not None and row["length"] <= 30,
     "(grams < 50 and length <= 30)", "letter", 0.75, 0.5, 300, {"letter": 0.75, "parcel": 0.25}, {}),
    ("long", lambda row: above(row["length"], 20) and below(row["grams"], 2000), LONG + "grams < 2000", "parcel", 0.625,
     1.5, 150, {"parcel": 0.5, "bulky": 0.375, "return": 0.125}, {"parcel": 0.4, "bulky": 0.3, "return": 0.2}),
    ("3", lambda row: is_near_or_far(row) and above(row["length"], 100), ZONE + "length > 100", "bulky", 0.5, 2.0, 40,
     None, {}),
    ("fragile", lambda row: is_near_or_far(row) and row["fragile"] == "true", ZONE + "fragile = true", "parcel", 0.875,
     0.75, None, None, {}),
    ("sea", lambda row: row["zone"] == "over sea" or row["fragile"] is None, "(zone = over sea or fragile is missing)",
     "letter", 1.0, 1.5, None, None, {}),
    ("heavy", lambda row: row["grams"] is not None and row["grams"] >= 2000, "grams >= 2000", "bulky", 0.125, 2.0, None,
     {"bulky": None}, {}),
]


def chosen(criterion, hits):
    if criterion == "weightedMax":
        return sorted(hits, key=lambda rule: -rule[5])
    if criterion == "weightedSum":
        sums = {category: sum(rule[5] for rule in hits if rule[3] == category) for category in CATEGORIES}
        return sorted(hits, key=lambda rule: (-sums[rule[3]], CATEGORIES.index(rule[3]), -rule[5]))
    return hits


def confidences(criterion, hits, ways):
    if criterion == "weightedSum":
        return {way: sum(rule[4] for rule in hits if rule[3] == way) / len(hits) for way in ways}
    told = {way: next(rule[4] for rule in hits if rule[3] == way) for way in ways}
    return {**hits[0][8], **told}


def probabilities(criterion, hits):
    if criterion != "weightedSum":
        return hits[0][7]
    telling = [rule for rule in hits if rule[7] is not None]
    weight = sum(rule[5] for rule in telling)
    if not telling:
        return None
    return {category: sum(rule[5] * (rule[7].get(category) or 0) for rule in telling) / weight
            for category in CATEGORIES}


def share(distribution, category):
    return None if distribution is None else distribution.get(category, 0.0)


def answers(criterion, row):
    hits = chosen(criterion, [rule for rule in RULES if rule[1](row)])
    if not hits:
        return ["letter", "parcel", "bulky", 0.25, 0.0, 0.25, 0.0, 0.6, 0.3, 0.1] + [None] * 10
    ways = list(dict.fromkeys(rule[3] for rule in hits))
    sure, shares = confidences(criterion, hits, ways), probabilities(criterion, hits)
    ways += [None] * 2
    second, third = (hits + [None] * 2)[1:3]
    return [*ways[:3], sure[ways[0]], sure[ways[1]] if ways[1] else None, sure.get("letter", 0.0),
            sure.get("return", 0.0), *[share(shares, category) for category in CATEGORIES[:3]], hits[0][0], hits[0][0],
            second and second[0], third and third[0], second and second[3], second and second[4],
            None if hits[0][6] is None else hits[0][6] / 1000, None, hits[0][2],
            second and f"{second[2]} -> {second[3]}"]


def write(name, header, lines):
    with open(SAMPLES / name, "w", newline="", encoding="utf-8") as file:
        writer = csv.writer(file, lineterminator="\n", delimiter=",", quoting=csv.QUOTE_NONE, quotechar=None)
        writer.writerow(header)
        writer.writerows(lines)


def cell(value):
    """Commas would part a cell of these simple files; the tests put them back."""
    return "" if value is None else repr(value) if isinstance(value, float) else value.replace(", ", "; ")


def main():
    cells = list(itertools.product(["", "20", "500", "2000"], ["", "10", "25", "40", "150"], ["", "true", "false"],
                                   ["", "home", "near", "over sea"]))
    rows = [{"grams": float(grams) if grams else None, "length": float(length) if length else None,
             "fragile": fragile or None, "zone": zone or None} for grams, length, fragile, zone in cells]
    write("sorting.csv", ["grams", "length", "fragile", "zone"], cells)
    for criterion in ("firstHit", "weightedMax", "weightedSum"):
        write(f"sorting.{criterion}.csv", OUTPUTS, [[cell(value) for value in answers(criterion, row)] for row in rows])


main()
