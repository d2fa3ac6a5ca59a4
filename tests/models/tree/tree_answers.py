"""The answers of the trees in samples/, computed apart from the plug-in: a walk over the XML as the PMML standard tells it,
with None for what is missing or unknown. Writes NAME.answers.csv: the strategies, a case, and what it gets.

    /usr/bin/python3 tests/models/tree/tree_answers.py
"""
import csv
import datetime
import itertools
import pathlib
import random
import xml.etree.ElementTree as ElementTree

SAMPLES = pathlib.Path(__file__).parent.parent / "samples"
NAMESPACE = "{http://www.dmg.org/PMML-4_3}"
STRATEGIES = ["none", "lastPrediction", "nullPrediction", "defaultChild", "weightedConfidence", "aggregateNodes"]
NO_CHILD = ["returnNullPrediction", "returnLastPrediction"]
PREDICATES = ["True", "False", "SimplePredicate", "SimpleSetPredicate", "CompoundPredicate"]


class Tree:
    def __init__(self, name, strategy, no_child):
        root = ElementTree.parse(SAMPLES / f"{name}.pmml").getroot()
        self.fields = {field.get("name"): field for field in root.iter(NAMESPACE + "DataField")}
        model = root.find(NAMESPACE + "TreeModel")
        self.strategy, self.no_child = strategy, no_child
        self.penalty = float(model.get("missingValuePenalty", "1"))
        self.target = next(field.get("name") for field in model.iter(NAMESPACE + "MiningField")
                           if field.get("usageType") in ("target", "predicted"))
        self.categories = [value.get("value") for value in self.fields[self.target].iter(NAMESPACE + "Value")]
        self.is_classification = model.get("functionName") == "classification"
        self.root = model.find(NAMESPACE + "Node")
        self.places = {id(node): str(place) for place, node in enumerate(model.iter(NAMESPACE + "Node"), 1)}

    # Conditions: True, False, or None for unknown.

    def holds(self, node, case):
        predicate = next(child for child in node if child.tag[len(NAMESPACE):] in PREDICATES)
        return self.decide(predicate, case)

    def needs_surrogate(self, node, case):
        """Whether the condition of a node is decided by a surrogate, anywhere in it."""
        compounds = [part for part in node.iter(NAMESPACE + "CompoundPredicate")
                     if part.get("booleanOperator") == "surrogate" and not self.is_below_a_child(node, part)]
        return any(self.decide(compound[0], case) is None and self.decide(compound, case) is not None
                   for compound in compounds)

    @staticmethod
    def is_below_a_child(node, part):
        return any(part in list(child.iter()) for child in node.findall(NAMESPACE + "Node"))

    def decide(self, predicate, case):
        kind = predicate.tag[len(NAMESPACE):]
        if kind in ("True", "False"):
            return kind == "True"
        if kind == "CompoundPredicate":
            return self.compound(predicate.get("booleanOperator"), [self.decide(part, case) for part in predicate])
        name = predicate.get("field")
        value = case[name]
        if kind == "SimpleSetPredicate":
            members = [self.read(name, text.strip('"')) for text in predicate[0].text.split()]
            if value is None:
                return None
            return (value in members) == (predicate.get("booleanOperator") == "isIn")
        return self.simple(name, predicate.get("operator"), value, predicate.get("value"))

    @staticmethod
    def compound(operator, parts):
        if operator == "surrogate":
            return next((part for part in parts if part is not None), None)
        if operator == "xor":
            return None if None in parts else sum(parts) % 2 == 1
        decisive = operator == "or"
        if decisive in parts:
            return decisive
        return None if None in parts else not decisive

    def simple(self, name, operator, value, text):
        if operator in ("isMissing", "isNotMissing"):
            return (value is None) == (operator == "isMissing")
        if value is None:
            return None
        operand = self.read(name, text)
        if operator in ("equal", "notEqual"):
            return (value == operand) == (operator == "equal")
        if name in self.fields and self.fields[name].get("optype") == "ordinal":
            order = [self.read(name, listed.get("value")) for listed in self.fields[name].iter(NAMESPACE + "Value")]
            value, operand = order.index(value), order.index(operand)
        return {"lessThan": value < operand, "lessOrEqual": value <= operand,
                "greaterThan": value > operand, "greaterOrEqual": value >= operand}[operator]

    def read(self, name, text):
        kind = self.fields[name].get("dataType") if name in self.fields else "double"
        if kind in ("double", "integer"):
            return float(text)
        if kind == "date":
            return datetime.date.fromisoformat(text)
        return text

    # Predictions: a dictionary, or None for none.

    def predict(self, case):
        if self.holds(self.root, case) is not True:
            return None
        node, penalties = self.root, 0
        while True:
            children = node.findall(NAMESPACE + "Node")
            if not children:
                return self.answer(node, penalties)
            verdict = self.choose(children, case)
            if verdict == "nobody":
                return self.answer(node, penalties) if self.no_child == "returnLastPrediction" else None
            if verdict != "unknown":
                asked = children[:children.index(verdict) + 1]
                penalties += any(self.needs_surrogate(child, case) for child in asked)
                node = verdict
                continue
            if self.strategy == "nullPrediction":
                return None
            if self.strategy == "lastPrediction":
                return self.answer(node, penalties)
            if self.strategy != "defaultChild":
                return self.several(node, case, penalties)
            default = node.get("defaultChild")
            if default is None:
                return None
            node = next(child for child in children if child.get("id") == default)
            penalties += 1

    def choose(self, children, case):
        for child in children:
            verdict = self.holds(child, case)
            if verdict is True:
                return child
            if verdict is None and self.strategy != "none":
                return "unknown"
        return "nobody"

    def distribution(self, node):
        """Category -> records, probability, confidence."""
        shares = node.findall(NAMESPACE + "ScoreDistribution")
        total = sum(float(share.get("recordCount")) for share in shares)
        result = {}
        for share in shares:
            records = float(share.get("recordCount"))
            probability = float(share.get("probability", records / total if total else 0))
            result[share.get("value")] = (records, probability, float(share.get("confidence", probability)))
        return result

    def answer(self, node, penalties):
        entity = node.get("id") or self.places[id(node)]
        if not self.is_classification:
            return None if node.get("score") is None else {"prediction": float(node.get("score")), "entity": entity}
        shares = self.distribution(node)
        probabilities = {category: shares.get(category, (0, 0, 0))[1] for category in self.categories}
        prediction = node.get("score") or max(self.categories, key=lambda category: probabilities[category])
        confidence = shares.get(prediction, (0, 0, 0))[2] * self.penalty ** penalties
        return {"prediction": prediction, "probabilities": probabilities, "confidence": confidence, "entity": entity}

    def reach(self, node, weight, factor, case):
        """The nodes that answer for a case that comes to this one, each with its part of the weight and the penalties of
        its own way."""
        children = node.findall(NAMESPACE + "Node")
        if not children:
            return [(node, weight, factor)]
        verdict = self.choose(children, case)
        if verdict == "nobody":
            return [(node, weight, factor)] if self.no_child == "returnLastPrediction" else []
        if verdict == "unknown":
            return self.share_out(node, weight, factor, case)
        return self.reach(verdict, weight, factor * self.penalty_of(verdict, case), case)

    def penalty_of(self, child, case):
        return self.penalty if self.holds(child, case) and self.needs_surrogate(child, case) else 1.0

    def share_out(self, node, weight, factor, case):
        open_children = [child for child in node.findall(NAMESPACE + "Node") if self.holds(child, case) is not False]
        total = sum(float(child.get("recordCount")) for child in open_children)
        return [part for child in open_children if total
                for part in self.reach(child, weight * float(child.get("recordCount")) / total,
                                       factor * self.penalty_of(child, case), case)]

    def several(self, node, case, penalties):
        parts = self.share_out(node, 1.0, self.penalty ** penalties, case)
        if not self.is_classification:
            scored = [(float(part.get("score")), weight if self.strategy == "weightedConfidence"
                       else float(part.get("recordCount"))) for part, weight, _ in parts if part.get("score")]
            total = sum(weight for _, weight in scored)
            return {"prediction": sum(score * weight for score, weight in scored) / total, "entity": ""} if total else None
        probabilities = dict.fromkeys(self.categories, 0.0)
        confidences = dict.fromkeys(self.categories, 0.0)
        for part, weight, factor in parts:
            for category, (records, probability, confidence) in self.distribution(part).items():
                probabilities[category] += records if self.strategy == "aggregateNodes" else weight * probability
                confidences[category] += factor * (records if self.strategy == "aggregateNodes" else weight * confidence)
        if not sum(probabilities.values()):
            return None
        if self.strategy == "aggregateNodes":
            total = sum(probabilities.values())
            probabilities = {category: records / total for category, records in probabilities.items()}
            confidences = {category: records / total for category, records in confidences.items()}
        decisive = probabilities if self.strategy == "aggregateNodes" else confidences
        prediction = max(self.categories, key=lambda category: decisive[category])
        return {"prediction": prediction, "probabilities": probabilities, "confidence": confidences[prediction], "entity": ""}


