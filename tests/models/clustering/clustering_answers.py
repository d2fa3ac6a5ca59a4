#!/usr/bin/env python3
"""The cases and the answers of the samples of clusters and of their variants in variants.tsv, computed apart from the
plug-in with 40 digits, from the documents and the formulas of the standard alone. Writes SAMPLE.csv and, for each
variant, what its outputs hold: answers.csv, a line a row and an output. A row without a prediction has empty cells.

    /usr/bin/python3 tests/models/clustering/clustering_answers.py
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


def children(element, *tags):
    return [child for child in element if child.tag.removeprefix(SPACE) in tags]


def child(element, *tags):
    return next(iter(children(element, *tags)), None)


class Field:
    """A field that is compared: what a case has, and what it comes to beside that of a center."""

    def __init__(self, element, data, function):
        self.name = element.get("field")
        self.weight = mpf(element.get("fieldWeight", "1"))
        self.scale = mpf(element.get("similarityScale", "1"))
        self.function = element.get("compareFunction", function)
        self.values = [value.get("value") for value in children(data, "Value")]
        self.intervals = [(mpf(part.get("leftMargin", "-inf")), mpf(part.get("rightMargin", "inf")),
                           part.get("closure")) for part in children(data, "Interval")]
        self.is_text = data.get("dataType") == "string"
        comparisons = child(element, "Comparisons")
        self.matrix = None if comparisons is None else child(comparisons, "Matrix")

    def read(self, text):
        return None if text == "" else text if self.is_text else mpf(text)

    def place(self, value):
        if self.is_text:
            return self.values.index(value)
        for place, (low, high, closure) in enumerate(self.intervals):
            above = low < value or (low == value and closure.startswith("closed"))
            below = value < high or (value == high and closure.endswith("Closed"))
            if above and below:
                return place
        raise ValueError(f"{self.name} has no place for {value}")

    def cell(self, row, column):
        arrays = [[mpf(word) for word in array.text.split()] for array in children(self.matrix, "Array")]
        if arrays:
            if self.matrix.get("kind") == "symmetric":
                row, column = max(row, column), min(row, column)
            return arrays[row][column]
        for cell in children(self.matrix, "MatCell"):
            if (int(cell.get("row")), int(cell.get("col"))) == (row + 1, column + 1):
                return mpf(cell.text)
        return mpf(self.matrix.get("diagDefault" if row == column else "offDiagDefault"))

    def compare(self, x, y):
        if self.function == "absDiff":
            return abs(x - y)
        if self.function == "gaussSim":
            return mpmath.exp(-mpmath.log(2) * (x - y) ** 2 / self.scale ** 2)
        if self.function == "table":
            return self.cell(self.place(x), self.place(y))
        return mpf((x != y) if self.function == "delta" else (x == y))


class Clusters:
    def __init__(self, text):
        root = tree.fromstring(text)
        data = {field.get("name"): field for field in root.iter(SPACE + "DataField")}
        self.model = child(root, "ClusteringModel")
        measure = child(self.model, "ComparisonMeasure")
        self.nearest = min if measure.get("kind") == "distance" else max
        self.measure = measure[0]
        self.name = self.measure.tag.removeprefix(SPACE)
        self.fields = [Field(field, data[field.get("field")], measure.get("compareFunction", "absDiff"))
                       for field in children(self.model, "ClusteringField") if field.get("isCenterField") != "false"]
        weights = child(self.model, "MissingValueWeights")
        words = child(weights, "Array").text.split() if weights is not None else ["1"] * len(self.fields)
        self.missing = [mpf(word) for word in words]
        self.clusters = {cluster.get("id"): [field.read(word) for field, word in
                                             zip(self.fields, child(cluster, "Array").text.split())]
                         for cluster in children(self.model, "Cluster")}
        self.names = {cluster.get("id"): cluster.get("name", cluster.get("id"))
                      for cluster in children(self.model, "Cluster")}

    def apart(self, case, center):
        pairs = [(field, x, y, missing) for field, x, y, missing in zip(self.fields, case, center, self.missing)
                 if x is not None]
        if not pairs:
            return None
        scale = sum(self.missing) / sum(missing for *_, missing in pairs)
        parts = [(field.weight, field.compare(x, y)) for field, x, y, _ in pairs]
        if self.name == "chebychev":
            return max(weight * part for weight, part in parts) * scale
        power = {"cityBlock": 1, "minkowski": mpf(self.measure.get("p-parameter", "2"))}.get(self.name, 2)
        total = sum(weight * part ** power for weight, part in parts) * scale
        return total if self.name in ("cityBlock", "squaredEuclidean") else total ** (1 / mpf(power))

    def alike(self, case, center):
        bits = [f"{int(x)}{int(y)}" for x, y in zip(case, center) if x is not None]
        a = {pair: mpf(bits.count(pair)) for pair in ("11", "10", "01", "00")}
        if self.name == "binarySimilarity":
            above, below = (sum(mpf(self.measure.get(f"{letter}{pair}-parameter")) * count for pair, count in a.items())
                            for letter in "cd")
        else:
            other = a["10"] + a["01"]
            above = a["11"] + (0 if self.name == "jaccard" else a["00"])
            below = above + (2 if self.name == "tanimoto" else 1) * other
        return None if below == 0 else above / below

    def affinities(self, case):
        point = [field.read(case[field.name]) for field in self.fields]
        compare = self.apart if self.name in ("euclidean", "squaredEuclidean", "chebychev", "cityBlock",
                                              "minkowski") else self.alike
        found = {id: compare(point, center) for id, center in self.clusters.items()}
        return {id: affinity for id, affinity in found.items() if affinity is not None}


def meadow(model, affinities):
    best = model.nearest(affinities, key=affinities.get)
    return {"plant": best, "called": model.names[best], "cluster": best,
            "nearest": affinities[best], "toClover": affinities["clover"], "toReed": affinities["reed"]}


def pollen(model, affinities):
    ranked = sorted(affinities, key=affinities.get, reverse=model.nearest is max)
    at = dict(enumerate(ranked, 1))
    return {"kind": at[1], "alike": affinities[at[1]], "second": at.get(2, ""),
            "secondAlike": affinities.get(at.get(2), ""), "third": at.get(3, ""),
            "thirdAlike": affinities.get(at.get(3), ""), "fourth": at.get(4, ""),
            "ofPine": affinities.get("pine", ""), "fifth": ""}


ANSWERS = {"meadow": meadow, "pollen": pollen}
OUTPUTS = {"meadow": ["plant", "called", "cluster", "nearest", "toClover", "toReed"],
           "pollen": ["kind", "alike", "second", "secondAlike", "third", "thirdAlike", "fourth", "ofPine", "fifth"]}
BITS = ("round", "spiny", "porous", "winged", "oily")


def document(sample, before, after):
    """The sample without the white space between its elements, with one place changed."""
    text = re.sub(r">\s+<", "><", (SAMPLES / f"{sample}.pmml").read_text(encoding="utf-8"))
    assert before == "" or text.count(before) == 1, before
    return text.replace(before, after) if before else text


def cases(sample):
    draw = random.Random(5)
    for place in range(24):
        if sample == "meadow":
            yield {"height": "" if place % 7 == 3 else round(draw.uniform(0, 150), 2),
                   "width": "" if place % 9 == 3 else draw.randrange(-5, 21),
                   "tint": "" if place % 8 == 3 else draw.choice(["white", "yellow", "blue"])}
        else:
            yield {name: "" if (place + 3 * at) % 13 == 5 else draw.randrange(2) for at, name in enumerate(BITS)}


def main():
    drawn = {sample: list(cases(sample)) for sample in OUTPUTS}
    drawn["meadow"][20] = dict.fromkeys(drawn["meadow"][0], "")
    drawn["meadow"][21] = {"height": 7.5, "width": 6, "tint": "white"}  # a center
    drawn["meadow"][22] = {"height": "", "width": "", "tint": "yellow"}  # of two clusters alike
    drawn["pollen"][20] = dict.fromkeys(BITS, "")
    drawn["pollen"][21] = {"round": "", **dict.fromkeys(BITS[1:], 0)}
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
            sample = variant["sample"]
            model = Clusters(document(sample, variant["from"], variant["to"]))
            for place, row in enumerate(drawn[sample]):
                affinities = model.affinities({name: str(value) for name, value in row.items()})
                answers = ANSWERS[sample](model, affinities) if affinities else {}
                for output in OUTPUTS[sample]:
                    answer = answers.get(output, "")
                    text = answer if isinstance(answer, str) else mpmath.nstr(answer, 17)
                    writer.writerow([variant["name"], place, output, text])


main()
