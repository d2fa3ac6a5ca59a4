"""Classes of documents that say what no document may say: they have to be refused, by a message that names the element
and the attribute. A difference of the kind "accepted" is a document that was read, one of the kind "message" a message
without those names."""
from .building import Parts, Trial, apply, const, data_field, derived, document, output, ref, regression_model, schema, table, tag

A, S = data_field("a"), data_field("s", "string")
K = data_field("k", "string", None, tag("Value", value="red"), tag("Value", value="green"))
SUM = [tag("RegressionTable", tag("NumericPredictor", name="a", coefficient="1"), intercept="0")]
NORM = {"field": "a"}


def model(**more):
    mining = more.pop("mining", (tag("MiningField", name="a"),))
    return regression_model((), tables=SUM, mining=mining, **more)


def points(*pairs):
    return [tag("LinearNorm", orig=orig, norm=norm) for orig, norm in pairs]


def interval(left, right):
    return tag("Interval", closure="closedOpen", leftMargin=left, rightMargin=right)


def field_of(expression, type_="double"):
    return Parts([A, S], [derived("r", type_, expression)], model=regression_model(
        (), [output("o", "transformedValue", ref("r"))], SUM, mining=(tag("MiningField", name="a"), tag("MiningField", name="s"))))


def mining(**attributes):
    return Parts([A], model=model(mining=(tag("MiningField", name="a", **attributes),)))


def goal(*targets):
    return Parts([A, data_field("y")], model=model(target="y", targets=tag("Targets", *targets)))


def colors(*values):
    tables = [tag("RegressionTable", intercept="0", targetCategory=each) for each in ("red", "green")]
    aim = tag("Targets", tag("Target", *values, field="k"))
    return Parts([A, K], model=regression_model(["a"], tables=tables, target="k", targets=aim, functionName="classification",
                                                normalizationMethod="softmax"))


MAP = tag("MapValues", tag("FieldColumnPair", field="s", column="k"), table(("k", "v"), [("a", "x"), ("a", "y")]), outputColumn="v",
          dataType="string")


def uncalled(*body):
    """A function that nothing calls."""
    return Parts([A], functions=[tag("DefineFunction", tag("ParameterField", name="p"), *body, name="f")], model=model())


