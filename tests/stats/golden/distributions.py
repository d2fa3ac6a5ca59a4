"""The points of the tables of the distribution functions, and their results. make_golden.py writes the tables."""
import math

from mpmath import mp, mpf

import reference as ref
from draw import MISSING, Draw, repeat, values_of

NORMAL_FROM = 1e8

SEEDS = 3


def seeded(region, count, draw, accept=lambda row: True):
    """A region whose points come from several seeds of their own, so that others before it don't move them."""
    rows = []
    for seed in range(SEEDS):
        d = Draw(f"{region} {seed}")
        own = []
        while len(own) < count // SEEDS:
            row = draw(d)
            if accept(row):
                own.append(row)
        rows += own
    return region, rows


# ---- normal -------------------------------------------------------------------------------------------------------

def cdf_std_norm(d):
    yield "lower tail", repeat(80, lambda: [d.between(-37.5, -5)])
    yield "centre", repeat(80, lambda: [d.between(-5, 5)]) + repeat(20, lambda: [d.sign() * d.log(1e-300, 1e-3)])
    yield "upper tail", repeat(40, lambda: [d.between(5, 40)])


def pdf_std_norm(d):
    yield "centre", repeat(100, lambda: [d.between(-5, 5)]) + [[0.0], [-0.0], [1e-300]]
    yield "tails", repeat(100, lambda: [d.sign() * d.between(5, 37.6)])


def probabilities(d):
    """Probabilities of both tails, near the median and down to the smallest."""
    yield "lower tail", repeat(70, lambda: [d.log(1e-300, 1e-3)])
    yield "centre", repeat(80, lambda: [d.between(1e-3, 0.999)])
    yield "near the median", repeat(30, lambda: [0.5 + d.sign() * d.log(1e-14, 1e-3)])
    yield "upper tail", repeat(40, lambda: [1 - d.log(1e-15, 1e-3)])


def normal_quantile(p, mean=0, sd=1):
    p = mpf(p)
    with mp.workdps(60):
        tail = min(p, 1 - p)
        if tail == mpf(1) / 2:
            return mpf(mean)
        z = -mp.sqrt(-2 * mp.log(tail)) if tail < 0.1 else -mp.erfinv(1 - 2 * tail) * mp.sqrt(2)
        for _ in range(200):
            lower = ref.normal_lower(z)
            # Newton's method on the logarithm, which is nearly a parabola far out.
            step = mp.log(lower / tail) * lower / ref.normal_density(z)
            z -= step
            if abs(step) < mpf(10) ** -45 * abs(z):
                break
        return (z if p < 0.5 else -z) * mpf(sd) + mpf(mean)


def located(points, d):
    """Adds a mean and a standard deviation to each point of a region of standardised ones."""
    for region, rows in points:
        yield region, [row + [d.between(-10, 10), d.log(1e-3, 1e3)] for row in rows]


def normal_values(d):
    rows = []
    for _ in range(220):
        mean, sd = d.between(-10, 10), d.log(1e-3, 1e3)
        rows.append([mean + sd * d.between(-8, 8), mean, sd])
    yield "centre", rows
    yield "far tails", repeat(60, lambda: far_value(d))
    yield "exact deviates", repeat(100, lambda: exact_value(d))


def far_value(d):
    mean, sd = d.between(-10, 10), d.log(1e-3, 1e3)
    return [mean + d.sign() * sd * d.between(8, 37), mean, sd]


def exact_value(d):
    """A value whose distance from the mean, and that over the standard deviation, are doubles."""
    mean, sd = d.whole(-64, 64) / 8, 2.0 ** d.whole(-6, 6)
    return [mean + sd * d.whole(-37 * 256, 37 * 256) / 256, mean, sd]


# ---- t ------------------------------------------------------------------------------------------------------------

