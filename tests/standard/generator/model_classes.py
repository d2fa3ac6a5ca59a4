"""Classes of the mining schema, regressions, classifications, targets and outputs."""
from .building import (Parts, Trial, apply, const, data_field, derived, document, names_of, output, ref, regression_model, tag)
from .draw import write

CLOSE = 1e-12
COLORS = ("red", "green", "blue")
Y = data_field("y")


def value(text, **more):
    return tag("Value", value=text, **more)


def color(name, optype="categorical", **more):
    return data_field(name, "string", optype, *(value(each, **more) for each in COLORS))


def rows_of(draw, count, hole=0.0, **kinds):
    """Cells of numbers ("number") or of the words of a tuple."""
    def cell(kind):
        return write(draw.number()) if kind == "number" else draw.of_type(kind) if isinstance(kind, str) else draw.choice(kind)
    return [{name: draw.holed(cell(kind), hole) for name, kind in kinds.items()} for _ in range(count)]


def linear(draw):
    """A sum of two numbers and a category, exact in doubles."""
    return tag("RegressionTable", tag("NumericPredictor", name="a", coefficient=draw.coefficient()),
               tag("NumericPredictor", name="b", coefficient=draw.coefficient(), exponent=draw.choice((1, 1, 2))),
               *(tag("CategoricalPredictor", name="c", value=each, coefficient=draw.coefficient()) for each in COLORS[:2]),
               intercept=draw.coefficient())


def trial(fields, model, rows, tolerance=0.0):
    """A trial of a model; probabilities, which a tolerance is for, may be differences of numbers near 1."""
    return Trial(document(Parts(list(fields), model=model)), rows, "score", tolerance, absolute=1e-14 if tolerance else 0.0)


def regression(hole=0.0, target=False, method=None, tolerance=0.0):
    def make(draw, _road, count):
        fields = [data_field("a"), data_field("b"), color("c")]
        table = linear(draw) if method is None else tag("RegressionTable", tag("NumericPredictor", name="a", coefficient=1 / 512), intercept="0.25")
        model = regression_model(names_of(fields), tables=[table], target="y" if target else None, normalizationMethod=method)
        return trial(fields + ([Y] if target else []), model, rows_of(draw, count, hole, a="number", b="number", c=COLORS), tolerance)
    return make


def term(mapped):
    def make(draw, _road, count):
        fields = [data_field("a"), data_field("b")]
        refs = ref("a"), ref("b", mapMissingTo="3" if mapped else None)
        table = tag("RegressionTable", tag("PredictorTerm", *refs, coefficient=draw.coefficient()), intercept="1")
        return trial(fields, regression_model(["a", "b"], tables=[table]), rows_of(draw, count, 0.3, a="number", b="number"))
    return make


def infinite(function):
    def make(draw, _road, count):
        tables = [tag("RegressionTable", tag("NumericPredictor", name="a", coefficient="1", exponent="200"), intercept="0",
                      targetCategory=None if function == "regression" else "red")]
        if function != "regression":
            tables.append(tag("RegressionTable", intercept="0", targetCategory="green"))
        more = {} if function == "regression" else {"functionName": function, "normalizationMethod": "softmax"}
        model = regression_model(["a"], tables=tables, target="y" if function == "regression" else "k", **more)
        return trial([data_field("a"), Y, color("k")], model, rows_of(draw, count, a=("1", "900", "-900", "0")))
    return make


def treated(field, cells, **attributes):
    """A number with this treatment by the schema, in a sum."""
    def make(draw, _road, count):
        mining = [tag("MiningField", name="a", **attributes)]
        table = tag("RegressionTable", tag("NumericPredictor", name="a", coefficient="2"), intercept="1")
        return trial([field], regression_model([], tables=[table], mining=mining), rows_of(draw, count, a=cells))
    return make


def treated_category(cells, **attributes):
    def make(draw, _road, count):
        mining = [tag("MiningField", name="c", **attributes)]
        table = tag("RegressionTable", *(tag("CategoricalPredictor", name="c", value=each, coefficient=draw.coefficient())
                                         for each in COLORS), intercept="1")
        return trial([color("c")], regression_model([], tables=[table], mining=mining), rows_of(draw, count, c=cells))
    return make


PLAIN = data_field("a")
WHOLE = data_field("a", "integer")
BOUNDED = data_field("a", "double", None, tag("Interval", closure="closedOpen", leftMargin="-100", rightMargin="100"),
                     value("-999", property="missing"), value("77", property="invalid"))
CELLS = ("", "-999", "-500", "-100", "0", "1.5", "77", "99.5", "100", "abc")
OVER = data_field("a", "integer", "continuous", value("1"), value("2"), value("3"))

