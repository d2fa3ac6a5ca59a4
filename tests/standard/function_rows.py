"""Rows of built-in functions: name, arguments, result. Worked out by hand or from the examples and the wording of the
standard; digits that no hand works out are from tables of the functions. None is missing, UNDEFINED a result outside the
domain; text with a type in front ("date:2003-04-01") is a date, a time, a dateTime or a count of one; Invalid tells a
value that its field excludes."""
import dataclasses
import math

UNDEFINED = object()
INFINITE = math.inf


@dataclasses.dataclass(frozen=True)
class Invalid:
    of: object


I = "integer-typed"  # stands behind a result that has to be an integer, not only to equal one

ARITHMETIC = [
    ("+", [1, 2], 3, I), ("+", [1, 2.5], 3.5), ("+", [0.1, 0.2], 0.30000000000000004), ("-", [1, 2.5], -1.5),
    ("-", [2, 5], -3, I), ("*", [3, 4], 12, I), ("*", [0.5, 3], 1.5), ("/", [6, 2], 3.0), ("/", [1, 2], 0.5),
    ("/", [1, 0], UNDEFINED), ("/", [0.0, 0.0], UNDEFINED),
    ("min", [3, 1, 2], 1, I), ("min", [3, None, 2.5], 2.5), ("min", [None, None], None), ("max", [3, 1, 2], 3, I),
    ("max", [None, -1.5, -2], -1.5), ("max", [None], None), ("sum", [1, 2, 3], 6, I), ("sum", [1, None, 0.5], 1.5),
    ("sum", [None, None], None), ("avg", [1, 2], 1.5), ("avg", [1, None, 4], 2.5), ("avg", [None], None),
    ("median", [5, 1, 3], 3.0), ("median", [4, 1, 3, 2], 2.5), ("median", [4, None, 1], 2.5), ("median", [None], None),
    ("product", [2, 3, 4], 24, I), ("product", [2, None, 0.25], 0.5), ("product", [None], None),
    ("log10", [1000], 3.0), ("log10", [0], UNDEFINED), ("log10", [-1], UNDEFINED), ("ln", [1], 0.0),
    ("ln", [2], 0.6931471805599453), ("ln", [-0.5], UNDEFINED), ("ln1p", [0], 0.0), ("ln1p", [1e-20], 1e-20),
    ("ln1p", [-2], UNDEFINED), ("exp", [0], 1.0), ("exp", [1], 2.718281828459045), ("expm1", [0], 0.0),
    ("expm1", [1e-20], 1e-20), ("sqrt", [6.25], 2.5), ("sqrt", [-1], UNDEFINED), ("abs", [-3], 3, I), ("abs", [2.5], 2.5),
    ("pow", [2, 10], 1024.0), ("pow", [0, 0], 1.0), ("pow", [-2, 3], -8.0), ("pow", [4, 0.5], 2.0),
    ("pow", [-0.5, 2.5], UNDEFINED), ("hypot", [3, 4], 5.0), ("hypot", [-5, 12], 13.0),
    ("threshold", [2, 1], 1, I), ("threshold", [1, 1], 0, I), ("threshold", [0.5, 1], 0, I),
    ("floor", [2.7], 2.0), ("floor", [-2.5], -3.0), ("floor", [4], 4, I), ("ceil", [2.1], 3.0), ("ceil", [-2.5], -2.0),
    ("round", [2.5], 3.0), ("round", [-2.5], -2.0), ("round", [2.4], 2.0), ("round", [0.49999999999999994], 0.0),
    ("rint", [2.5], 2.0), ("rint", [3.5], 4.0), ("rint", [-2.5], -2.0), ("rint", [2.6], 3.0),
    ("modulo", [11, 4], 3, I), ("modulo", [-11, 4], 1, I), ("modulo", [11, -4], -1, I), ("modulo", [-11, -4], -3, I),
    ("modulo", [5.5, 2], 1.5), ("modulo", [-5.5, 2], 0.5), ("modulo", [1, 0], UNDEFINED),
]