def t_points(d):
    def far(low, high):
        return lambda: [d.sign() * d.log(1e-3, 30), d.log(low, high)]
    yield "df up to 100", repeat(90, far(0.1, 100)) + repeat(15, lambda: [d.sign() * d.log(30, 1e6), d.log(0.5, 30)])
    yield "df up to 1e4", repeat(50, far(100, 1e4))
    yield "df up to 1e8", repeat(50, far(1e4, 1e8))
    yield "one df", repeat(20, lambda: [d.sign() * d.log(1e-8, 1e8), 1.0])


def t_cdf_points(d):
    yield from t_points(d)
    yield "df above 1e8", repeat(20, lambda: [d.between(-6, 6), d.log(1.1e8, 1e12)])


def t_cdf(x, df):
    """From 1e8 degrees of freedom on the distribution is normal by definition here."""
    return ref.normal_lower(x) if df > NORMAL_FROM else ref.t_tails(x, df)[0]


def log_solve(tails, p, low, high):
    """As ref.solve on the logarithmic scale, for quantiles that may be very small or large."""
    value = ref.solve(lambda u: tails(mp.exp(u)), p, mp.log(mpf(low)), mp.log(mpf(high)))
    return mp.exp(value)


def t_quantile(p, df):
    if df >= NORMAL_FROM:
        return normal_quantile(p)
    p = mpf(p)
    if p == 0.5:
        return mpf(0)
    tail = min(p, 1 - p)
    size = log_solve(lambda x: ref.t_tails(x, df), 1 - tail, 1e-30, 1e60)
    return -size if p < 0.5 else size


def t_quantile_points(d):
    yield "tails", repeat(60, lambda: [p_of(d, d.log(1e-6, 1e-2)), d.log(3, 1e4)])
    yield "centre", repeat(90, lambda: [p_of(d, d.between(1e-2, 0.45)), d.log(1, 1e4)])
    yield "near the median", repeat(20, lambda: [0.5 + d.sign() * d.log(1e-6, 0.05), d.log(1, 1e3)])
    yield "df up to 1e8", repeat(20, lambda: [p_of(d, d.between(1e-3, 0.45)), d.log(1e4, 1e8)])
    yield "far tail, few df", repeat(20, lambda: [p_of(d, d.log(1e-5, 1e-3)), d.log(0.8, 3)])
    yield "df above 1e8", repeat(10, lambda: [d.between(1e-3, 0.999), d.log(1.1e8, 1e12)])


def p_of(d, tail):
    return tail if d.sign() < 0 else 1 - tail


# ---- F ------------------------------------------------------------------------------------------------------------

def f_points(d):
    def point(low, high):
        return lambda: [d.log(1e-2, 1e2), d.log(low, high), d.log(low, high)]
    yield "df up to 100", repeat(100, point(0.2, 100))
    yield "df up to 1e4", repeat(40, lambda: [d.log(0.5, 2), d.log(10, 1e4), d.log(10, 1e4)])
    yield "df up to 1e6", repeat(30, lambda: [d.log(0.9, 1.1), d.log(1e4, 1e6), d.log(1e4, 1e6)])
    yield "one df", repeat(40, lambda: [d.log(1e-10, 1e4), 1.0, d.random.choice((1.0, d.log(0.5, 1e4)))])


def f_quantile(p, df1, df2):
    return log_solve(lambda x: ref.f_tails(x, df1, df2), p, 1e-40, 1e60)


def f_quantile_points(d):
    yield "centre", repeat(90, lambda: [d.between(0.02, 0.98), d.log(1, 200), d.log(1, 200)])
    yield "tails", repeat(60, lambda: [p_of(d, d.log(1e-6, 1e-2)), d.log(4, 200), d.log(4, 200)])
    yield "df up to 1e4", repeat(30, lambda: [d.between(0.001, 0.999), d.log(200, 1e4), d.log(200, 1e4)])
    yield "one df", repeat(30, lambda: [d.between(0.1, 0.99), 1.0, d.log(2, 1e3)])


# ---- chi-square and gamma -----------------------------------------------------------------------------------------

