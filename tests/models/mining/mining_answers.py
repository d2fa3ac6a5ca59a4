#!/usr/bin/env python3
"""The answers of the segments in samples/, computed apart from the plug-in: a walk over the XML as the PMML standard
tells it, with None for what is missing or unknown, in exact fractions but for exponentials. Writes NAME.answers.csv: the
method, the treatment of missing predictions, a case, and what it gets.

    /usr/bin/python3 tests/models/mining/mining_answers.py
"""
import csv
import itertools
import math
import pathlib
import random
import xml.etree.ElementTree as ElementTree
from fractions import Fraction

SAMPLES = pathlib.Path(__file__).parent.parent / "samples"
NAMESPACE = "{http://www.dmg.org/PMML-4_4}"
PREDICATES = ["True", "False", "SimplePredicate", "CompoundPredicate"]
VOTES = ["majorityVote", "weightedMajorityVote"]
NUMBERS = ["average", "weightedAverage", "median", "weightedMedian", "max", "sum", "weightedSum"]
CHOICES = ["median", "weightedMedian", "max"]
SELECTIONS = ["selectFirst", "selectAll", "modelChain"]
TREATMENTS = [("continue", "1"), ("continue", "0.3"), ("skipSegment", "1"), ("skipSegment", "0.4"), ("returnMissing", "1")]


def local(element):
    return element.tag[len(NAMESPACE):]


def decide(predicate, case):
    """True, False, or None for unknown."""
    kind = local(predicate)
    if kind in ("True", "False"):
        return kind == "True"
    if kind == "CompoundPredicate":
        parts = [decide(part, case) for part in predicate]
        decisive = predicate.get("booleanOperator") == "or"
        return decisive if decisive in parts else None if None in parts else not decisive
    value, operator = case[predicate.get("field")], predicate.get("operator")
    if operator in ("isMissing", "isNotMissing"):
        return (value is None) == (operator == "isMissing")
    if value is None:
        return None
    bound = predicate.get("value") if isinstance(value, str) else Fraction(predicate.get("value"))
    return {"equal": value == bound, "notEqual": value != bound, "lessThan": not isinstance(value, str) and value < bound,
            "lessOrEqual": not isinstance(value, str) and value <= bound,
            "greaterOrEqual": not isinstance(value, str) and value >= bound}[operator]


def predicate_of(element):
    return next(child for child in element if local(child) in PREDICATES)


def tree(model, case, is_classification):
    """The score of a leaf, or the shares of its categories; None for no prediction."""
    node = model.find(NAMESPACE + "Node")
    while node.findall(NAMESPACE + "Node"):
        for child in node.findall(NAMESPACE + "Node"):
            truth = decide(predicate_of(child), case)
            if truth is None and model.get("missingValueStrategy") == "nullPrediction":
                return None
            if truth:
                node = child
                break
        else:
            return None
    if not is_classification:
        return Fraction(node.get("score"))
    shares = {share.get("value"): Fraction(share.get("recordCount"))
              for share in node.findall(NAMESPACE + "ScoreDistribution")}
    if not shares:
        return {node.get("score"): Fraction(1)}
    return {category: count / sum(shares.values()) for category, count in shares.items()}


def regression(model, case, is_classification):
    sums = {}
    for table in model.findall(NAMESPACE + "RegressionTable"):
        total = Fraction(table.get("intercept"))
        for term in table:
            if case[term.get("name")] is None:
                return None
            total += Fraction(term.get("coefficient")) * case[term.get("name")]
        sums[table.get("targetCategory")] = total
    if not is_classification:
        return sums[None]
    if model.get("normalizationMethod") == "softmax":
        sums = {category: Fraction(math.exp(total)) for category, total in sums.items()}
    return {category: total / sum(sums.values()) for category, total in sums.items()}


class Chosen(dict):
    """Shares of categories, of which the winner needn't have the greatest."""


