"""The points of the tables of the built-in functions of Apply, and their results. make_golden.py in
tests/stats/golden writes the tables.

A table is named after the function's enumerator. Its arguments are those of the Apply; the missing number stands for a
missing field. A date is given by its seconds since 1970, a time by its seconds since midnight.
"""
import datetime
import math

from mpmath import mp, mpf, inf, nan

import reference as ref
from draw import MISSING, span, values_of
from normal import cdf_std_norm, located_probabilities, normal_quantile, normal_values, pdf_std_norm, probabilities

MISSING_NUMBER = -1.7976931348623157e308
INT_LOW, INT_HIGH = -2147483648.0, 2147483647.0


def is_missing(x):
    return x == MISSING_NUMBER


def present(function):
    """A function that is missing when an argument is."""
    def guarded(*arguments):
        return MISSING if any(map(is_missing, arguments)) else function(*arguments)
    return guarded


def number(result):
    """The floor of the missing number, say, is the missing number."""
    return MISSING if result != MISSING and result == mpf(MISSING_NUMBER) else result


def table(function, *regions):
    """Regions of points drawn for a function: (name, count, draw), or (name, list of points)."""
    def points(d):
        for name, *rest in regions:
            yield d.region(name, *rest) if len(rest) == 2 else (name, rest[0])
    return values_of(points, function)


def listed(function, points):
    """More regions behind those of another table."""
    def rows(d):
        yield from function(d)
        yield from points(d)
    return rows


def any_size(d, low=1e-150, high=1e150):
    return d.sign() * d.log(low, high)


def pair(d):
    return [any_size(d), any_size(d)]


def farther_pair(d):
    return [any_size(d, 1e-300, 1e300), any_size(d, 1e-300, 1e300)]


def near_pair(d):
    return [d.sign() * d.between(0.1, 10), d.sign() * d.between(0.1, 10)]


M = MISSING_NUMBER

# ---- arithmetic ---------------------------------------------------------------------------------------------------


def quotient(a, b):
    return MISSING if b == 0 else mpf(a) / mpf(b)


def remainder(a, b):
    if b == 0:
        return MISSING
    whole = mpf(a) / mpf(b)
    return mpf(a) - truncated(whole) * mpf(b) if INT_LOW < whole < INT_HIGH else MISSING


def truncated(x):
    return mp.floor(x) if x >= 0 else mp.ceil(x)


def rounded(x):
    if not INT_LOW < x < INT_HIGH:
        return MISSING
    return mp.floor(mpf(x) + mpf(1) / 2) if x > 0 else mp.ceil(mpf(x) - mpf(1) / 2)


def power(x, y):
    if x == 0:
        return mpf(1) if y == 0 else mpf(0) if y > 0 else inf
    if x < 0 and y != math.floor(y):
        return nan
    magnitude = mp.exp(mpf(y) * mp.log(abs(mpf(x))))
    result = -magnitude if x < 0 and y % 2 == 1 else magnitude
    return result if abs(result) < mpf(2) ** 1024 else mp.sign(result) * inf


def exponential(x):
    return MISSING if x > 709 else mp.exp(mpf(x)) if x > -708 else mpf(0)


def logarithm(function):
    return lambda x: function(mpf(x)) if x > 0 else MISSING


def whole_of(function):
    return lambda x: function(mpf(x)) if INT_LOW < x < INT_HIGH else MISSING


def halves(d):
    x = d.sign() * (d.whole(0, 10 ** d.whole(0, 9)) + 0.5)
    return [d.random.choice((x, math.nextafter(x, 0), math.nextafter(x, 1e10)))]


WHOLE_LIMITS = [[x] for x in (0.0, -0.0, 0.5, -0.5, 0.49999999999999994, 1.0, -1.0, 2147483646.5, 2147483646.9999998,
                              2147483647.0, 2147483648.0, -2147483647.5, -2147483647.9999998, -2147483648.0, 1e300, M)]