SCHEMAS = {
    "missing-replacement": treated(PLAIN, ("", "1", "2.5"), missingValueReplacement="4"),
    "missing-returnInvalid": treated(PLAIN, ("", "1"), missingValueReplacement="4", missingValueTreatment="returnInvalid"),
    **{f"invalid-{word}": treated(BOUNDED, CELLS[:-1], invalidValueTreatment=word, invalidValueReplacement=more, missingValueReplacement="6")
       for word, more in (("returnInvalid", None), ("asIs", None), ("asMissing", None), ("asValue", "8"))},
    "unreadable-returnInvalid": treated(PLAIN, ("abc", "1", ""), missingValueReplacement="4"),
    "unreadable-asValue": treated(PLAIN, ("abc", "1"), invalidValueTreatment="asValue", invalidValueReplacement="4"),
    "unreadable-asMissing": treated(PLAIN, ("abc", "1"), invalidValueTreatment="asMissing", missingValueReplacement="4"),
    "no-integer": treated(WHOLE, ("1", "1.5", "2.0", "-3")),
    **{f"outliers-{word}": treated(PLAIN, "number", outliers=word, lowValue="-100", highValue="200.5", missingValueReplacement="5")
       for word in ("asIs", "asMissingValues", "asExtremeValues")},
    "outliers-low-only": treated(PLAIN, "number", outliers="asExtremeValues", lowValue="-100"),
    **{f"category-{word}": treated_category((*COLORS, "", "pink"), invalidValueTreatment=word, missingValueReplacement="blue",
                                            invalidValueReplacement="green" if word == "asValue" else None)
       for word in ("returnInvalid", "asIs", "asMissing", "asValue")},
    "category-blanks": treated_category((*COLORS, "red ", " red"), invalidValueTreatment="asIs"),
    "optype-over-the-dictionary": treated(OVER, ("1", "2", "3"), optype="ordinal"),
}


def classification(method, categories, optype="categorical", hole=0.0):
    def make(draw, _road, count):
        shown = [output(f"p_{each}", "probability", value=each, dataType="double", optype="continuous") for each in categories]
        slope = draw.randint(1, 9) / 512
        tables = [tag("RegressionTable", tag("NumericPredictor", name="a", coefficient=slope if optype == "ordinal" else draw.coefficient() / 256),
                      intercept=place + draw.random() if optype == "ordinal" else draw.random(), targetCategory=each)
                  for place, each in enumerate(categories)]
        if method == "simplemax":
            tables = [tag("RegressionTable", tag("NumericPredictor", name="a", coefficient="1", exponent="2"), intercept=draw.randint(1, 900),
                          targetCategory=each) for each in categories]
        target = data_field("k", "string", optype, *map(value, categories))
        model = regression_model(["a"], shown, tables, "k", functionName="classification", normalizationMethod=method)
        return trial([data_field("a"), target], model, rows_of(draw, count, hole, a="number"), 1e-9)
    return make


def unsorted(method):
    """An ordinal target whose links rise and fall."""
    def make(draw, _road, count):
        shown = [output(f"p_{each}", "probability", value=each, dataType="double") for each in COLORS]
        tables = [tag("RegressionTable", tag("NumericPredictor", name="a", coefficient=draw.coefficient() / 256), intercept=draw.random(),
                      targetCategory=each) for each in COLORS]
        model = regression_model(["a"], shown, tables, "k", functionName="classification", normalizationMethod=method)
        return trial([data_field("a"), color("k", "ordinal")], model, rows_of(draw, count, a="number"), 1e-9)
    return make


def bounded(draw, _road, count):
    """Without a link, of two categories, sums far beyond 0 and 1."""
    tables = [tag("RegressionTable", tag("NumericPredictor", name="a", coefficient="1"), intercept="0.5", targetCategory="red"),
              tag("RegressionTable", intercept="0", targetCategory="green")]
    shown = [output(f"p_{each}", "probability", value=each, dataType="double") for each in COLORS[:2]]
    model = regression_model(["a"], shown, tables, "k", functionName="classification", normalizationMethod="none")
    return trial([data_field("a"), data_field("k", "string", None, value("red"), value("green"))], model,
                 rows_of(draw, count, a=("-800", "-0.25", "0.125", "0.25", "3", "2503.24")))


def targets(values=(), hole=0.0, **attributes):
    def make(draw, _road, count):
        element = tag("Targets", tag("Target", *values, field="y", **attributes))
        fields = [data_field("a"), data_field("b"), color("c"), Y]
        model = regression_model(names_of(fields[:3]), tables=[linear(draw)], target="y", targets=element)
        return trial(fields, model, rows_of(draw, count, hole, a="number", b="number", c=COLORS))
    return make