def spread(d, shape, widths):
    """A value of the gamma distribution's range, in standard deviations from the mean."""
    return max(shape * 1e-3, shape + widths * math.sqrt(shape)) if shape > 1 else d.log(1e-6, 30)


def chi_points(d):
    def point(low, high, widths):
        def draw():
            df = d.log(low, high)
            return [2 * spread(d, df / 2, d.between(-widths, widths)), df]
        return draw
    yield "df up to 100", repeat(110, point(1e-2, 100, 6))
    yield "df up to 1e6", repeat(60, point(100, 1e6, 6))
    yield "far tails", repeat(30, lambda: [d.log(50, 1000), d.log(1, 20)])


def chi_tail_points(d):
    for region, rows in chi_points(d):
        yield region, rows
    yield "small shape, complement", repeat(20, lambda: [d.log(1e-3, 1.5), d.log(1e-4, 1e-2)])


def fallback_chi_points(d):
    yield from chi_points(d)
    yield "normal approximation", repeat(15, lambda: near_the_mean(d))


def near_the_mean(d):
    df = d.log(1e9, 1e11)
    return [df * (1 - d.between(-5e-8, 5e-8)), df]


def chi_quantile(p, df):
    return 2 * log_solve(lambda x: ref.gamma_tails(mpf(df) / 2, x), p, 1e-300, 1e9)


def small_quantile(p, df):
    """The logarithm of half the quantile by the leading term of the distribution."""
    return (math.log(p) + math.lgamma(df / 2 + 1)) / (df / 2)


def chi_quantile_points(d):
    yield "centre", repeat(100, lambda: [d.between(0.01, 0.99), d.log(0.5, 1e4)])
    yield "lower tail", repeat(40, lambda: [d.log(1e-12, 1e-2), d.log(2, 1e3)])
    yield "upper tail", repeat(40, lambda: [1 - d.log(1e-12, 1e-2), d.log(0.5, 1e3)])
    yield "few df", repeat(20, lambda: [d.between(0.8, 0.999), d.log(0.05, 0.32)])
    yield "bisection", repeat(15, lambda: [d.log(1e-120, 1e-70), d.log(400, 3000)])
    yield seeded("p 1e-300 to 0.5, df 0.05 to 50, quantile below 5e-7", 60,
                 lambda s: [s.log(1e-300, 0.5), s.log(0.05, 50)], lambda row: -650 < small_quantile(*row) < -15.3)
    yield seeded("p 1e-50 to 1e-2, df 20 to 1e4", 60, lambda s: [s.log(1e-50, 1e-2), s.log(20, 1e4)])
    yield seeded("p 1e-300 to 1e-70, df 200 to 1e4", 30, lambda s: [s.log(1e-300, 1e-70), s.log(200, 1e4)])


def gamma_rows(points):
    """The same points as a gamma distribution of rates."""
    def rows(d):
        for region, chi in points(d):
            yield region, [scaled(row, d.log(1e-3, 1e3)) for row in chi]
    return rows


def scaled(row, rate):
    x, df = row
    return [x / 2 / rate, df / 2, rate]


def gamma_quantile_points(d):
    for region, rows in chi_quantile_points(d):
        yield region, [[p, df / 2, d.log(1e-3, 1e3)] for p, df in rows]


def gamma_density(x, shape, rate):
    x, shape, rate = mpf(x), mpf(shape), mpf(rate)
    return mp.exp(shape * mp.log(rate) + (shape - 1) * mp.log(x) - rate * x - mp.loggamma(shape))


# ---- beta ---------------------------------------------------------------------------------------------------------

