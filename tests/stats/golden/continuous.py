"""The points of the tables of t, F, chi-square, gamma and beta."""
import math

from mpmath import mp, mpf

import reference as ref
from draw import span
from normal import normal_quantile
from quantiles import Beta, Gamma, quantile, rough_quantile

NORMAL_FROM = 1e8

# Tails from 1e-300 to 1, in either direction.
LOWER, MIDDLE, UPPER = "p 1e-300 to 1e-12", "p or 1 - p 1e-12 to 0.5", "1 - p 1e-300 to 1e-12"
DOUBLE_TAILS = ("p 1e-300 to 1e-57", "p 1e-57 to 1e-12", "p 1e-12 to 0.5", "1 - p 1e-15 to 0.5")


def band(name, low, high):
    return f"{name} {span(low, high)}"


def bands(some, whole, far):
    """Bands with their tails: those of all probabilities, those that are far on one side, and the other far side."""
    for degrees in some:
        yield degrees, MIDDLE
        yield degrees, far
    yield whole, LOWER if far == UPPER else UPPER


def at_tail(distribution, tail, s):
    """The logarithm, or the logit, of a value that has such a tail."""
    p = mpf(s.log(1e-12, 0.5) if tail == MIDDLE else s.log(1e-300, 1e-12))
    if tail == UPPER or tail == MIDDLE and s.sign() > 0:
        return -rough_quantile(distribution.mirrored(), p)
    return rough_quantile(distribution, p)


def probability(tail, s):
    return {DOUBLE_TAILS[0]: lambda: s.log(1e-300, 1e-57), DOUBLE_TAILS[1]: lambda: s.log(1e-57, 1e-12),
            DOUBLE_TAILS[2]: lambda: s.log(1e-12, 0.5), DOUBLE_TAILS[3]: lambda: 1 - s.log(1e-15, 0.5)}[tail]()


def double_of(log_value):
    """The double at a logarithm; None where it leaves the range."""
    return float(mp.exp(log_value)) if -660 < log_value < 690 else None


# ---- chi-square and gamma -----------------------------------------------------------------------------------------

FEW = (1e-6, 0.02)
DEGREES = ((0.02, 2), (2, 100), (100, 1e4), (1e4, 1e6), (1e6, 1e9), (1e9, 1e12))


def chi_points(d, far=LOWER):
    """The far tails of one side, by degrees of freedom; what leaves next to nothing of 1 on the other side, at once."""
    yield d.region(f"{band('df', *FEW)}, x 1e-300 to 1e3", 24, lambda s: [s.log(1e-300, 1e3), s.log(*FEW)])
    for degrees, tail in bands(DEGREES, (0.02, 1e12), far):
        def draw(s, degrees=degrees, tail=tail):
            df = s.log(*degrees)
            if tail == LOWER and df < 0.5:
                return None
            x = double_of(at_tail(Gamma(mpf(df) / 2), tail, s) + mp.log(2))
            return x and [x, df]
        yield d.region(f"{band('df', *degrees)}, {tail}", 15, draw)


def upper_chi_points(d):
    yield from chi_points(d, UPPER)


def chi_quantile_points(d):
    def few(s):
        df = s.log(*FEW)
        p = float(ref.gamma_tails(mpf(df) / 2, mpf(s.log(1e-290, 30)))[0])
        return [p, df] if p < 1 else None
    yield d.region(f"{band('df', *FEW)}, quantile 1e-290 to 30", 24, few)
    for degrees in DEGREES:
        for tail in DOUBLE_TAILS:
            def draw(s, degrees=degrees, tail=tail):
                p, df = probability(tail, s), s.log(*degrees)
                return [p, df] if chi_start(p, df) > -650 else None
            yield d.region(f"{band('df', *degrees)}, {tail}", 12, draw)


def chi_start(p, df):
    """The logarithm of the quantile by the leading term of the distribution, when it is small."""
    return (math.log(p) + math.lgamma(df / 2 + 1)) / (df / 2) if df < 10 else 0


def chi_quantile(p, df):
    return 2 * mp.exp(quantile(Gamma(mpf(df) / 2), p))