PAIRS_OF_MISSING = [[M, 1.0], [1.0, M], [M, M], [0.0, 0.0], [0.0, -0.0], [1.0, 0.0]]
EITHER_MISSING = PAIRS_OF_MISSING[:3]
LOG_REGIONS = (("1e-307 to 1e308", 120, lambda d: [d.log(1e-307, 1e308)]),
               ("1 +- 1e-15 to 0.1", 81, lambda d: [1 + d.sign() * d.log(1e-15, 1e-1)]),
               ("limits", [[x] for x in (5e-324, 1e-310, 1.7976931348623157e308, 1.0, 10.0, 1000.0, 0.0, -0.0, -1.0, M)]))
WHOLE_REGIONS = (("+-1e-5 to 2e9", 120, lambda d: [any_size(d, 1e-5, 2e9)]), ("halves +-0.5 to 1e9 and beside them", 81, halves),
                 ("limits", WHOLE_LIMITS))
UNBOUNDED_REGIONS = (("+-1e-300 to 1e300", 120, lambda d: [any_size(d, 1e-300, 1e300)]), ("halves +-0.5 to 1e9 and beside them", 81, halves),
                     ("limits", WHOLE_LIMITS))


def near_threshold(d):
    x = any_size(d)
    return [d.random.choice((x, math.nextafter(x, 1e300), math.nextafter(x, -1e300))), x]


ARITHMETIC = {
    "plus": table(present(lambda a, b: mpf(a) + mpf(b)), ("+-1e-300 to 1e300", 120, farther_pair),
                  ("+-0.1 to 10", 81, near_pair),
                  ("limits", EITHER_MISSING + [[0.0, 0.0], [1e308, -1e308], [1.0, -1.0]])),
    "minus": table(present(lambda a, b: mpf(a) - mpf(b)), ("+-1e-300 to 1e300", 120, farther_pair),
                  ("+-0.1 to 10", 81, near_pair),
                   ("limits", EITHER_MISSING + [[0.0, 0.0], [1e308, 1e308], [1.0, 1.0]])),
    "multiply": table(present(lambda a, b: mpf(a) * mpf(b)), ("+-1e-150 to 1e150", 120, pair),
                      ("+-0.1 to 10", 81, near_pair), ("limits", EITHER_MISSING + [[0.0, -5.0], [1e300, 0.0]])),
    "divide": table(present(quotient), ("+-1e-150 to 1e150", 120, pair), ("+-0.1 to 10", 81, near_pair),
                    ("limits", PAIRS_OF_MISSING + [[0.0, 3.0], [-0.0, -3.0]])),
    "pow": table(present(power), ("bases 1e-3 to 1e3, exponents -80 to 80", 81, lambda d: [d.log(1e-3, 1e3), d.between(-80, 80)]),
                 ("bases 1 +- 1e-9 to 1e-3, exponents +-1 to 1e5", 60,
                  lambda d: [1 + d.sign() * d.log(1e-9, 1e-3), d.sign() * d.log(1, 1e5)]),
                 ("bases -10 to -0.1, whole exponents -40 to 40", 60, lambda d: [-d.log(0.1, 10), float(d.whole(-40, 40))]),
                 ("bases 1e-300 to 1e300, exponents 1 / 2 to 1 / 9", 30,
                  lambda d: [d.log(1e-300, 1e300), 1 / d.whole(2, 9)]),
                 ("limits", EITHER_MISSING + [[0.0, 0.0], [0.0, 2.0], [0.0, -1.0], [5.0, 0.0], [-5.0, 0.0], [1.0, 1e300],
                                              [-8.0, 1 / 3], [2.0, 2000.0], [-2.0, 2001.0], [2.0, 1023.0]])),
    "abs": table(present(lambda x: abs(mpf(x))), ("+-1e-300 to 1e300", 201, lambda d: [any_size(d, 1e-300, 1e300)]),
                 ("limits", [[0.0], [-0.0], [-5e-324], [1.7976931348623157e308], [M]])),
    "exp": table(present(exponential), ("-707.9 to 709", 141, lambda d: [d.between(-707.9, 709)]),
                 ("+-1e-18 to 0.1", 60, lambda d: [any_size(d, 1e-18, 1e-1)]),
                 ("limits", [[x] for x in (0.0, 709.0, 709.0000000000001, 1e300, -707.9999999999999, -708.0, -709.0, -1e300,
                                           M)])),
    "log10": table(logarithm(mp.log10), *LOG_REGIONS),
    "ln": table(logarithm(mp.log), *LOG_REGIONS),
    "mod": table(present(remainder),
                 ("whole numbers -1e9 to 1e9 by +-1 to 999", 81,
                  lambda d: [float(d.sign() * d.whole(0, 10 ** 9)), float(d.sign() * d.whole(1, 999))]),
                 ("+-1e-3 to 1e4 by +-1e-3 to 1e3", 120, lambda d: [any_size(d, 1e-3, 1e4), any_size(d, 1e-3, 1e3)]),
                 ("limits", PAIRS_OF_MISSING + [[2147483646.0, 1.0], [2147483647.0, 1.0], [-2147483647.0, 1.0],
                                                [-2147483648.0, 1.0], [1e300, 1.0], [5.0, 1e300], [6.0, 3.0], [-6.0, 4.0]])),
    "round": table(rounded, *WHOLE_REGIONS),
    "trunc": table(whole_of(truncated), *WHOLE_REGIONS),
    "floor": table(lambda x: number(mp.floor(mpf(x))), *UNBOUNDED_REGIONS),
    "ceil": table(lambda x: number(mp.ceil(mpf(x))), *UNBOUNDED_REGIONS),
    "sqrt": table(lambda x: mp.sqrt(mpf(x)) if x >= 0 else MISSING,
                  ("1e-307 to 1e308", 201, lambda d: [d.log(1e-307, 1e308)]),
                  ("limits", [[0.0], [-0.0], [5e-324], [-5e-324], [1.7976931348623157e308], [-1.0], [M]])),
    "threshold": table(lambda x, t=0.0: mpf(1 if x > t else 0), ("+-1e-300 to 1e300", 120, farther_pair),
                       ("within one step, +-1e-150 to 1e150", 81, near_threshold),
                       ("limits", [[0.0, -0.0], [M, M], [M, -1e308], [1.0, M], [3.0], [-3.0], [0.0]])),
}

