"""Classes of rule sets and scorecards: criteria, weights, defaults, shares; points, baselines, reasons and their ties."""
import re

from .building import Parts, Trial, apply, const, data_field, document, output, ref, tag
from .draw import write
from .tree_classes import CATEGORIES, FIELDS, TARGET, predicate, rows_of

WITHIN = "<Extension name='note' value='1'><Node score='A'><False/></Node><Attribute/>text</Extension>"
CLOSE = 1e-12


def extended(draw, text):
    """The same document with an Extension first in some of its elements, which are without effect wherever they stand."""
    def opened(found):
        kind, attributes, end = found.groups()
        if kind in ("Array", "Constant", "PMML") or draw.random() < 0.7:
            return found.group()
        return f"<{kind}{attributes}>{WITHIN}" + (f"</{kind}>" if end else "")
    return re.sub(r"<([A-Z]\w*)((?: \w+=\"[^\"]*\")*)(/?)>", opened, text)


def shares(draw, chance=0.5):
    """ScoreDistributions of some categories, by records or probabilities."""
    if draw.random() > chance:
        return []
    listed = draw.sample(CATEGORIES, draw.randint(1, 3))
    told = draw.random() < 0.4
    return [tag("ScoreDistribution", value=each, recordCount=draw.randint(1, 40),
                probability=write(draw.randint(0, 16) / 16) if told else None,
                confidence=write(draw.randint(0, 16) / 16) if draw.random() < 0.5 else None) for each in listed]


class Rules:
    """Draws rules with weights that are often the same, so that ties have to be told apart."""

    def __init__(self, draw, regression):
        self._draw, self._regression, self._count = draw, regression, 0

    def score(self):
        return write(self._draw.choice((-3, 0.5, 2, 700))) if self._regression else self._draw.choice(CATEGORIES)

    def simple(self):
        draw = self._draw
        self._count += 1
        records = draw.randint(20, 90)
        return tag("SimpleRule", predicate(draw), *([] if self._regression else shares(draw)), score=self.score(),
                   id=f"r{self._count}" if draw.random() < 0.6 else None,
                   weight=draw.choice((None, "-1", "0", "0.5", "1", "2", "2", "3")),
                   confidence=draw.choice((None, "0", "0.25", "0.5", "0.875")),
                   recordCount=records, nbCorrect=draw.choice((None, draw.randint(0, records))))

    def rule(self, depth):
        draw = self._draw
        if depth and draw.random() < 0.3:
            return tag("CompoundRule", predicate(draw), *(self.rule(depth - 1) for _ in range(draw.randint(1, 3))))
        return self.simple()


def rule_set(criterion, regression, hole=0.2):
    def make(draw, _road, count):
        rules = Rules(draw, regression)
        methods = [tag("RuleSelectionMethod", criterion=each) for each in (criterion, *draw.sample(("firstHit", "weightedMax"), draw.randint(0, 2)))]
        default = draw.random() < 0.6
        body = tag("RuleSet", *methods, *([] if regression else shares(draw)), *(rules.rule(3) for _ in range(draw.randint(1, 7))),
                   defaultScore=rules.score() if default else None, recordCount=draw.choice((None, 1000, 0)),
                   defaultConfidence=draw.choice((None, "0.375")) if default else None)
        name = "y" if regression else "k"
        shown = [output(f"{feature}{rank}", feature, rank=rank) for feature in ("predictedValue", "ruleId", "consequent", "support")
                 for rank in (1, 2, 3, 9)]
        shown += [output(f"rule{feature}{rank}", "ruleValue", ruleFeature=feature, rank=rank) for rank in (1, 3, 9)
                  for feature in ("consequent", "confidence", "ruleId", "support")]
        shown.append(output("e", "entityId"))
        if not regression:
            shown += [output(f"{feature}{place}", feature, value=each) for feature in ("probability", "confidence")
                      for place, each in enumerate((*CATEGORIES, None))]
            shown += [output(f"{feature}_2", feature, rank=2) for feature in ("probability", "confidence")]
        schema = tag("MiningSchema", tag("MiningField", name=name, usageType="target"),
                     *(tag("MiningField", name=each, invalidValueTreatment="asIs") for each in "xcof"))
        model = tag("RuleSetModel", schema, tag("Output", *shown), body, functionName="regression" if regression else "classification")
        fields = [*FIELDS, data_field("y") if regression else TARGET]
        return Trial(extended(draw, document(Parts(fields, model=model))), rows_of(draw, count, hole), "score", CLOSE)
    return make