def beta_points(d):
    def near(low, high):
        def draw():
            a, b = d.log(low, high), d.log(low, high)
            sd = math.sqrt(a * b / (a + b + 1)) / (a + b)
            x = min(max(a / (a + b) + d.between(-6, 6) * sd, 1e-6), 1 - 1e-6)
            return [x, a, b]
        return draw
    yield "parameters up to 100", repeat(110, near(1, 100))
    yield "small parameters", repeat(50, lambda: [d.between(1e-3, 0.999), d.log(1e-2, 1), d.log(1e-2, 20)])
    yield "parameters up to 1e4", repeat(40, near(100, 1e4))
    yield "parameters up to 1e6", repeat(30, near(1e4, 1e6))


def beta_quantile(p, a, b):
    with mp.workdps(60):
        def tails(u):
            x = 1 / (1 + mp.exp(-u))
            return ref.beta_tails(a, b, x, 1 / (1 + mp.exp(u)))
        u = ref.solve(tails, p, -690, 690)
        return 1 / (1 + mp.exp(-u))


def beta_quantile_points(d):
    yield "parameters above 1", repeat(110, lambda: [d.between(1e-3, 0.999), d.log(1.01, 200), d.log(1.01, 200)])
    yield "tails", repeat(40, lambda: [p_of(d, d.log(1e-8, 1e-3)), d.log(3, 50), d.log(3, 50)])
    yield "small parameters", repeat(40, lambda: [d.between(0.2, 0.8), d.log(0.4, 1), d.log(0.4, 4)])
    yield "parameters up to 1e4", repeat(20, lambda: [d.between(1e-3, 0.999), d.log(200, 1e4), d.log(200, 1e4)])
    yield seeded("p 1e-30 to 0.5, a 0.01 to 1, b 0.01 to 100", 30,
                 lambda s: [s.log(1e-30, 0.5), s.log(0.01, 1), s.log(0.01, 100)], is_beta_in_range)
    yield seeded("p 1e-300 to 1e-3, a 3 to 100, b 0.01 to 100", 30,
                 lambda s: [s.log(1e-300, 1e-3), s.log(3, 100), s.log(0.01, 100)])


def is_beta_in_range(row):
    """Whether the leading term of the distribution puts the quantile well within the range of doubles."""
    p, a, b = row
    leading = (math.log(p * a) + math.lgamma(a) + math.lgamma(b) - math.lgamma(a + b)) / a
    other = (math.log1p(-p) + math.log(b) + math.lgamma(a) + math.lgamma(b) - math.lgamma(a + b)) / b
    return leading > -600 and other > -30


# ---- binomial and hypergeometric ----------------------------------------------------------------------------------

def binomial_points(d):
    def near(low, high):
        def draw():
            n = d.logwhole(low, high)
            prob = d.between(0.001, 0.999)
            x = round(n * prob + d.between(-6, 6) * math.sqrt(n * prob * (1 - prob)))
            return [float(min(max(x, 0), n)), float(n), prob]
        return draw
    yield "n up to 33", repeat(80, near(1, 33))
    yield "n up to 1e4", repeat(80, near(34, 10000))
    yield "n up to 1e9", repeat(50, near(10000, 1000000000))


def binomial_quantile_points(d):
    yield "n up to 100", repeat(110, lambda: [d.between(1e-6, 1), float(d.logwhole(1, 100)), d.between(0.01, 0.99)])
    yield "n up to 1e6", repeat(70, lambda: [d.between(1e-4, 0.9999), float(d.logwhole(100, 10 ** 6)),
                                            d.between(0.001, 0.999)])
    yield "far tails", repeat(40, lambda: [p_of(d, d.log(1e-12, 1e-4)), float(d.logwhole(20, 3000)),
                                          d.between(0.01, 0.99)])


def binomial_quantile(p, n, prob):
    """The largest x whose cumulative probability doesn't exceed p."""
    low, high = -1, int(n)
    if ref.binomial_lower(high, n, prob) <= p:
        return mpf(high)
    while high - low > 1:
        middle = (low + high) // 2
        if ref.binomial_lower(middle, n, prob) <= p:
            low = middle
        else:
            high = middle
    return mpf(low)