# ---- aggregates ---------------------------------------------------------------------------------------------------

def of_present(function, least=1):
    """A function of the arguments that are not missing; missing when too few are left."""
    def aggregate(*arguments):
        numbers = [mpf(x) for x in arguments if not is_missing(x)]
        return function(numbers) if len(numbers) >= least else MISSING
    return aggregate


def some(draw, holes=True):
    """One to eight numbers, one in eight of them missing."""
    def row(d):
        numbers = [draw(d) for _ in range(d.whole(1, 8))]
        return [M if holes and d.whole(1, 8) == 1 else x for x in numbers]
    return row


def scaled(draw, low, high):
    """Several numbers of one scale."""
    def row(d):
        scale = d.log(low, high)
        return [draw(d) * scale for _ in range(d.whole(2, 8))]
    return row


def mean(numbers):
    return mp.fsum(numbers) / len(numbers)


def median(numbers):
    ordered, half = sorted(numbers), len(numbers) // 2
    return ordered[half] if len(ordered) % 2 else (ordered[half - 1] + ordered[half]) / 2


def variance(numbers):
    centre = mean(numbers)
    return mp.fsum((x - centre) ** 2 for x in numbers) / (len(numbers) - 1)


AGGREGATE_LIMITS = [[M], [M, M, M], [5.0], [M, 5.0, M], [0.0, 0.0], [7.5, 7.5, 7.5, 7.5], [1e-300, 1e300]]
SIGNED = ("1 to 8 of +-1e-3 to 1e3", 102, some(lambda d: d.sign() * d.log(1e-3, 1e3)))
POSITIVE = ("1 to 8 of 1e-100 to 1e100", 102, some(lambda d: d.log(1e-100, 1e100)))
EXACT_REGIONS = (SIGNED, ("1 to 8 of +-1e-300 to 1e300", 102, some(lambda d: any_size(d, 1e-300, 1e300))), ("limits", AGGREGATE_LIMITS))


