"""Classes of documents as they may lawfully be written: Extensions anywhere, comments and line breaks, odd numbers, listed
values of every type, blanks that count, arrays whose n says otherwise."""
import re

from . import date_classes, expression_classes, function_classes, model_classes, tree_classes
from .building import (Parts, Trial, apply, const, data_field, document, of_expressions, ref, regression_model, table, tag)
from .draw import write

EXTENSION = '<Extension name="note" value="1" extender="x"><any>5</any></Extension>'
# Where an Extension is put, and a class whose documents have that element.
EXTENDED = {
    "DataDictionary": "bins.string", "DataField": "bins.string", "TransformationDictionary": "bins.string", "DerivedField": "bins.string",
    "Discretize": "bins.string", "DiscretizeBin": "bins.string", "Interval": "bins.string", "NormContinuous": "norm.asIs",
    "LinearNorm": "norm.asIs", "NormDiscrete": "indicator.string", "MapValues": "table.values", "FieldColumnPair": "table.values",
    "InlineTable": "table.values", "row": "table.values", "Apply": "function.+", "FieldRef": "function.+", "Lag": "lag.plain",
    "MiningSchema": "regression.sum", "MiningField": "regression.sum", "RegressionModel": "regression.sum",
    "RegressionTable": "regression.sum", "NumericPredictor": "regression.sum", "CategoricalPredictor": "regression.sum",
    "PredictorTerm": "regression.term", "Output": "output.probability", "OutputField": "output.probability", "Value": "output.probability",
    "Targets": "targets.min-max", "Target": "targets.min-max", "TargetValue": "targets.default", "TreeModel": "tree.classes",
    "Node": "tree.classes", "ScoreDistribution": "tree.classes", "SimplePredicate": "tree.classes", "CompoundPredicate": "tree.classes",
    "SimpleSetPredicate": "tree.classes", "Header": "function.+",
}
_BASES = {**function_classes.CLASSES, **expression_classes.CLASSES, **date_classes.CLASSES, **model_classes.SCORED, **tree_classes.SCORED}
_SHARED = {**function_classes.CLASSES, **expression_classes.CLASSES, **date_classes.CLASSES}


def extended(element, base):
    """A trial of another class, with an Extension as the first child of every element of this name."""
    def make(draw, road, count):
        trial = _BASES[base](draw, road, count)
        text = re.sub(rf"<{element}((?: [^<>]*?)?)/>", rf"<{element}\1>{EXTENSION}</{element}>", trial.text)
        trial.text = re.sub(rf"<{element}((?: [^<>]*?)?)>(?!<Extension)", rf"<{element}\1>{EXTENSION}", text)
        return trial
    return make


def calls(fields, *expressions, cells=None):
    """Expressions over the numbers a, b and the text s."""
    def make(draw, road, count):
        rows = cells(draw, count) if cells else expression_classes.cells(draw, count, 0.1, a="double", b="double", s="string")
        return of_expressions(road, fields, expressions, rows)
    return make


A, S = data_field("a"), data_field("s", "string")


def raw(text, type_="double"):
    return f'<Constant dataType="{type_}">{text}</Constant>'


def words(*choices):
    return lambda draw, count: [{"s": draw.choice(choices)} for _ in range(count)]


def _mapped(*rows, **more):
    return tag("MapValues", tag("FieldColumnPair", field="s", column="k"), tag("InlineTable", *(
        f"<row><k>{key}</k><v>{value}</v></row>" for key, value in rows)), outputColumn="v", dataType="string", **more)


def listed(type_):
    """A field that lists values of its type, of which a case has one or another."""
    def make(draw, _road, count):
        values = list(dict.fromkeys(draw.of_type(type_) for _ in range(3)))
        field = data_field("e", type_, "ordinal", *(tag("Value", value=each) for each in values))
        sums = [tag("RegressionTable", *(tag("CategoricalPredictor", name="e", value=each, coefficient=place + 1)
                                         for place, each in enumerate(values)), intercept="0")]
        rows = [{"e": draw.choice((*values, draw.of_type(type_)))} for _ in range(count)]
        return Trial(document(Parts([field], model=regression_model(["e"], tables=sums))), rows)
    return make


ODD = ("0", "-0", "1e308", "-1e308", "1e-320", "5e-324", "123456789012345678", "0.1", "1E5", "-.5", "+3")


def odd_cells(draw, count):
    return [{"a": draw.choice((draw.choice(ODD), repr(draw.odd_number())))} for _ in range(count)]


