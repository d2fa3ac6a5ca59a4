"""Predicates in three-valued logic: SimplePredicate, SimpleSetPredicate, CompoundPredicate, True, False.

A comparison with a missing value is unknown. Values compare in the field's type: an ordinal field goes by the order of
the values that its definition lists, numbers and dates by their size, those of the type float in single precision, false
is below true.

Decision: of an ordinal field, a value that isn't listed is neither below nor above another.
Decision: a compound surrogate is the first of its predicates that is known.
"""
from . import logic
from .values import MISSING, NUMBERS, NotOfType, Unsupported, Value, equal, order, read, single

PREDICATES = ("SimplePredicate", "SimpleSetPredicate", "CompoundPredicate", "True", "False")


def predicate_of(element):
    return next(child for child in element if child.tag in PREDICATES)


def evaluate(element, env):
    """True, False or None for unknown."""
    if element.tag in ("True", "False"):
        return element.tag == "True"
    if element.tag == "CompoundPredicate":
        return _compound(element, env)
    value = env.field(element.get("field"))
    if element.tag == "SimpleSetPredicate":
        return _set(element, value)
    return _simple(element, value, env.listed(element.get("field")))


def uses_surrogate(element, env):
    """Whether a predicate holds by a surrogate that stood in for one that is unknown."""
    if element.tag != "CompoundPredicate" or element.get("booleanOperator") != "surrogate":
        return False
    return evaluate(element, env) is True and evaluate(next(child for child in element if child.tag in PREDICATES), env) is None


def _compound(element, env):
    results = [evaluate(child, env) for child in element if child.tag in PREDICATES]
    operator = element.get("booleanOperator")
    if operator == "surrogate":
        return next((each for each in results if each is not None), None)
    return {"and": logic.all_of, "or": logic.any_of, "xor": logic.odd_number_of}[operator](results)


def words(array):
    """The values of an Array: parted by blanks, those with blanks between quotes, a quote within as a backslash and it."""
    found, text, place = [], array.text or "", 0
    while place < len(text):
        if text[place].isspace():
            place += 1
        elif text[place] == '"':
            end, word = place + 1, ""
            while text[end] != '"':
                end += text[end] == "\\" and text[end + 1] == '"'
                word += text[end]
                end += 1
            found.append(word)
            place = end + 1
        else:
            end = place
            while end < len(text) and not text[end].isspace():
                end += 1
            found.append(text[place:end])
            place = end
    return found


_INFINITE = {"INF": float("inf"), "-INF": float("-inf"), "Infinity": float("inf"), "-Infinity": float("-inf")}


def _other(value, text):
    """What a predicate compares a value with."""
    return Value(value.type, _INFINITE[text]) if value.type in NUMBERS and text in _INFINITE else read(text, value.type)


def _compared(value):
    """A value as predicates compare it."""
    return single(value) if value.type == "float" else value


def _same(value, text):
    try:
        return equal(_compared(value), _compared(_other(value, text)))
    except NotOfType:
        return False


def _set(element, value):
    if value is MISSING:
        return None
    array = next(child for child in element if child.tag == "Array")
    found = any(_same(value, word) for word in words(array))
    return found if element.get("booleanOperator") == "isIn" else not found


_ORDERS = {"lessThan": lambda result: result < 0, "lessOrEqual": lambda result: result <= 0,
           "greaterThan": lambda result: result > 0, "greaterOrEqual": lambda result: result >= 0}


def _simple(element, value, listed):
    operator, text = element.get("operator"), element.get("value")
    if operator in ("isMissing", "isNotMissing"):
        return (value is MISSING) == (operator == "isMissing")
    if value is MISSING:
        return None
    if operator in ("equal", "notEqual"):
        return _same(value, text) == (operator == "equal")
    if operator not in _ORDERS:
        raise Unsupported(operator)
    other = _other(value, text)
    if listed is not None:
        places = [next((place for place, each in enumerate(listed) if equal(each, one)), None) for one in (value, other)]
        return None not in places and _ORDERS[operator](places[0] - places[1])
    return _ORDERS[operator](order(_compared(value), _compared(other)))
