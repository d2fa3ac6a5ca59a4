"""The built-in functions of PMML 4.4, by name.

Each entry takes a list of Values and gives a Value or MISSING. The rules that the standard states for all of them are
applied in call(): an argument that is missing makes the result missing, but for the functions in TAKES_MISSING. A result
outside the domain of a function raises Undefined, which the Apply turns into what its invalidValueTreatment says.

Decision: "/" is the division of real numbers for integers too; "+", "-" and "*" of integers stay integers.
Decision: division by zero and the poles of ln and log10 are outside the domain, as is what IEEE has as not a number.
Decision: round takes the larger of two integers that are equally near, of negative numbers too.
Decision: isValid is false for a missing argument, isNotValid true.
Decision: "if" with a missing condition is missing; the branch that isn't taken plays no part.
Decision: functions of numbers read texts as numbers; min, max and threshold compare the numbers.
Decision: 0 to a power below 0 is infinite; what overflows is infinite with the sign of the exact result.
Decision: an argument of a logical function that is neither true nor false is outside the domain.
Decision: isIn with a missing value to look for is missing; missing members of the list are passed over.
"""
import math
from . import dates, distributions, logic, texts
from .values import MISSING, NUMBERS, NotOfType, Unsupported, Value, equal, number, order, text_of, whole


class Undefined(Exception):
    """The arguments are outside the domain of a function."""


def _double(value):
    return Value("double", value)


def _boolean(value):
    return MISSING if value is None else Value("boolean", bool(value))


def _same_kind(arguments, result):
    """An integer where all arguments are."""
    if all(each.type == "integer" for each in arguments):
        return Value("integer", int(result))
    return _double(float(result))


def _arithmetic(function):
    def apply(arguments):
        left, right = arguments
        return _same_kind(arguments, function(number(left), number(right)))
    return apply


def _real(function):
    """A function of real numbers whose result is a double."""
    def apply(arguments):
        return _double(function(*(float(number(each)) for each in arguments)))
    return apply


def _rounding(function):
    """A function that gives the integer that belongs to a number."""
    def apply(arguments):
        value = number(arguments[0])
        if isinstance(value, int) or not math.isfinite(value):
            return _same_kind(arguments, value)
        return _double(float(function(value)))
    return apply


def _divide(left, right):
    if right == 0:
        raise Undefined("/")
    return left / right


def _modulo(left, right):
    if right == 0:
        raise Undefined("modulo")
    return left % right


def _round(value):
    """The nearest integer; the larger of two."""
    below = math.floor(value)
    return below + (value - below >= 0.5)


def _power(base, exponent):
    try:
        return math.pow(base, exponent)
    except ValueError:
        if base == 0:
            return math.inf
        raise
    except OverflowError:
        return -math.inf if base < 0 and exponent % 2 == 1 else math.inf


def _hyperbolic_sine(value):
    try:
        return math.sinh(value)
    except OverflowError:
        return math.copysign(math.inf, value)


def _extreme(sign):
    def apply(arguments):
        return _same_kind(arguments, max((number(each) for each in arguments), key=lambda each: each * sign))
    return apply


def _total(arguments):
    return _same_kind(arguments, sum(number(each) for each in arguments))


def _product(arguments):
    return _same_kind(arguments, math.prod(number(each) for each in arguments))


def _average(arguments):
    return _double(float(sum(number(each) for each in arguments)) / len(arguments))


def _median(arguments):
    ordered = sorted(float(number(each)) for each in arguments)
    middle = len(ordered) // 2
    return _double(ordered[middle] if len(ordered) % 2 else (ordered[middle - 1] + ordered[middle]) / 2)


def _present(function):
    """Aggregates ignore missing arguments; of missing ones alone the result is missing."""
    def apply(arguments):
        arguments = [each for each in arguments if each is not MISSING]
        return function(arguments) if arguments else MISSING
    return apply


def _threshold(arguments):
    return Value("integer", int(number(arguments[0]) > number(arguments[1])))


def _comparison(test):
    return lambda arguments: _boolean(test(order(arguments[0], arguments[1])))


def truth(value):
    """A Value as a truth value of three-valued logic."""
    if value is MISSING:
        return None
    if value.type == "boolean":
        return value.data
    if value.type in NUMBERS and value.data in (0, 1):
        return bool(value.data)
    if value.type == "string" and value.data in ("true", "false"):
        return value.data == "true"
    raise NotOfType(repr(value))


def _logical(function):
    return lambda arguments: _boolean(function(truth(each) for each in arguments))


def _if(arguments):
    condition = truth(arguments[0])
    if condition is None:
        return MISSING
    if condition:
        return arguments[1]
    return arguments[2] if len(arguments) > 2 else MISSING


def _is_in(arguments):
    wanted, members = arguments[0], arguments[1:]
    if wanted is MISSING:
        return None
    return any(equal(wanted, member) for member in members if member is not MISSING)


def _valid(value):
    return value is not MISSING and not value.invalid


def _integer(value):
    return Value("integer", value)