ANGLES = [
    ("sin", [0], 0.0), ("sin", [1], 0.8414709848078965), ("cos", [0], 1.0), ("cos", [1], 0.5403023058681398),
    ("tan", [1], 1.5574077246549023), ("asin", [1], 1.5707963267948966), ("asin", [2], UNDEFINED), ("acos", [1], 0.0),
    ("acos", [-1], 3.141592653589793), ("acos", [1.5], UNDEFINED), ("atan", [1], 0.7853981633974483),
    ("atan2", [1, -1], 2.356194490192345), ("sinh", [1], 1.1752011936438014), ("cosh", [0], 1.0),
    ("cosh", [1], 1.543080634815244), ("tanh", [1], 0.7615941559557649), ("tanh", [400], 1.0),
]

NORMAL = [
    ("stdNormalCDF", [0], 0.5), ("stdNormalCDF", [1.96], 0.9750021048517795), ("stdNormalCDF", [-1], 0.15865525393145707),
    ("normalCDF", [12, 10, 2], 0.8413447460685429), ("normalCDF", [1, 0, 0], UNDEFINED),
    ("stdNormalPDF", [0], 0.3989422804014327), ("stdNormalPDF", [1], 0.24197072451914337),
    ("normalPDF", [10, 10, 2], 0.19947114020071635), ("stdNormalIDF", [0.5], 0.0),
    ("stdNormalIDF", [0.975], 1.959963984540054), ("stdNormalIDF", [1.5], UNDEFINED),
    ("normalIDF", [0.975, 10, 2], 13.919927969080108), ("erf", [0], 0.0), ("erf", [1], 0.8427007929497149),
    ("erf", [-0.5], -0.5204998778130465),
]

LOGIC = [
    ("isMissing", [None], True), ("isMissing", [0], False), ("isMissing", [""], False), ("isNotMissing", [None], False),
    ("isNotMissing", [1], True), ("isValid", [None], False), ("isValid", [1], True), ("isNotValid", [None], True),
    ("isNotValid", ["a"], False),
    ("equal", [1, 1.0], True), ("equal", ["a", "A"], False), ("equal", ["a", "a "], False), ("equal", [None, 1], None),
    ("equal", [True, True], True), ("notEqual", [1, 2], True), ("notEqual", ["a", "a"], False), ("notEqual", [1, None], None),
    ("lessThan", [1, 2], True), ("lessThan", [2, 2], False), ("lessThan", ["B", "a"], True), ("lessThan", [None, 1], None),
    ("lessThan", [False, True], True), ("lessOrEqual", [2, 2], True), ("lessOrEqual", [3, 2], False),
    ("greaterThan", [2, 1], True), ("greaterThan", [1, 1], False), ("greaterThan", ["date:2024-03-01", "date:2024-02-29"], True),
    ("greaterOrEqual", [1, 1], True), ("greaterOrEqual", [0, 1], False), ("greaterOrEqual", [1, None], None),
    ("and", [True, True], True), ("and", [True, False], False), ("and", [True, None], None), ("and", [False, None], False),
    ("and", [None, None], None), ("and", [True, True, None], None), ("and", [None, True, False], False),
    ("or", [False, False], False), ("or", [False, True], True), ("or", [False, None], None), ("or", [True, None], True),
    ("or", [None, None], None), ("or", [None, False, True], True), ("not", [True], False), ("not", [False], True),
    ("not", [None], None),
    ("isIn", [1, 2, 1], True), ("isIn", [1, 2, 3], False), ("isIn", ["a", "b", "a"], True), ("isIn", [None, 1], None),
    ("isNotIn", [1, 2, 1], False), ("isNotIn", [1, 2, 3], True), ("isNotIn", [None, 1], None),
    ("if", [True, 1, 2], 1), ("if", [False, 1, 2], 2), ("if", [None, 1, 2], None), ("if", [True, 1], 1),
    ("if", [False, 1], None), ("if", [True, 1, None], 1), ("if", [False, None, "b"], "b"), ("if", [True, None, 2], None),
]

