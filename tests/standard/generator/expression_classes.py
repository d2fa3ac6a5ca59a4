"""Classes of expressions: tables, norms, constants, references, missing texts, booleans, nesting and defined functions."""
from .building import apply, const, data_field, derived, of_expressions, ref, table, tag
from .draw import LETTERS, WORDS, write

NUMBERS = [data_field("a"), data_field("b")]
TEXT = [data_field("s", "string"), data_field("t", "string")]
FLAGS = [data_field("f", "boolean"), data_field("g", "boolean")]


def cells(draw, count, hole=0.25, **types):
    return [{name: draw.holed(draw.of_type(type_), hole) for name, type_ in types.items()} for _ in range(count)]


def norm(outliers, hole=0.0, mapped=False):
    """A NormContinuous of two to five points; cells lie inside and outside of them."""
    def make(draw, road, count):
        calls = []
        for _ in range(3):
            points = sorted(draw.sample(range(-60, 60), draw.randint(2, 5)))
            content = [tag("LinearNorm", orig=point, norm=write(draw.number())) for point in points]
            calls.append(("double", tag("NormContinuous", *content, field="a", outliers=outliers,
                                        mapMissingTo=draw.randint(-9, 9) if mapped else None)))
        return of_expressions(road, NUMBERS[:1], calls, cells(draw, count, hole, a="double"), 1e-12)
    return make


def norm_of(type_):
    """A NormContinuous and bins over values that count as numbers."""
    def make(draw, road, count):
        points = [tag("LinearNorm", orig=x, norm=y) for x, y in ((-8, 1), (0, 0), (1, 4), (9000, -4))]
        calls = [("double", tag("NormContinuous", *points, field="x", mapMissingTo="7")),
                 ("string", tag("Discretize", *bins_of(draw), field="x", dataType="string", mapMissingTo="none"))]
        return of_expressions(road, [data_field("x", type_, "categorical")], calls, cells(draw, count, 0.2, x=type_), 1e-12)
    return make


def bins_of(draw, type_="string", values=None):
    """DiscretizeBins that don't overlap, with gaps and open ends."""
    edges = sorted(draw.sample(range(-80, 80), draw.randint(1, 5)))
    content, places, closed = [], [None, *edges, None], False
    for left, right in zip(places, places[1:]):
        start = draw.choice(("closed", "open")) if not closed else "open"
        closed = draw.random() < 0.3
        value = draw.choice(values) if values else draw.word() if type_ == "string" else draw.randint(-9, 9)
        if draw.random() < 0.85 or not content:
            content.append(tag("DiscretizeBin", tag("Interval", closure=start + ("Closed" if closed else "Open"), leftMargin=left,
                                                    rightMargin=right), binValue=value))
        else:
            closed = False
    return content


def bins(type_, hole=0.0, **more):
    def make(draw, road, count):
        calls = [(type_, tag("Discretize", *bins_of(draw, type_), field="a", dataType=type_, **more)) for _ in range(3)]
        return of_expressions(road, NUMBERS[:1], calls, cells(draw, count, hole, a="integer"))
    return make


def map_values(hole=0.0, **more):
    """A table of two keys, a text and a number; each pair of keys stands once."""
    def make(draw, road, count):
        calls = []
        for _ in range(2):
            keys = draw.sample([(word, number) for word in WORDS for number in range(4)], 20)
            rows = [(word, str(number), draw.word()) for word, number in keys]
            pairs = [tag("FieldColumnPair", field="s", column="k"), tag("FieldColumnPair", field="i", column="n")]
            calls.append(("string", tag("MapValues", *pairs, table(("k", "n", "v"), rows), outputColumn="v", dataType="string", **more)))
        rows = [{"s": draw.holed(draw.word(), hole), "i": draw.holed(str(draw.randint(0, 3)), hole)} for _ in range(count)]
        return of_expressions(road, [TEXT[0], data_field("i", "integer")], calls, rows)
    return make


def indicator(type_, hole=0.0, **more):
    def make(draw, road, count):
        value = draw.of_type(type_)
        optype = "ordinal" if type_ == "integer" else None
        rows = [{"s": draw.holed(draw.choice((value, draw.of_type(type_))), hole)} for _ in range(count)]
        return of_expressions(road, [data_field("s", type_, optype)],
                              [("double", tag("NormDiscrete", field="s", value=value, **more))], rows)
    return make