CODES = ("R1", "R2", "R3", "R4")


def points(draw):
    return write(draw.randint(-12, 12) / 2)


def computed(draw):
    """An expression of points: with missing values, with a default, and beyond all doubles."""
    x = ref("x")
    return draw.choice((x, apply("*", x, const("2.5")), apply("/", const("8"), x), apply("*", x, const("1e308")),
                        apply("sqrt", x), apply("+", x, const("1"), defaultValue="4"), apply("*", x, const("3"), mapMissingTo="-2"),
                        apply("if", apply("greaterThan", x, const("0")), const("3"))))


def attribute(draw, condition, own):
    content, attributes = [condition], {"partialScore": points(draw)}
    if draw.random() < 0.25:
        content.append(tag("ComplexPartialScore", computed(draw)))
        attributes = draw.choice((attributes, {}))
    if own:
        attributes["reasonCode"] = draw.choice(CODES)
    return tag("Attribute", *content, **attributes)


def characteristic(draw, place, needs_baseline, tells):
    """With a reason code of its own, on each attribute, or both."""
    where = draw.choice(("characteristic", "attribute", "both"))
    conditions = [predicate(draw) for _ in range(draw.randint(0, 3))] + ["<True/>" if draw.random() < 0.9 else predicate(draw)]
    own = [tells and (where == "attribute" or where == "both" and draw.random() < 0.5) for _ in conditions]
    return tag("Characteristic", *(attribute(draw, condition, each) for condition, each in zip(conditions, own)), name=f"c{place}",
               reasonCode=draw.choice(CODES) if tells and where != "attribute" else None,
               baselineScore=points(draw) if needs_baseline or draw.random() < 0.5 else None)


def scorecard(hole=0.1, tells=True, **more):
    """A card whose baselines stand at both levels, at one, or nowhere where it tells no reasons."""
    def make(draw, _road, count):
        common = draw.random() < 0.5
        parts = [characteristic(draw, place, tells and not common, tells) for place in range(draw.randint(1, 6))]
        shown = [output("s", "predictedValue"), output("first", "reasonCode")]
        shown += [output(f"reason{rank}", "reasonCode", rank=rank) for rank in (1, 2, 3, 4, 5, 20)]
        if draw.random() < 0.5:
            shown.append(output("t", "transformedValue", apply("concat", ref("first"), const("!", "string")), dataType="string"))
        schema = tag("MiningSchema", tag("MiningField", name="y", usageType="target"),
                     *(tag("MiningField", name=each, invalidValueTreatment="asIs") for each in "xcof"))
        targets = draw.choice(("", tag("Targets", tag("Target", tag("TargetValue", defaultValue="-7"), field="y", max="9"))))
        attributes = {**more, "useReasonCodes": None if tells else "false"}
        if draw.random() < 0.7:
            attributes["initialScore"] = points(draw)
        model = tag("Scorecard", schema, tag("Output", *shown), targets, tag("Characteristics", *parts),
                    baselineScore=points(draw) if common else None, functionName="regression", **attributes)
        return Trial(extended(draw, document(Parts([*FIELDS, data_field("y")], model=model))), rows_of(draw, count, hole), "score", CLOSE)
    return make


CRITERIA = ("firstHit", "weightedMax", "weightedSum")
SCORED = {
    **{f"rules.{word}": rule_set(word, False) for word in CRITERIA},
    **{f"rules.{word}-numbers": rule_set(word, True) for word in CRITERIA},
    **{f"scorecard.{word}": scorecard(reasonCodeAlgorithm=word) for word in ("pointsBelow", "pointsAbove")},
    "scorecard.reasons": scorecard(0.0), "scorecard.without-reasons": scorecard(tells=False),
}