TEXTS = [
    ("uppercase", ["aBc9x"], "ABC9X"), ("uppercase", ["grün"], "GRÜN"), ("uppercase", ["straße"], "STRASSE"),
    ("lowercase", ["aBc9X"], "abc9x"), ("lowercase", ["ÀÉЖ"], "àéж"),
    ("stringLength", ["aBc9x "], 6, I), ("stringLength", [""], 0, I), ("stringLength", ["grün"], 4, I),
    ("substring", ["aBc9x", 2, 3], "Bc9"), ("substring", ["aBc9x", 4, 10], "9x"), ("substring", ["abc", 5, 1], ""),
    ("substring", ["abc", 1, 0], ""), ("substring", ["abc", 0, 1], UNDEFINED), ("substring", ["abc", 1, -1], UNDEFINED),
    ("substring", ["çédille", 2, 1], "é"), ("trimBlanks", [" aBc9x "], "aBc9x"), ("trimBlanks", ["  "], ""),
    ("trimBlanks", ["a b"], "a b"), ("concat", ["February", "-", "2000"], "February-2000"), ("concat", [2, "-", 2000], "2-2000"),
    ("concat", ["a", 2.5], "a2.5"), ("concat", ["a", ""], "a"), ("concat", ["a", None], None),
    ("replace", ["BBBB", "B+", "c"], "c"), ("replace", ["aXbX", "X", "-"], "a-b-"), ("replace", ["abc", "x", "y"], "abc"),
    ("replace", ["2024-03", "(\\d+)-(\\d+)", "$2/$1"], "03/2024"), ("replace", ["abc", "b", ""], "ac"),
    ("matches", ["January", "ar?y"], True), ("matches", ["May", "ar?y"], True), ("matches", ["March", "ar?y"], False),
    ("matches", ["abc", "^b"], False), ("matches", ["abc", "b"], True),
    ("formatNumber", [2, "%3d"], "  2"), ("formatNumber", [2.5, "%.2f"], "2.50"), ("formatNumber", [7, "%03d!"], "007!"),
    ("formatNumber", [0.25, "%d%%"], "0%"),
]

DATES = [
    ("formatDatetime", ["date:2004-08-20", "%m/%d/%y"], "08/20/04"),
    ("formatDatetime", ["dateTime:2003-04-01T13:05:09", "%Y-%m-%d %I:%M:%S %p"], "2003-04-01 01:05:09 PM"),
    ("formatDatetime", ["date:2024-02-29", "%a %e %b, day %j"], "Thu 29 Feb, day 060"),
    ("dateDaysSinceYear", ["date:2003-04-01", 1960], 15796, I), ("dateDaysSinceYear", ["date:1960-01-01", 1960], 0, I),
    ("dateDaysSinceYear", ["date:1959-12-31", 1960], -1, I), ("dateDaysSinceYear", ["dateTime:1960-01-02T23:59:59", 1960], 1, I),
    ("dateSecondsSinceYear", ["dateTime:1960-01-03T03:30:03", 1960], 185403, I),
    ("dateSecondsSinceYear", ["dateTime:1959-12-31T23:59:59", 1960], -1, I),
    ("dateSecondsSinceMidnight", ["dateTime:1960-01-03T05:23:30", ], 19410, I),
    ("dateSecondsSinceMidnight", ["time:05:23:30"], 19410, I),
]