class Ensemble:
    def __init__(self, name):
        root = ElementTree.parse(SAMPLES / f"{name}.pmml").getroot()
        model = root.find(NAMESPACE + "MiningModel")
        self.is_classification = model.get("functionName") == "classification"
        target = next(field for field in root.iter(NAMESPACE + "DataField") if field.get("name") == "y")
        self.categories = [value.get("value") for value in target]
        self.segments = list(model.iter(NAMESPACE + "Segment"))

    def predictions(self, case):
        """The id, the weight and the prediction of each segment whose condition holds."""
        for place, segment in enumerate(self.segments, 1):
            if decide(predicate_of(segment), case):
                model = next(child for child in segment if local(child).endswith("Model"))
                walk = tree if local(model) == "TreeModel" else regression
                yield (segment.get("id", str(place)), Fraction(segment.get("weight")),
                       walk(model, case, self.is_classification))

    def answer(self, method, treatment, threshold, case):
        """The prediction and the segment that has it; None for no prediction."""
        found = list(self.predictions(case))
        if treatment == "returnMissing":
            decisive = found if method != "selectFirst" else found[:1]
            if any(prediction is None for _, _, prediction in decisive):
                return None, None
        if method in SELECTIONS:
            return self.select(method, treatment, found)
        if not method.startswith("weighted"):
            found = [(name, Fraction(1), prediction) for name, _, prediction in found]
        missing = sum(weight for _, weight, prediction in found if prediction is None)
        known = [(weight, prediction) for _, weight, prediction in found if prediction is not None]
        if not known or missing / sum(weight for _, weight, _ in found) > Fraction(threshold):
            return None, None
        lost = missing if treatment == "continue" else 0
        if lost and method not in VOTES:
            return None, None
        return (self.shares(method, known, lost) if self.is_classification else self.combine(method, known)), None

    @staticmethod
    def select(method, treatment, found):
        if treatment == "skipSegment":
            found = [each for each in found if each[2] is not None]
        if not found:
            return None, None
        name, _, prediction = found[-1 if method == "modelChain" else 0]
        return prediction, name if prediction is not None else None

    def shares(self, method, known, lost):
        if method in VOTES:
            known = [(weight, {max(self.categories, key=lambda c: prediction.get(c, 0)): 1}) for weight, prediction in known]
        of = {category: [(weight, Fraction(prediction.get(category, 0))) for weight, prediction in known]
              for category in self.categories}
        if method in VOTES:
            whole = sum(weight for weight, _ in known) + lost
            shares = {category: sum(weight * share for weight, share in parts) / whole for category, parts in of.items()}
            return None if max(shares.values()) < lost / whole else shares
        shares = {category: self.combine(method, parts) for category, parts in of.items()}
        if method in ("sum", "weightedSum"):
            shares = {category: share / sum(shares.values()) for category, share in shares.items()}
        if method in CHOICES:
            return self.choosers(method, known, of, max(self.categories, key=shares.get))
        return shares

    def choosers(self, method, known, of, winner):
        """The mean of the predictions that the winner's share comes from; of two in the middle each counts for half."""
        values = sorted(share for _, share in of[winner])
        middle = {"max": values[-1:], "median": [values[(len(values) - 1) // 2], values[len(values) // 2]],
                  "weightedMedian": [self.combine(method, of[winner])]}[method]
        means = Chosen({category: Fraction(0) for category in self.categories})
        for value in middle:
            some = [(weight, prediction) for weight, prediction in known if prediction.get(winner, 0) == value]
            for category in self.categories:
                means[category] += sum(weight * prediction.get(category, 0) for weight, prediction in some) / (
                    sum(weight for weight, _ in some) * len(middle))
        means.winner = winner
        return means

    @staticmethod
    def combine(method, known):
        values = sorted(value for _, value in known)
        whole = sum(weight for weight, _ in known)
        if method in ("sum", "weightedSum"):
            return sum(weight * value for weight, value in known)
        if method in ("average", "weightedAverage"):
            return sum(weight * value for weight, value in known) / whole
        if method == "max":
            return values[-1]
        if method == "median":
            return (values[(len(values) - 1) // 2] + values[len(values) // 2]) / 2
        return min(value for value in values
                   if sum(weight for weight, other in known if other <= value) >= whole / 2)


def cases():
    drawn = random.Random(15)
    numbers = [None] + [Fraction(eighths, 8) for eighths in range(-8, 90, 5)]
    for _ in range(40):
        yield {"x": drawn.choice(numbers), "z": drawn.choice(numbers), "c": drawn.choice([None, "a", "b", "c"])}


def text(value):
    return "" if value is None else value if isinstance(value, str) else repr(float(value))


def write(name):
    ensemble = Ensemble(name)
    methods = (VOTES if ensemble.is_classification else []) + NUMBERS + SELECTIONS
    shares = [f"p_{category}" for category in ensemble.categories]
    with open(SAMPLES / f"{name}.answers.csv", "w", newline="", encoding="utf-8") as file:
        writer = csv.writer(file, lineterminator="\n")
        writer.writerow(["method", "treatment", "threshold", "x", "z", "c", "prediction", *shares, "winner"])
        for method, (treatment, threshold), case in itertools.product(methods, TREATMENTS, cases()):
            prediction, winner = ensemble.answer(method, treatment, threshold, case)
            line = [method, treatment, threshold, *map(text, case.values())]
            if not ensemble.is_classification:
                line.append(text(prediction))
            elif prediction is None:
                line += [""] * (1 + len(shares))
            else:
                best = (prediction.winner if isinstance(prediction, Chosen) else
                        max(ensemble.categories, key=lambda category: prediction.get(category, 0)))
                is_told = len(prediction) > 1 or method not in SELECTIONS
                line += [best] + [text(Fraction(prediction.get(category, 0))) if is_told else ""
                                  for category in ensemble.categories]
            writer.writerow(line + [winner or ""])


for each in ("harvest", "visits"):
    write(each)
