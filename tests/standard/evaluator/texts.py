"""Functions of texts.

Positions and lengths count characters (code points), from 1. Regular expressions find a match anywhere in the text.

Decision: trimBlanks takes off white space at both ends.
Decision: replace replaces every match; "$1" in the replacement is the first group.
Decision: a substring that begins before the first character or has a negative length is outside the domain; one that
reaches beyond the end stops there.
"""
import re
from .values import Value, number, text_of


def _text(value):
    return Value("string", value)


def _substring(arguments):
    text, start, length = text_of(arguments[0]), int(number(arguments[1])), int(number(arguments[2]))
    if start < 1 or length < 0:
        raise ValueError("substring")
    return _text(text[start - 1:start - 1 + length])


def _replace(arguments):
    text, pattern, replacement = (text_of(each) for each in arguments)
    return _text(re.sub(pattern, _python_replacement(replacement), text))


def _python_replacement(replacement):
    """$1 as Python writes it, and its backslashes as themselves."""
    return re.sub(r"\$(\d)", r"\\g<\1>", replacement.replace("\\", "\\\\"))


_CONVERSION = re.compile(r"%[-+ 0#]*\d*(\.\d+)?([a-zA-Z%])")


def _format_number(arguments):
    """The pattern of printf; a whole number is asked for by d, i, u, x, o and X."""
    def convert(match):
        if match.group(2) == "%":
            return "%"
        value = number(arguments[0])
        if match.group(2) in "diuxXo":
            return match.group(0).replace("u", "d").replace("i", "d") % int(value)
        return match.group(0) % float(value)
    return _text(_CONVERSION.sub(convert, arguments[1].data))


FUNCTIONS = {
    "uppercase": lambda arguments: _text(text_of(arguments[0]).upper()),
    "lowercase": lambda arguments: _text(text_of(arguments[0]).lower()),
    "stringLength": lambda arguments: Value("integer", len(text_of(arguments[0]))),
    "substring": _substring,
    "trimBlanks": lambda arguments: _text(text_of(arguments[0]).strip(" \t\r\n")),
    "concat": lambda arguments: _text("".join(text_of(each) for each in arguments)),
    "replace": _replace,
    "matches": lambda arguments: Value("boolean", re.search(text_of(arguments[1]), text_of(arguments[0])) is not None),
    "formatNumber": _format_number,
}