def spread_regions(low, high):
    sizes = span(low, high)
    return (("1 to 8 of -10 to 10", 81, some(lambda d: d.between(-10, 10))),
            (f"2 to 8 of -1 to 1 times {sizes}", 60, scaled(lambda d: d.between(-1, 1), low, high)),
            ("2 to 8 of 999999 to 1000001 times 1e-3 to 1e3", 60, scaled(lambda d: 1e6 + d.between(-1, 1), 1e-3, 1e3)),
            ("limits", [[M], [M, 5.0], [5.0], [7.5, 7.5], [3.0, M, 3.0], [M, M], [1.0, 2.0], [-1e100, 1e100]]))


AGGREGATES = {
    "sum": table(of_present(mp.fsum), POSITIVE, SIGNED, ("limits", AGGREGATE_LIMITS)),
    "mean": table(of_present(mean), POSITIVE, SIGNED, ("limits", AGGREGATE_LIMITS)),
    "avg": table(of_present(mean), POSITIVE, SIGNED, ("limits", AGGREGATE_LIMITS)),
    "median": table(of_present(median), POSITIVE, SIGNED, ("limits", AGGREGATE_LIMITS)),
    "product": table(of_present(mp.fprod), ("1 to 8 of +-1e-35 to 1e35", 120, some(lambda d: any_size(d, 1e-35, 1e35))),
                     ("1 to 8 of +-0.1 to 10", 81, some(lambda d: d.sign() * d.between(0.1, 10))), ("limits", AGGREGATE_LIMITS)),
    "min": table(of_present(min), *EXACT_REGIONS),
    "max": table(of_present(max), *EXACT_REGIONS),
    "sd": table(of_present(lambda x: mp.sqrt(variance(x)), 2), *spread_regions(1e-150, 1e150)),
    "variance": table(of_present(variance, 2), *spread_regions(1e-100, 1e100)),
}

# ---- the normal family --------------------------------------------------------------------------------------------

SHORT_TWO_PI = mpf(6.2831853)
FARTHEST = 37.61


def standardised(function):
    """A function of x, mean and deviation by that of the deviate."""
    def located_value(x, mean_, sd):
        return function((mpf(x) - mpf(mean_)) / mpf(sd), mpf(sd)) if sd > 0 else MISSING
    return present(located_value)


def normal_table(function):
    limits = [[M, 0.0, 1.0], [0.0, M, 1.0], [0.0, 0.0, M], [1.0, 0.0, 0.0], [1.0, 0.0, -1.0], [3.0, 3.0, 2.0]]
    far = [[40.0, 0.0, 1.0], [-40.0, 0.0, 1.0], [1e300, 0.0, 1.0], [-1e300, 0.0, 1.0]]
    return listed(values_of(normal_values, standardised(function)),
                  table(standardised(function), ("limits", limits + far)))


def density(z, sd):
    return ref.normal_density(z) / sd if abs(z) <= FARTHEST else mpf(0)


def lower(z, _):
    return ref.normal_lower(z) if z > -38 else mpf(0)


def normal_idf(p, mean_, sd):
    return normal_quantile(p, mean_, sd) if 0 < p < 1 and sd > 0 else MISSING


def normal_idf_table():
    limits = [[0.0, 1.0, 2.0], [1.0, 1.0, 2.0], [-0.5, 1.0, 2.0], [1.5, 1.0, 2.0], [0.5, 1.0, 2.0], [0.3, 1.0, 0.0],
              [0.3, 1.0, -2.0], [M, 1.0, 2.0], [0.3, M, 2.0], [0.3, 1.0, M]]
    return listed(values_of(located_probabilities, present(normal_idf)),
                  table(present(normal_idf), ("limits", limits)))