def constants(type_):
    def make(draw, road, count):
        calls = [(type_, const(draw.of_type(type_), type_)) for _ in range(3)]
        return of_expressions(road, NUMBERS[:1], calls, cells(draw, count, a="double"))
    return make


def missing_constant(draw, road, count):
    calls = [("double", const("3", missing="true")), ("double", apply("if", apply("isMissing", const("3", missing="true")), ref("a"), const("1")))]
    return of_expressions(road, NUMBERS[:1], calls, cells(draw, count, a="double"))


def mapped_reference(type_):
    def make(draw, road, count):
        calls = [(type_, ref("x", mapMissingTo=draw.of_type(type_)))]
        return of_expressions(road, [data_field("x", type_)], calls, cells(draw, count, x=type_))
    return make


def missing_text(use):
    """A text derived field that is missing, seen by what stands above it."""
    helper = [derived("h", "string", tag("FieldRef", field="s"))]
    uses = {
        "isMissing": ("double", apply("if", apply("isMissing", ref("h")), const("1"), const("0"))),
        "indicator": ("double", tag("NormDiscrete", field="h", value="a")),
        "indicator-mapped": ("double", tag("NormDiscrete", field="h", value="a", mapMissingTo="0.5")),
        "table": ("string", tag("MapValues", tag("FieldColumnPair", field="h", column="k"), table(("k", "v"), [("a", "A"), ("b", "B")]),
                                outputColumn="v", defaultValue="other", mapMissingTo="none", dataType="string")),
        "mapMissingTo": ("string", ref("h", mapMissingTo="none")),
        "equal": ("double", apply("if", apply("equal", ref("h"), const("a", "string")), const("1"), const("0"), defaultValue="7")),
        "concat": ("string", apply("concat", ref("h"), const("-", "string"))),
    }

    def make(draw, road, count):
        return of_expressions(road, TEXT[:1], [uses[use]], [{"s": draw.choice(("", "a", "b", "c"))} for _ in range(count)],
                              helpers=helper)
    return make


def boolean_source(draw, source):
    """An expression whose value is a boolean, by its kind."""
    if source == "field":
        return ref("f")
    if source == "derived":
        return ref("h")
    if source == "constant":
        return const(draw.choice(("true", "false")), "boolean")
    if source == "discretize":
        return tag("Discretize", *bins_of(draw, "boolean", ["true", "false"]), field="a", dataType="boolean")
    return tag("MapValues", tag("FieldColumnPair", field="s", column="k"), table(("k", "v"), [("a", "true"), ("b", "false"), ("ab", "true")]),
               outputColumn="v", dataType="boolean", defaultValue="false")


BOOLEAN_USES = {
    "if": lambda source: ("double", apply("if", source, const("1"), const("2"))),
    "and": lambda source: ("double", apply("if", apply("and", source, apply("greaterThan", ref("a"), const("0"))), const("1"), const("2"))),
    "or": lambda source: ("double", apply("if", apply("or", source, apply("greaterThan", ref("a"), const("0"))), const("1"), const("2"))),
    "not": lambda source: ("double", apply("if", apply("not", source), const("1"), const("2"))),
    "itself": lambda source: ("boolean", source),
    "equal": lambda source: ("double", apply("if", apply("equal", source, const("true", "boolean")), const("1"), const("2"))),
}


def boolean(source, use):
    def make(draw, road, count):
        helper = [derived("h", "boolean", ref("f"))]
        call = BOOLEAN_USES[use](boolean_source(draw, source))
        return of_expressions(road, [NUMBERS[0], TEXT[0], FLAGS[0]], [call], cells(draw, count, 0, a="double", s="string", f="boolean"),
                              helpers=helper)
    return make


def boolean_key(use):
    """A boolean derived field that an indicator or a table looks at."""
    helper = [derived("h", "boolean", apply("greaterThan", ref("a"), const("0")))]
    uses = {
        "indicator": ("double", tag("NormDiscrete", field="h", value="true")),
        "table": ("string", tag("MapValues", tag("FieldColumnPair", field="h", column="k"), table(("k", "v"), [("true", "T"), ("false", "F")]),
                                outputColumn="v", dataType="string")),
    }
    return lambda draw, road, count: of_expressions(road, NUMBERS[:1], [uses[use]], cells(draw, count, 0, a="double"), helpers=helper)


