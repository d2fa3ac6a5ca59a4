#!/usr/bin/env python3
"""The cases and the answers of the samples of networks and of their variants in variants.tsv, computed apart from the
plug-in with 40 digits, from the documents and the formulas of the standard alone. Writes SAMPLE.csv and, for each
variant, what its outputs hold: answers.csv, a line a row and an output. A row without a prediction has empty cells.

    /usr/bin/python3 tests/models/network/network_answers.py
"""
import csv
import itertools
import pathlib
import random
import re
import struct
import xml.etree.ElementTree as tree

import mpmath
from mpmath import mp, mpf

mp.dps = 40
HERE = pathlib.Path(__file__).parent
SAMPLES = HERE.parent / "samples"
SPACE = "{http://www.dmg.org/PMML-4_4}"
EXPRESSIONS = ("FieldRef", "NormContinuous", "NormDiscrete", "Apply")

ACTIVATIONS = {
    "threshold": lambda z, limit: mpf(1 if z > limit else 0),
    "logistic": lambda z, _: 1 / (1 + mpmath.exp(-z)),
    "tanh": lambda z, _: (1 - mpmath.exp(-2 * z)) / (1 + mpmath.exp(-2 * z)),
    "identity": lambda z, _: z,
    "exponential": lambda z, _: mpmath.exp(z),
    "reciprocal": lambda z, _: 1 / z,
    "square": lambda z, _: z * z,
    "Gauss": lambda z, _: mpmath.exp(-z * z),
    "sine": lambda z, _: mpmath.sin(z),
    "cosine": lambda z, _: mpmath.cos(z),
    "Elliott": lambda z, _: z / (1 + abs(z)),
    "arctan": lambda z, _: 2 * mpmath.atan(z) / mpmath.pi,
    "rectifier": lambda z, _: max(mpf(0), z),
}


def children(element, *tags):
    return [child for child in element if child.tag.removeprefix(SPACE) in tags]


def single(number):
    return mpf(struct.unpack("f", struct.pack("f", float(number)))[0])


