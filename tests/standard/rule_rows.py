"""Rows of rules: what a field with this expression is, for values of the fields a, b (numbers), s, t (texts), f (boolean)
d (date) and o (small, big, vast). name, expression, type of the result, values, result; None is missing."""

BIN = '<DiscretizeBin binValue="{}"><Interval closure="{}" {}/></DiscretizeBin>'
BINS = BIN.format("low", "openClosed", 'rightMargin="0"') + BIN.format("mid", "openOpen", 'leftMargin="0" rightMargin="10"') + \
    BIN.format("high", "closedOpen", 'leftMargin="10"')
NORM = '<LinearNorm orig="0" norm="1"/><LinearNorm orig="4" norm="3"/><LinearNorm orig="8" norm="0"/>'
TABLE = ('<FieldColumnPair field="s" column="k"/><FieldColumnPair field="a" column="n"/><InlineTable>'
         "<row><k>x</k><n>1</n><v>one</v></row><row><k>x</k><n>2.0</n><v>two</v></row><row><k>y </k><n>1</n><v>yes</v></row>"
         "</InlineTable>")
CALL = '<Apply function="{}" {}>{}</Apply>'
A, B, S, T, F, O = ('<FieldRef field="%s"/>' % name for name in "abstfo")


def apply(name, *arguments, more=""):
    return CALL.format(name, more, "".join(arguments))


def const(text, type_=None):
    return f'<Constant dataType="{type_}">{text}</Constant>' if type_ else f"<Constant>{text}</Constant>"


CONSTANTS = [
    ("integer", const(" 5 "), "integer", {}, 5), ("double", const("1.5"), "double", {}, 1.5), ("5.", const("5."), "double", {}, 5.0),
    ("text", const("abc"), "string", {}, "abc"), ("empty", "<Constant/>", "string", {}, ""),
    ("missing", '<Constant missing="true">3</Constant>', "double", {}, None), ("boolean", const("true", "boolean"), "boolean", {}, True),
    ("date", const("1960-01-02", "date"), "date", {}, "date:1960-01-02"),
    ("date as count", const("1960-01-02", "date"), "dateDaysSince[1960]", {}, 1),
    ("count as date", const("1", "dateDaysSince[1960]"), "date", {}, "date:1960-01-02"),
    ("count as number", const("1", "dateDaysSince[1960]"), "double", {}, 1.0),
    ("count of another epoch", const("0", "dateDaysSince[1970]"), "dateDaysSince[1960]", {}, 3653),
    ("year 0", const("0", "dateDaysSince[1970]"), "dateDaysSince[0]", {}, 719528),
    ("time as count", const("01:00:01", "time"), "timeSeconds", {}, 3601),
    ("count as time", const("86399", "timeSeconds"), "string", {}, "86399"),
    ("last time of a day", const("86399", "timeSeconds"), "time", {}, "time:23:59:59"),
    ("time beyond a day", const("86400", "timeSeconds"), "time", {}, None), ("time below 0", const("-1", "timeSeconds"), "time", {}, None),
    ("beyond a day, compared", apply("greaterThan", const("86400", "timeSeconds"), const("23:59:59", "time")), "boolean", {}, True),
    ("dateTime as count", const("1980-01-02T00:00:01", "dateTime"), "dateTimeSecondsSince[1980]", {}, 86401),
    ("leap day", const("2024-02-29", "date"), "string", {}, "2024-02-29"), ("no day", const("2023-02-29", "string"), "date", {}, None),
    ("number as text", const("2.0", "double"), "string", {}, "2"), ("text as number", const("2.5e1", "string"), "double", {}, 25.0),
    ("great whole number as text", const("1234567890123456", "double"), "string", {}, "1234567890123456"),
    ("greater number as text", const("1e16", "double"), "string", {}, "1e+16"),
    ("no number", const("2,5", "string"), "double", {}, None), ("comment inside", "<Constant>1<!-- x -->2</Constant>", "integer", {}, 12),
    ("no integer", const("1.5"), "integer", {}, None),
]

FIELD_REFS = [
    ("value", A, "double", {"a": "2.5"}, 2.5), ("missing", A, "double", {}, None),
    ("mapped", '<FieldRef field="a" mapMissingTo="7"/>', "double", {}, 7.0),
    ("mapped text", '<FieldRef field="s" mapMissingTo="none"/>', "string", {}, "none"),
    ("not mapped", '<FieldRef field="a" mapMissingTo="7"/>', "double", {"a": "1"}, 1.0),
]