TAKES_MISSING = {
    "min": _present(_extreme(-1)), "max": _present(_extreme(1)), "sum": _present(_total), "avg": _present(_average),
    "median": _present(_median), "product": _present(_product),
    "isMissing": lambda arguments: _boolean(arguments[0] is MISSING),
    "isNotMissing": lambda arguments: _boolean(arguments[0] is not MISSING),
    "isValid": lambda arguments: _boolean(_valid(arguments[0])),
    "isNotValid": lambda arguments: _boolean(not _valid(arguments[0])),
    "and": _logical(logic.all_of), "or": _logical(logic.any_of),
    "not": lambda arguments: _boolean(logic.negation(truth(arguments[0]))),
    "if": _if,
    "isIn": lambda arguments: _boolean(_is_in(arguments)),
    "isNotIn": lambda arguments: _boolean(logic.negation(_is_in(arguments))),
}

NUMERIC = {
    "+": _arithmetic(lambda left, right: left + right), "-": _arithmetic(lambda left, right: left - right),
    "*": _arithmetic(lambda left, right: left * right), "/": _real(_divide),
    "modulo": _arithmetic(_modulo), "threshold": _threshold,
    "log10": _real(math.log10), "ln": _real(math.log), "ln1p": _real(math.log1p),
    "exp": _real(math.exp), "expm1": _real(math.expm1), "sqrt": _real(math.sqrt),
    "abs": lambda arguments: _same_kind(arguments, abs(number(arguments[0]))),
    "pow": _real(_power), "hypot": _real(math.hypot),
    "floor": _rounding(math.floor), "ceil": _rounding(math.ceil), "round": _rounding(_round), "rint": _rounding(round),
    **{name: _real(getattr(math, name)) for name in ("sin cos tan asin acos atan cosh tanh atan2").split()},
    "sinh": _real(_hyperbolic_sine),
    "normalCDF": _real(distributions.normal_cdf), "normalPDF": _real(distributions.normal_pdf),
    "normalIDF": _real(distributions.normal_idf), "stdNormalCDF": _real(distributions.std_normal_cdf),
    "stdNormalPDF": _real(distributions.std_normal_pdf), "stdNormalIDF": _real(distributions.std_normal_idf),
    "erf": _real(math.erf),
}

COMPARISONS = {
    "equal": lambda arguments: _boolean(equal(*arguments)), "notEqual": lambda arguments: _boolean(not equal(*arguments)),
    "lessThan": _comparison(lambda result: result < 0), "lessOrEqual": _comparison(lambda result: result <= 0),
    "greaterThan": _comparison(lambda result: result > 0), "greaterOrEqual": _comparison(lambda result: result >= 0),
}

ORDERS = ("lessThan", "lessOrEqual", "greaterThan", "greaterOrEqual")

DATES = {
    "dateDaysSinceYear": lambda arguments: _integer(dates.days_since_year(arguments[0], whole(arguments[1]))),
    "dateSecondsSinceYear": lambda arguments: _integer(dates.seconds_since_year(arguments[0], whole(arguments[1]))),
    "dateSecondsSinceMidnight": lambda arguments: _integer(dates.seconds_since_midnight(arguments[0])),
    "formatDatetime": lambda arguments: Value("string", dates.format_datetime(arguments[0], text_of(arguments[1]))),
}

# How many arguments a function takes, where that isn't two: the least and the most, None for any number.
_SINGLE = """isMissing isNotMissing isValid isNotValid not log10 ln ln1p exp expm1 sqrt abs floor ceil round rint sin cos tan asin
acos atan sinh cosh tanh stdNormalCDF stdNormalPDF stdNormalIDF erf dateSecondsSinceMidnight uppercase lowercase stringLength
trimBlanks""".split()
ARITIES = {**{name: (1, 1) for name in _SINGLE},
           **{name: (1, None) for name in ("min", "max", "sum", "avg", "median", "product")},
           **{name: (2, None) for name in ("and", "or", "isIn", "isNotIn", "concat")}, "if": (2, 3),
           **{name: (3, 3) for name in ("normalCDF", "normalPDF", "normalIDF", "substring", "replace")}}

NEEDS_ALL = {**NUMERIC, **COMPARISONS, **DATES, **texts.FUNCTIONS}


def names():
    return sorted({*TAKES_MISSING, *NEEDS_ALL})


def call(name, arguments):
    """The result of a built-in function; Undefined where the arguments are outside its domain."""
    least, most = ARITIES.get(name, (2, 2))
    if len(arguments) < least or most is not None and len(arguments) > most:
        raise Unsupported(f"{name} of {len(arguments)} arguments")
    if name not in TAKES_MISSING and name not in NEEDS_ALL:
        raise Unsupported(f"function {name}")
    if name in NEEDS_ALL and any(each is MISSING for each in arguments):
        return MISSING
    try:
        result = {**TAKES_MISSING, **NEEDS_ALL}[name](arguments)
    except OverflowError:
        return _double(math.inf)
    except (ValueError, ZeroDivisionError) as failure:
        raise Undefined(name) from failure
    if result is not MISSING and isinstance(result.data, float) and math.isnan(result.data):
        raise Undefined(name)
    return result
