"""Classes of the counting date types, and of dates, times and dateTimes, in expressions and predictors."""
from .building import (Trial, Parts, apply, const, data_field, derived, document, names_of, of_expressions, ref, regression_model, table, tag)

COUNTING = [*(f"dateDaysSince[{year}]" for year in (0, 1960, 1970, 1980)), "timeSeconds",
            *(f"dateTimeSecondsSince[{year}]" for year in (0, 1960, 1970, 1980))]
MOMENTS = ["date", "time", "dateTime"]


def field(type_):
    return data_field("e", type_, "continuous" if type_ in COUNTING else "ordinal")


def cells(draw, type_, count, hole=0.0):
    """Cells of which some are the same, so that comparisons and tables have hits."""
    some = [draw.of_type(type_) for _ in range(5)]
    return [{"e": draw.holed(draw.choice((draw.choice(some), draw.of_type(type_))), hole)} for _ in range(count)], some


def predictor(type_):
    def make(draw, _road, count):
        fields = [field(type_)]
        sums = [tag("RegressionTable", tag("NumericPredictor", name="e", coefficient="0.5"), intercept="1")]
        model = regression_model(names_of(fields), tables=sums)
        return Trial(document(Parts(fields, model=model)), cells(draw, type_, count)[0])
    return make


def outliers(treatment):
    """Bounds of a counting type are counts as its cells are."""
    def make(draw, _road, count):
        type_ = draw.choice(COUNTING)
        fields, (rows, some) = [field(type_)], cells(draw, type_, count)
        low, high = sorted(map(int, some))[1:4:2]
        mining = [tag("MiningField", name="e", outliers=treatment, lowValue=low, highValue=high, missingValueReplacement=low)]
        sums = [tag("RegressionTable", tag("NumericPredictor", name="e", coefficient="1"), intercept="0")]
        return Trial(document(Parts(fields, model=regression_model([], tables=sums, mining=mining))), rows)
    return make


def intervals(draw, _road, count):
    """An Interval of the dictionary counts as the cells do."""
    type_ = draw.choice(COUNTING)
    rows, some = cells(draw, type_, count)
    low, high = sorted(map(int, some))[1:4:2]
    bounds = tag("Interval", closure="closedClosed", leftMargin=low, rightMargin=high)
    sums = [tag("RegressionTable", tag("NumericPredictor", name="e", coefficient="0"), intercept="1")]
    mining = [tag("MiningField", name="e", invalidValueTreatment="returnInvalid")]
    field_ = data_field("e", type_, "continuous", bounds)
    return Trial(document(Parts([field_], model=regression_model([], tables=sums, mining=mining))), rows)


def used(use, types):
    """A use of a field of one of these types."""
    def make(draw, road, count):
        type_ = draw.choice(types)
        rows, some = cells(draw, type_, count)
        some = list(dict.fromkeys(some))
        if type_ in COUNTING:
            some.sort(key=int)
        return of_expressions(road, [field(type_)], [USES[use](draw, type_, some)], rows, 1e-12)
    return make