def as_gamma(points):
    """The same points as a gamma distribution of rates; the shape is half the degrees of freedom."""
    def rows(d):
        for region, chi in points(d):
            yield (region.replace("df", "twice the shape").replace(", x 1e", ", 2 x rate 1e") + ", rate 1e-3 to 1e3",
                   [[x / 2 / rate, df / 2, rate] for (x, df), rate in zip(chi, rates(d, region))])
    return rows


def as_gamma_quantile(points):
    def rows(d):
        for region, chi in points(d):
            yield (region.replace("df", "twice the shape").replace("quantile", "2 x rate") + ", rate 1e-3 to 1e3",
                   [[p, df / 2, rate] for (p, df), rate in zip(chi, rates(d, region))])
    return rows


def rates(d, region):
    """Any number of rates of a region."""
    s = type(d)(f"{d.seed} {region} rates {d.seeds}")
    while True:
        yield s.log(1e-3, 1e3)


def gamma_density(x, shape, rate):
    x, shape, rate = mpf(x), mpf(shape), mpf(rate)
    return mp.exp(shape * mp.log(rate) + (shape - 1) * mp.log(x) - rate * x - mp.loggamma(shape))


# ---- beta ---------------------------------------------------------------------------------------------------------

# Pairs of bands of a and b.
PAIRS = (((1, 100), (1, 100)), ((100, 1e4), (100, 1e4)), ((1e4, 1e6), (1e4, 1e6)), ((1e6, 1e8), (1e6, 1e8)),
         ((1e8, 1e10), (1e8, 1e10)), ((1e10, 1e12), (1e10, 1e12)), ((1, 100), (1e4, 1e6)), ((1e4, 1e6), (1, 100)),
         ((1, 100), (1e8, 1e12)), ((1e8, 1e12), (1, 100)), ((0.01, 1), (0.01, 1)), ((0.01, 1), (1, 1e4)),
         ((1, 1e4), (0.01, 1)), ((0.01, 1), (1e4, 1e8)), ((1e4, 1e8), (0.01, 1)), ((0.01, 1), (1e8, 1e12)),
         ((1e8, 1e12), (0.01, 1)))
SMALL = (((1e-6, 0.01), (1e-6, 0.01)), ((1e-6, 0.01), (0.01, 1e4)), ((0.01, 1e4), (1e-6, 0.01)),
         ((1e-6, 0.01), (1e4, 1e12)), ((1e4, 1e12), (1e-6, 0.01)))


def both(pair, names=("a", "b")):
    return f"{band(names[0], *pair[0])}, {band(names[1], *pair[1])}"


def beta_at(t):
    """The value of a logit, when it has its digits in a double."""
    x = float(1 / (1 + mp.exp(-t)))
    return x if -660 < t < 30 and x < 1 else None


def beta_points(d):
    for pair in SMALL:
        yield d.region(f"{both(pair)}, x 1e-300 to 1 - 1e-12", 15,
                       lambda s, pair=pair: [small_or_not(s), s.log(*pair[0]), s.log(*pair[1])])
    for pair, tail in bands(PAIRS, ((0.01, 1e12), (20, 1e12)), LOWER):
        def draw(s, pair=pair, tail=tail):
            a, b = s.log(*pair[0]), s.log(*pair[1])
            if tail == LOWER and a < 0.4:
                return None
            x = beta_at(at_tail(Beta(a, b), tail, s))
            return x and [x, a, b]
        yield d.region(f"{both(pair)}, {tail}", 12, draw)


def small_or_not(s):
    return s.random.choice((s.log(1e-300, 0.5), s.between(0, 1), 1 - s.log(1e-12, 0.5)))


def quantile_pair(s, pair, tail):
    """A probability and parameters whose logit is within the range."""
    p, a, b = probability(tail, s), s.log(*pair[0]), s.log(*pair[1])
    leading = (math.log(p * a) + math.lgamma(a) + math.lgamma(b) - math.lgamma(a + b)) / a if a < 1e3 else 0
    other = (math.log1p(-p) + math.log(b) + math.lgamma(a) + math.lgamma(b) - math.lgamma(a + b)) / b if b < 1e3 else 0
    return (p, a, b, leading, other)