def std_normal_table(points, function, limits):
    return listed(values_of(points, present(function)), table(present(function), ("limits", [[x] for x in limits])))


def std_normal_lower(x):
    return lower(mpf(x), 1)


def std_normal_density(x):
    return mp.exp(-mpf(x) ** 2 / 2) / mp.sqrt(SHORT_TWO_PI) if abs(x) < 39 else mpf(0)


def std_normal_idf(p):
    return normal_quantile(p) if 0 < p < 1 else MISSING


NORMAL = {
    "cdf_normal": normal_table(lower),
    "normal_cdf": normal_table(lower),
    "pdf_normal": normal_table(density),
    "normal_pdf": normal_table(density),
    "idf_normal": normal_idf_table(),
    "normal_idf": normal_idf_table(),
    "cdfnorm": std_normal_table(cdf_std_norm, std_normal_lower, (0.0, -0.0, -40.0, 40.0, -1e300, 1e300, M)),
    "std_normal_cdf": std_normal_table(cdf_std_norm, std_normal_lower, (0.0, -0.0, -40.0, 40.0, -1e300, 1e300, M)),
    "std_normal_pdf": std_normal_table(pdf_std_norm, std_normal_density, (0.0, -0.0, -40.0, 40.0, -1e300, 1e300, M)),
    "std_normal_idf": std_normal_table(probabilities, std_normal_idf, (0.0, 1.0, 0.5, -0.1, 1.1, 5e-324, M)),
    "erf": table(present(lambda x: mp.erf(max(min(mpf(x), 50), -50))), ("+-1e-300 to 0.5", 81, lambda d: [any_size(d, 1e-300, 0.5)]),
                 ("+-0.5 to 1e300", 120, lambda d: [d.sign() * d.random.choice((d.between(0.5, 7), d.log(7, 1e300)))]),
                 ("limits", [[x] for x in (0.0, -0.0, 10.0, -10.0, 1e300, -1e300, M)])),
}

# ---- dates and times ----------------------------------------------------------------------------------------------

DAY = 86400


def difference(*divisors):
    def result(a, b):
        value = mpf(a) - mpf(b)
        for divisor in divisors:
            value /= mpf(divisor)
        return value
    return present(result)


MOMENTS = ("of the years 1 to 9999", "-1e9 to 4e9")
TIMES = ("0 to 86399", "0 to 86400")


def moments(d):
    return [float(d.whole(-62135596800, 253402300799)), float(d.whole(-62135596800, 253402300799))]


def moments_with_fractions(d):
    return [d.between(-1e9, 4e9), d.between(-1e9, 4e9)]


def times(d):
    return [float(d.whole(0, DAY - 1)), float(d.whole(0, DAY - 1))]


def times_with_fractions(d):
    return [d.between(0, DAY), d.between(0, DAY)]


def differences(function, whole, fractions, ranges):
    return table(function, (f"whole seconds {ranges[0]}", 120, whole), (f"fractions {ranges[1]}", 81, fractions),
                 ("limits", [[M, 0.0], [0.0, M], [M, M], [0.0, 0.0], [86400.0, 86400.0], [86400.0, 0.0]]))


def calendar(pick):
    """A part of the date in the proleptic Gregorian calendar. The day of a moment before 1970 is that of its end."""
    def part(seconds):
        days = int(truncated(truncated(mpf(seconds)) / DAY))
        cycles, rest = divmod(days + 719162, 146097)  # of 400 years since 0001-01-01
        date = datetime.date.fromordinal(rest + 1)
        return mpf(pick(date, cycles))
    return present(part)


def clock(pick):
    return present(lambda seconds: mpf(pick(int(truncated(mpf(seconds))) % DAY)))


