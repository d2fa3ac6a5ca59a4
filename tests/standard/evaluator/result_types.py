"""The types that expressions say their results have, before there is a case.

Decision: a constant without a type says the type that its text writes, a missing one none; beside others it has theirs,
and what consists of such alone is a number to what it stands in.
Decision: integers and real numbers beside one another are real numbers; any other two types have none in common.
"""
from . import functions, texts
from .values import NUMBERS, NotOfType, constant, read

_SILENT = object()
_TEXTS = {"uppercase", "lowercase", "substring", "trimBlanks", "concat", "replace", "formatNumber", "formatDatetime"}
_TRUTHS = {*functions.COMPARISONS, "isMissing", "isNotMissing", "isValid", "isNotValid", "and", "or", "not", "isIn", "isNotIn",
           "matches"}


class _Declared:
    """The environment inside a defined function, as far as types go."""

    def __init__(self, defined, functions_):
        self.functions = functions_
        self._types = {each.get("name"): each.get("dataType") for each in defined if each.tag == "ParameterField"}

    def type(self, name):
        return self._types[name]


def _children(element):
    return [child for child in element if child.tag in _TYPES]


def _common(types):
    types = [each for each in types if each is not _SILENT]
    if not types:
        return _SILENT
    if all(each in NUMBERS for each in types) and len(set(types)) > 1:
        return "double"
    return types[0] if len(set(types)) == 1 else None


def _of_texts(element, cells):
    texts_ = [*cells, *(element.get(name) for name in ("mapMissingTo", "defaultValue") if name in element.attrib)]
    return element.get("dataType") or _common([constant(each).type for each in texts_])


def _of_table(element, _env):
    column = element.get("outputColumn").rpartition(":")[2]
    return _of_texts(element, [cell.text or "" for cell in element.iter(column)])


def _of_bins(element, _env):
    return _of_texts(element, [each.get("binValue") for each in element if each.tag == "DiscretizeBin"])


def _of_constant(element, _env):
    if element.get("missing") in ("true", "1"):
        return _SILENT
    return element.get("dataType") or constant(element.text or "").type


def _of_call(element, env):
    name = element.get("function")
    if name in env.functions:
        defined = env.functions[name]
        return defined.get("dataType") or _of(_children(defined)[0], _Declared(defined, env.functions))
    if name == "if":
        return _common([_of(each, env) for each in _children(element)[1:]])
    return "string" if name in _TEXTS else "boolean" if name in _TRUTHS else "double"


def _of_apply(element, env):
    """Of the call, unless a replacement isn't one of its type."""
    said = _of_call(element, env)
    type_ = "double" if said is _SILENT else said
    others = [element.get(name) for name in ("mapMissingTo", "defaultValue") if name in element.attrib]
    return _common([type_, *(replacement(each, None if said is _SILENT else said).type for each in others)])


_TYPES = {
    "Constant": _of_constant, "FieldRef": lambda element, env: env.type(element.get("field")),
    "NormContinuous": lambda element, env: "double", "NormDiscrete": lambda element, env: "double",
    "TextIndex": lambda element, env: "double", "Discretize": _of_bins, "MapValues": _of_table, "Apply": _of_apply,
    "Lag": lambda element, env: env.type(element.get("field")) if element.get("aggregate", "none") == "none" else "double",
    "Aggregate": lambda element, env: "integer" if element.get("function") == "count" else env.type(element.get("field")),
}


def _of(element, env):
    return _TYPES[element.tag](element, env)


def of_call(element, env):
    """The type of what an Apply calls; None where the expression doesn't say it."""
    type_ = _of_call(element, env)
    return None if type_ is _SILENT else type_


def replacement(text, type_):
    """The value of a text that stands in for a value of a type: one of it, if it writes one."""
    try:
        return constant(text) if type_ is None else read(text, type_)
    except NotOfType:
        return constant(text)
