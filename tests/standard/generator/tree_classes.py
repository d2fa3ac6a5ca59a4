"""Classes of trees: strategies, scores, shares, predicates."""
import math

from .building import Parts, Trial, const, data_field, document, output, ref, tag
from .draw import write

CATEGORIES = ("A", "B", "C")
OPERATORS = ("equal", "notEqual", "lessThan", "lessOrEqual", "greaterThan", "greaterOrEqual")
WORDS = ("u", "v", "w")
FIELDS = [data_field("x"), data_field("c", "string", None, *(tag("Value", value=each) for each in WORDS)),
          data_field("o", "string", "ordinal", *(tag("Value", value=each) for each in ("small", "big", "vast"))),
          data_field("f", "boolean")]
TARGET = data_field("k", "string", None, *(tag("Value", value=each) for each in CATEGORIES))


def simple(draw):
    field = draw.choice("xxco")
    if field == "x":
        operator = draw.choice(("lessThan", "lessOrEqual", "greaterThan", "greaterOrEqual", "equal", "notEqual"))
        return tag("SimplePredicate", field="x", operator=operator, value=draw.randint(-4, 4))
    if field == "c":
        return tag("SimplePredicate", field="c", operator=draw.choice(("equal", "notEqual")), value=draw.choice(WORDS))
    return tag("SimplePredicate", field="o", operator=draw.choice(("lessThan", "greaterOrEqual", "equal")),
               value=draw.choice(("small", "big", "vast")))


def predicate(draw, depth=1, operators=("and", "or", "xor", "surrogate")):
    choice = draw.randint(0, 5)
    if choice == 0:
        return tag("SimpleSetPredicate", tag("Array", " ".join(draw.sample(WORDS, 2)), type="string", n=2), field="c",
                   booleanOperator=draw.choice(("isIn", "isNotIn")))
    if choice == 1 and operators:
        return tag("SimplePredicate", field=draw.choice("xco"), operator=draw.choice(("isMissing", "isNotMissing")))
    if choice == 2 and depth and operators:
        parts = [predicate(draw, depth - 1, operators) for _ in range(draw.randint(2, 3))]
        return tag("CompoundPredicate", *parts, booleanOperator=draw.choice(operators))
    return simple(draw)


class Grower:
    """Draws trees. scored is the share of inner nodes with a score or shares of their own."""

    def __init__(self, draw, regression=False, scored=1.0, score_attribute=True, operators=("and", "or", "xor", "surrogate"),
                 confidence=False):
        self._draw, self._regression, self._scored = draw, regression, scored
        self._attribute, self._operators, self._confidence, self._count = score_attribute, operators, confidence, 0

    def node(self, depth, condition="<True/>"):
        draw = self._draw
        self._count += 1
        identity, children = f"n{self._count}", []
        if depth:
            children = [self.node(depth - 1, predicate(draw, 1, self._operators)) for _ in range(draw.randint(1, 2))]
            children.append(self.node(depth - 1, draw.choice(("<True/>", predicate(draw, 1, self._operators)))))
        has = not depth or draw.random() < self._scored
        counts = [draw.randint(1, 40) for _ in CATEGORIES]
        while len(set(counts)) < len(counts):
            counts = [draw.randint(1, 40) for _ in CATEGORIES]
        winner = CATEGORIES[counts.index(max(counts))]
        score = None if not has else write(draw.number()) if self._regression else winner if self._attribute else None
        shares = [] if self._regression or not has else [
            tag("ScoreDistribution", value=each, recordCount=count, confidence=round(draw.random(), 3) if self._confidence else None)
            for each, count in zip(CATEGORIES, counts)]
        default = draw.choice(children).partition('id="')[2].partition('"')[0] if children else None
        return tag("Node", condition, *shares, *children, id=identity, score=score, recordCount=sum(counts), defaultChild=default)


def rows_of(draw, count, hole):
    cells = {"x": lambda: str(draw.randint(-5, 5)), "c": lambda: draw.choice(WORDS),
             "o": lambda: draw.choice(("small", "big", "vast")), "f": lambda: draw.choice(("true", "false"))}
    return [{name: draw.holed(cell(), hole) for name, cell in cells.items()} for _ in range(count)]


