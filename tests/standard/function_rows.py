"""Rows of built-in functions: name, arguments, result. Worked out by hand or from the examples and the wording of the
standard; digits that no hand works out are from tables of the functions. None is missing, UNDEFINED a result outside the
domain; text with a type in front ("date:2003-04-01") is a date, time or dateTime."""

UNDEFINED = object()
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

ROWS = ARITHMETIC + ANGLES + NORMAL + LOGIC + TEXTS + DATES

# What the standard lists.
NAMES = """+ - * / min max sum avg median product log10 ln ln1p exp expm1 sqrt abs pow hypot threshold floor ceil round rint
modulo sin cos tan asin acos atan atan2 sinh cosh tanh isMissing isNotMissing isValid isNotValid equal notEqual lessThan
lessOrEqual greaterThan greaterOrEqual and or not isIn isNotIn if uppercase lowercase stringLength substring trimBlanks
concat replace matches formatNumber formatDatetime dateDaysSinceYear dateSecondsSinceYear dateSecondsSinceMidnight
normalCDF normalPDF normalIDF stdNormalCDF stdNormalPDF stdNormalIDF erf""".split()