def _bins(_draw, _type, some):
    middle = some[len(some) // 2]
    return "string", tag("Discretize", tag("DiscretizeBin", tag("Interval", closure="openOpen", rightMargin=middle), binValue="low"),
                         tag("DiscretizeBin", tag("Interval", closure="closedOpen", leftMargin=middle), binValue="high"), field="e",
                         dataType="string")


def _norm(_draw, _type, some):
    return "double", tag("NormContinuous", tag("LinearNorm", orig=some[0], norm=0), tag("LinearNorm", orig=some[-1], norm=1), field="e")


def _table(_draw, _type, some):
    return "string", tag("MapValues", tag("FieldColumnPair", field="e", column="k"),
                         table(("k", "v"), [(value, f"v{place}") for place, value in enumerate(some)]), outputColumn="v",
                         dataType="string", defaultValue="other")


USES = {
    "bins": _bins, "norm": _norm, "table": _table,
    "indicator": lambda draw, type_, some: ("double", tag("NormDiscrete", field="e", value=some[0])),
    "number": lambda draw, type_, some: ("double", ref("e")),
    "copy": lambda draw, type_, some: (type_, ref("e")),
    "comparison": lambda draw, type_, some: ("double", apply("if", apply("lessThan", ref("e"), const(some[0], type_)), const("1"), const("0"))),
    "equality": lambda draw, type_, some: ("double", apply("if", apply("equal", ref("e"), const(some[0], type_)), const("1"), const("0"))),
    "arithmetic": lambda draw, type_, some: ("double", apply("+", ref("e"), const("1"))),
}


def cast(source, target):
    def make(draw, road, count):
        return of_expressions(road, [field(source)], [(target, ref("e"))], cells(draw, source, count)[0])
    return make


def beyond_a_day(draw, road, count):
    """Counts of seconds of which some are no time of a day: as times, in functions, and beside times."""
    rows = [{"e": draw.holed(draw.choice(("-1", "0", "86399", "86400", "90000", str(draw.randint(-99999, 99999)))), 0.1),
             "t": draw.time()} for _ in range(count)]
    midnight = apply("dateSecondsSinceMidnight", ref("e"))
    calls = [("time", ref("e")), ("string", apply("formatDatetime", ref("e"), const("%H:%M:%S", "string"))), ("double", midnight),
             ("double", ref("e")), ("double", apply("if", apply("lessThan", ref("e"), ref("t")), const("1"), const("0"))),
             ("double", apply("if", apply("equal", ref("t"), ref("e")), const("1"), const("0"))),
             ("string", apply("concat", ref("h"), const("!", "string")))]
    return of_expressions(road, [field("timeSeconds"), data_field("t", "time", "ordinal")], calls, rows,
                          helpers=[derived("h", "time", ref("e"))])


def fractions(draw, road, count):
    """Seconds with fractions, of a cell or of a count: as texts, and as what these texts are read as again."""
    source = draw.choice(("time", "dateTime", "timeSeconds", *(f"dateTimeSecondsSince[{year}]" for year in (0, 1960, 1970, 1980))))
    moment = "time" if source.startswith("time") else "dateTime"
    ends = ("0.0000004", "59.9999996", "0.0078125", "86399.9999", "3599.9999999", "1e-20")
    rows = [{"e": draw.of_type(source) + (draw.fraction() if source in COUNTING else "")} for _ in range(count)]
    rows += [{"e": draw.choice(ends)} for _ in range(3 if source in COUNTING else 0)]
    again = apply("if", apply("equal", ref("again"), ref("h")), const("1"), const("0"))
    calls = [(moment, ref("h")), ("string", ref("h")), ("string", apply("concat", ref("h"), const("!", "string"))),
             ("string", ref("e")), (moment, ref("again")), ("double", again),
             ("double", apply("dateSecondsSinceMidnight", ref("h"))),
             ("string", apply("formatDatetime", ref("h"), const("%H:%M:%S", "string")))]
    helpers = [derived("h", moment, ref("e")), derived("text", "string", ref("h")), derived("again", moment, ref("text"))]
    return of_expressions(road, [field(source)], calls, rows, helpers=helpers)


def predicates(types):
    """A tree whose branches compare a field with a value and a set."""
    def make(draw, _road, count):
        type_ = draw.choice(types)
        rows, some = cells(draw, type_, count, 0.1)
        operator = draw.choice(("equal", "notEqual", "lessThan", "lessOrEqual", "greaterThan", "greaterOrEqual"))
        members = tag("Array", " ".join(some[1:3]), type="string" if type_ in MOMENTS else "int", n=len(some[1:3]))
        branches = (tag("Node", tag("SimplePredicate", field="e", operator=operator, value=some[0]), score="1"),
                    tag("Node", tag("SimpleSetPredicate", members, field="e", booleanOperator="isIn"), score="2"),
                    tag("Node", "<True/>", score="3"))
        model = tag("TreeModel", tag("MiningSchema", tag("MiningField", name="e")), tag("Node", "<True/>", *branches),
                    functionName="regression")
        return Trial(document(Parts([field(type_)], model=model)), rows)
    return make


CASTS = [("dateDaysSince[1960]", "dateDaysSince[1970]"), ("dateDaysSince[1980]", "date"), ("date", "dateDaysSince[1960]"),
         ("dateTime", "dateTimeSecondsSince[1960]"), ("dateTimeSecondsSince[1970]", "dateTimeSecondsSince[0]"),
         ("time", "timeSeconds"), ("timeSeconds", "time"), ("dateDaysSince[1960]", "integer"), ("date", "string"), ("time", "string"),
         ("dateTime", "string"), ("dateTime", "date")]

CLASSES = {
    **{f"date.{use}-counting": used(use, COUNTING) for use in USES},
    **{f"date.{use}": used(use, MOMENTS) for use in ("table", "indicator", "copy", "comparison", "equality")},
    "date.beyond-a-day": beyond_a_day, "date.fractions": fractions,
    **{f"date.cast-{source}-{target}": cast(source, target) for source, target in CASTS},
}
SCORED = {
    **{f"date.predictor-{type_}": predictor(type_) for type_ in COUNTING},
    "date.outliers-asExtremeValues": outliers("asExtremeValues"), "date.outliers-asMissingValues": outliers("asMissingValues"),
    "date.intervals": intervals, "date.predicates-counting": predicates(COUNTING), "date.predicates": predicates(MOMENTS),
}