def tree(hole=0.0, regression=False, scored=1.0, score_attribute=True, operators=("and", "or", "xor", "surrogate"), confidence=False,
         **attributes):
    def make(draw, _road, count):
        grower = Grower(draw, regression, scored, score_attribute, operators, confidence)
        mining = [tag("MiningField", name=name) for name in "xcof"]
        target = data_field("k") if regression else TARGET
        shown = [] if regression else [output(f"p{each}", "probability", value=each, dataType="double") for each in CATEGORIES]
        many = attributes.get("missingValueStrategy") in ("weightedConfidence", "aggregateNodes")
        if not regression:
            shown.append(output("confidence", "confidence", dataType="double"))
        if not many:
            shown.append(output("node", "entityId", dataType="string", optype="categorical"))
        model = tag("TreeModel", tag("MiningSchema", tag("MiningField", name="k", usageType="target"), *mining),
                    tag("Output", *shown) if shown else "", grower.node(draw.randint(1, 3)),
                    functionName="regression" if regression else "classification", **attributes)
        return Trial(document(Parts([*FIELDS, target], model=model)), rows_of(draw, count, hole), "score", 1e-12)
    return make


def booleans(draw, _road, count):
    """False is below true."""
    operator = draw.choice(OPERATORS)
    nodes = (tag("Node", tag("SimplePredicate", field="f", operator=operator, value=draw.choice(("true", "false"))), score="1"),
             tag("Node", "<True/>", score="2"))
    model = tag("TreeModel", tag("MiningSchema", tag("MiningField", name="f")), tag("Node", "<True/>", *nodes), functionName="regression")
    return Trial(document(Parts([FIELDS[3]], model=model)), rows_of(draw, count, 0.1))


def singles(draw, _road, count):
    """A field of the type float compared with a bound from which its values are quarters of a single's last digit away."""
    bound = draw.uniform(-1, 1) * 2.0 ** draw.randint(-20, 20)
    near = lambda: repr(bound + draw.randint(-10, 10) / 4 * math.ulp(bound) * 2.0 ** 29)
    value = draw.choice((repr(bound), repr(bound), near(), draw.choice(("INF", "-INF", "Infinity", "-Infinity"))))
    compared = lambda: tag("SimplePredicate", field="s", operator=draw.choice(OPERATORS), value=value)
    among = tag("SimpleSetPredicate", tag("Array", f"{near()} {near()}", type="real", n=2), field="s",
                booleanOperator=draw.choice(("isIn", "isNotIn")))
    nodes = (tag("Node", compared(), score="1"), tag("Node", compared(), score="2"), tag("Node", among, score="3"),
             tag("Node", "<True/>", score="4"))
    model = tag("TreeModel", tag("MiningSchema", tag("MiningField", name="s")), tag("Node", "<True/>", *nodes), functionName="regression")
    return Trial(document(Parts([data_field("s", "float")], model=model)), [{"s": draw.holed(near(), 0.1)} for _ in range(count)])


def blanks(draw, _road, count):
    """Texts that differ by blanks at their ends are different values."""
    words = ("u", "u ", " u")
    wanted = draw.choice(words)
    nodes = (tag("Node", tag("SimplePredicate", field="c", operator="equal", value=wanted), score="1"),
             tag("Node", tag("SimpleSetPredicate", tag("Array", f'"{draw.choice(words)}"', type="string", n=1), field="c",
                             booleanOperator="isIn"), score="2"), tag("Node", "<True/>", score="3"))
    model = tag("TreeModel", tag("MiningSchema", tag("MiningField", name="c")), tag("Node", "<True/>", *nodes), functionName="regression")
    return Trial(document(Parts([data_field("c", "string")], model=model)), [{"c": draw.choice(words)} for _ in range(count)])


def display(draw, _road, count):
    """Display values of categories, and a number with its digits."""
    nodes = (tag("Node", simple(draw), score="A"), tag("Node", "<True/>", score="B"))
    shown = tag("Output", output("d", "predictedDisplayValue", dataType="string", optype="categorical"))
    targets = tag("Targets", tag("Target", tag("TargetValue", value="A", displayValue="first one"), field="k"))
    schema = tag("MiningSchema", tag("MiningField", name="k", usageType="target"), *(tag("MiningField", name=name) for name in "xcof"))
    model = tag("TreeModel", schema, shown, targets, tag("Node", "<True/>", *nodes), functionName="classification")
    return Trial(document(Parts([*FIELDS, TARGET], model=model)), rows_of(draw, count, 0.0))


