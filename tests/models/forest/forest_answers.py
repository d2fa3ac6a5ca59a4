#!/usr/bin/env python3
"""The answers of the samples grove and orchard, computed apart from the plug-ins: each tree is gone through as the
document stands, with None for what is missing or unknown, and the trees are put together in fractions.

Writes samples/grove.answers.csv and samples/orchard.answers.csv: cases, and what they get.
"""
import csv
import pathlib
import random
import xml.etree.ElementTree as ElementTree
from fractions import Fraction

SAMPLES = pathlib.Path(__file__).parent.parent / "samples"
FIELDS = ("rain", "sun", "age", "soil")
ROWS = 200


def holds(node, case):
    """What the condition of a node says of a case: true, false, or None where the value is missing."""
    condition = next(child for child in node if child.tag in ("True", "SimplePredicate", "SimpleSetPredicate"))
    if condition.tag == "True":
        return True
    value = case[condition.get("field")]
    if value == "":
        return None
    if condition.tag == "SimpleSetPredicate":
        return (value in condition.find("Array").text.split()) == (condition.get("booleanOperator") == "isIn")
    number, bound = Fraction(value), Fraction(condition.get("value"))
    return {"lessOrEqual": number <= bound, "greaterThan": number > bound}[condition.get("operator")]


def score_of(tree, case):
    """The score of the last node that a case comes to."""
    node = tree.find("Node")
    while True:
        children = node.findall("Node")
        chosen = None
        for child in children:
            said = holds(child, case)
            if said:
                chosen = child
                break
            if said is None and tree.get("missingValueStrategy") == "defaultChild":
                chosen = next(other for other in children if other.get("id") == node.get("defaultChild"))
                break
        if chosen is None:  # a leaf, or returnLastPrediction
            return node.get("score")
        node = chosen


def segments(model):
    return [(Fraction(segment.get("weight")), segment.find("TreeModel"))
            for segment in model.find("Segmentation").findall("Segment")]


def vote(model, case):
    """The winner, the first of the dictionary among equals, and the share of the pears."""
    scores = [score_of(tree, case) for _, tree in segments(model)]
    kinds = ("apple", "pear", "plum")
    winner = max(kinds, key=lambda kind: (scores.count(kind), -kinds.index(kind)))
    return winner, repr(scores.count("pear") / len(scores))


def average(model, case):
    """The weighted average, rounded once."""
    told = segments(model)
    return (repr(float(sum(weight * Fraction(score_of(tree, case)) for weight, tree in told) /
                       sum(weight for weight, _ in told))),)


def bounds_of(model, field):
    return sorted({condition.get("value") for condition in model.iter("SimplePredicate")
                   if condition.get("field") == field}, key=Fraction)


def random_case(model, draw):
    """Missing values, bounds themselves, numbers around them, and categories that no condition knows."""
    case = {}
    for field in FIELDS:
        kind = draw.random()
        if kind < 0.08:
            case[field] = ""
        elif field == "soil":
            soils = [value.get("value") for value in model["fields"]["soil"].findall("Value")]
            case[field] = draw.choice(soils) if kind < 0.95 else "moor"
        elif field == "age":
            case[field] = str(int(float(draw.choice(model["bounds"][field]))) + draw.randint(-1, 2))
        else:
            bound = draw.choice(model["bounds"][field])
            case[field] = bound if kind < 0.4 else repr(round(float(bound) + draw.uniform(-9, 9), 3))
    return case


def write(name, outputs, answer):
    root = ElementTree.parse(SAMPLES / f"{name}.pmml").getroot()
    model = root.find("MiningModel")
    known = {"fields": {field.get("name"): field for field in root.iter("DataField")},
             "bounds": {field: bounds_of(model, field) for field in FIELDS[:3]}}
    draw = random.Random(name)
    with open(SAMPLES / f"{name}.answers.csv", "w", newline="", encoding="utf-8") as file:
        writer = csv.writer(file, lineterminator="\n")
        writer.writerow([*FIELDS, *outputs])
        for _ in range(ROWS):
            case = random_case(known, draw)
            writer.writerow([*(case[field] for field in FIELDS), *answer(model, case)])


write("grove", ("prediction", "p_pear"), vote)
write("orchard", ("prediction",), average)