def rule(**attributes):
    """The attributes of an Apply, over functions that follow the general rule."""
    def make(draw, road, count):
        calls = [("double", apply(draw.choice("+-*"), ref("a"), ref("b"), **attributes)) for _ in range(3)]
        return of_expressions(road, NUMBERS, calls, cells(draw, count, 0.3, a="double", b="double"))
    return make


REPLACED = ("007", " 1.50", "1e3", "true", "0", "none", "2020-1-2", "12:0:0", "5")


def replaced(draw, road, count):
    """mapMissingTo and defaultValue of expressions of every type, as a whole and within others."""
    def source(type_, level):
        names = {"string": "st", "double": "ab", "boolean": "fg", "date": "de"}
        if level and draw.random() < 0.4:
            return call(type_, level - 1)
        if type_ == "string" and draw.random() < 0.3:
            return tag("MapValues", tag("FieldColumnPair", field="s", column="k"), table(("k", "v"), [("a", "01"), ("b", "x")]),
                       outputColumn="v", dataType=draw.choice(("string", None)))
        return draw.choice((ref(draw.choice(names[type_])),) * 3 + (const("3", missing="true"),))

    def call(type_, level):
        more = {name: draw.choice(REPLACED) for name in draw.choice((("mapMissingTo",), ("defaultValue",), ("mapMissingTo", "defaultValue")))}
        kind = draw.random()
        if type_ == "string" and kind < 0.25:
            return apply("same", source("string", level), **more)
        if type_ == "double" and kind < 0.5:
            return apply(draw.choice("+-"), source("double", level), source("double", level), **more)
        if type_ == "boolean" and kind < 0.5:
            return apply("equal", source("string", level), source("string", level), **more)
        other = type_ if draw.random() < 0.7 else draw.choice(("string", "double"))
        return apply("if", ref("f"), source(type_, level), *([source(other, level)] if draw.random() < 0.8 else []), **more)
    types = ("string", "double", "boolean", "date")
    calls = [("string", call(draw.choice(types), 2)) for _ in range(4)]
    calls += [("string", apply("concat", call(draw.choice(types), 1), const("!", "string"))) for _ in range(2)]
    fields = [*NUMBERS, *TEXT, *FLAGS, data_field("d", "date", "ordinal"), data_field("e", "date", "ordinal")]
    same = tag("DefineFunction", tag("ParameterField", name="p", dataType="string"), ref("p"), name="same", dataType=draw.choice(("string", None)),
               optype="categorical")
    rows = cells(draw, count, 0.4, a="integer", b="integer", s="string", t="string", f="boolean", g="boolean", d="date", e="date")
    return of_expressions(road, fields, calls, rows, functions=[same])


def treated(**attributes):
    """Results outside the domain of a function."""
    def make(draw, road, count):
        calls = [("double", apply(name, ref("a"), **attributes)) for name in ("ln", "sqrt", "log10")]
        return of_expressions(road, NUMBERS[:1], calls, cells(draw, count, 0.1, a="integer"), 1e-12)
    return make


def nested(depth):
    """Any expression within any other: arithmetic and conditions over tables and norms."""
    def number(draw, level):
        choice = draw.randint(0, 6) if level else draw.randint(0, 1)
        if choice == 0:
            return ref(draw.choice("ab"))
        if choice == 1:
            return const(write(draw.number()), "double")
        if choice == 2:
            return tag("NormContinuous", *(tag("LinearNorm", orig=x, norm=y) for x, y in ((-64, 0), (0, 8), (64, -8))), field="a")
        if choice == 3:
            return tag("Discretize", *bins_of(draw, "double"), field="b", dataType="double", defaultValue="0", mapMissingTo="1")
        if choice == 4:
            return apply("if", apply(draw.choice(("lessThan", "greaterThan")), number(draw, level - 1), number(draw, level - 1)),
                         number(draw, level - 1), number(draw, level - 1))
        return apply(draw.choice(("+", "-", "*", "min", "max")), number(draw, level - 1), number(draw, level - 1))

    def make(draw, road, count):
        calls = [("double", number(draw, depth)) for _ in range(2)]
        return of_expressions(road, NUMBERS, calls, cells(draw, count, 0, a="integer", b="integer"), 1e-9)
    return make