# Ends of domains, what overflows, and arguments of other types.
LIMITS = [
    ("+", ["2", 3], 5.0), ("+", [True, 1], 2.0), ("+", ["x", 1], UNDEFINED), ("+", [1e308, 1e308], INFINITE),
    ("-", [INFINITE, INFINITE], UNDEFINED), ("*", [-1e200, 1e200], -INFINITE), ("/", [1, INFINITE], 0.0),
    ("/", [INFINITE, INFINITE], UNDEFINED), ("/", ["", 1], UNDEFINED), ("min", ["10", "9"], 9.0), ("max", ["10", 9], 10.0),
    ("min", [True, 2], 1.0), ("max", ["x", 1], UNDEFINED), ("sum", [1e308, 1e308], INFINITE),
    ("sum", [INFINITE, -INFINITE, 1], UNDEFINED), ("sum", [None, "x"], UNDEFINED), ("avg", [INFINITE, 1], INFINITE),
    ("median", [-INFINITE, INFINITE], UNDEFINED), ("median", [3, None, 1, 2, 9], 2.5), ("median", list(range(99, 0, -1)), 50.0),
    ("product", [1e200, -1e200], -INFINITE), ("product", [0, INFINITE], UNDEFINED), ("sum", [5], 5, I), ("avg", [5], 5.0),
    ("log10", [INFINITE], INFINITE), ("ln", [0], UNDEFINED), ("ln1p", [-1], UNDEFINED), ("ln1p", [INFINITE], INFINITE),
    ("exp", [1000], INFINITE), ("exp", [-1000], 0.0), ("expm1", [1000], INFINITE), ("expm1", [-1000], -1.0),
    ("sqrt", [INFINITE], INFINITE), ("abs", [-INFINITE], INFINITE), ("abs", [True], 1.0), ("pow", [0, -1], INFINITE),
    ("pow", [0.0, -1.5], INFINITE), ("pow", [-10, 309], -INFINITE), ("pow", [-10, 310], INFINITE), ("pow", [10, 400], INFINITE),
    ("pow", [10, -400], 0.0), ("pow", [-8, 1 / 3], UNDEFINED), ("hypot", [INFINITE, 1], INFINITE), ("hypot", [1e200, 1e200], 1.414213562373095e200),
    ("threshold", ["10", "9"], 1, I), ("threshold", [True, 0], 1, I),
    ("floor", [-0.5], -1.0), ("floor", [INFINITE], INFINITE), ("floor", [True], 1.0), ("floor", [1e300], 1e300),
    ("ceil", [-0.5], 0.0), ("ceil", [-7], -7, I), ("round", [-0.4], 0.0), ("round", [-0.5], 0.0), ("round", [1e300], 1e300),
    ("round", [-INFINITE], -INFINITE), ("round", [4503599627370497.0], 4503599627370497.0), ("round", [8], 8, I),
    ("rint", [0.5], 0.0), ("rint", [1.5], 2.0), ("rint", [-0.4], 0.0), ("rint", [9], 9, I),
    ("modulo", [5, INFINITE], 5.0), ("modulo", [-5, INFINITE], INFINITE), ("modulo", [INFINITE, 2], UNDEFINED),
    ("modulo", [-4, 2], 0, I), ("modulo", [4, -2], 0, I), ("modulo", [0.0, 0.0], UNDEFINED),
    ("sin", [INFINITE], UNDEFINED), ("cos", [-INFINITE], UNDEFINED), ("tan", [INFINITE], UNDEFINED),
    ("atan", [INFINITE], 1.5707963267948966), ("atan2", [0, 0], 0.0), ("atan2", [-1, 0], -1.5707963267948966),
    ("sinh", [1000], INFINITE), ("sinh", [-1000], -INFINITE), ("cosh", [-1000], INFINITE), ("tanh", [-INFINITE], -1.0),
    ("asin", [-1.0000000000000002], UNDEFINED), ("acos", ["x"], UNDEFINED),
    ("stdNormalCDF", [INFINITE], 1.0), ("stdNormalCDF", [-INFINITE], 0.0), ("stdNormalPDF", [INFINITE], 0.0),
    ("stdNormalPDF", [-1000], 0.0), ("stdNormalIDF", [0], UNDEFINED), ("stdNormalIDF", [1], UNDEFINED),
    ("normalIDF", [0.5, 10, 0], UNDEFINED), ("normalIDF", [0.5, 10, -1], UNDEFINED), ("normalIDF", [0, 10, 1], UNDEFINED),
    ("normalIDF", [0.5, 10, 2], 10.0), ("normalPDF", [1, 0, -1], UNDEFINED), ("normalCDF", [1, 0, -1], UNDEFINED),
    ("normalCDF", [INFINITE, INFINITE, 1], UNDEFINED), ("erf", [INFINITE], 1.0), ("erf", [-INFINITE], -1.0),
]