def typed_target(type_, cast):
    """Categories of a type, with what a Target says of them, and output fields that take their values on."""
    def make(draw, _road, count):
        words = ("u", "u ", " u") if type_ == "string" else ("true", "false") if type_ == "boolean" else \
            list(dict.fromkeys(draw.of_type(type_) for _ in range(3)))
        shares = lambda: [tag("ScoreDistribution", value=each, recordCount=draw.randint(1, 40)) for each in words]
        leaf = lambda condition: tag("Node", condition, *shares(), score=draw.choice(words))
        number = lambda operator: tag("SimplePredicate", field="x", operator=operator, value=draw.randint(-3, 3))
        prior = 1 / 2 ** len(words)
        values = [tag("TargetValue", value=each, priorProbability=prior * (place + 1), displayValue=f"shown {place}" if place else None)
                  for place, each in enumerate(words)]
        shown = [output("p", "predictedValue"), output("q", "predictedValue", rank=2), output("d", "predictedDisplayValue"),
                 output("c", "predictedValue", dataType=cast), output("s", "probability", value=words[0], dataType="double"),
                 output("r", "residual", value=words[-1], dataType="double"), output("t", "transformedValue",
                        tag("Apply", ref("p"), const(words[0], type_), function="equal"), dataType="boolean")]
        model = tag("TreeModel", tag("MiningSchema", tag("MiningField", name="k", usageType="target"), tag("MiningField", name="x")),
                    tag("Output", *shown), tag("Targets", tag("Target", *values, field="k")),
                    tag("Node", "<True/>", leaf(number("lessThan")), leaf(number("lessOrEqual")), leaf(number("greaterThan"))),
                    functionName="classification", missingValueStrategy="nullPrediction")
        rows = [{"x": draw.holed(str(draw.randint(-5, 5)), 0.2), "k": draw.choice(words)} for _ in range(count)]
        listed = [tag("Value", value=each) for each in words] if draw.random() < 0.5 else []
        return Trial(document(Parts([FIELDS[0], data_field("k", type_, "categorical", *listed)], model=model)), rows, "score", 1e-12)
    return make


NONE = ()
STRATEGIES = ("lastPrediction", "nullPrediction", "defaultChild", "weightedConfidence", "aggregateNodes", "none")
SCORED = {
    "tree.classes": tree(), "tree.numbers": tree(regression=True), "tree.without-score": tree(score_attribute=False),
    "tree.confidence": tree(confidence=True), "tree.returnLastPrediction": tree(noTrueChildStrategy="returnLastPrediction"),
    "tree.returnLastPrediction-without-own": tree(scored=0.4, noTrueChildStrategy="returnLastPrediction"),
    "tree.returnLastPrediction-number-without-own": tree(scored=0.4, regression=True, noTrueChildStrategy="returnLastPrediction"),
    **{f"tree.missing-{word}": tree(0.3, operators=NONE, missingValueStrategy=word) for word in STRATEGIES},
    **{f"tree.missing-{word}-numbers": tree(0.3, regression=True, operators=NONE, missingValueStrategy=word) for word in STRATEGIES},
    **{f"tree.missing-{word}-compound": tree(0.3, missingValueStrategy=word) for word in STRATEGIES},
    **{f"tree.penalty-{word}-compound": tree(0.3, confidence=word != "aggregateNodes", missingValueStrategy=word, missingValuePenalty="0.5")
       for word in STRATEGIES},
    "tree.lastPrediction-without-own": tree(0.3, scored=0.4, operators=NONE, missingValueStrategy="lastPrediction"),
    "tree.penalty-defaultChild": tree(0.3, operators=NONE, missingValueStrategy="defaultChild", missingValuePenalty="0.5"),
    "tree.penalty-surrogate": tree(0.3, operators=("surrogate",), missingValuePenalty="0.5"),
    "tree.penalty-lastPrediction": tree(0.3, scored=0.5, operators=("surrogate",), missingValuePenalty="0.5",
                                        missingValueStrategy="lastPrediction", noTrueChildStrategy="returnLastPrediction"),
    **{f"tree.target-{type_}": typed_target(type_, cast) for type_, cast in {
        "string": "string", "boolean": "integer", "integer": "double", "double": "string", "date": "dateDaysSince[1960]",
        "time": "timeSeconds", "dateTime": "date", "dateDaysSince[1960]": "integer", "timeSeconds": "string"}.items()},
    "tree.booleans": booleans, "tree.singles": singles, "tree.blanks": blanks, "tree.display": display,
}
