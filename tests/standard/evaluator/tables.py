"""Expressions by tables: NormContinuous, NormDiscrete, Discretize, MapValues.

Decision: an outlier under outliers="asMissingValues" is missing; mapMissingTo speaks of the input.
Decision: a value that equals two points of a NormContinuous takes the segment that begins there.
Decision: in MapValues a missing input without mapMissingTo is missing; defaultValue is for values that no row has.
Decision: of several rows that match the first counts.
Decision: the prefix of a column's name plays no part, as that of a cell doesn't.
"""
from .result_types import replacement
from .values import MISSING, NotOfType, Value, constant, equal, number, number_of, read


def _norm_continuous(element, env):
    value = env.field(element.get("field"))
    if value is MISSING:
        return _mapped(element, "mapMissingTo", "double")
    points = [(float(each.get("orig")), float(each.get("norm"))) for each in element if each.tag == "LinearNorm"]
    x, outliers = float(number(value)), element.get("outliers", "asIs")
    if not points[0][0] <= x <= points[-1][0]:
        if outliers == "asMissingValues":
            return MISSING
        if outliers == "asExtremeValues":
            return Value("double", points[0][1] if x < points[0][0] else points[-1][1])
    place = 0
    while place < len(points) - 2 and x >= points[place + 1][0]:
        place += 1
    (left, low), (right, high) = points[place:place + 2]
    return Value("double", low + (x - left) / (right - left) * (high - low))


def stated(text, type_, wanted):
    """The value of a text: of the type that is stated beside it, else of the one that it is wanted for, if it is one."""
    return constant(text, type_) if type_ is not None else replacement(text, wanted)


def _mapped(element, attribute, type_=None, wanted=None):
    return stated(element.get(attribute), type_, wanted) if attribute in element.attrib else MISSING


def same_as_text(value, text):
    """Whether a value is the one that a text of the document writes, in the value's own type."""
    try:
        return equal(value, read(text, value.type))
    except NotOfType:
        return False


def _norm_discrete(element, env):
    value = env.field(element.get("field"))
    if value is MISSING:
        return _mapped(element, "mapMissingTo", "double")
    return Value("double", 1.0 if same_as_text(value, element.get("value")) else 0.0)


def inside(interval, x):
    """Whether a number lies in an Interval."""
    closure = interval.get("closure")
    left, right = interval.get("leftMargin"), interval.get("rightMargin")
    if left is not None and not (x > number_of(left) or closure.startswith("closed") and x == number_of(left)):
        return False
    return right is None or x < number_of(right) or closure.endswith("Closed") and x == number_of(right)


def _discretize(element, env, wanted):
    value, type_ = env.field(element.get("field")), element.get("dataType")
    if value is MISSING:
        return _mapped(element, "mapMissingTo", type_, wanted)
    x = number(value)
    for each in element:
        if each.tag == "DiscretizeBin" and inside(next(child for child in each if child.tag == "Interval"), x):
            return stated(each.get("binValue"), type_, wanted)
    return _mapped(element, "defaultValue", type_, wanted)


def rows_of(element):
    """The rows of an InlineTable as dictionaries of texts; the namespace of a cell plays no part."""
    table = next((child for child in element if child.tag == "InlineTable"), ())
    return [{cell.tag: cell.text or "" for cell in row} for row in table if row.tag == "row"]


def _local(name):
    return name.rpartition(":")[2]


def _map_values(element, env, wanted):
    type_ = element.get("dataType")
    pairs = [(env.field(each.get("field")), _local(each.get("column"))) for each in element if each.tag == "FieldColumnPair"]
    if any(value is MISSING for value, _ in pairs):
        return _mapped(element, "mapMissingTo", type_, wanted)
    for row in rows_of(element):
        if all(column in row and same_as_text(value, row[column]) for value, column in pairs):
            return stated(row[_local(element.get("outputColumn"))], type_, wanted)
    return _mapped(element, "defaultValue", type_, wanted)


EXPRESSIONS = {"NormContinuous": _norm_continuous, "NormDiscrete": _norm_discrete, "Discretize": _discretize,
               "MapValues": _map_values}
