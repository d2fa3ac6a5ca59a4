"""Expressions: Constant, FieldRef, Apply with DefineFunction, Lag, Aggregate, and those of tables.py and text_index.py.

An environment gives the value of a field (field), its declared type (type), its values in earlier cases (earlier) and the
functions that the document defines (functions).

Apply, in the standard's words: if a mapMissingTo value is specified and any of the input values of the function are
missing, then the function is not applied at all and the mapMissingTo value is returned instead; if a defaultValue is
specified and the function yielded a missing value, then the defaultValue is returned.

Decision: invalidValueTreatment speaks of results outside the domain of a function; whatever it says, such a result is
missing within an expression, and defaultValue replaces it, for there is no case that it could refuse.
Decision: mapMissingTo and defaultValue of Apply are values of the type of the result where the expression says one, and
they write one; else, for the whole of a field, of the field's; else numbers where they write one, and texts. So are a
Constant, the cells of a MapValues and the bins of a Discretize without a type, which are of their field's where they
are the whole of it.
Decision: Lag aggregates ignore missing values and cases before the first; without any value the result is missing, and
stddev is that of a sample, missing for a single value.
Decision: a block of Lag ends where the value of a BlockIndicator changes, and doesn't go on where it comes back.
Decision: lessThan, lessOrEqual, greaterThan and greaterOrEqual with a reference to an ordinal field of texts go by the
order in which it lists them; the other argument counts as a text, and what isn't listed is neither below nor above. Two
fields of different lists have no common order; parameters of defined functions and output fields have none.
Decision: a double or an integer that a field of the type float is made of is rounded to single precision; floats are
elsewhere what a double holds, but to predicates (predicates.py).
Decision: Aggregate has, for a field with one value a case, the value of the case itself as its collection.
"""
import math
import statistics
from . import functions, tables, text_index
from .result_types import of_call, replacement
from .values import MISSING, NotOfType, Unsupported, Value, cast, constant, number, single, text_of

_HANDLERS = {}


def handles(name):
    def register(function):
        _HANDLERS[name] = function
        return function
    return register


_OF_WANTED_TYPE = ("Constant", "Apply", "Discretize", "MapValues")


def evaluate(element, env, wanted=None):
    """The Value of an expression in an environment, or MISSING. wanted is the type of the field that it is the whole of."""
    if element.tag not in _HANDLERS:
        raise Unsupported(element.tag)
    return _HANDLERS[element.tag](element, env, *([wanted] if element.tag in _OF_WANTED_TYPE else []))


def is_expression(element):
    return element.tag in _HANDLERS


def expression_of(element):
    """The one expression among an element's children."""
    found = [child for child in element if is_expression(child)]
    if len(found) != 1:
        raise Unsupported(f"{len(found)} expressions in {element.tag}")
    return found[0]


def as_type(value, type_, is_computed=True):
    """A result in the type that its field declares; one that can't be has no value. What no expression has computed
    stays what a double holds."""
    if value is MISSING or type_ is None:
        return value
    try:
        result = cast(value, type_)
    except NotOfType:
        return MISSING
    return single(result) if is_computed and type_ == "float" and value.type in ("double", "integer") else result


@handles("Constant")
def _constant(element, _env, wanted):
    if element.get("missing") in ("true", "1"):
        return MISSING
    return tables.stated(element.text or "", element.get("dataType"), wanted)


@handles("FieldRef")
def _field_ref(element, env):
    name = element.get("field")
    value = env.field(name)
    if value is MISSING and "mapMissingTo" in element.attrib:
        return constant(element.get("mapMissingTo"), env.type(name))
    return value


@handles("Apply")
def _apply(element, env, wanted):
    arguments = [evaluate(child, env) for child in element if is_expression(child)]
    if "mapMissingTo" in element.attrib and any(each is MISSING for each in arguments):
        return replacement(element.get("mapMissingTo"), of_call(element, env) or wanted)
    name = element.get("function")
    try:
        order = _order([child for child in element if is_expression(child)], env) if name in functions.ORDERS else None
        result = _call(name, arguments, env) if order is None else _by_places(name, arguments, order)
    except (functions.Undefined, NotOfType):
        result = MISSING
    if result is MISSING and "defaultValue" in element.attrib:
        return replacement(element.get("defaultValue"), of_call(element, env) or wanted)
    return result


def _order(elements, env):
    """The texts in the order that a comparison goes by; None where none of the arguments is a field that has one."""
    lists = [env.listed(each.get("field")) for each in elements if each.tag == "FieldRef"]
    orders = [[value.data for value in each] for each in lists if each and each[0].type == "string"]
    return orders[0] if orders and all(each == orders[0] for each in orders) else None


def _by_places(name, arguments, order):
    if any(each is MISSING for each in arguments):
        return MISSING
    texts = [text_of(each) for each in arguments]
    if not all(each in order for each in texts):
        return Value("boolean", False)
    return functions.call(name, [Value("integer", order.index(each)) for each in texts])


def _call(name, arguments, env):
    defined = env.functions.get(name)
    return functions.call(name, arguments) if defined is None else _call_defined(defined, arguments, env)


class _Parameters:
    """The environment inside a defined function: its parameters, and no field."""

    def __init__(self, parameters, arguments, env):
        self.functions = env.functions
        self._types = {each.get("name"): each.get("dataType") for each in parameters}
        self._values = {each.get("name"): as_type(value, each.get("dataType"))
                        for each, value in zip(parameters, arguments, strict=True)}

    def field(self, name):
        return self._values[name]

    def type(self, name):
        return self._types[name]

    def listed(self, _name):
        return None


def _call_defined(defined, arguments, env):
    parameters = [each for each in defined if each.tag == "ParameterField"]
    inside = _Parameters(parameters, arguments, env)
    return as_type(evaluate(expression_of(defined), inside, defined.get("dataType")), defined.get("dataType"))


def _median(values):
    return float(statistics.median(values))


def _deviation(values):
    mean = math.fsum(values) / len(values)
    return math.sqrt(math.fsum((value - mean) ** 2 for value in values) / (len(values) - 1)) if len(values) > 1 else None


_LAGS = {"avg": lambda values: sum(values) / len(values), "max": max, "min": min, "median": _median,
         "product": math.prod, "sum": sum, "stddev": _deviation}


@handles("Lag")
def _lag(element, env):
    count, aggregate = int(element.get("n", "1")), element.get("aggregate", "none")
    blocks = [child.get("field") for child in element if child.tag == "BlockIndicator"]
    earlier = env.earlier(element.get("field"), count, blocks)
    if aggregate == "none":
        return earlier[count - 1] if len(earlier) >= count else MISSING
    values = [number(each) for each in earlier if each is not MISSING]
    result = _LAGS[aggregate](values) if values else None
    return MISSING if result is None else Value("integer" if isinstance(result, int) else "double", result)


@handles("Aggregate")
def _aggregate(element, env):
    value, function = env.field(element.get("field")), element.get("function")
    if function == "count":
        return Value("integer", int(value is not MISSING))
    if function in ("sum", "average", "min", "max"):
        return value
    raise Unsupported(f"Aggregate {function}")


_HANDLERS.update(tables.EXPRESSIONS)


@handles("TextIndex")
def _text_index(element, env):
    term = evaluate(expression_of(element), env)
    return text_index.evaluate(element, env.field(element.get("textField")), term)