def deep(draw, road, count):
    """An Apply nested a thousand deep."""
    text = ref("a")
    for _ in range(1000):
        text = apply("+", text, const("1"))
    return of_expressions(road, [A], [("double", text)], [{"a": write(draw.number())} for _ in range(min(count, 5))])


def missing_word(draw, road, count):
    field = data_field("a", "double", None, tag("Value", value="NA", property="missing"), tag("Value", value="-1", property="missing"))
    rows = [{"a": draw.choice(("NA", "-1", "-1.0", "2", "3.5", ""))} for _ in range(count)]
    return of_expressions(road, [field], [("double", apply("+", ref("a"), const("1"))), ("double", ref("a", mapMissingTo="9"))], rows)


def array(text, n, type_="string"):
    """A set of a tree, with its values written so."""
    def make(draw, _road, count):
        members = tag("Array", text, type=type_, n=n)
        nodes = (tag("Node", tag("SimpleSetPredicate", members, field="s", booleanOperator="isIn"), score="1"), tag("Node", "<True/>", score="2"))
        model = tag("TreeModel", tag("MiningSchema", tag("MiningField", name="s")), tag("Node", "<True/>", *nodes), functionName="regression")
        return Trial(document(Parts([S], model=model)), words("a", "b", "c", "two words")(draw, count))
    return make


def twin_values(draw, _road, count):
    """A field that lists values which differ by blanks at their end."""
    field = data_field("s", "string", None, *(tag("Value", value=each) for each in ("a", "a ", "b")))
    sums = [tag("RegressionTable", tag("CategoricalPredictor", name="s", value="a", coefficient="1"),
                tag("CategoricalPredictor", name="s", value="a ", coefficient="2"), intercept="0")]
    return Trial(document(Parts([field], model=regression_model(["s"], tables=sums))), words("a", "a ", "b")(draw, count))


def number_form(text, value_of=None):
    """A coefficient that is written like this."""
    def make(draw, _road, count):
        sums = [tag("RegressionTable", f'<NumericPredictor name="a" coefficient="{text}"/>', intercept="0")]
        rows = [{"a": write(draw.number())} for _ in range(count)]
        return Trial(document(Parts([A], model=regression_model(["a"], tables=sums))), rows)
    return make


def cell_form(form):
    """Cells of numbers in another form."""
    def make(draw, _road, count):
        sums = [tag("RegressionTable", tag("NumericPredictor", name="a", coefficient="1"), intercept="0")]
        rows = [{"a": form % draw.randint(-50, 50)} for _ in range(count)]
        return Trial(document(Parts([A], model=regression_model(["a"], tables=sums))), rows)
    return make


def target_optype(draw, _road, count):
    target = data_field("y", "integer", "categorical")
    aim = tag("Targets", tag("Target", field="y", optype="continuous", rescaleFactor="2"))
    sums = [tag("RegressionTable", tag("NumericPredictor", name="a", coefficient="1"), intercept="0")]
    model = regression_model(["a"], tables=sums, target="y", targets=aim)
    return Trial(document(Parts([A, target], model=model)), [{"a": str(draw.randint(-9, 9))} for _ in range(count)])


def prefixed(draw, road, count):
    """Names with a prefix of the namespace."""
    trial = function_classes.CLASSES["function.+"](draw, road, count)
    trial.text = re.sub(r"<(/?)([A-Z])", r"<\1p:\2", trial.text).replace("xmlns=", "xmlns:p=")
    return trial


def columns(key, result, in_cells=""):
    """A table whose columns are named so, with a prefix in front of its cells."""
    names = [name.rpartition(":")[2] for name in (key, result)]
    row = "".join(f"<{in_cells}{name}>{cell}</{in_cells}{name}>" for name, cell in zip(names, ("a", "hit")))
    mapped = tag("MapValues", tag("FieldColumnPair", field="s", column=key), tag("InlineTable", f"<row>{row}</row>"),
                 outputColumn=result, dataType="string", defaultValue="no")

    def make(draw, road, count):
        trial = calls([S], ("string", mapped), cells=words("a", "b"))(draw, road, count)
        trial.text = trial.text.replace("xmlns=", 'xmlns:d="http://example.org/data" xmlns=', 1)
        return trial
    return make