APPLIES = [
    ("general rule", apply("+", A, B), "double", {"a": "1"}, None),
    ("mapMissingTo is the result", apply("+", A, B, more='mapMissingTo="5"'), "double", {"a": "1"}, 5.0),
    ("mapMissingTo before defaultValue", apply("+", A, B, more='mapMissingTo="5" defaultValue="9"'), "double", {"a": "1"}, 5.0),
    ("defaultValue of a missing result", apply("+", A, B, more='defaultValue="9"'), "double", {"a": "1"}, 9.0),
    ("mapMissingTo of a text", apply("if", F, S, T, more='mapMissingTo="007"'), "string", {"f": "true", "t": "y"}, "007"),
    ("defaultValue of a text", apply("if", F, S, T, more='defaultValue="007"'), "string", {"f": "true", "t": "y"}, "007"),
    ("of a text, nested", apply("concat", apply("if", F, S, more='defaultValue=" 1.50"'), const("!")), "string", {"f": "true"}, " 1.50!"),
    ("of a text or a missing constant", apply("if", F, '<Constant missing="true"/>', S, more='defaultValue="007"'), "string",
     {"f": "true", "s": "y"}, "007"),
    ("of a text or a number", apply("if", F, S, A, more='defaultValue="007"'), "string", {"f": "true", "a": "2"}, "007"),
    ("of a text or a number, nested", apply("concat", apply("if", F, S, A, more='defaultValue="007"'), const("!")), "string",
     {"f": "true", "a": "2"}, "7!"),
    ("of a number as a text", apply("+", A, B, more='defaultValue="007"'), "string", {"a": "1"}, "7"),
    ("of a truth value", apply("equal", A, B, more='mapMissingTo="0"'), "string", {"a": "1"}, "false"),
    ("of a date", apply("concat", apply("if", F, '<FieldRef field="d"/>', more='defaultValue="2020-1-2"'), const("!")), "string",
     {"f": "true"}, "2020-01-02!"),
    ("no text of its type", apply("concat", apply("+", A, B, more='defaultValue="none"'), const("!")), "string", {"a": "1"}, "none!"),
    ("neither acts", apply("+", A, B, more='mapMissingTo="5" defaultValue="9"'), "double", {"a": "1", "b": "2"}, 3.0),
    ("outside the domain", apply("ln", A), "double", {"a": "-1"}, None),
    ("outside the domain, default", apply("ln", A, more='defaultValue="0"'), "double", {"a": "-1"}, 0.0),
    ("outside the domain, mapMissingTo", apply("ln", A, more='mapMissingTo="5"'), "double", {"a": "-1"}, None),
    ("outside the domain, as missing", apply("ln", A, more='invalidValueTreatment="asMissing" defaultValue="2"'), "double",
     {"a": "0"}, 2.0),
    ("nested default", apply("+", apply("ln", A, more='defaultValue="1"'), B), "double", {"a": "-1", "b": "2"}, 3.0),
    ("boolean argument", apply("if", F, const("1"), const("2")), "double", {"f": "true"}, 1.0),
    ("boolean argument, false", apply("if", F, const("1"), const("2")), "double", {"f": "false"}, 2.0),
    ("boolean argument, missing", apply("if", F, const("1"), const("2")), "double", {}, None),
    ("known first branch", apply("if", apply("isMissing", A), const("0"), A), "double", {}, 0.0),
    ("defined function", apply("twice", A), "double", {"a": "1.5"}, 3.0),
    ("defined function of a missing value", apply("twice", A), "double", {}, None),
    ("nested defined function", apply("four", A), "double", {"a": "1.5"}, 6.0),
    ("order of the list", apply("lessThan", O, const("vast")), "boolean", {"o": "big"}, True),
    ("order of the list, the other way", apply("greaterThan", const("small"), O), "boolean", {"o": "big"}, False),
    ("order of the list, the same", apply("greaterOrEqual", O, O), "boolean", {"o": "big"}, True),
    ("order of the list, another field", apply("greaterThan", S, O), "boolean", {"o": "small", "s": "big"}, True),
    ("order of the list, unlisted", apply("lessOrEqual", O, const("zero")), "boolean", {"o": "big"}, False),
    ("order of the list, unlisted below", apply("lessOrEqual", S, O), "boolean", {"o": "big", "s": "a"}, False),
    ("order of the list, number", apply("greaterThan", O, const("1")), "boolean", {"o": "big"}, False),
    ("order of the list, missing", apply("lessThan", O, const("vast")), "boolean", {}, None),
    ("order of the list, missing mapped", apply("lessThan", O, const("vast"), more='mapMissingTo="1"'), "integer", {}, 1),
    ("order of the list, missing reference mapped", apply("lessThan", '<FieldRef field="o" mapMissingTo="big"/>', const("vast")),
     "boolean", {}, True),
    ("boolean in capitals", const("TRUE", "boolean"), "boolean", {}, True),
    ("boolean with a capital", const("False", "boolean"), "boolean", {}, False),
    ("date", apply("dateDaysSinceYear", '<FieldRef field="d"/>', const("1960")), "integer", {"d": "1960-01-11"}, 10),
]

