"""Classes of built-in functions: with values, with missing arguments, and outside their domains."""
from .building import apply, const, data_field, of_expressions, ref
from .draw import LETTERS, write

CLOSE = 1e-12  # where a function isn't exact, the relative error that two good libraries may differ by
KINDS = {
    "number": "double", "integer": "integer", "positive": "double", "unit": "double", "small": "double", "text": "string",
    "letters": "string", "boolean": "boolean", "date": "date", "dateTime": "dateTime", "time": "time",
}
# name: kinds of arguments, type of the result, tolerance. A kind that ends in "!" is a constant, in "*" one to three of it.
SIGNATURES = {
    **{name: (["number", "number"], "double", 0) for name in "+-*"}, "/": (["number", "positive"], "double", 0),
    **{name: (["number", "number*"], "double", 0) for name in ("min", "max", "sum", "median")},
    "avg": (["number", "number*"], "double", CLOSE), "product": (["number", "number*"], "double", 0),
    "log10": (["positive"], "double", CLOSE), "ln": (["positive"], "double", CLOSE), "ln1p": (["positive"], "double", CLOSE),
    "exp": (["small"], "double", CLOSE), "expm1": (["small"], "double", CLOSE), "sqrt": (["positive"], "double", 0),
    "abs": (["number"], "double", 0), "pow": (["positive", "small"], "double", CLOSE),
    "hypot": (["number", "number"], "double", CLOSE), "threshold": (["number", "number"], "double", 0),
    **{name: (["number"], "double", 0) for name in ("floor", "ceil", "round", "rint")},
    "modulo": (["number", "positive"], "double", 0),
    **{name: (["small"], "double", CLOSE) for name in ("sin", "cos", "tan", "atan", "sinh", "cosh", "tanh")},
    "asin": (["unit"], "double", CLOSE), "acos": (["unit"], "double", CLOSE), "atan2": (["number", "number"], "double", CLOSE),
    "normalCDF": (["small", "small", "positive"], "double", CLOSE), "normalPDF": (["small", "small", "positive"], "double", CLOSE),
    "normalIDF": (["unit", "small", "positive"], "double", 1e-9), "stdNormalCDF": (["small"], "double", CLOSE),
    "stdNormalPDF": (["small"], "double", CLOSE), "stdNormalIDF": (["unit"], "double", 1e-9), "erf": (["small"], "double", CLOSE),
    **{name: (["number"], "boolean", 0) for name in ("isMissing", "isNotMissing", "isValid", "isNotValid")},
    **{name: (["integer", "integer"], "boolean", 0)
       for name in ("equal", "notEqual", "lessThan", "lessOrEqual", "greaterThan", "greaterOrEqual")},
    "and": (["boolean", "boolean*"], "boolean", 0), "or": (["boolean", "boolean*"], "boolean", 0),
    "not": (["boolean"], "boolean", 0), "isIn": (["integer", "integer!", "integer!", "integer!"], "boolean", 0),
    "isNotIn": (["integer", "integer!", "integer!"], "boolean", 0), "if": (["boolean", "number", "number"], "double", 0),
    "uppercase": (["text"], "string", 0), "lowercase": (["text"], "string", 0), "stringLength": (["text"], "integer", 0),
    "substring": (["text", "start!", "length!"], "string", 0), "trimBlanks": (["padded"], "string", 0),
    "concat": (["text", "text*"], "string", 0), "replace": (["text", "pattern!", "replacement!"], "string", 0),
    "matches": (["text", "pattern!"], "boolean", 0), "formatNumber": (["number", "numbers!"], "string", 0),
    "formatDatetime": (["date", "moments!"], "string", 0), "dateDaysSinceYear": (["date", "year!"], "integer", 0),
    "dateSecondsSinceYear": (["dateTime", "year!"], "integer", 0), "dateSecondsSinceMidnight": (["time"], "integer", 0),
}
# Arguments outside of the domain.
DOMAINS = {"/": ["number", "0"], "ln": ["negative"], "log10": ["negative"], "sqrt": ["negative"], "pow": ["negative", "half"],
           "asin": ["beyond"], "acos": ["beyond"], "ln1p": ["negative"], "modulo": ["number", "0"], "stdNormalIDF": ["beyond"]}


