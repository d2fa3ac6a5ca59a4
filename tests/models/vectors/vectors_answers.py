#!/usr/bin/env python3
"""The cases and the answers of the samples of support vectors and of their variants in variants.tsv, computed apart from
the plug-in with 40 digits, from the documents and the formulas of the standard alone. Writes SAMPLE.csv and, for each
variant, what its outputs hold: answers.csv, a line a row and an output. A row without a prediction has empty cells.

    /usr/bin/python3 tests/models/vectors/vectors_answers.py
"""
import collections
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
OUTPUT = {"pears": "sort", "syrup": "litres"}


def number(text, default=None):
    return mpf(float(default if text is None else text))


def tag(element):
    return element.tag.removeprefix(SPACE)


class Vectors:
    def __init__(self, text):
        self.root = tree.fromstring(text)
        self.model = self.root.find(SPACE + "SupportVectorMachineModel")
        self.kernel_element = next(child for child in self.model if tag(child).endswith("KernelType"))
        self.fields = list(self.model.find(f"{SPACE}VectorDictionary/{SPACE}VectorFields"))
        self.vectors = {instance.get("id"): self.vector(instance[0])
                        for instance in self.model.iter(SPACE + "VectorInstance")}
        self.machines = list(self.model.iter(SPACE + "SupportVectorMachine"))

    def vector(self, array):
        if tag(array) == "Array":
            return [mpf(float(word)) for word in array.text.split()]
        numbers = [number(array.get("defaultValue"), 0)] * len(self.fields)
        places, entries = array.find(SPACE + "Indices"), array.find(SPACE + "REAL-Entries")
        if places is not None:
            for place, entry in zip(places.text.split(), entries.text.split(), strict=True):
                numbers[int(place) - 1] = mpf(float(entry))
        return numbers

    def value(self, field, case):
        if tag(field) == "CategoricalPredictor":
            return number(field.get("coefficient")) if case[field.get("name")] == field.get("value") else mpf(0)
        name = field.get("field")
        text = case["weight" if name == "heavy" else name]
        if text == "":
            missing = field.get("mapMissingTo")
            return None if missing is None else mpf(missing)
        return (number(text) - 150) / 50 if name == "heavy" else number(text)

    def kernel(self, x, vector):
        kind, said = tag(self.kernel_element), self.kernel_element.get
        gamma, coef0, degree = (number(said(name), 1) for name in ("gamma", "coef0", "degree"))
        product = sum(a * b for a, b in zip(x, vector, strict=True))
        if kind == "LinearKernelType":
            return product
        if kind == "PolynomialKernelType":
            return mpmath.power(gamma * product + coef0, degree)
        if kind == "SigmoidKernelType":
            return mpmath.tanh(gamma * product + coef0)
        return mpmath.exp(-gamma * sum((a - b) ** 2 for a, b in zip(x, vector, strict=True)))

    def result(self, machine, x):
        coefficients = machine.find(SPACE + "Coefficients")
        numbers = [number(each.get("value"), 0) for each in coefficients]
        if self.model.get("svmRepresentation") == "Coefficients":
            parts = x
        else:
            parts = [self.kernel(x, self.vectors[each.get("vectorId")]) for each in machine[0]]
        return sum(a * b for a, b in zip(numbers, parts, strict=True)) + number(coefficients.get("absoluteValue"), 0)

    def prediction(self, case):
        x = [self.value(field, case) for field in self.fields]
        if None in x:
            return ""
        results = [self.result(machine, x) for machine in self.machines]
        if self.model.get("functionName") == "regression":
            return "" if isinstance(results[0], mpmath.mpc) else results[0]
        order = [value.get("value") for value in self.root.iter(SPACE + "Value")][:3]
        wins = self.model.get("maxWins") == "true"
        if self.model.get("classificationMethod") == "OneAgainstAll":
            pick = max if wins else min
            return self.machines[results.index(pick(results))].get("targetCategory")
        votes = collections.Counter()
        for machine, result in zip(self.machines, results, strict=True):
            limit = number(machine.get("threshold"), self.model.get("threshold", "0"))
            isTarget = result > limit if wins else result < limit
            votes[machine.get("targetCategory" if isTarget else "alternateTargetCategory")] += 1
        return max(order, key=lambda category: votes[category])


def document(sample, before, after):
    """The sample without the white space between its elements, with one place changed."""
    text = re.sub(r">\s+<", "><", (SAMPLES / f"{sample}.pmml").read_text(encoding="utf-8"))
    if 'svmRepresentation="Coefficients"' in after:
        text = re.sub("<SupportVectors>.*</SupportVectors>", "", text)
    assert before == "" or text.count(before) == 1, before
    return text.replace(before, after) if before else text


def cases(sample):
    draw = random.Random(21)
    for place in range(48):
        if sample == "pears":
            yield {"weight": "" if place == 9 else draw.randrange(90, 230),
                   "length": "" if place % 8 == 3 else round(draw.uniform(5, 10), 2),
                   "skin": "" if place % 10 == 6 else draw.choice(["green", "brown"])}
        else:
            yield {"pears": round(draw.uniform(-2, 2), 3), "hours": "" if place == 4 else round(draw.uniform(-2, 3), 2),
                   "pan": draw.choice(["copper", "iron", ""])}


def main():
    drawn = {sample: list(cases(sample)) for sample in OUTPUT}
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
            vectors = Vectors(document(variant["sample"], variant["from"], variant["to"]))
            for place, row in enumerate(drawn[variant["sample"]]):
                answer = vectors.prediction({name: str(value) for name, value in row.items()})
                text = answer if isinstance(answer, str) else mpmath.nstr(answer, 17)
                writer.writerow([variant["name"], place, OUTPUT[variant["sample"]], text])


main()