MORE_LOGIC = [
    ("isMissing", [Invalid("x")], False), ("isNotMissing", [Invalid(1)], True), ("isValid", [Invalid("x")], False),
    ("isNotValid", [Invalid(2.5)], True), ("equal", [Invalid("x"), "x"], True), ("isIn", ["a", Invalid("a")], True),
    ("equal", ["1", 1], True), ("equal", ["1.0", 1], True), ("equal", ["abc", 1], False), ("equal", [True, "true"], True),
    ("equal", ["date:1970-01-02", "dateTime:1970-01-02T00:00:00"], True), ("equal", ["date:1970-01-02", "1970-01-02"], True),
    ("equal", ["dateDaysSince[1960]:3654", "date:1970-01-02"], True), ("notEqual", ["date:1970-01-02", "date:1970-01-03"], True),
    ("lessThan", ["10", "9"], True), ("lessThan", [10, "9"], False), ("lessThan", ["time:01:00:00", "time:00:59:59"], False),
    ("lessThan", ["a", "ab"], True), ("lessThan", ["z", "é"], True), ("lessOrEqual", ["a", "a"], True),
    ("greaterThan", [INFINITE, 1], True), ("greaterOrEqual", [True, False], True),
    ("and", [1, True], True), ("and", ["true", 0], False), ("and", [True, 2], UNDEFINED), ("and", [False, "x"], UNDEFINED),
    ("or", [0, "false"], False), ("or", [True, "x"], UNDEFINED), ("or", [False, 0.5], UNDEFINED), ("not", [0], True),
    ("not", ["true"], False), ("not", ["yes"], UNDEFINED), ("not", [2], UNDEFINED), ("not", ["date:1970-01-01"], UNDEFINED),
    ("if", ["x", 1, 2], UNDEFINED), ("if", [1, "a", "b"], "a"), ("if", ["false", 1, 2.5], 2.5), ("if", [False, 1, None], None),
    ("isIn", [1, None, 1], True), ("isIn", [1, None], False), ("isIn", [1, "1"], True), ("isNotIn", [1, None, 2], True),
    ("isNotIn", ["b", "a", "B"], True),
]