def hyper_points(d):
    def draw(low, high):
        total = d.logwhole(low, high)
        sample, hits = d.whole(1, total), d.whole(1, total)
        if total > 1000:
            sample, hits = max(1, int(total * d.between(0.01, 0.9))), max(1, int(total * d.between(0.01, 0.9)))
        mean = sample * hits / total
        sd = math.sqrt(max(mean * (total - hits) / total * (total - sample) / max(total - 1, 1), 1))
        x = round(mean + d.between(-6, 6) * sd)
        x = min(max(x, max(0, sample + hits - total)), min(sample, hits))
        return [float(value) for value in (x, total, sample, hits)]
    yield "total up to 100", repeat(80, lambda: draw(1, 100))
    yield "total up to 10000", repeat(80, lambda: draw(101, 10000))
    yield "total up to 2e9", repeat(50, lambda: draw(10001, 2000000000))


# ---- non-central --------------------------------------------------------------------------------------------------

def noncentral_chi_points(d):
    def near(ncp_low, ncp_high, df_high):
        def draw():
            df, ncp = d.log(0.5, df_high), d.log(ncp_low, ncp_high)
            sd = math.sqrt(2 * (df + 2 * ncp))
            return [max(df + ncp + d.between(-3, 6) * sd, df / 4), df, ncp]
        return draw
    yield "ncp up to 100", repeat(130, near(0.01, 100, 100))
    yield "ncp up to 1e4", repeat(60, near(100, 1e4, 1e3))
    yield "central", repeat(15, lambda: [d.log(0.1, 100), d.log(0.5, 100), 0.0])


def noncentral_f_points(d):
    def draw(ncp_low, ncp_high):
        df1, df2, ncp = d.log(1, 50), d.log(2, 200), d.log(ncp_low, ncp_high)
        return [(1 + ncp / df1) * d.log(0.3, 3), df1, df2, ncp, 1e-12]
    yield "ncp up to 100", repeat(130, lambda: draw(0.01, 100))
    yield "ncp up to 1e4", repeat(50, lambda: draw(100, 1e4))
    yield "central", repeat(20, lambda: [d.log(0.1, 10), d.log(1, 50), d.log(2, 200), 0.0, 1e-12])


def noncentral_t_points(d):
    def draw(low, high):
        df, ncp = d.log(1, 200), d.sign() * d.log(low, high)
        return [ncp + d.between(-5, 5) * (1 + abs(ncp) / math.sqrt(2 * df)), df, ncp]
    yield "ncp up to 5", repeat(130, lambda: draw(0.01, 5))
    yield "ncp up to 40", repeat(60, lambda: draw(5, 37))
    yield "central", repeat(15, lambda: [d.between(-5, 5), d.log(1, 100), 0.0])


def noncentral_t_density_points(d):
    def draw(low, high, sign):
        df, ncp = d.log(1, 200), d.sign() * d.log(low, high)
        size = abs(ncp) * d.between(0.3, 2) if sign > 0 else d.between(0.1, 2)
        return [math.copysign(size, sign * ncp), df, ncp]
    yield "same sign, ncp up to 5", repeat(100, lambda: draw(0.05, 5, 1))
    yield "same sign, ncp up to 20", repeat(50, lambda: draw(5, 20, 1))
    yield "opposite signs", repeat(40, lambda: draw(0.05, 2, -1))
    yield "central", repeat(15, lambda: [d.between(-5, 5), d.log(1, 100), 0.0])


def derivative(function, at):
    step = mpf(at) * mpf(10) ** -12
    return (function(mpf(at) + step) - function(mpf(at) - step)) / (2 * step)


def find_rows(cumulative, draws):
    """Draws a point with its non-centrality, and asks for it back from the rounded probability."""
    rows = []
    for arguments, ncp in draws:
        exact = cumulative(ncp, *arguments)
        p = float(exact)
        root = mpf(ncp) + (mpf(p) - exact) / derivative(lambda c: cumulative(c, *arguments), ncp)
        rows.append((arguments + [p, 1e-11], root))
    return rows


