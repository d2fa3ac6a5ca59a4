#!/usr/bin/env python3
"""The cases and the answers of the samples of neighbours and of their variants in variants.tsv, computed apart from the
plug-in with 40 digits, from the documents and the formulas of the standard alone: all instances are put in order, for
each case anew. Writes SAMPLE.csv and, for each variant, what its outputs hold: answers.csv, a line a row and an output.
A row without a prediction has empty cells.

    /usr/bin/python3 tests/models/neighbours/neighbours_answers.py
"""
import csv
import pathlib
import random
import re
import xml.etree.ElementTree as tree

import mpmath
from mpmath import mp, mpf

mp.dps = 40
HERE = pathlib.Path(__file__).parent
SAMPLES = HERE.parent / "samples"
SPACE = "{http://www.dmg.org/PMML-4_4}"


def tag(element):
    return element.tag.removeprefix(SPACE)


class Neighbours:
    def __init__(self, text):
        self.root = tree.fromstring(text)
        self.model = self.root.find(SPACE + "NearestNeighborModel")
        self.measure = self.model.find(SPACE + "ComparisonMeasure")
        self.method = tag(self.measure[0])
        self.is_distance = self.measure.get("kind") == "distance"
        self.inputs = list(self.model.find(SPACE + "KNNInputs"))
        self.targets = [field.get("name") for field in self.model.find(SPACE + "MiningSchema")
                        if field.get("usageType") == "target"]
        self.values = {field.get("name"): [value.get("value") for value in field] for field in
                       self.root.find(SPACE + "DataDictionary")}
        self.instances = []
        for place, row in enumerate(self.model.iter(SPACE + "row"), 1):
            cells = {tag(cell): cell.text for cell in row}
            name = self.model.get("instanceIdVariable")
            self.instances.append((cells[name] if name else str(place), cells))

    def value(self, element, cells):
        name = element.get("field")
        if name == "sour":
            text = cells.get("acid") or None
            return None if text is None else mpf(text) - 1  # the line through (0, -1) and (4, 3)
        text = cells.get(name) or None
        return text if text is None or self.values[name] else mpf(text)

    def compare(self, element, x, y):
        function = element.get("compareFunction") or self.measure.get("compareFunction") or "absDiff"
        if function == "absDiff":
            return abs(x - y)
        if function == "gaussSim":
            return mpmath.exp(-mpmath.log(2) * (x - y) ** 2 / mpf(element.get("similarityScale")) ** 2)
        if function in ("delta", "equal"):
            return mpf((x == y) == (function == "equal"))
        places = self.values[element.get("field")]
        rows = element.findall(f"{SPACE}Comparisons/{SPACE}Matrix/{SPACE}Array")
        return mpf(rows[places.index(x)].text.split()[places.index(y)])

    def affinity(self, case, cells):
        pairs = [(element, self.value(element, case), self.value(element, cells)) for element in self.inputs]
        there = [pair for pair in pairs if pair[1] is not None and pair[2] is not None]
        if not there:
            return None
        if self.method in ("simpleMatching", "jaccard", "tanimoto", "binarySimilarity"):
            return self.matched([(int(x), int(y)) for _, x, y in there])
        adjusted = mpf(len(pairs)) / len(there)
        power = {"euclidean": 2, "squaredEuclidean": 2}.get(self.method, 1)
        if self.method == "minkowski":
            power = mpf(self.measure[0].get("p-parameter"))
        parts = [mpf(element.get("fieldWeight", "1")) * self.compare(element, x, y) ** power for element, x, y in there]
        whole = adjusted * (max(parts) if self.method == "chebychev" else sum(parts))
        return mpmath.root(whole, 2) if self.method == "euclidean" else (
            whole ** (1 / power) if self.method == "minkowski" else whole)

    def matched(self, bits):
        count = {(a, b): bits.count((a, b)) for a in (0, 1) for b in (0, 1)}
        one = count[1, 0] + count[0, 1]
        if self.method == "binarySimilarity":
            said = self.measure[0].get
            above, below = (sum(mpf(said(f"{letter}{a}{b}-parameter")) * count[a, b] for a, b in count)
                            for letter in "cd")
        else:
            above, below = {"simpleMatching": (count[1, 1] + count[0, 0], len(bits)),
                            "jaccard": (count[1, 1], count[1, 1] + one),
                            "tanimoto": (count[1, 1] + count[0, 0], count[1, 1] + 2 * one + count[0, 0])}[self.method]
        return None if below == 0 else mpf(above) / mpf(below)

    def weights(self, nearest, is_weighted):
        if not is_weighted:
            return [mpf(1)] * len(nearest)
        threshold = mpf(self.model.get("threshold", "0.001"))
        sums = [affinity + threshold for affinity, _ in nearest]
        if not self.is_distance:
            return sums
        if 0 in sums:  # no distance at all counts alone
            return [mpf(each == 0) for each in sums]
        return [1 / each for each in sums]

    def categories(self, target, nearest):
        weights = self.weights(nearest, self.model.get("categoricalScoringMethod") == "weightedMajorityVote")
        votes = {value: mpf(0) for value in self.values[target]}
        for weight, (_, place) in zip(weights, nearest, strict=True):
            category = self.instances[place][1].get(target)
            if category is not None:
                votes[category] += weight
        whole = sum(votes.values())
        if whole == 0:
            return None
        frequent = {value: sum(cells.get(target) == value for _, cells in self.instances) for value in votes}
        winner = min(votes, key=lambda value: (-votes[value], -frequent[value], value))
        return winner, {value: count / whole for value, count in votes.items()}

    def number(self, target, nearest):
        method = self.model.get("continuousScoringMethod", "average")
        weights = self.weights(nearest, method == "weightedAverage")
        pairs = [(weight, mpf(self.instances[place][1][target]))
                 for weight, (_, place) in zip(weights, nearest, strict=True) if target in self.instances[place][1]]
        if not pairs:
            return None
        if method == "median":
            values = sorted(value for _, value in pairs)
            return (values[(len(values) - 1) // 2] + values[len(values) // 2]) / 2
        whole = sum(weight for weight, _ in pairs)
        return None if whole == 0 else sum(weight * value for weight, value in pairs) / whole

    def outputs(self, case):
        fields = list(self.model.find(SPACE + "Output"))
        none = {field.get("name"): "" for field in fields}
        affinities = [self.affinity(case, cells) for _, cells in self.instances]
        there = [(affinity, place) for place, affinity in enumerate(affinities) if affinity is not None]
        there.sort(key=lambda each: (each[0] if self.is_distance else -each[0], each[1]))
        for (a, _), (b, _) in zip(there, there[1:]):
            assert a == b or abs(a - b) > 1e-13 * abs(a), "a tie that rounding decides"
        nearest = there[:int(self.model.get("numberOfNeighbors"))]
        if not nearest:
            return none
        answers = {target: self.categories(target, nearest) if self.values[target] else self.number(target, nearest)
                   for target in self.targets}
        return none if answers[self.targets[0]] is None else {
            field.get("name"): self.output(field, answers, nearest, affinities) for field in fields}

    def output(self, field, answers, nearest, affinities):
        rank = int(field.get("rank", "1"))
        if field.get("feature") == "entityId":
            return self.instances[nearest[rank - 1][1]][0] if rank <= len(nearest) else ""
        if field.get("feature") in ("affinity", "entityAffinity"):
            if field.get("value"):
                names = [name for name, _ in self.instances]
                return self.shown(affinities[names.index(field.get("value"))])
            return self.shown(nearest[rank - 1][0]) if rank <= len(nearest) else ""
        answer = answers[field.get("targetField", self.targets[0])]
        if field.get("feature") == "probability":
            return self.shown(answer[1][field.get("value")])
        if not isinstance(answer, tuple):
            return self.shown(answer)
        winner, shares = answer
        order = [winner] + sorted((value for value in shares if value != winner), key=lambda value: -shares[value])
        return order[rank - 1]

    def shown(self, answer):
        return "" if answer is None else mpmath.nstr(answer, 17)


def document(sample, before, after):
    """The sample without the white space between its elements, with one place changed."""
    text = re.sub(r">\s+<", "><", (SAMPLES / f"{sample}.pmml").read_text(encoding="utf-8"))
    assert before == "" or text.count(before) == 1, before
    return text.replace(before, after) if before else text


def cases(sample):
    draw = random.Random(12)
    for place in range(24):
        if sample == "plums":
            yield {"sugar": "" if place in (6, 21) else draw.randrange(8, 24) / 2,
                   "acid": "" if place in (6, 13) else draw.randrange(0, 17) / 4,
                   "skin": "" if place in (6, 17) else draw.choice(["thin", "thick", "rough"])}
        else:
            yield {name: "" if place == 8 or draw.random() < 0.06 else draw.randrange(2)
                   for name in ("stone", "leaf", "worm", "moss")}


def main():
    drawn = {sample: list(cases(sample)) for sample in ("plums", "twigs")}
    for sample, rows in drawn.items():
        with open(SAMPLES / f"{sample}.csv", "w", newline="", encoding="utf-8") as file:
            writer = csv.DictWriter(file, rows[0], lineterminator="\n")
            writer.writeheader()
            writer.writerows(rows)
    with open(HERE / "variants.tsv", newline="", encoding="utf-8") as file:
        variants = list(csv.DictReader(file, delimiter="\t", quoting=csv.QUOTE_NONE))
    with open(HERE / "answers.csv", "w", newline="", encoding="utf-8") as file:
        writer = csv.writer(file, lineterminator="\n")
        writer.writerow(["variant", "row", "output", "answer"])
        for variant in variants:
            neighbours = Neighbours(document(variant["sample"], variant["from"], variant["to"]))
            for place, row in enumerate(drawn[variant["sample"]]):
                for output, answer in neighbours.outputs({name: str(value) for name, value in row.items()}).items():
                    writer.writerow([variant["name"], place, output, answer])


main()
