"""The parts of a document as text, and a comparison's case made of them."""
from dataclasses import dataclass, field as attribute
from xml.sax.saxutils import escape, quoteattr


@dataclass
class Trial:
    """A document with its cases. tolerance is relative, 0 for bits; absolute is for what is left of a number near 1. refused names the words of which a refusal has to
    have each, empty where the document has to be read."""
    text: str
    rows: list
    road: str = "score"
    tolerance: float = 0.0
    refused: tuple = ()
    absolute: float = 0.0


@dataclass
class Parts:
    """What a document is made of."""
    fields: list = attribute(default_factory=list)
    derived: list = attribute(default_factory=list)
    functions: list = attribute(default_factory=list)
    local: list = attribute(default_factory=list)
    model: str = ""


def tag(kind, /, *content, **attributes):
    """An element; a trailing underscore of an attribute's name is dropped, None leaves it out."""
    shown = "".join(f" {key.rstrip('_')}={quoteattr(str(value))}" for key, value in attributes.items() if value is not None)
    inside = "".join(content)
    return f"<{kind}{shown}>{inside}</{kind}>" if inside else f"<{kind}{shown}/>"


def data_field(name, type_="double", optype=None, *content):
    optype = optype or ("categorical" if type_ in ("string", "boolean") else "continuous")
    return tag("DataField", *content, name=name, optype=optype, dataType=type_)


def ref(name, **more):
    return tag("FieldRef", field=name, **more)


def const(text, type_=None, **more):
    return tag("Constant", escape(str(text)), dataType=type_, **more)


def apply(name, *arguments, **more):
    return tag("Apply", *arguments, function=name, **more)


def derived(name, type_, *content, optype=None):
    optype = optype or ("categorical" if type_ in ("string", "boolean") else "continuous")
    return tag("DerivedField", *content, name=name, optype=optype, dataType=type_)


def output(name, feature, *content, **more):
    return tag("OutputField", *content, name=name, feature=feature, **more)


def table(columns, rows):
    """An InlineTable of rows of texts."""
    return tag("InlineTable", *(tag("row", *(f"<{name}>{escape(cell)}</{name}>" for name, cell in zip(columns, row)))
                                for row in rows))


def document(parts):
    dictionary = tag("DataDictionary", *parts.fields, numberOfFields=len(parts.fields))
    transformations = tag("TransformationDictionary", *parts.functions, *parts.derived)
    return ('<?xml version="1.0" encoding="UTF-8"?>\n<PMML version="4.4" xmlns="http://www.dmg.org/PMML-4_4"><Header/>'
            f"{dictionary}{transformations}{parts.model}</PMML>")


def schema(names, target=None, mining=()):
    """A MiningSchema: mining holds fields written out, names those without attributes."""
    return tag("MiningSchema", *((tag("MiningField", name=target, usageType="target"),) if target else ()), *mining,
               *(tag("MiningField", name=name) for name in names))


def regression_model(names, outputs=(), tables=None, target=None, mining=(), targets="", local=(), **more):
    more.setdefault("functionName", "regression")
    return tag("RegressionModel", schema(names, target, mining), tag("Output", *outputs) if outputs else "", targets,
               tag("LocalTransformations", *local) if local else "", *(tables or [tag("RegressionTable", intercept="1")]), **more)


def names_of(texts):
    """The names of fields that are written out."""
    return [text.partition('name="')[2].partition('"')[0] for text in texts]


def of_expressions(road, fields, expressions, rows, tolerance=0.0, functions=(), helpers=()):
    """A trial whose columns are expressions: (type, text) each, as derived fields of the dictionary or, on the road of
    score, as output fields that show the derived ones. helpers are derived fields that the expressions use."""
    made = [derived(f"r{place}", type_, text) for place, (type_, text) in enumerate(expressions)]
    parts = Parts(list(fields), [*helpers, *made], list(functions))
    if road == "score":
        shown = [output(f"o{place}", "transformedValue", ref(f"r{place}"), dataType=type_,
                        optype="categorical" if type_ in ("string", "boolean") else "continuous")
                 for place, (type_, _) in enumerate(expressions)]
        parts.model = regression_model(names_of(fields), shown)
    return Trial(document(parts), rows, road, tolerance)