class Network:
    def __init__(self, text):
        self.root = tree.fromstring(text)
        self.model = children(self.root, "NeuralNetwork")[0]
        self.derived = {field.get("name"): self.expression(field) for field in self.root.iter(SPACE + "DerivedField")
                        if field.get("name")}
        schema = children(self.model, "MiningSchema")[0]
        self.targets = [field.get("name") for field in schema if field.get("usageType") == "target"]
        if self.model.get("targetFieldName"):
            self.targets.sort(key=lambda name: name != self.model.get("targetFieldName"))
        self.categories = {field.get("name"): [value.get("value") for value in field]
                           for field in self.root.iter(SPACE + "DataField")}
        self.rescaled = {target.get("field"): target for target in self.root.iter(SPACE + "Target")}
        self.last = []
        self.output_fields = list(self.root.iter(SPACE + "OutputField"))

    @staticmethod
    def expression(field):
        return children(field, *EXPRESSIONS)[0]

    # Inputs.
    def value(self, expression, case):
        """None for a missing one."""
        kind = expression.tag.removeprefix(SPACE)
        if kind == "Apply":  # a field by a constant, in the only sample with one
            field, constant = expression
            number = self.field(field.get("field"), case)
            return mpf(expression.get("mapMissingTo")) if number is None else number / mpf(constant.text)
        found = self.field(expression.get("field"), case)
        if found is None:
            missing = expression.get("mapMissingTo")
            return None if missing is None else mpf(missing)
        if kind == "NormDiscrete":
            return mpf(1 if found == expression.get("value") else 0)
        return found if kind == "FieldRef" else self.line(expression, found, "orig", "norm")

    def field(self, name, case):
        if name in self.derived and name != "given":
            return self.value(self.derived[name], case)
        text = case[name]
        return None if text == "" else text if text.isalpha() else mpf(float(text))

    @staticmethod
    def line(expression, number, start, end):
        points = sorted((mpf(float(point.get(start))), mpf(float(point.get(end))))
                        for point in children(expression, "LinearNorm"))
        if not points[0][0] <= number <= points[-1][0]:
            outliers = expression.get("outliers", "asIs")
            if outliers == "asMissingValues":
                return None
            if outliers == "asExtremeValues":
                return points[0][1] if number < points[0][0] else points[-1][1]
        pairs = list(itertools.pairwise(points))
        (x, y), (u, v) = next((pair for pair in pairs if number < pair[1][0]), pairs[-1])
        return y + (number - x) * (v - y) / (u - x)

    def inputs(self, case):
        numbers = {}
        for given in self.model.iter(SPACE + "NeuralInput"):
            field = children(given, "DerivedField")[0]
            number = self.value(self.expression(field), case)
            if number is None or (field.get("dataType") == "integer" and number != int(number)):
                return None  # a half is no integer
            numbers[given.get("id")] = single(number) if field.get("dataType") == "float" else number
        return numbers

    # Neurons.
    def said(self, name, default, *elements):
        return next((element.get(name) for element in elements if element.get(name) is not None), default)

    def activation(self, neuron, layer, numbers):
        name = self.said("activationFunction", None, layer, self.model)
        pairs = [(mpf(float(con.get("weight"))), numbers[con.get("from")]) for con in neuron]
        if name != "radialBasis":
            z = mpf(float(neuron.get("bias", "0"))) + sum(weight * number for weight, number in pairs)
            return ACTIVATIONS[name](z, mpf(self.said("threshold", "0", layer, self.model)))
        width = mpf(self.said("width", None, neuron, layer, self.model))
        altitude = mpf(self.said("altitude", "1", neuron, layer, self.model))
        squares = sum((weight - number) ** 2 for weight, number in pairs)
        return mpmath.exp(len(pairs) * mpmath.log(altitude) - squares / (2 * width ** 2))

    def neurons(self, numbers):
        for layer in children(self.model, "NeuralLayer"):
            own = {neuron.get("id"): self.activation(neuron, layer, numbers) for neuron in layer}
            method = self.said("normalizationMethod", "none", layer, self.model)
            if method == "softmax":
                own = {id: mpmath.exp(number) for id, number in own.items()}
            total = mpf(1) if method == "none" else sum(own.values())
            numbers.update({id: number / total for id, number in own.items()})
            self.last = list(own)
        return numbers

    # Outputs.
    def steps(self, output):
        """From an output to the field of a target: the expressions on the way."""
        expressions = [self.expression(children(output, "DerivedField")[0])]
        while (name := expressions[-1].get("field")) not in self.targets:
            expressions.append(self.derived[name])
        return name, expressions

    def told(self):
        """By target the neurons of its outputs with their steps."""
        found = {name: [] for name in self.targets}
        for output in self.model.iter(SPACE + "NeuralOutput"):
            name, expressions = self.steps(output)
            found[name].append((output.get("outputNeuron"), expressions))
        return found if any(found.values()) else {self.targets[0]: [(self.last[0], [])]}

    def number(self, number, expressions):
        for expression in expressions:
            if number is not None and expression.tag == SPACE + "NormContinuous":
                number = self.line(expression, number, "norm", "orig")
        return number

    def adjusted(self, name, number):
        target = self.rescaled.get(name)
        if number is None or target is None:
            return number
        number = max(number, mpf(target.get("min", "-inf")))
        return number * mpf(target.get("rescaleFactor", "1")) + mpf(target.get("rescaleConstant", "0"))

    def shares(self, name, told, numbers):
        """By category its probability and its neuron."""
        found = {expressions[-1].get("value"): (numbers[neuron], neuron) for neuron, expressions in told}
        missing = [category for category in self.categories[name] if category not in found]
        if len(found) == len(missing) == 1:
            found[missing[0]] = (1 - next(iter(found.values()))[0], "")
        return found

    def default(self, name):
        """The default number of a target, or its prior probabilities; None without any."""
        target = self.rescaled.get(name)
        values = [] if target is None else children(target, "TargetValue")
        if not self.categories[name]:
            return mpf(float(values[0].get("defaultValue"))) if values else None
        priors = {value.get("value"): mpf(float(value.get("priorProbability"))) for value in values}
        return {category: (priors.get(category, mpf(0)), "") for category in self.categories[name]} if priors else None

    def answer(self, name, told, numbers):
        """What a target gets: its number, or by category the probability and the neuron; None for nothing."""
        found = None
        if numbers is not None and self.categories[name]:
            found = self.shares(name, told, numbers)
        elif numbers is not None:
            found = self.adjusted(name, self.number(numbers[told[0][0]], told[0][1]))
        return self.default(name) if found is None else found

    def feature(self, field, name, answer, case):
        kind, actual = field.get("feature"), case.get(name, "")
        if answer is None or (kind == "residual" and actual == ""):
            return None
        if not self.categories[name]:
            return mpf(float(actual)) - answer if kind == "residual" else answer
        order = sorted((category for category in self.categories[name] if category in answer),
                       key=lambda category: -answer[category][0])
        category = field.get("value", order[int(field.get("rank", "1")) - 1])
        if kind == "residual":
            return (1 if actual == category else 0) - answer[category][0]
        return {"predictedValue": category, "probability": answer[category][0], "entityId": answer[category][1]}[kind]

    def predictions(self, case):
        """By the name of the output; empty for no prediction."""
        inputs = self.inputs(case)
        numbers = None if inputs is None else self.neurons(inputs)
        self.last = self.last or [children(self.model, "NeuralLayer")[-1][-1].get("id")]
        told = self.told()
        answers = {name: self.answer(name, told[name], numbers) for name in self.targets}
        if answers[self.targets[0]] is None:
            return {}
        found = {}
        for field in self.output_fields:
            name = field.get("targetField", self.targets[0])
            found[field.get("name")] = self.feature(field, name, answers[name], case)
        return found