def parts_of_date(pick):
    return table(calendar(pick), ("of the years 1970 to 9999", 102, lambda d: [d.between(0, 253402300799)]),
                 ("of the years 1 to 1969", 81, lambda d: [d.between(-62135596800, 0)]),
                 ("-2e11 to -6.3e10 or 2.6e11 to 3e12", 42, lambda d: [d.random.choice((d.between(2.6e11, 3e12), d.between(-2e11, -6.3e10)))]),
                 ("limits", [[x] for x in (0.0, -1.0, -86399.0, -86400.0, 86399.999, 86400.0, 951782400.0, 951868800.0,
                                           4107542400.0, M)]))


def parts_of_time(pick):
    return table(clock(pick), ("0 to 86400", 102, lambda d: [d.between(0, DAY)]),
                 ("86400 to 1e9", 60, lambda d: [d.between(DAY, 1e9)]), ("-1e9 to 0", 60, lambda d: [d.between(-1e9, 0)]),
                 ("limits", [[x] for x in (0.0, -0.5, -1.0, 59.0, 60.0, 3599.0, 3600.0, 86399.0, 86399.999, 86400.0, M)]))


DATES = {
    "date_years_difference": differences(difference(DAY, 365.25), moments, moments_with_fractions, MOMENTS),
    "date_months_difference": differences(difference(DAY, 30.4375), moments, moments_with_fractions, MOMENTS),
    "date_days_difference": differences(difference(DAY), moments, moments_with_fractions, MOMENTS),
    "year_from_date": parts_of_date(lambda date, cycles: date.year + 400 * cycles),
    "month_from_date": parts_of_date(lambda date, _: date.month),
    "day_from_date": parts_of_date(lambda date, _: date.day),
    "time_hours_difference": differences(difference(3600), times, times_with_fractions, TIMES),
    "time_minutes_difference": differences(difference(60), times, times_with_fractions, TIMES),
    "time_seconds_difference": differences(difference(), times, times_with_fractions, TIMES),
    "hour_from_time": parts_of_time(lambda n: n // 3600),
    "minute_from_time": parts_of_time(lambda n: n % 3600 // 60),
    "second_from_time": parts_of_time(lambda n: n % 60),
}

# ---- comparisons and logic ----------------------------------------------------------------------------------------

EQUALITY = mpf("2.22045e-14")


def truth(condition):
    return lambda *arguments: mpf(1 if condition(*arguments) else 0)


def same(a, b):
    """Equality of numbers: relative, but for the missing number."""
    if a == 0 and b == 0:
        return True
    if is_missing(a) or is_missing(b):
        return a == b
    return abs(mpf(a) - mpf(b)) < EQUALITY * max(abs(mpf(a)), abs(mpf(b)))


def maybe_equal(d):
    x = any_size(d, 1e-3, 1e3)
    return [x, d.random.choice((x, -x, math.nextafter(x, 1e9), math.nextafter(x, -1e9), any_size(d, 1e-3, 1e3)))]


def within_tolerance(d):
    x = any_size(d)
    return [x, x * (1 + d.sign() * d.log(1e-16, 2e-14))]


def beyond_tolerance(d):
    x = any_size(d)
    return [x, x * (1 + d.sign() * d.log(2.4e-14, 1e-3))]


def comparison(condition):
    return table(truth(condition), ("+-1e-300 to 1e300", 102, farther_pair), ("within one step or opposite, +-1e-3 to 1e3", 102, maybe_equal),
                 ("limits", [[0.0, -0.0], [M, M], [M, 0.0], [0.0, M], [M, -1.7e308], [1.0], [1.0, 2.0, 3.0]]))


def of_two(condition):
    return lambda *arguments: len(arguments) == 2 and condition(*arguments)


def equality(condition):
    return table(truth(condition), ("+-1e-300 to 1e300", 60, farther_pair), ("1e-16 to 2e-14 apart, +-1e-150 to 1e150", 81, within_tolerance),
                 ("2.4e-14 to 1e-3 apart, +-1e-150 to 1e150", 81, beyond_tolerance),
                 ("limits", [[0.0, -0.0], [M, M], [M, 0.0], [0.0, M], [0.0, 5e-324], [1.0], [1.0, 1.0, 1.0]]))


def members(d):
    x = d.whole(0, 4)
    return [float(x)] + [float(d.whole(0, 9)) for _ in range(d.whole(1, 7))]


def near_members(d):
    x = any_size(d)
    return [x] + [d.random.choice((within_tolerance, beyond_tolerance))(d)[1] for _ in range(d.whole(0, 3))] + \
        [x * (1 + d.sign() * d.random.choice((1e-14, 3e-14)))]


def membership(expected):
    return table(truth(lambda x, *others: any(same(x, other) for other in others) == expected),
                 ("1 to 7 whole numbers 0 to 9", 120, members),
                 ("1 to 4 numbers 1e-16 to 1e-3 apart, +-1e-150 to 1e150", 81, near_members),
                 ("limits", [[1.0], [M, M], [M, 1.0], [1.0, M], [0.0, -0.0], [0.0, 5e-324]]))


def truths(d):
    return [d.random.choice((0.0, 0.0, -0.0, 1.0, 1.0, 2.5, -1.0, 1e-300, M)) for _ in range(d.whole(1, 8))]


def logic(condition):
    return table(truth(condition), ("1 to 8 arguments", 201, truths), ("limits", [[0.0], [-0.0], [1.0], [M], [5e-324]]))


LOGIC = {
    "equal": equality(of_two(same)),
    "not_equal": equality(lambda *arguments: not of_two(same)(*arguments)),
    "less_than": comparison(of_two(lambda a, b: a < b)),
    "less_or_equal": comparison(of_two(lambda a, b: a <= b)),
    "greater_than": comparison(of_two(lambda a, b: a > b)),
    "greater_or_equal": comparison(of_two(lambda a, b: a >= b)),
    "is_in": membership(True),
    "is_not_in": membership(False),
    "and": logic(lambda *x: all(value != 0 for value in x)),
    "or": logic(lambda *x: any(value != 0 for value in x)),
    "not": logic(lambda *x: len(x) == 1 and x[0] == 0),
}

# ---- outliers -----------------------------------------------------------------------------------------------------


def outlier(x, method, centre, p, q, r):
    if is_missing(x):
        return MISSING
    if r <= 0:
        return mpf(x)  # the reach is endless, or no number
    reach = mpf(p) * mpf(q) / mp.sqrt(mpf(r))
    low, high = mpf(centre) - reach, mpf(centre) + reach
    if low <= x <= high:
        return mpf(x)
    return MISSING if method != 2 else low if x < low else high


def outlier_points(sigmas):
    def draw(d):
        centre, p, q, r = d.between(-10, 10), d.between(1, 4), d.log(1e-2, 1e2), d.log(1, 1e4)
        return [centre + d.sign() * sigmas(d) * p * q / math.sqrt(r), float(d.whole(0, 2)), centre, p, q, r]
    return draw


OUTLIERS = {
    "outlier_handle": table(outlier, ("0 to 0.999 of the reach", 60, outlier_points(lambda d: d.between(0, 0.999))),
                            ("1.001 to 100 times the reach", 159, outlier_points(lambda d: d.log(1.001, 100))),
                            ("limits", [[M, 2.0, 0.0, 1.0, 1.0, 1.0], [3.0, 2.0, 1.0, 1.0, 2.0, 1.0],
                                        [-1.0, 0.0, 1.0, 1.0, 2.0, 1.0], [9.0, 2.0, 1.0, 1.0, 2.0, 0.0],
                                        [9.0, 2.0, 1.0, 1.0, 2.0, -1.0], [9.0, 1.0, 1.0, 1.0, 2.0, 1.0]])),
}

FUNCTIONS = {**ARITHMETIC, **AGGREGATES, **NORMAL, **DATES, **LOGIC, **OUTLIERS}
