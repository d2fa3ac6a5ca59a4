"""Typed values, how they are read from text, cast and compared.

A value is a Value of one of the standard's data types, or MISSING. Numbers are IEEE doubles or Python integers; a date is
a count of days and a dateTime one of seconds since 1970, a time of seconds since midnight; the counting types hold the
number that stands in the document or the cell.

Decision: a number becomes a text by the shortest digits that read back, without point where it is integral.
Decision: a number that isn't integral is no integer; it can't be cast to one.
Decision: "1" and "0" are booleans as "true" and "false" are, which may also be written "TRUE", "True", "FALSE" and "False".
"""
import math
import re
import struct
from . import dates

MISSING = None
NUMBERS = ("integer", "float", "double")
_NUMBER = re.compile(r"[+-]?(\d+(\.\d*)?|\.\d+)([eE][+-]?\d+)?\Z", re.ASCII)
_INTEGER = re.compile(r"[+-]?\d+\Z", re.ASCII)
_BLANKS = " \t\r\n"
_TRUE, _FALSE = ("true", "TRUE", "True", "1"), ("false", "FALSE", "False", "0")


class NotOfType(ValueError):
    """A text or a value that isn't one of the wanted type."""


class Unsupported(Exception):
    """Something the evaluator doesn't know: a defect of the document or of the generator, never a result."""


class Value:
    """A value with its data type. invalid tells a value that its field's definition excludes and that is used as it is."""
    __slots__ = ("type", "data", "invalid")

    def __init__(self, type_, data, invalid=False):
        self.type, self.data, self.invalid = type_, data, invalid

    def __repr__(self):
        return f"{self.type}({self.data!r})"


def is_number_type(type_):
    return type_ in NUMBERS or dates.is_counting(type_)


def number_of(text):
    """The number that a text writes: an int where it has neither point nor exponent."""
    text = text.strip(_BLANKS)
    if _INTEGER.match(text):
        return int(text)
    if _NUMBER.match(text):
        return float(text)
    raise NotOfType(text)


def read(text, type_):
    """The value of a type that a text of a document or a cell writes."""
    if type_ == "string":
        return Value(type_, text)
    stripped = text.strip(_BLANKS)
    if type_ == "boolean":
        if stripped not in _TRUE + _FALSE:
            raise NotOfType(text)
        return Value(type_, stripped in _TRUE)
    if type_ in dates.MOMENTS:
        return Value(type_, dates.read(stripped, type_))
    return cast(Value("double", number_of(stripped)), type_)


def constant(text, type_=None):
    """The value of a text whose type may be left open: then a number where it writes one, else a text."""
    if type_ is not None:
        return read(text, type_)
    try:
        number = number_of(text)
    except NotOfType:
        return Value("string", text)
    return Value("integer" if isinstance(number, int) else "double", number)


def text_of(value):
    """A value as a text, as a cast to string gives it."""
    if value.type == "string":
        return value.data
    if value.type == "boolean":
        return "true" if value.data else "false"
    if value.type in dates.MOMENTS:
        return dates.write(value.data, value.type)
    number = value.data
    if isinstance(number, float) and math.isfinite(number) and number == int(number) and abs(number) < 1e16:
        return str(int(number))
    return repr(number) if isinstance(number, float) else str(number)


def number(value):
    """The number of a value for arithmetic; a boolean is 1 or 0, a text is read."""
    if value.type == "boolean":
        return int(value.data)
    if value.type == "string":
        return number_of(value.data)
    return value.data


def whole(value):
    """The whole number that is left of a value without its fraction."""
    data = number(value)
    if not math.isfinite(data):
        raise NotOfType(repr(value))
    return int(data)


def cast(value, type_):
    """A value as one of another type; NotOfType where there is none."""
    if value is MISSING or value.type == type_:
        return value
    if type_ == "string":
        return Value(type_, text_of(value), value.invalid)
    if value.type == "string":
        return read(value.data, type_)
    if value.type in dates.ALL and type_ in dates.ALL:
        return Value(type_, dates.convert(value.data, value.type, type_))
    if type_ in dates.MOMENTS or value.type in dates.MOMENTS:
        raise NotOfType(f"{value!r} as {type_}")
    if type_ == "boolean":
        if number(value) not in (0, 1):
            raise NotOfType(repr(value))
        return Value(type_, bool(number(value)))
    data = number(value)
    if type_ == "integer" or dates.is_counting(type_):
        if math.isfinite(data) and data == int(data):
            return Value(type_, int(data), value.invalid)
        if type_ == "integer":
            raise NotOfType(repr(value))
        return Value(type_, data, value.invalid)
    return Value(type_, float(data), value.invalid)


def single(value):
    """A number as the nearest one of single precision."""
    try:
        data = struct.unpack("f", struct.pack("f", value.data))[0]
    except OverflowError:
        data = math.copysign(math.inf, value.data)
    return Value(value.type, data, value.invalid)


def _common(left, right):
    """Both values as data of one kind, so that Python's comparison is the standard's."""
    if left.type == right.type:
        return left.data, right.data
    if "string" in (left.type, right.type):
        other = left.type if right.type == "string" else right.type
        try:
            return cast(left, other).data, cast(right, other).data
        except NotOfType:
            return text_of(left), text_of(right)
    if left.type in dates.ALL and right.type in dates.ALL:
        return dates.common(left.data, left.type, right.data, right.type)
    return number(left), number(right)


def equal(left, right):
    """Whether two values, none of them missing, are the same. Texts are the same when all their characters are."""
    left, right = _common(left, right)
    return left == right


def order(left, right):
    """Below 0, 0 or above 0, as the left value is less than, equal to or greater than the right one. False is below true,
    texts go by their characters."""
    left, right = _common(left, right)
    return (left > right) - (left < right)