def nested_texts(draw, road, count):
    calls = [("string", apply("uppercase", apply("substring", ref("s"), const("2", "integer"), const("3", "integer")))),
             ("string", apply("concat", apply("lowercase", ref("s")), apply("if", apply("equal", ref("s"), ref("t")), ref("s"), const("z", "string")))),
             ("boolean", apply("matches", apply("concat", ref("s"), ref("t")), const("b.?a", "string")))]
    rows = [{"s": draw.choice(WORDS + LETTERS), "t": draw.choice(WORDS)} for _ in range(count)]
    return of_expressions(road, TEXT, calls, rows)


def defined(inner):
    """DefineFunction, with functions that call each other."""
    def make(draw, road, count):
        functions = [tag("DefineFunction", tag("ParameterField", name="p", optype="continuous", dataType="double"),
                         apply("+", apply("*", ref("p"), const(str(draw.randint(1, 9)))), const("1")),
                         name="affine", optype="continuous", dataType="double"),
                     tag("DefineFunction", tag("ParameterField", name="p"), tag("ParameterField", name="q"),
                         apply("-", apply("affine", ref("q")), ref("p")), name="apart", optype="continuous", dataType="double")]
        call = apply("apart", ref("a"), apply("affine", ref("b"))) if inner else apply("affine", ref("a"))
        return of_expressions(road, NUMBERS, [("double", call)], cells(draw, count, 0.1, a="double", b="double"),
                              functions=functions if inner else functions[:1])
    return make


SIZES = ("small", "big", "vast", "10", "9")


def ordinal(draw, road, count):
    """Comparisons with ordinal fields: of constants, of a field with the same list, of one with another list, of numbers; h
    is derived and has values that it doesn't list."""
    def listing(values):
        return [tag("Value", value=each) for each in values]

    def call():
        other = draw.choice((ref("o"), ref("p"), ref("q"), ref("h"), ref("s"), ref("i"), const(draw.choice((*SIZES, "other", "1.5"))),
                             const(draw.choice(SIZES), "string"), apply("concat", ref("s"), const("", "string"))))
        pair = [ref(draw.choice("oph"), mapMissingTo=draw.choice((None, None, "big"))), other]
        if draw.random() < 0.4:
            pair.reverse()
        return apply(draw.choice(("lessThan", "lessOrEqual", "greaterThan", "greaterOrEqual", "equal")), *pair,
                     mapMissingTo=draw.choice((None, None, "true")))
    fields = [data_field("o", "string", "ordinal", *listing(SIZES)), data_field("p", "string", "ordinal", *listing(SIZES)),
              data_field("q", "string", "ordinal", *listing(SIZES[::-1])), TEXT[0], data_field("i", "integer")]
    helpers = [derived("h", "string", ref("s"), *listing(("vast", "10", "big")), optype="ordinal")]
    calls = [("double", apply("if", call(), const("1"), const("0"), defaultValue="7")) for _ in range(4)]
    rows = [{**{name: draw.holed(draw.choice(SIZES), 0.15) for name in "opq"}, "i": draw.choice(("9", "10", "11")),
             "s": draw.holed(draw.choice((*SIZES, "other")), 0.15)} for _ in range(count)]
    return of_expressions(road, fields, calls, rows, helpers=helpers)


def lag(hole=0.0, blocks=False, **attributes):
    def make(draw, road, count):
        block = [tag("BlockIndicator", field="s")] if blocks else []
        call = tag("Lag", *block, field="a", **attributes)
        rows = [{"a": draw.holed(write(draw.number()), hole), "s": f"block {place // 7}"} for place in range(count)]
        return of_expressions(road, [NUMBERS[0], TEXT[0]], [("double", call)], rows, 1e-12)
    return make


def aggregate(function):
    call = tag("Aggregate", field="a", function=function)
    return lambda draw, road, count: of_expressions(road, NUMBERS[:1], [("double", call)], cells(draw, count, 0.2, a="double"))


TALK = "user friendly Friendly, users USER. a test of tests the tested text; best".split()


