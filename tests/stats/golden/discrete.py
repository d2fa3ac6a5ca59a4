"""The points of the tables of the discrete distributions and of grouped data."""
import math

from mpmath import mpf

import reference as ref
from draw import MISSING, span
from quadrature import ROUGH

# ---- binomial -----------------------------------------------------------------------------------------------------

TRIALS = ((1, 33), (34, 10000), (10000, 10 ** 6), (10 ** 6, 2 * 10 ** 9))
LARGEST = 2147483647
PROBS = (("prob 0.01 to 0.99", lambda s: s.between(0.01, 0.99)), ("prob 1e-6 to 0.01", lambda s: s.log(1e-6, 0.01)),
         ("1 - prob 1e-6 to 0.01", lambda s: 1 - s.log(1e-6, 0.01)))
SMALLEST = math.log(1e-300)


def log_binomial(x, n, prob):
    """Roughly the logarithm of a binomial probability."""
    def part(k, mean):
        return k * math.log(k / mean) if k else 0.0
    return -part(x, n * prob) - part(n - x, n * (1 - prob))


def binomial_points(d):
    yield from trials_points(d, TRIALS)
    yield from trials_points(d, [(2 * 10 ** 9, 10 ** 12)])


def cumulative_points(d):
    """Beyond the largest integer no number of trials counts as whole."""
    yield from trials_points(d, TRIALS)
    yield d.region("n 2.2e9 to 1e12, prob 1e-6 to 1 - 1e-6", 15,
                   lambda s: [float(s.whole(0, 10 ** 9)), float(s.logwhole(2200000000, 10 ** 12)),
                              s.between(1e-6, 1 - 1e-6)])


def binomial_lower(x, n, prob):
    return MISSING if n > LARGEST else ref.binomial_lower(x, n, prob)


def trials_points(d, trials):
    """Values as far out as their probability is at least 1e-300."""
    for low, high in trials:
        for name, prob_of in PROBS:
            def draw(s, low=low, high=high, prob_of=prob_of):
                n, prob = s.logwhole(low, high), prob_of(s)
                sd = math.sqrt(n * prob * (1 - prob))
                x = float(min(max(round(n * prob + s.between(-1, 1) * s.random.choice((6, 37)) * max(sd, 1)), 0), n))
                return [x, float(n), prob] if log_binomial(x, n, prob) > SMALLEST else None
            yield d.region(f"n {span(low, high)}, {name}", 24, draw)


QUANTILES = (("p 1e-9 to 1 - 1e-9", lambda s: s.random.choice((s.log(1e-9, 0.5), 1 - s.log(1e-9, 0.5)))),
             ("p 1e-300 to 1e-9", lambda s: s.log(1e-300, 1e-9)),
             ("1 - p 1e-15 to 1e-9", lambda s: 1 - s.log(1e-15, 1e-9)))


def binomial_quantile_points(d):
    for low, high in ((1, 100), (101, 10000), (10000, 10 ** 6), (10 ** 6, 2 * 10 ** 9)):
        for name, prob_of in PROBS:
            for p_name, p_of in QUANTILES:
                yield d.region(f"n {span(low, high)}, {name}, {p_name}", 6,
                               lambda s, low=low, high=high, prob_of=prob_of, p_of=p_of:
                               [p_of(s), float(s.logwhole(low, high)), prob_of(s)])


def binomial_quantile(p, n, prob):
    """The largest x whose cumulative probability doesn't exceed p."""
    low, high = -1, int(n)
    if p == 1:
        return mpf(high)
    while high - low > 1:
        middle = (low + high) // 2
        lower = ref.binomial_lower(middle, n, prob, ROUGH)
        if abs(lower - p) < 0.01 * p:
            lower = ref.binomial_lower(middle, n, prob)
        if lower <= p:
            low = middle
        else:
            high = middle
    return mpf(low)


# ---- hypergeometric -----------------------------------------------------------------------------------------------

def hyper_points(d):
    def draw(low, high, widths):
        def point(s):
            total = s.logwhole(low, high)
            sample, hits = s.logwhole(1, total), s.logwhole(1, total)
            if s.sign() > 0:
                sample, hits = s.whole(1, total), s.whole(1, total)
            mean = sample * hits / total
            sd = math.sqrt(max(mean * (total - hits) / total * (total - sample) / max(total - 1, 1), 1))
            x = round(mean + s.between(-widths, widths) * sd)
            x = min(max(x, max(0, sample + hits - total)), min(sample, hits))
            if ref.hyper_point(x, total, sample, hits) < 1e-295:
                return None
            return [float(value) for value in (x, total, sample, hits)]
        return point
    for low, high in ((1, 100), (101, 10000), (10000, LARGEST)):
        for widths in (6, 36):
            yield d.region(f"total {span(low, high)}, x within {widths} deviations", 36, draw(low, high, widths))


# ---- grouped data -------------------------------------------------------------------------------------------------

def percentile_rows(d):
    for mode, name in ((0, "between midpoints"), (1, "by widths"), (2, "by upper limits")):
        def draw(s, mode=mode):
            n = s.whole(2, 8)
            values = [s.between(-5, 5) + 4 * i for i in range(n)]
            freqs = [float(s.whole(1, 9)) for _ in range(n)]
            return [float(n), s.between(0, 100), float(mode)] + sorted(values) + freqs + [s.between(0.5, 3)] * n
        region, rows = d.region(f"2 to 8 classes, {name}, 0 to 100 percent", 72, draw)
        yield region, [(row, percentile(row[1], *thirds(row[3:]), mode)) for row in rows]


def thirds(numbers):
    n = len(numbers) // 3
    return numbers[:n], numbers[n:2 * n], numbers[2 * n:]


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
    def draw(s):
        n = s.whole(1, 12)
        values = sorted(s.between(-10, 10) for _ in range(n))
        freqs = [float(s.whole(1, 6)) for _ in range(n)]
        return [float(n), sum(freqs), s.between(0, 99.999)] + values + freqs

    def rows(d):
        region, drawn = d.region("1 to 12 values of 1 to 6 each, level 0 to 99.999", 210, draw)
        made = []
        for row in drawn:
            n = int(row[0])
            made.append((row, median_limits(row[3:3 + n], row[3 + n:], row[1], row[2])[pick]))
        yield region, made
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