def document(sample, before, after):
    """The sample without the white space between its elements, with one place changed."""
    text = re.sub(r">\s+<", "><", (SAMPLES / f"{sample}.pmml").read_text(encoding="utf-8"))
    if before == "OUTPUTS":
        before = text[text.index("<NeuralOutputs"):text.index("</NeuralOutputs>") + len("</NeuralOutputs>")]
    assert before == "" or text.count(before) == 1, before
    return text.replace(before, after) if before else text


def cases(sample):
    # No case lies on a border, such as a sum of 0 under "reciprocal", by these steps.
    draw = random.Random(20)
    for place in range(40):
        if sample == "cider":
            yield {"apples": round(draw.uniform(-3, 3), 3), "warmth": round(draw.uniform(-2, 3), 2)}
            continue
        if sample == "cellar":
            yield {"acid": round(draw.uniform(1, 11), 2), "sugar": round(draw.uniform(-5, 70), 1)}
            continue
        yield {"acid": round(draw.uniform(1, 11), 2), "sugar": "" if place % 9 == 4 else draw.randrange(0, 60),
               "skin": "" if place % 11 == 7 else draw.choice(["red", "white"])}


def main():
    drawn = {sample: list(cases(sample)) for sample in ("vintage", "cider", "cellar")}
    drawn["cider"][5]["apples"] = drawn["vintage"][8]["acid"] = drawn["cellar"][3]["sugar"] = ""
    draw = random.Random(21)
    for row in drawn["cellar"]:
        row |= {"style": draw.choice(["", "dry", "sweet", "sparkling"]),
                "price": draw.choice(["", draw.randrange(5, 40)]),
                "keeps": draw.choice(["", "yes", "no"]), "years": draw.choice(["", draw.randrange(0, 9) / 2])}
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
            network = Network(document(variant["sample"], variant["from"], variant["to"]))
            for place, row in enumerate(drawn[variant["sample"]]):
                answers = network.predictions({name: str(value) for name, value in row.items()})
                for output in (field.get("name") for field in network.output_fields):
                    answer = answers.get(output, "")
                    text = "" if answer is None else answer if isinstance(answer, str) else mpmath.nstr(answer, 17)
                    writer.writerow([variant["name"], place, output, text])


main()