def beta_quantile_points(d):
    for pair in PAIRS:
        for tail in DOUBLE_TAILS:
            def draw(s, pair=pair, tail=tail):
                p, a, b, leading, other = quantile_pair(s, pair, tail)
                return [p, a, b] if leading > -600 and other > -30 else None
            yield d.region(f"{both(pair)}, {tail}", 6, draw)
    for pair in SMALL:
        def small(s, pair=pair):
            a, b = s.log(*pair[0]), s.log(*pair[1])
            x = small_or_not(s)
            p = float(ref.beta_tails(a, b, x, 1 - mpf(x))[0])
            return [p, a, b] if 0 < p < 1 and 1e-280 < x < 1 - 1e-10 else None
        yield d.region(f"{both(pair)}, quantile 1e-280 to 1 - 1e-10", 9, small)


def beta_quantile(p, a, b):
    return 1 / (1 + mp.exp(-quantile(Beta(a, b), p)))


# ---- F ------------------------------------------------------------------------------------------------------------

def doubled(pair):
    return tuple((2 * low, 2 * high) for low, high in pair)


def f_points(d, far=LOWER):
    for pair in map(doubled, SMALL):
        yield d.region(f"{both(pair, ('df1', 'df2'))}, x 1e-280 to 1e280", 15,
                       lambda s, pair=pair: [s.log(1e-280, 1e280), s.log(*pair[0]), s.log(*pair[1])])
    for pair, tail in bands(map(doubled, PAIRS), ((0.02, 2e12), (0.02, 2e12)), far):
        def draw(s, pair=pair, tail=tail):
            df1, df2 = s.log(*pair[0]), s.log(*pair[1])
            if tail == LOWER and df1 < 1 or tail == UPPER and df2 < 1:
                return None
            x = double_of(at_tail(Beta(mpf(df1) / 2, mpf(df2) / 2), tail, s) + mp.log(df2) - mp.log(df1))
            return x and [x, df1, df2]
        yield d.region(f"{both(pair, ('df1', 'df2'))}, {tail}", 12, draw)
    yield d.region("df1 1, df2 1, x 1e-300 to 1e300", 15, lambda s: [s.log(1e-300, 1e300), 1.0, 1.0])
    yield d.region("df1 1, df2 0.5 to 1e4, x 1e-10 to 1e4", 15, lambda s: [s.log(1e-10, 1e4), 1.0, s.log(0.5, 1e4)])
    yield d.region("df1 1, df2 1e8 to 1e12, x 1e-10 to 1e3", 15,
                   lambda s: [s.log(1e-10, 1e3), 1.0, s.log(1.01e8, 1e12)])


def upper_f_points(d):
    yield from f_points(d, UPPER)


def f_tails(x, df1, df2):
    """From 1e8 degrees of freedom on, one degree above is the square of a normal deviate by definition here."""
    if df1 == 1 and df2 > NORMAL_FROM:
        upper = 2 * ref.normal_lower(-mp.sqrt(mpf(x)))
        return 1 - upper, upper
    return ref.f_tails(x, df1, df2)


def f_quantile_points(d):
    for pair in map(doubled, PAIRS):
        for tail in DOUBLE_TAILS:
            def draw(s, pair=pair, tail=tail):
                p, a, b, leading, other = quantile_pair(s, [(low / 2, high / 2) for low, high in pair], tail)
                return [p, 2 * a, 2 * b] if leading > -600 and other > -600 else None
            yield d.region(f"{both(pair, ('df1', 'df2'))}, {tail}", 6, draw)
    for degrees in ((2, 1e4), (1.01e8, 1e12)):
        for tail in ("p 1e-140 to 1e-12",) + DOUBLE_TAILS[2:]:
            def one(s, degrees=degrees, tail=tail):
                p = probability(tail, s) if tail in DOUBLE_TAILS else s.log(1e-140, 1e-12)
                return [p, 1.0, s.log(*degrees)]
            yield d.region(f"df1 1, df2 {span(*degrees)}, {tail}", 9, one)