MORE_TEXTS = [
    ("uppercase", ["ﬁn"], "FIN"), ("uppercase", [2.5], "2.5"), ("uppercase", [True], "TRUE"), ("uppercase", [""], ""),
    ("uppercase", ["ıß"], "ISS"), ("lowercase", ["ΑΣ ΣΑΣ"], "ας σας"), ("lowercase", ["İI"], "i̇i"),
    ("lowercase", ["date:2000-01-02"], "2000-01-02"),
    ("stringLength", ["a😀b"], 3, I), ("stringLength", [12.5], 4, I), ("stringLength", ["e\u0301"], 2, I),
    ("substring", ["a😀bé", 2, 1], "😀"), ("substring", ["a😀bé", 3, 9], "bé"), ("substring", ["abc", 1.9, 1.9], "a"),
    ("substring", [12345, 2, 3], "234"), ("substring", ["abc", "2", "1"], "b"), ("substring", ["abc", INFINITE, 1], UNDEFINED),
    ("substring", ["abc", 1, INFINITE], UNDEFINED), ("substring", ["abc", 1, 1e300], "abc"), ("substring", ["abc", 1e300, 1], ""),
    ("substring", ["abc", 0.9, 1], UNDEFINED), ("substring", ["abc", 1, -0.5], ""), ("substring", ["abc", "x", 1], UNDEFINED),
    ("trimBlanks", [" \t\r\n x y\n"], "x y"), ("trimBlanks", ["x"], "x"), ("trimBlanks", ["\u00a0x"], "\u00a0x"),
    ("concat", ["a", "b", "ü", 1, True], "abü1true"), ("concat", ["date:2000-01-02", "x"], "2000-01-02x"),
    ("concat", [1e21, "x"], "1e+21x"), ("concat", [1234567890123456.0, 1e16], "12345678901234561e+16"),
    ("concat", [Invalid("x"), "a"], "xa"),
    ("replace", ["abc", "", "-"], "-a-b-c-"), ("replace", ["axb", "x*", "-"], "-a--b-"), ("replace", ["a.b", "\\.", "\\$"], "a$b"),
    ("replace", ["ab", "(a)|(b)", "[$1$2]"], "[a][b]"), ("replace", ["ab", "a", "$1"], UNDEFINED), ("replace", ["ab", "(", "x"], UNDEFINED),
    ("replace", ["price", "e", "\\\\"], "pric\\"), ("replace", ["abc", "b", "\\d$"], "a\\d$c"), ("replace", ["abc", "b", "<$0>"], "a<b>c"),
    ("replace", ["ab", "(a)", "$10"], "a0b"), ("replace", ["grün", "ü", "ue"], "gruen"), ("replace", ["x", "y", "$9"], "x"),
    ("replace", ["Abc", "(?i)a", "x"], "xbc"), ("replace", [2024, "0", "-"], "2-24"), ("replace", ["a😀b", "😀", "é"], "aéb"),
    ("matches", ["a\nb", "a.b"], False), ("matches", ["a\rb", "a.b"], True), ("matches", ["a\n", "a$"], True),
    ("matches", ["abc", "("], UNDEFINED), ("matches", ["grün", "^\\w+$"], True), ("matches", [12, "^1"], True), ("matches", ["", ""], True),
    ("matches", ["😀", "^.$"], True), ("matches", ["aa", "^(a)\\1$"], True),
    ("formatNumber", [-7, "%05d"], "-0007"), ("formatNumber", [7, "%+d% d"], "+7 7"), ("formatNumber", [7, "%-4d|"], "7   |"),
    ("formatNumber", [255, "%x %X %o %u"], "ff FF 377 255"), ("formatNumber", [255, "%#x %#X"], "0xff 0XFF"),
    ("formatNumber", [8, "%#o"], "010"), ("formatNumber", [0, "%x%o"], "00"), ("formatNumber", [-255, "%x"], "-ff"),
    ("formatNumber", [7, "%.3d"], "007"), ("formatNumber", [7, "%06.3d"], "   007"),
    ("formatNumber", [1.5, "%i"], "1"), ("formatNumber", [-1.5, "%d"], "-1"), ("formatNumber", [-0.5, "%d"], "0"),
    ("formatNumber", [12345.678, "%e"], "1.234568e+04"), ("formatNumber", [12345.678, "%.2E"], "1.23E+04"),
    ("formatNumber", [0.0001, "%g"], "0.0001"), ("formatNumber", [0.00001, "%g"], "1e-05"), ("formatNumber", [1e10, "%G"], "1E+10"),
    ("formatNumber", [2.5, "%#.3g"], "2.50"), ("formatNumber", [1e10, "%#.3g"], "1.00e+10"), ("formatNumber", [2, "%#.0f"], "2."),
    ("formatNumber", [99.99, "%#.3g"], "100."), ("formatNumber", [0, "%#g"], "0.00000"), ("formatNumber", [2, "%#.0e"], "2.e+00"),
    ("formatNumber", [2.5, "%10.2f|"], "      2.50|"), ("formatNumber", [-2.5, "%010.2f"], "-000002.50"),
    ("formatNumber", [2.5, "%+.1f"], "+2.5"), ("formatNumber", [2.675, "%.2f"], "2.67"), ("formatNumber", [2.5, "%.0f"], "2"),
    ("formatNumber", [100000000000000000000.0, "%d"], "100000000000000000000"), ("formatNumber", [1e20, "%x"], "56bc75e2d63100000"),
    ("formatNumber", [INFINITE, "%.1f"], "inf"), ("formatNumber", [-INFINITE, "%F"], "-INF"), ("formatNumber", [INFINITE, "%d"], UNDEFINED),
    ("formatNumber", [2.5, "%s"], "2.5"), ("formatNumber", [2.0, "%5s|"], "    2|"), ("formatNumber", [12345, "%-6.3s|"], "123   |"),
    ("formatNumber", [2, "100%"], "100%"), ("formatNumber", [2, "%%%d%%"], "%2%"), ("formatNumber", [2, "%c"], UNDEFINED),
    ("formatNumber", [3, "%ld %hhu %lld"], "3 3 3"), ("formatNumber", [2.5, "%.2lf %Lf"], "2.50 2.500000"), ("formatNumber", [1, ""], ""),
    ("formatNumber", ["2.5", "%.1f"], "2.5"), ("formatNumber", ["x", "%d"], UNDEFINED), ("formatNumber", ["x", "none"], "none"), ("formatNumber", ["x", "%s"], UNDEFINED),
    ("formatNumber", [INFINITE, "%06f|"], "   inf|"), ("formatNumber", [0, "%#x"], "0"), ("formatNumber", [True, "%d"], "1"),
    ("formatNumber", [1, "%4097d"], UNDEFINED), ("formatNumber", [1, "%.4097f"], UNDEFINED), ("formatNumber", [1, "€%d ü"], "€1 ü"),
    ("formatNumber", [1, 5], "5"), ("formatNumber", [7, "%*d"], "%*d"), ("formatNumber", [7, "%.d%.f"], "77"),
]