def constant_of(draw, kind):
    """An argument that every document writes as a constant."""
    return {
        "start": lambda: const(draw.randint(1, 4), "integer"), "length": lambda: const(draw.randint(0, 5), "integer"),
        "pattern": lambda: const(draw.choice(("a", "b+", "^a", "[a-c]", "B|x", "o.d", "(a)b")), "string"),
        "replacement": lambda: const(draw.choice(("z", "--", "b", "word")), "string"),
        "numbers": lambda: const(draw.choice(("%.2f", "%8.3f", "<%.1f>", "%e")), "string"),
        "moments": lambda: const(draw.choice(("%Y-%m-%d", "%m/%d/%y", "%d.%m.%Y", "day %j")), "string"),
        "year": lambda: const(draw.choice((1960, 1970, 1980, 1900)), "integer"),
        "integer": lambda: const(draw.randint(-5, 5), "integer"), "number": lambda: const(write(draw.number()), "double"),
    }[kind]()


def cell_of(draw, kind):
    """A cell of a kind of argument."""
    if kind == "number":
        return write(draw.number())
    if kind == "integer":
        return str(draw.randint(-5, 5))
    if kind == "positive":
        return write(draw.randint(1, 400) / 8)
    if kind == "negative":
        return write(-draw.randint(9, 400) / 8)
    if kind == "unit":
        return write(draw.randint(1, 255) / 256)
    if kind == "beyond":
        return write(draw.choice((-1, 1)) * draw.randint(9, 40) / 8)
    if kind == "half":
        return write(draw.randint(-4, 4) + 0.5)
    if kind == "small":
        return write(draw.randint(-40, 40) / 8)
    if kind == "padded":
        return draw.choice(("", " ", "  ")) + draw.word() + draw.choice(("", " ", "   "))
    if kind == "letters":
        return draw.choice(LETTERS)
    return "0" if kind == "0" else draw.of_type(KINDS[kind])


def type_of(kind):
    return {"padded": "string", "negative": "double", "half": "double", "beyond": "double", "0": "double"}.get(kind) or KINDS[kind]


def fields_of(draw, kinds):
    """The fields of a signature and the kind of cells of each."""
    kinds = [kind for kind in kinds if not kind.endswith("!")]
    repeated = [kind.rstrip("*") for kind in kinds for _ in range(draw.randint(1, 3) if kind.endswith("*") else 1)]
    names = {f"x{place}": kind for place, kind in enumerate(repeated)}
    return [data_field(name, type_of(kind)) for name, kind in names.items()], names


def trial(draw, road, count, name, kinds, hole=0.0, tolerance=0.0, **more):
    """A trial of one function, called three times, with this share of missing cells."""
    fields, names = fields_of(draw, kinds)
    result = SIGNATURES[name][1]
    calls = []
    for _ in range(3):
        arguments, place = [], iter(names)
        for kind in kinds:
            if kind.endswith("!"):
                arguments.append(constant_of(draw, kind[:-1]))
            elif kind.endswith("*"):
                arguments += [ref(each) for each in place]
            else:
                arguments.append(ref(next(place)))
        calls.append((result, apply(name, *arguments, **more)))
    rows = [{each: draw.holed(cell_of(draw, kind), hole) for each, kind in names.items()} for _ in range(count)]
    return of_expressions(road, fields, calls, rows, tolerance)


def values(name):
    kinds, _, tolerance = SIGNATURES[name]
    return lambda draw, road, count: trial(draw, road, count, name, kinds, 0.0, tolerance)


def missing(name):
    kinds, _, tolerance = SIGNATURES[name]
    return lambda draw, road, count: trial(draw, road, count, name, kinds, 0.35, tolerance)


def domain(name):
    return lambda draw, road, count: trial(draw, road, count, name, DOMAINS[name], 0.0, 1e-12)


def letters(name):
    kinds = ["letters" if kind == "text" else kind for kind in SIGNATURES[name][0]]
    return lambda draw, road, count: trial(draw, road, count, name, kinds)


def without_else(draw, road, count):
    return trial(draw, road, count, "if", ["boolean", "number"], 0.2)


def compared_texts(name):
    kinds = ["text", "text"]
    return lambda draw, road, count: trial(draw, road, count, name, kinds, 0.2)


CLASSES = {
    **{f"function.{name}": values(name) for name in SIGNATURES},
    **{f"missing.{name}": missing(name) for name in SIGNATURES},
    **{f"domain.{name}": domain(name) for name in DOMAINS},
    **{f"letters.{name}": letters(name) for name in ("uppercase", "lowercase", "stringLength", "substring", "concat")},
    **{f"texts.{name}": compared_texts(name) for name in ("equal", "notEqual")},
    "missing.if-without-else": without_else,
}