CLASSES = {
    **{f"extension.{element}": extended(element, base) for element, base in EXTENDED.items() if base in _SHARED},
    "xml.comment-in-constant": calls([A], ("double", apply("+", ref("a"), raw("1<!-- - -->2")))),
    "xml.comment-in-cell": calls([S], ("string", _mapped(("a<!-- x -->b", "hi<!-- y -->t"), defaultValue="no")),
                                 cells=words("ab", "a", "b")),
    "xml.comment-between": calls([A], ("double", "<Apply function=\"+\"><!-- left --><FieldRef field=\"a\"/><!-- right -->"
                                                 "<Constant>1</Constant></Apply>")),
    "xml.cdata-in-constant": calls([S], ("string", apply("concat", ref("s"), raw("<![CDATA[<&>]]>", "string"))), cells=words("ab", "a")),
    "xml.entities": calls([S], ("string", apply("concat", ref("s"), raw("&lt;&amp;&#233;", "string"))), cells=words("ab", "a")),
    "xml.instruction": calls([A], ("double", '<Apply function="+"><?note x?><FieldRef field="a"/><Constant>1</Constant></Apply>')),
    "xml.prefix": prefixed, "xml.prefixed-columns": columns("d:k", "d:v", "d:"), "xml.prefixed-cells": columns("k", "v", "d:"),
    "xml.columns-beyond-ascii": columns("größe", "weiß"),
    "lawful.constant-5.": calls([A], ("double", apply("+", ref("a"), raw("5.")))),
    "lawful.constant-line-breaks": calls([A], ("double", apply("+", ref("a"), raw("\n  5\n")))),
    "lawful.constant-plus": calls([A], ("double", apply("+", ref("a"), raw("+5")))),
    "lawful.constant-empty": calls([S], ("string", apply("concat", ref("s"), raw("", "string"))), cells=words("ab", "a")),
    "lawful.constants-alone": calls([A], ("double", apply("max", const("3"), const("4"))), ("double", apply("+", const("3"), const("4")))),
    "lawful.number-as-text": calls([A], ("string", ref("a"))),
    "lawful.text-as-number": calls([S], ("double", ref("s")), cells=words("1", "2.5", "-3e2", "")),
    "lawful.integer-as-number": calls([data_field("a", "integer")], ("double", ref("a")), cells=lambda draw, count: expression_classes.cells(draw, count, a="integer")),
    "lawful.odd-numbers": calls([A], ("double", ref("a")), ("double", apply("*", ref("a"), const("1"))), cells=odd_cells),
    "lawful.nested-1000": deep,
    "lawful.missing-word-of-number": missing_word,
    "lawful.table-key-of-no-number": calls([A], ("string", _mapped(("1", "x"), ("one", "y"), ("2.0", "z"), defaultValue="no").replace(
        'field="s"', 'field="a"')), cells=lambda draw, count: [{"a": draw.choice(("1", "2", "3", "one"))} for _ in range(count)]),
    "lawful.table-row-twice": calls([S], ("string", _mapped(("a", "x"), ("b", "y"), ("a", "x"))), cells=words("a", "b", "c")),
    "lawful.table-blanks": calls([S], ("string", _mapped(("a", "x"), ("a ", "y"), (" a", "z"))), cells=words("a", "a ", " a")),
    "lawful.indicator-blanks": calls([S], ("double", tag("NormDiscrete", field="s", value="a ")), cells=words("a", "a ", " a")),
    "lawful.equal-blanks": calls([S], ("double", apply("if", apply("equal", ref("s"), const("a", "string")), const("1"), const("0"))),
                                 cells=words("a", "a ", " a", "A")),
}
SCORED = {
    **{f"extension.{element}": extended(element, base) for element, base in EXTENDED.items() if base not in _SHARED},
    **{f"lawful.listed-{type_}": listed(type_) for type_ in ("date", "time", "dateTime", "integer", "boolean")},
    "lawful.array": array('a b "two words"', 3), "lawful.array-count": array("a b", 5), "lawful.array-without-count": array("a b", None),
    "lawful.array-twice": array("a b a", 3), "lawful.array-line-breaks": array("\n a\n b\n", 2),
    "lawful.values-by-blanks": twin_values, "lawful.target-optype": target_optype,
    **{f"lawful.coefficient-{name}": number_form(text) for name, text in
       (("5.", "5."), (".5", ".5"), ("exponent", "5e-1"), ("line-break", "&#10;5 "), ("plus", "+5"), ("zeros", "0005"))},
    **{f"lawful.cell-{name}": cell_form(form) for name, form in (("5.", "%d."), ("exponent", "%de0"), ("blanks", " %d "), ("plus-zero", "%d.000"))},
}