TABLES = [
    ("bin", f'<Discretize field="a">{BINS}</Discretize>', "string", {"a": "0"}, "low"),
    ("bin between", f'<Discretize field="a">{BINS}</Discretize>', "string", {"a": "9.5"}, "mid"),
    ("bin at closed end", f'<Discretize field="a">{BINS}</Discretize>', "string", {"a": "10"}, "high"),
    ("bin of missing", f'<Discretize field="a" mapMissingTo="none">{BINS}</Discretize>', "string", {}, "none"),
    ("bin of missing without", f'<Discretize field="a" defaultValue="d">{BINS}</Discretize>', "string", {}, None),
    ("no bin", '<Discretize field="a" defaultValue="d">' + BIN.format("x", "openOpen", 'leftMargin="0" rightMargin="1"') +
     "</Discretize>", "string", {"a": "1"}, "d"),
    ("norm", f'<NormContinuous field="a">{NORM}</NormContinuous>', "double", {"a": "1"}, 1.5),
    ("norm at point", f'<NormContinuous field="a">{NORM}</NormContinuous>', "double", {"a": "4"}, 3.0),
    ("norm second segment", f'<NormContinuous field="a">{NORM}</NormContinuous>', "double", {"a": "6"}, 1.5),
    ("norm below", f'<NormContinuous field="a">{NORM}</NormContinuous>', "double", {"a": "-2"}, 0.0),
    ("norm above", f'<NormContinuous field="a">{NORM}</NormContinuous>', "double", {"a": "10"}, -1.5),
    ("norm outlier missing", f'<NormContinuous field="a" outliers="asMissingValues">{NORM}</NormContinuous>', "double", {"a": "9"}, None),
    ("norm outlier bound", f'<NormContinuous field="a" outliers="asExtremeValues">{NORM}</NormContinuous>', "double", {"a": "9"}, 0.0),
    ("norm outlier bound below", f'<NormContinuous field="a" outliers="asExtremeValues">{NORM}</NormContinuous>', "double",
     {"a": "-9"}, 1.0),
    ("norm mapped", f'<NormContinuous field="a" mapMissingTo="2">{NORM}</NormContinuous>', "double", {}, 2.0),
    ("indicator", '<NormDiscrete field="s" value="x"/>', "double", {"s": "x"}, 1.0),
    ("indicator of another", '<NormDiscrete field="s" value="x"/>', "double", {"s": "x "}, 0.0),
    ("indicator of missing", '<NormDiscrete field="s" value="x"/>', "double", {}, None),
    ("indicator mapped", '<NormDiscrete field="s" value="x" mapMissingTo="0.5"/>', "double", {}, 0.5),
    ("indicator of a number", '<NormDiscrete field="a" value="1.0"/>', "double", {"a": "1"}, 1.0),
    ("map", f'<MapValues outputColumn="v">{TABLE}</MapValues>', "string", {"s": "x", "a": "2"}, "two"),
    ("map by all keys", f'<MapValues outputColumn="v" defaultValue="d">{TABLE}</MapValues>', "string", {"s": "y", "a": "1"}, "d"),
    ("map blank counts", f'<MapValues outputColumn="v">{TABLE}</MapValues>', "string", {"s": "y ", "a": "1"}, "yes"),
    ("map without row", f'<MapValues outputColumn="v">{TABLE}</MapValues>', "string", {"s": "z", "a": "1"}, None),
    ("map missing", f'<MapValues outputColumn="v" mapMissingTo="m" defaultValue="d">{TABLE}</MapValues>', "string", {"s": "x"}, "m"),
    ("map missing without", f'<MapValues outputColumn="v" defaultValue="d">{TABLE}</MapValues>', "string", {"s": "x"}, None),
]


def index(attributes, term, more=""):
    return f'<TextIndex textField="s" {attributes}>{more}<Constant dataType="string">{term}</Constant></TextIndex>'


STEMS = ("<TextIndexNormalization><InlineTable><row><string>tests?</string><stem>exam</stem><regex>true</regex></row></InlineTable>"
         "</TextIndexNormalization>")

TEXT_INDEXES = [
    ("count", index("", "test"), "integer", {"s": "Test this test, please"}, 2),
    ("case", index('isCaseSensitive="true"', "test"), "integer", {"s": "Test this test, please"}, 1),
    ("no part of a word", index("", "test"), "integer", {"s": "testing"}, 0),
    ("two words", index("", "user friendly"), "integer", {"s": "very user friendly and user  friendly"}, 2),
    ("binary", index('localTermWeights="binary"', "a"), "integer", {"s": "a b a"}, 1),
    ("logarithmic", index('localTermWeights="logarithmic"', "a"), "double", {"s": "a a a a a a a a a"}, 1.0),
    ("augmented", index('localTermWeights="augmentedNormalizedTermFrequency"', "a"), "double", {"s": "a b b"}, 0.75),
    ("near", index('maxLevenshteinDistance="1"', "test"), "integer", {"s": "tests tent rest best"}, 4),
    ("near enough", index('maxLevenshteinDistance="1"', "test"), "integer", {"s": "tests tents"}, 1),
    ("best", index('maxLevenshteinDistance="1" countHits="bestHits"', "test"), "integer", {"s": "test tests test tent"}, 2),
    ("separator", index('wordSeparatorCharacterRE="-"', "b"), "integer", {"s": "a-b-b"}, 2),
    ("normalised", index("", "exam", STEMS), "integer", {"s": "test exam tests"}, 3),
    ("missing", index("", "a"), "integer", {}, None),
]

ROWS = {"Constant": CONSTANTS, "FieldRef": FIELD_REFS, "Apply": APPLIES, "tables": TABLES, "TextIndex": TEXT_INDEXES}