# name: parts, the words that the message has to have.
FAULTS = {
    "dataType": (Parts([data_field("a", "doubel")], model=model()), ("DataField", "dataType", "doubel")),
    "optype": (Parts([tag("DataField", name="a", optype="continous", dataType="double")], model=model()), ("DataField", "optype", "continous")),
    "outliers": (mining(outliers="asExtreme", lowValue="0", highValue="1"), ("MiningField", "outliers", "asExtreme")),
    "norm-outliers": (field_of(tag("NormContinuous", *points((0, 0), (1, 1)), field="a", outliers="asMissing")),
                      ("NormContinuous", "outliers", "asMissing")),
    "invalidValueTreatment": (mining(invalidValueTreatment="asMising"), ("MiningField", "invalidValueTreatment", "asMising")),
    "apply-invalidValueTreatment": (field_of(apply("+", ref("a"), const("1"), invalidValueTreatment="never")),
                                    ("Apply", "invalidValueTreatment", "never")),
    "property": (Parts([data_field("a", "double", None, tag("Value", value="1", property="mising"))], model=model()),
                 ("Value", "property", "mising")),
    "usageType": (mining(usageType="activ"), ("MiningField", "usageType", "activ")),
    "function": (field_of(apply("plus", ref("a"), const("1"))), ("Apply", "function", "plus")),
    "feature": (Parts([A], model=model(outputs=[output("o", "predictedValu")])), ("OutputField", "feature", "predictedValu")),
    "closure": (field_of(tag("Discretize", tag("DiscretizeBin", tag("Interval", closure="closed", leftMargin="0"), binValue="1"), field="a")),
                ("Interval", "closure", "closed")),
    "normalizationMethod": (Parts([A], model=model(normalizationMethod="logitt")), ("RegressionModel", "normalizationMethod", "logitt")),
    "castInteger": (goal(tag("Target", field="y", castInteger="up")), ("Target", "castInteger", "up")),
    "coefficient": (Parts([A], model=regression_model(["a"], tables=[tag("RegressionTable", tag("NumericPredictor", name="a", coefficient="x1"),
                                                                         intercept="0")])), ("NumericPredictor", "coefficient", "x1")),
    "exponent": (Parts([A], model=regression_model(["a"], tables=[tag("RegressionTable", tag("NumericPredictor", name="a", coefficient="1",
                                                                                             exponent="1.5"), intercept="0")])),
                 ("NumericPredictor", "exponent", "1.5")),
    "without-expression": (Parts([A], [tag("DerivedField", name="r", optype="continuous", dataType="double")], model=model()),
                           ("DerivedField", "r")),
    "inactive-field": (Parts([A, data_field("b")], model=regression_model(["a"], tables=[tag(
        "RegressionTable", tag("NumericPredictor", name="b", coefficient="1"), intercept="0")])), ("b",)),
    "unknown-field": (Parts([A], model=regression_model(["a"], tables=[tag(
        "RegressionTable", tag("NumericPredictor", name="zz", coefficient="1"), intercept="0")])), ("zz",)),
    "interval-renamed": (Parts([data_field("a", "double", None, '<Intervall closure="openOpen" leftMargin="0"/>')], model=model()),
                         ("DataField", "Intervall")),
    "target-renamed": (goal('<Targt field="y" max="1"/>'), ("Targets", "Targt")),
    "target-value-renamed": (goal(tag("Target", '<TargetVal defaultValue="1"/>', field="y")), ("Target", "TargetVal")),
    "two-targets": (goal(tag("Target", field="y", max="1"), tag("Target", field="y", max="2")), ("Target", "y")),
    "margins": (Parts([data_field("a", "double", None, interval("5", "1"))], model=model()), ("Interval", "leftMargin", "rightMargin")),
    "bin-margins": (field_of(tag("Discretize", tag("DiscretizeBin", interval("5", "1"), binValue="1"), field="a")),
                    ("Interval", "leftMargin", "rightMargin")),
    "low-above-high": (mining(outliers="asExtremeValues", lowValue="5", highValue="1"), ("MiningField", "lowValue", "highValue")),
    "min-above-max": (goal(tag("Target", field="y", min="5", max="1")), ("Target", "min", "max")),
    "orig-unsorted": (field_of(tag("NormContinuous", *points((1, 0), (0, 1)), **NORM)), ("LinearNorm", "orig")),
    "orig-equal": (field_of(tag("NormContinuous", *points((1, 0), (1, 1)), **NORM)), ("LinearNorm", "orig")),
    "one-norm": (field_of(tag("NormContinuous", *points((1, 0)), **NORM)), ("NormContinuous", "LinearNorm")),
    "prior": (colors(tag("TargetValue", value="red", priorProbability="1.5")), ("TargetValue", "priorProbability", "1.5")),
    "target-value": (colors(tag("TargetValue", value="pink", priorProbability="0.5")), ("TargetValue", "pink")),
    "target-value-without-value": (colors(tag("TargetValue", priorProbability="0.5")), ("TargetValue", "value")),
    "indicator-of-no-number": (field_of(tag("NormDiscrete", field="a", value="abc")), ("NormDiscrete", "value", "abc")),
    "norm-of-text": (field_of(tag("NormContinuous", *points((0, 0), (1, 1)), field="s")), ("NormContinuous", "field", "s")),
    "bins-of-text": (field_of(tag("Discretize", tag("DiscretizeBin", interval("1", "5"), binValue="1"), field="s")),
                     ("Discretize", "field", "s")),
    "table-keys-twice": (field_of(MAP, "string"), ("row", "a")),
    "lag-aggregate": (field_of(tag("Lag", field="a", aggregate="mean")), ("Lag", "aggregate", "mean")),
    "lag-n": (field_of(tag("Lag", field="a", n="0")), ("Lag", "n", "0")),
    "constant-number": (field_of(apply("+", ref("a"), const("zzz", "double"))), ("Constant", "zzz")),
    "unknown-element": (field_of(apply("+", ref("a"), "<Konstant>1</Konstant>")), ("Apply", "Konstant")),
    "too-few-arguments": (field_of(apply("ln")), ("Apply", "ln")),
    "too-many-arguments": (field_of(apply("ln", ref("a"), ref("a"))), ("Apply", "ln")),
    "uncalled-function": (uncalled(apply("plus", ref("p"), const("1"))), ("Apply", "function", "plus")),
    "uncalled-reference": (uncalled(apply("+", ref("p"), ref("a"))), ("FieldRef", "field", "a")),
    "uncalled-recursion": (uncalled(apply("f", ref("p"))), ("Apply", "function", "f")),
    "required-attribute": (Parts([tag("DataField", name="a", optype="continuous")], model=model()), ("DataField", "dataType")),
    "element-of-a-model": (Parts([A], model=tag("RegressionModel", schema(["a"]), *SUM, "<Foo/>", functionName="regression")),
                           ("RegressionModel", "Foo")),
}


def fault(parts, words):
    return lambda draw, _road, _count: Trial(document(parts), [{"a": "1", "s": "a"}], "score", 0.0, words)


SCORED = {f"refused.{name}": fault(parts, words) for name, (parts, words) in FAULTS.items()}