def unnamed_target(draw, _road, count):
    """A Target without a field is that of the schema's target, whatever its name."""
    target = data_field("größe")
    model = regression_model(["a"], tables=[tag("RegressionTable", tag("NumericPredictor", name="a", coefficient="1"), intercept="0")],
                             target="größe", targets=tag("Targets", tag("Target", rescaleFactor="2")))
    return trial([data_field("a"), target], model, rows_of(draw, count, 0.0, a="number"))


def priors(draw, _road, count):
    values_ = [tag("TargetValue", value=each, priorProbability=share) for each, share in zip(COLORS, (0.25, 0.5, 0.25))]
    tables = [tag("RegressionTable", tag("NumericPredictor", name="a", coefficient=draw.coefficient() / 256), intercept="0", targetCategory=each)
              for each in COLORS]
    shown = [output("p", "probability", value="red", dataType="double")]
    model = regression_model(["a"], shown, tables, "k", targets=tag("Targets", tag("Target", *values_, field="k")),
                             functionName="classification", normalizationMethod="softmax")
    return trial([data_field("a"), color("k")], model, rows_of(draw, count, 0.3, a="number"), CLOSE)


def outputs(*fields, target=Y, dictionary_display=False, target_values=()):
    """A regression of a number, or a classification of colors, with these output fields."""
    def make(draw, _road, count):
        predictors = [data_field("a"), data_field("b"), color("c")]
        name = names_of([target])[0]
        colors = name == "k"
        goal = color("k", displayValue="a nice one") if dictionary_display else target
        kinds = {"a": "number", "b": "number", "c": COLORS, name: COLORS if colors else "number"}
        tables, more = [linear(draw)], {}
        if colors:
            tables = [tag("RegressionTable", tag("NumericPredictor", name="a", coefficient=draw.coefficient() / 256),
                          intercept=draw.random(), targetCategory=each) for each in COLORS]
            more = {"functionName": "classification", "normalizationMethod": "softmax"}
        aim = tag("Targets", tag("Target", *target_values, field=name)) if target_values else ""
        model = regression_model(names_of(predictors), fields, tables, name, targets=aim, **more)
        rows = rows_of(draw, count, 0.05, **kinds)
        return trial([*predictors, goal], model, rows, CLOSE if colors else 0.0)
    return make


def odd_display(draw, _road, count):
    """A predicted number with all its digits, as a text."""
    table = tag("RegressionTable", tag("NumericPredictor", name="a", coefficient="1"), intercept="0")
    model = regression_model(["a"], [output("d", "predictedDisplayValue", dataType="string", optype="categorical")], [table], "y")
    return trial([data_field("a"), Y], model, [{"a": write(round(draw.uniform(-9, 9), 9))} for _ in range(count)])


def local(draw, _road, count):
    fields = [data_field("a"), data_field("b")]
    here = [derived("l", "double", apply("*", ref("a"), ref("b")))]
    table = tag("RegressionTable", tag("NumericPredictor", name="l", coefficient=draw.coefficient()), intercept="1")
    return trial(fields, regression_model(["a", "b"], tables=[table], local=here), rows_of(draw, count, 0.1, a="number", b="number"))


K = color("k")
SHOWN = [tag("TargetValue", value=each, displayValue=f"the {each}") for each in COLORS]
DECISION = tag("Decisions", *(tag("Decision", value=each) for each in ("yes", "no")), businessProblem="whether")
def moments(stated):
    """Output fields of each type of a moment, of fields, of constants and of one another, that state their type or not."""
    def make(draw, _road, count):
        types = ("date", "time", "dateTime")
        shown = []
        for type_ in types:
            own = type_ if stated else None
            shown += [output(f"f_{type_}", "transformedValue", ref(type_), dataType=own),
                      output(f"c_{type_}", "transformedValue", const(draw.of_type(type_), type_), dataType=own),
                      output(f"r_{type_}", "transformedValue", ref(f"f_{type_}"), dataType=own)]
        fields = [data_field("a"), *(data_field(type_, type_) for type_ in types)]
        table = tag("RegressionTable", tag("NumericPredictor", name="a", coefficient=draw.coefficient()), intercept="1")
        rows = [{"a": write(draw.number()), **{type_: draw.holed(draw.of_type(type_), 0.2) for type_ in types}} for _ in range(count)]
        return trial(fields, regression_model(names_of(fields), shown, [table]), rows)
    return make