def find_chi_rows(d):
    def draw():
        df, ncp = d.log(1, 50), d.log(0.5, 200)
        return [df + ncp + d.between(-1, 1) * math.sqrt(2 * (df + 2 * ncp)), df], ncp
    draws = [pair for pair in repeat(400, draw) if pair[0][0] > 0.3][:200]
    yield "ncp up to 200", find_rows(lambda c, x, df: ref.noncentral_chi(x, df, c), draws)


def find_f_rows(d):
    def draw():
        df1, df2, ncp = d.log(1, 20), d.log(5, 100), d.log(0.5, 100)
        return [(1 + ncp / df1) * d.log(0.6, 1.6), df1, df2], ncp
    yield "ncp up to 100", find_rows(lambda c, x, df1, df2: ref.noncentral_f(x, df1, df2, c), repeat(200, draw))


def find_t_rows(d):
    def draw():
        df, ncp = d.log(2, 100), d.log(0.1, 10)
        return [ncp + d.between(-1.5, 1.5), df], ncp
    yield "ncp up to 10", find_rows(lambda c, x, df: ref.noncentral_t(x, df, c), repeat(200, draw))


# ---- grouped data -------------------------------------------------------------------------------------------------

def percentile_rows(d):
    for mode, region in ((0, "between midpoints"), (1, "by widths"), (2, "by upper limits")):
        rows = []
        for _ in range(70):
            n = d.whole(2, 8)
            width = d.between(0.5, 3)
            values = [d.between(-5, 5) + 4 * i for i in range(n)]
            widths = [width] * n
            freqs = [float(d.whole(1, 9)) for _ in range(n)]
            pct = d.between(0, 100)
            rows.append(([float(n), pct, float(mode)] + values + freqs + widths,
                         percentile(pct, values, freqs, widths, mode)))
        yield region, rows


def percentile(pct, values, freqs, widths, mode):
    """By the knots of the cumulative polygon, as pairs of a place on the scale and the frequency up to it."""
    values, freqs, widths = ([mpf(v) for v in column] for column in (values, freqs, widths))
    target = sum(freqs) * mpf(pct) / 100
    cumulative = [sum(freqs[:i + 1]) for i in range(len(freqs))]
    if mode == 0:
        stretches = [(values[i], values[i + 1], cumulative[i] - freqs[i] / 2, cumulative[i + 1] - freqs[i + 1] / 2)
                     for i in range(len(values) - 1)]
    elif mode == 1:
        stretches = [(v - w / 2, v + w / 2, c - f, c) for v, w, f, c in zip(values, widths, freqs, cumulative)]
    else:
        stretches = [(values[i], values[i + 1], cumulative[i], cumulative[i + 1]) for i in range(len(values) - 1)]
    for low, high, below, above in stretches:
        if below <= target <= above:
            return low + (high - low) * (target - below) / (above - below)
    return MISSING


def median_rows(pick):
    def rows(d):
        made = []
        for _ in range(200):
            n = d.whole(1, 12)
            values = sorted(d.between(-10, 10) for _ in range(n))
            freqs = [float(d.whole(1, 6)) for _ in range(n)]
            level = d.between(50, 99.9)
            count = sum(freqs)
            made.append(([float(n), count, level] + values + freqs, median_limits(values, freqs, count, level)[pick]))
        yield "all", made
    return rows


def median_limits(values, freqs, count, level):
    if count < 2:
        return MISSING, MISSING, MISSING
    p = 0.5 - level / 200
    r = -1 if count == 2 else int(binomial_quantile(p, count, 0.5))
    if r < 0:
        return mpf(values[0]), mpf(values[-1]), mpf(100)
    expanded = [v for v, f in zip(values, freqs) for _ in range(int(f))]
    coverage = (1 - 2 * ref.binomial_lower(r, count, 0.5)) * 100
    return mpf(expanded[r]), mpf(expanded[int(count) - r - 1]), max(coverage, mpf(0))


