"""The points of the tables of the normal distribution."""
from mpmath import mp, mpf

import reference as ref


def cdf_std_norm(d):
    yield d.region("z -37.5 to -5", 60, lambda s: [s.between(-37.5, -5)])
    yield d.region("z -5 to 5", 60, lambda s: [s.between(-5, 5)])
    yield d.region("+-z 1e-300 to 1e-3", 30, lambda s: [s.sign() * s.log(1e-300, 1e-3)])
    yield d.region("z 5 to 1e300", 30, lambda s: [s.log(5, s.log(6, 1e300))])
    yield d.region("z -1e300 to -37.7", 30, lambda s: [-s.log(37.7, s.log(38, 1e300))])


def pdf_std_norm(d):
    yield d.region("+-z 1e-300 to 1e-3", 30, lambda s: [s.sign() * s.log(1e-300, 1e-3)])
    yield d.region("+-z 1e-3 to 5", 75, lambda s: [s.between(-5, 5)])
    yield d.region("+-z 5 to 37.6", 75, lambda s: [s.sign() * s.between(5, 37.6)])
    yield d.region("+-z 38.6 to 1e300", 30, lambda s: [s.sign() * s.log(38.6, s.log(39, 1e300))])


PROBABILITIES = (("p 1e-300 to 1e-3", 75, lambda s: s.log(1e-300, 1e-3)),
                 ("p 1e-3 to 0.999", 60, lambda s: s.between(1e-3, 0.999)),
                 ("+-(p - 0.5) 1e-16 to 1e-3", 30, lambda s: 0.5 + s.sign() * s.log(1e-16, 1e-3)),
                 ("1 - p 1e-16 to 1e-3", 45, lambda s: 1 - s.log(1.2e-16, 1e-3)))


def probabilities(d):
    """Probabilities of both tails, near the median and down to the smallest."""
    for name, count, draw in PROBABILITIES:
        yield d.region(name, count, lambda s, draw=draw: [draw(s)])


LOCATED = "mean -10 to 10, sd 1e-3 to 1e3"
SCALED = "mean within 10 sd, sd 1e-280 to 1e280"


def location(s):
    return [s.between(-10, 10), s.log(1e-3, 1e3)]


def scale(s):
    sd = s.log(1e-280, 1e280)
    return [s.between(-10, 10) * sd, sd]


def located_probabilities(d):
    """Each probability with a mean and a standard deviation."""
    for name, count, draw in PROBABILITIES:
        yield d.region(f"{name}, {LOCATED}", count, lambda s, draw=draw: [draw(s)] + location(s))
    yield d.region(f"p 1e-300 to 1 - 1e-15, {SCALED}", 45,
                   lambda s: [s.random.choice(PROBABILITIES)[2](s)] + scale(s))


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


def normal_values(d):
    def value(low, high, place):
        def draw(s):
            mean, sd = place(s)
            return [mean + s.sign() * sd * s.between(low, high), mean, sd]
        return draw
    yield d.region(f"deviate -8 to 8, {LOCATED}", 75, value(0, 8, location))
    yield d.region(f"+-deviate 8 to 37, {LOCATED}", 45, value(8, 37, location))
    yield d.region(f"deviate -8 to 8, {SCALED}", 45, value(0, 8, scale))
    yield d.region("deviate -37 to 37 without rounding", 60, exact_value)


def exact_value(s):
    """A value whose distance from the mean, and that over the standard deviation, are doubles."""
    mean, sd = s.whole(-64, 64) / 8, 2.0 ** s.whole(-6, 6)
    return [mean + sd * s.whole(-37 * 256, 37 * 256) / 256, mean, sd]