def play_cases():
    values = {"outlook": ["sunny", "overcast", "rain", ""], "temperature": ["18.5", "25", "31", ""],
              "humidity": ["40", "80", "80.5", ""], "wind": ["calm", "breezy", "stormy", ""],
              "weekend": ["true", "false", ""], "day": ["2024-05-31", "2024-06-01", ""]}
    every = [dict(zip(values, row)) for row in itertools.product(*values.values())]
    return random.Random(20240601).sample(every, 60)


def rent_cases():
    values = {"rooms": ["1", "2", "3", "4", ""], "area": ["30", "80.5", "200", ""],
              "district": ["1", "2", "5", "9", ""]}
    return [dict(zip(values, row)) for row in itertools.product(*values.values())]


def number(value):
    return "" if value is None else repr(value)


def write(name, cases):
    with open(SAMPLES / f"{name}.answers.csv", "w", newline="") as file:
        writer = csv.writer(file, lineterminator="\n")
        is_classification = Tree(name, "none", "returnNullPrediction").is_classification
        outputs = ["p_no", "p_maybe", "p_yes", "confidence"] if is_classification else []
        writer.writerow(["strategy", "noChild", *cases[0], "prediction", *outputs, "entity"])
        for strategy, no_child in itertools.product(STRATEGIES, NO_CHILD):
            tree = Tree(name, strategy, no_child)
            for case in cases:
                values = {field: tree.read(field, text) if text else None for field, text in case.items()}
                if name == "rent":
                    known = values["area"] is not None and values["rooms"] is not None
                    values["perRoom"] = values["area"] / values["rooms"] if known else None
                answer = tree.predict(values) or {}
                shares = answer.get("probabilities", {})
                numbers = [number(shares.get(output[2:])) for output in outputs[:-1]]
                numbers += [number(answer.get("confidence"))] if outputs else []
                prediction = answer.get("prediction", "")
                writer.writerow([strategy, no_child, *case.values(), prediction, *numbers, answer.get("entity", "")])


if __name__ == "__main__":
    write("play", play_cases())
    write("rent", rent_cases())