def f_quantile(p, df1, df2):
    if df1 == 1 and df2 > NORMAL_FROM:
        return chi_quantile(p, 1)
    return mp.exp(quantile(Beta(mpf(df1) / 2, mpf(df2) / 2), p)) * mpf(df2) / mpf(df1)


# ---- t ------------------------------------------------------------------------------------------------------------

T_DEGREES = ((0.1, 2), (2, 100), (100, 1e4), (1e4, 1e6), (1e6, 1e8))
T_LOWER, T_EITHER = "p 1e-300 to 1e-12", "p or 1 - p 1e-12 to 0.5"


def t_at(p, df, find=quantile):
    """The size of the deviate with a lower tail p."""
    return mp.exp(-find(Beta(mpf(df) / 2, mpf(1) / 2), 2 * mpf(p)) / 2) * mp.sqrt(mpf(df))


def t_points(d, more=(), sign=-1):
    """Deviates whose tail is small on the side of that sign."""
    yield d.region("df 1e-6 to 0.1, +-x 1e-300 to 1e300", 24,
                   lambda s: [s.sign() * s.log(1e-300, 1e300), s.log(1e-6, 0.1)])
    yield d.region("df 0.1 to 1e8, +-x 1e-300 to 1e-3", 15, lambda s: [s.sign() * s.log(1e-300, 1e-3), s.log(0.1, 1e8)])
    for degrees in T_DEGREES + tuple(more):
        for tail, low, high in ((T_LOWER, 1e-300, 1e-12), (T_EITHER, 1e-12, 0.5)):
            def draw(s, degrees=degrees, low=low, high=high):
                df = s.log(*degrees)
                size = t_at(s.log(low, high / 2), df, rough_quantile)
                if not 1e-300 < size < 1e290:
                    return None
                return [float(size) * (sign if high < 0.1 else s.sign()), df]
            name = tail if sign < 0 else tail.replace("p 1e-300", "1 - p 1e-300")
            yield d.region(f"{band('df', *degrees)}, {name}", 21, draw)
    yield d.region("df 1, +-x 1e-300 to 1e300", 15, lambda s: [s.sign() * s.log(1e-300, 1e300), 1.0])


def t_cdf_points(d):
    yield from t_points(d)
    yield d.region("df 1e8 to 1e12, +-x 1e-3 to 37", 15, lambda s: [s.sign() * s.log(1e-3, 37), s.log(1.01e8, 1e12)])


def t_upper_points(d):
    yield from t_points(d, ((1e8, 1e10), (1e10, 1e12)), 1)


def t_density_points(d):
    yield from t_points(d, ((1e8, 1e12),))


def t_cdf(x, df):
    """From 1e8 degrees of freedom on the distribution is normal by definition here."""
    return ref.normal_lower(x) if df > NORMAL_FROM else ref.t_tails(x, df)[0]


def t_quantile_points(d):
    def few(s):
        df, size = s.log(1e-6, 0.1), s.log(1e-280, 1e280)
        p = float(ref.t_tails(-size, df)[0])
        return [p, df] if 0 < p < 0.5 - 1e-9 else None
    yield d.region("df 1e-6 to 0.1, +-quantile 1e-280 to 1e280", 24, few)
    for degrees in T_DEGREES + ((1.01e8, 1e12),):
        for name, draw_p in (("p 1e-300 to 1e-12", lambda s: s.log(1e-300, 1e-12)),
                             ("p or 1 - p 1e-12 to 0.5", lambda s: s.log(1e-12, 0.5)),
                             ("+-(p - 0.5) 1e-15 to 0.05", lambda s: 0.5 + s.sign() * s.log(1e-15, 0.05))):
            def draw(s, degrees=degrees, name=name, draw_p=draw_p):
                p, df = draw_p(s), s.log(*degrees)
                if math.log(min(p, 1 - p)) / df < -600:
                    return None
                return [1 - p if name.startswith("p or") and s.sign() > 0 else p, df]
            yield d.region(f"{band('df', *degrees)}, {name}", 15, draw)


def t_quantile(p, df):
    if df >= NORMAL_FROM:
        return normal_quantile(p)
    p = mpf(p)
    if p == 0.5:
        return mpf(0)
    size = t_at(min(p, 1 - p), df)
    return -size if p < 0.5 else size
