r"""Functions of texts.

Positions and lengths count characters (code points), from 1. Regular expressions find a match anywhere in the text.

Decision: trimBlanks takes off white space at both ends.
Decision: replace replaces every match; "$1" in the replacement is the first group, with one digit, and "\$" and "\\" are a
dollar and a backslash. A group that the pattern doesn't have is outside the domain, as a pattern is that is none.
Decision: a substring that begins before the first character or has a negative length is outside the domain; one that
reaches beyond the end stops there. Positions and lengths lose their fractions; infinite ones are outside the domain.
Decision: formatNumber knows d, i, u, x, X, o for the number without its fraction, e, E, f, F, g, G, s for the text of the
number, and "%%"; lengths as in "%ld" say nothing, other letters are outside the domain, and so are widths above 4096.
"""
import math
import re
from .values import Value, number, text_of, whole

WIDEST = 4096


def _text(value):
    return Value("string", value)


def _substring(arguments):
    text, start, length = text_of(arguments[0]), whole(arguments[1]), whole(arguments[2])
    if start < 1 or length < 0:
        raise ValueError("substring")
    return _text(text[start - 1:start - 1 + length])


def compiled(pattern, flags=0):
    try:
        return re.compile(pattern, flags)
    except re.error as failure:
        raise ValueError(pattern) from failure


def expanded(match, replacement):
    """A replacement with the groups of a match in it."""
    def part(found):
        if found.group(1):
            return found.group(1)
        if int(found.group(2)) > match.re.groups:
            raise ValueError(replacement)
        return match.group(int(found.group(2))) or ""
    return re.sub(r"\\([\\$])|\$([0-9])", part, replacement)


def _replace(arguments):
    text, pattern, replacement = (text_of(each) for each in arguments)
    return _text(compiled(pattern).sub(lambda match: expanded(match, replacement), text))


_CONVERSION = re.compile(r"%(?P<flags>[-+ 0#]*)(?P<width>[0-9]*)(?:\.(?P<precision>[0-9]*))?(?:hh|h|ll|l|L|q|j|z|t)?"
                         r"(?P<letter>[a-zA-Z%])")


def _format_number(arguments):
    """The pattern of printf; a whole number is asked for by d, i, u, x, o and X."""
    def convert(match):
        flags, width, precision, letter = match.group("flags", "width", "precision", "letter")
        if letter == "%":
            return "%"
        if int(width or 0) > WIDEST or int(precision or 0) > WIDEST:
            raise ValueError(match.group(0))
        places = "" if precision is None else "." + (precision or "0")
        if letter in "diuxXo":
            flags = flags.replace("0", "") if places else flags
            letter = "d" if letter in "iu" else letter
            flags = flags.replace("#", "") if whole(arguments[0]) == 0 else flags
            digits = f"%{flags}{width}{places}{letter}" % whole(arguments[0])
            return digits.replace("0o", "0") if letter == "o" else digits
        if letter == "s":
            number(arguments[0])
            return f"%{flags.replace('0', '')}{width}{places}s" % text_of(arguments[0])
        if letter not in "eEfFgG":
            raise ValueError(match.group(0))
        value = float(number(arguments[0]))
        flags = flags if math.isfinite(value) else flags.replace("0", "")
        return f"%{flags}{width}{places}{letter}" % value
    return _text(_CONVERSION.sub(convert, text_of(arguments[1])))


def _matches(arguments):
    return Value("boolean", compiled(text_of(arguments[1])).search(text_of(arguments[0])) is not None)


FUNCTIONS = {
    "uppercase": lambda arguments: _text(text_of(arguments[0]).upper()),
    "lowercase": lambda arguments: _text(text_of(arguments[0]).lower()),
    "stringLength": lambda arguments: Value("integer", len(text_of(arguments[0]))),
    "substring": _substring,
    "trimBlanks": lambda arguments: _text(text_of(arguments[0]).strip(" \t\r\n")),
    "concat": lambda arguments: _text("".join(text_of(each) for each in arguments)),
    "replace": _replace,
    "matches": _matches,
    "formatNumber": _format_number,
}