def text_index(normalised=False, **attributes):
    def make(draw, road, count):
        steps = [tag("TextIndexNormalization", table(("string", "stem", "regex"), [("users?", "human", "true"), ("test(s|ed)", "test", "true")]))]
        calls = [(("double" if "localTermWeights" in attributes else "integer"),
                  tag("TextIndex", *(steps if normalised else []), const(term, "string"), textField="s", **attributes))
                 for term in draw.sample(("test", "user", "user friendly", "human", "a"), 2)]
        rows = [{"s": " ".join(draw.choice(TALK) for _ in range(draw.randint(1, 12)))} for _ in range(count)]
        return of_expressions(road, TEXT[:1], calls, rows, 1e-12)
    return make


CLASSES = {
    **{f"norm.{outliers}": norm(outliers) for outliers in ("asIs", "asMissingValues", "asExtremeValues")},
    **{f"norm.{type_}": norm_of(type_) for type_ in ("boolean", "date", "time", "dateTime")},
    "norm.missing": norm("asIs", 0.3), "norm.mapMissingTo": norm("asIs", 0.3, True),
    "bins.string": bins("string"), "bins.number": bins("double"), "bins.missing": bins("string", 0.3),
    "bins.mapMissingTo": bins("string", 0.3, mapMissingTo="none"), "bins.defaultValue": bins("string", 0.0, defaultValue="other"),
    "bins.missing-is-not-default": bins("string", 0.3, defaultValue="other"),
    "table.values": map_values(), "table.missing": map_values(0.2), "table.mapMissingTo": map_values(0.2, mapMissingTo="none"),
    "table.defaultValue": map_values(0.0, defaultValue="other"), "table.missing-is-not-default": map_values(0.2, defaultValue="other"),
    "indicator.string": indicator("string"), "indicator.number": indicator("integer"), "indicator.boolean": indicator("boolean"),
    "indicator.missing": indicator("string", 0.3), "indicator.mapMissingTo": indicator("string", 0.3, mapMissingTo="0.5"),
    **{f"constant.{type_}": constants(type_) for type_ in ("string", "integer", "double", "float", "boolean", "date", "time", "dateTime")},
    "constant.missing": missing_constant,
    **{f"reference.mapMissingTo-{type_}": mapped_reference(type_) for type_ in ("string", "double", "integer")},
    **{f"missing-text.{use}": missing_text(use) for use in ("isMissing", "indicator", "indicator-mapped", "table", "mapMissingTo",
                                                            "equal", "concat")},
    **{f"boolean.{source}-{use}": boolean(source, use) for source in ("field", "derived", "constant", "discretize", "table")
       for use in BOOLEAN_USES},
    "boolean.derived-indicator": boolean_key("indicator"), "boolean.derived-table-key": boolean_key("table"),
    "apply.general-rule": rule(), "apply.mapMissingTo": rule(mapMissingTo="5"), "apply.defaultValue": rule(defaultValue="9"),
    "apply.both": rule(mapMissingTo="5", defaultValue="9"), "apply.replaced": replaced,
    "apply.invalid-asMissing": treated(invalidValueTreatment="asMissing"),
    "apply.invalid-asMissing-defaultValue": treated(invalidValueTreatment="asMissing", defaultValue="3"),
    "nested.shallow": nested(2), "nested.deep": nested(5), "nested.texts": nested_texts, "apply.ordinal": ordinal,
    "defined.simple": defined(False), "defined.nested": defined(True),
    "lag.plain": lag(), "lag.third": lag(n="3"), "lag.missing": lag(0.3), "lag.blocks": lag(blocks=True),
    **{f"lag.{name}": lag(n="3", aggregate=name) for name in ("avg", "max", "median", "min", "product", "sum", "stddev")},
    "lag.missing-avg": lag(0.3, n="3", aggregate="avg"),
    **{f"aggregate.{name}": aggregate(name) for name in ("count", "sum", "average", "min", "max")},
    "text-index.termFrequency": text_index(), "text-index.normalised": text_index(True),
    "text-index.case": text_index(isCaseSensitive="true"), "text-index.distance": text_index(maxLevenshteinDistance="1"),
    "text-index.bestHits": text_index(maxLevenshteinDistance="1", countHits="bestHits"),
    **{f"text-index.{name}": text_index(localTermWeights=name)
       for name in ("binary", "logarithmic", "augmentedNormalizedTermFrequency")},
}