OUTPUTS = {
    "predictedValue": outputs(output("o", "predictedValue", dataType="double")),
    "probability": outputs(output("o", "probability", value="red", dataType="double"), target=K),
    "probability-of-winner": outputs(output("o", "probability", dataType="double"), target=K),
    "residual": outputs(output("o", "residual", dataType="double")),
    "residual-category": outputs(*(output(f"o{place}", "residual", value=each, dataType="double") for place, each in enumerate(COLORS)), target=K),
    "display-target": outputs(output("o", "predictedDisplayValue", dataType="string"), target=data_field("k", "string"), target_values=SHOWN),
    "display-target-and-dictionary": outputs(output("o", "predictedDisplayValue", dataType="string"), target=K, target_values=SHOWN),
    "display-dictionary": outputs(output("o", "predictedDisplayValue", dataType="string"), target=K, dictionary_display=True),
    "display-digits": odd_display,
    "isFinalResult": outputs(output("h", "predictedValue", dataType="double", isFinalResult="false"),
                             output("o", "transformedValue", apply("+", ref("h"), const("1")), dataType="double")),
    "transformedValue": outputs(output("p", "predictedValue", dataType="double"),
                                output("o", "transformedValue", apply("*", ref("p"), ref("a")), dataType="double")),
    "rank": outputs(*(output(f"{feature}{rank}", feature, rank=rank) for feature in ("predictedValue", "probability", "confidence")
                      for rank in (1, 2, 3, 4)), target=K),
    "rank-of-number": outputs(output("o", "predictedValue", rank="2")),
    "segmentId": outputs(output("o", "predictedValue", segmentId="1")),
    "dataType-integer": outputs(output("o", "predictedValue", dataType="integer"), output("t", "predictedValue", dataType="float")),
    "dataType-of-category": outputs(output("o", "predictedValue", dataType="double"), target=K),
    "dataType-string": outputs(output("o", "predictedValue", dataType="string", optype="categorical")),
    "moments": moments(True), "moments-untyped": moments(False),
    "decision": outputs(output("p", "predictedValue", dataType="double"),
                        output("o", "decision", DECISION, apply("if", apply("greaterThan", ref("p"), const("0")), const("yes", "string"),
                                                                const("no", "string")), dataType="string", optype="categorical")),
    "targetField": outputs(output("o", "predictedValue", targetField="y", dataType="double")),
    "names-as-target": outputs(output("y", "predictedValue", dataType="double")),
}
LINKS = ("softmax", "logit", "probit", "cloglog", "loglog", "cauchit")

def validity(draw, _road, count):
    """isValid tells a value that is taken as it is although its field excludes it."""
    shown = [output(name, "transformedValue", apply("if", apply(name, ref("a")), const("1"), const("0")), dataType="double")
             for name in ("isValid", "isNotValid", "isMissing")]
    mining = [tag("MiningField", name="a", invalidValueTreatment="asIs")]
    return trial([BOUNDED], regression_model([], shown, mining=mining), rows_of(draw, count, a=CELLS[:-1]))


def infinite_exp(draw, _road, count):
    """A link that overflows."""
    table = tag("RegressionTable", tag("NumericPredictor", name="a", coefficient="1"), intercept="0")
    model = regression_model(["a"], tables=[table], normalizationMethod="exp")
    return trial([data_field("a")], model, rows_of(draw, count, a=("1", "800", "-800", "0")), CLOSE)


SCORED = {
    "schema.isValid": validity, "domain.infinite-exp": infinite_exp,
    "regression.sum": regression(), "regression.missing": regression(0.2), "regression.target": regression(target=True),
    **{f"regression.{method}": regression(method=method, tolerance=CLOSE) for method in (*LINKS, "exp")},
    "regression.term": term(False), "reference.mapMissingTo-in-term": term(True), "regression.local": local,
    "domain.infinite-regression": infinite("regression"), "domain.infinite-classification": infinite("classification"),
    **{f"schema.{name}": make for name, make in SCHEMAS.items()},
    **{f"classification.{method}": classification(method, COLORS) for method in ("softmax", "simplemax", "none")},
    **{f"classification.two-{method}": classification(method, COLORS[:2]) for method in ("softmax", "simplemax", *LINKS[1:])},
    **{f"classification.three-{method}": classification(method, COLORS) for method in LINKS[1:]},
    **{f"classification.unsorted-{method}": unsorted(method) for method in LINKS[1:]},
    **{f"classification.ordinal-{method}": classification(method, COLORS, "ordinal") for method in LINKS[1:]},
    "classification.missing": classification("softmax", COLORS, hole=0.3), "classification.two-none-bounded": bounded,
    "targets.min-max": targets(min="-50", max="75.5"), "targets.rescale": targets(rescaleFactor="0.5", rescaleConstant="-3"),
    **{f"targets.castInteger-{word}": targets(castInteger=word) for word in ("round", "ceiling", "floor")},
    "targets.all": targets(min="-50", max="75.5", rescaleFactor="1.5", rescaleConstant="0.25", castInteger="round"),
    "targets.unnamed": unnamed_target, "targets.default": targets([tag("TargetValue", defaultValue="42")], 0.2), "targets.priors": priors,
    **{f"output.{name}": make for name, make in OUTPUTS.items()},
}