# ---- the table ----------------------------------------------------------------------------------------------------

def log_gamma_points(d):
    yield "near 1 and 2", repeat(60, lambda: [d.random.choice((1, 2)) + d.sign() * d.log(1e-8, 0.3)])
    yield "elsewhere", repeat(80, lambda: [d.log(1e-300, 0.7)]) + repeat(80, lambda: [d.log(2.5, 1e300)])


FUNCTIONS = {
    "CdfStdNorm": values_of(cdf_std_norm, ref.normal_lower),
    "PdfNormalStandard": values_of(pdf_std_norm, ref.normal_density),
    "IdfStdNorm": values_of(probabilities, normal_quantile),
    "CdfNorm": values_of(normal_values, lambda x, m, s: ref.normal_lower((mpf(x) - mpf(m)) / mpf(s))),
    "PdfNormal": values_of(normal_values, lambda x, m, s: ref.normal_density((mpf(x) - mpf(m)) / mpf(s)) / mpf(s)),
    "IdfNorm": values_of(lambda d: located(probabilities(d), d), normal_quantile),
    "CdfT": values_of(t_cdf_points, t_cdf),
    "SigT": values_of(t_points, lambda x, df: ref.t_tails(x, df)[1]),
    "PdfT": values_of(t_points, ref.t_density),
    "IdfT": values_of(t_quantile_points, t_quantile),
    "CdfF": values_of(f_points, lambda x, a, b: ref.f_tails(x, a, b)[0]),
    "SigF": values_of(f_points, lambda x, a, b: ref.f_tails(x, a, b)[1]),
    "IdfF": values_of(f_quantile_points, f_quantile),
    "CdfChi": values_of(fallback_chi_points, lambda x, df: ref.gamma_tails(mpf(df) / 2, mpf(x) / 2)[0]),
    "SigChi": values_of(chi_tail_points, lambda x, df: ref.gamma_tails(mpf(df) / 2, mpf(x) / 2)[1]),
    "IdfChi": values_of(chi_quantile_points, chi_quantile),
    "CdfGam": values_of(gamma_rows(chi_points), lambda x, s, r: ref.gamma_tails(s, mpf(x) * mpf(r))[0]),
    "PdfGamma": values_of(gamma_rows(chi_points), gamma_density),
    "IdfGam": values_of(gamma_quantile_points, lambda p, s, r: chi_quantile(p, 2 * s) / 2 / mpf(r)),
    "CdfBeta": values_of(beta_points, lambda x, a, b: ref.beta_tails(a, b, x)[0]),
    "IdfBeta": values_of(beta_quantile_points, beta_quantile),
    "PdfBin": values_of(binomial_points, ref.binomial_point),
    "CdfBin": values_of(binomial_points, ref.binomial_lower),
    "IdfBin": values_of(binomial_quantile_points, binomial_quantile),
    "PdfHyper": values_of(hyper_points, ref.hyper_point),
    "CDFHyper": values_of(hyper_points, lambda x, t, s, h: ref.hyper_lower(x, int(t), int(s), int(h))),
    "NonCentralCdfChi": values_of(noncentral_chi_points, ref.noncentral_chi),
    "NonCentralCdfF": values_of(noncentral_f_points, lambda x, a, b, c, tol: ref.noncentral_f(x, a, b, c)),
    "NonCentralCdfT": values_of(noncentral_t_points, ref.noncentral_t),
    "NonCentralPdfT": values_of(noncentral_t_density_points, ref.noncentral_t_density),
    "FindNCParamChi": find_chi_rows,
    "FindNCParamF": find_f_rows,
    "FindNCParamT": find_t_rows,
    "GPTile": percentile_rows,
    "MednciLower": median_rows(0),
    "MednciUpper": median_rows(1),
    "MednciCoverage": median_rows(2),
    "korddnlgam": values_of(log_gamma_points, lambda x: mp.loggamma(mpf(x))),
}