MORE_DATES = [
    ("formatDatetime", ["dateTime:2003-04-01T13:05:09", "%A, %B %d; %c"], "Tuesday, April 01; Tue Apr  1 13:05:09 2003"),
    ("formatDatetime", ["dateTime:2003-04-01T00:05:09", "%D %F %h %r %R %T %x %X"],
     "04/01/03 2003-04-01 Apr 12:05:09 AM 00:05 00:05:09 04/01/03 00:05:09"),
    ("formatDatetime", ["date:2005-01-01", "%G %g %V %U %W %u %w %C%n%t"], "2004 04 53 00 00 6 6 20\n\t"),
    ("formatDatetime", ["date:2008-12-29", "%G-W%V-%u"], "2009-W01-1"), ("formatDatetime", ["date:2023-01-01", "%U %W"], "01 00"),
    ("formatDatetime", ["time:13:05:09", "%H.%M"], "13.05"), ("formatDatetime", ["timeSeconds:61", "%M:%S"], "01:01"),
    ("formatDatetime", ["timeSeconds:86400", "%M:%S"], UNDEFINED),
    ("formatDatetime", ["dateDaysSince[1960]:1", "%d/%m/%Y"], "02/01/1960"), ("formatDatetime", ["date:2000-01-02", "%Ey %Od"], "00 02"),
    ("formatDatetime", ["dateTimeSecondsSince[1970]:0.5", "%S"], "00"), ("formatDatetime", ["date:2000-01-02", "100% %%"], UNDEFINED),
    ("formatDatetime", ["date:2000-01-02", "ü %%d 50%"], "ü %d 50%"), ("formatDatetime", ["date:2000-01-02", "%Q"], UNDEFINED),
    ("formatDatetime", ["date:2000-01-02", "%Z"], UNDEFINED), ("formatDatetime", [5, "%d"], UNDEFINED),
    ("formatDatetime", ["2000-01-02", "%d"], UNDEFINED), ("formatDatetime", ["dateTimeSecondsSince[1970]:1e16", "%d"], UNDEFINED),
    ("formatDatetime", ["date:0005-01-02", "%Y"], "0005"), ("formatDatetime", ["dateDaysSince[0]:-1", "%Y-%m-%d"], "-001-12-31"),
    ("dateDaysSinceYear", [5, 1960], UNDEFINED), ("dateDaysSinceYear", ["2003-04-01", 1960], UNDEFINED),
    ("dateDaysSinceYear", ["time:01:00:00", 1960], UNDEFINED), ("dateDaysSinceYear", ["date:2003-04-01", "1960"], 15796, I),
    ("dateDaysSinceYear", ["date:2003-04-01", 1960.9], 15796, I), ("dateDaysSinceYear", ["date:2003-04-01", INFINITE], UNDEFINED),
    ("dateDaysSinceYear", ["date:2003-04-01", 1e9], UNDEFINED), ("dateDaysSinceYear", ["date:2003-04-01", "x"], UNDEFINED),
    ("dateDaysSinceYear", ["date:1970-01-01", 0], 719528, I), ("dateDaysSinceYear", ["date:1970-01-01", -4], 720989, I),
    ("dateDaysSinceYear", ["dateDaysSince[1960]:1", 1960], 1, I), ("dateDaysSinceYear", ["dateDaysSince[1970]:1.5", 1970], 1, I),
    ("dateDaysSinceYear", ["dateTimeSecondsSince[1970]:-1", 1970], -1, I),
    ("dateSecondsSinceYear", ["date:1960-01-02", 1960], 86400, I), ("dateSecondsSinceYear", ["time:01:00:00", 1960], UNDEFINED),
    ("dateSecondsSinceYear", ["dateTimeSecondsSince[1980]:5.5", 1980], 5, I), ("dateSecondsSinceYear", [True, 1980], UNDEFINED),
    ("dateSecondsSinceMidnight", ["timeSeconds:86399"], 86399, I), ("dateSecondsSinceMidnight", ["timeSeconds:86400"], UNDEFINED),
    ("dateSecondsSinceMidnight", ["timeSeconds:-1"], UNDEFINED),
    ("dateSecondsSinceMidnight", ["timeSeconds:61"], 61, I), ("dateSecondsSinceMidnight", ["date:2000-01-01"], UNDEFINED),
    ("dateSecondsSinceMidnight", ["dateTime:1969-12-31T23:59:58"], 86398, I), ("dateSecondsSinceMidnight", ["x"], UNDEFINED),
]

ROWS = ARITHMETIC + ANGLES + NORMAL + LOGIC + TEXTS + DATES + LIMITS + MORE_LOGIC + MORE_TEXTS + MORE_DATES

# What asks whether a value is valid. To everything else an invalid one is what it is.
OF_VALIDITY = ("isValid", "isNotValid")

# What passes an argument on, with all that is known of it: the place of that argument in its first row.
PASSED_ON = {"if": 1}

# What the standard lists.
NAMES = """+ - * / min max sum avg median product log10 ln ln1p exp expm1 sqrt abs pow hypot threshold floor ceil round rint
modulo sin cos tan asin acos atan atan2 sinh cosh tanh isMissing isNotMissing isValid isNotValid equal notEqual lessThan
lessOrEqual greaterThan greaterOrEqual and or not isIn isNotIn if uppercase lowercase stringLength substring trimBlanks
concat replace matches formatNumber formatDatetime dateDaysSinceYear dateSecondsSinceYear dateSecondsSinceMidnight
normalCDF normalPDF normalIDF stdNormalCDF stdNormalPDF stdNormalIDF erf""".split()
