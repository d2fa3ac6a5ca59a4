"""The points of the tables of the non-central distributions."""
import math

from mpmath import mpf

import reference as ref
from draw import MISSING, span

TOLERANCE = 1e-12

DEGREES = ((1e-6, 1), (1, 1e4), (1e4, 1e12))
CENTRES = ((1e-6, 1), (1, 1e4), (1e4, 1e6), (1e6, 3e7))

# From here on 60,000 terms don't reach the centre of the weights.
TOO_FAR = (1e8, 1e12)


def noncentral_chi_points(d):
    for degrees in DEGREES:
        for centres in CENTRES + (TOO_FAR,):
            def draw(s, degrees=degrees, centres=centres):
                df, ncp = s.log(*degrees), s.log(*centres)
                widths = s.between(0, 6) if centres == TOO_FAR else s.between(-6, 6)
                x = df + ncp + widths * math.sqrt(2 * (df + 2 * ncp))
                return [x if x > 0 else s.log(1e-6, df + ncp), df, ncp]
            yield d.region(f"df {span(*degrees)}, ncp {span(*centres)}, x within 6 sd",
                           6 if centres == CENTRES[-1] else 18, draw)
    yield d.region("df 1e-6 to 1e12, ncp 0", 15, lambda s: central_chi(s))


def central_chi(s):
    df = s.log(1e-6, 1e12)
    return [max(df + s.between(-6, 6) * math.sqrt(2 * df), s.log(1e-6, df)), df, 0.0]


def noncentral_chi(x, df, ncp):
    return MISSING if ncp >= TOO_FAR[0] else ref.noncentral_chi(x, df, ncp)


# The second degrees decide what the continued fraction leaves.
F_DEGREES = (((1e-3, 1), (0.1, 100)), ((1, 100), (2, 200)), ((1, 100), (1e4, 1e6)), ((1e4, 1e6), (2, 200)),
             ((1, 100), (1e8, 1e12)), ((1e8, 1e12), (2, 200)))


def f_value(s, df1, df2, ncp):
    """A value around the mean."""
    sd = math.sqrt(2 * (df1 + 2 * ncp)) / df1 + (1 + ncp / df1) * math.sqrt(2 / df2)
    x = 1 + ncp / df1 + s.between(-5, 5) * sd
    return x if x > 0 else s.log(1e-3, 1) * (1 + ncp / df1)


def noncentral_f_points(d):
    for first, second in F_DEGREES:
        for centres in CENTRES + (TOO_FAR,):
            def draw(s, first=first, second=second, centres=centres):
                df1, df2, ncp = s.log(*first), s.log(*second), s.log(*centres)
                if centres == TOO_FAR:
                    return [(1 + ncp / df1) * s.between(1, 2), df1, df2, ncp, TOLERANCE]
                return [f_value(s, df1, df2, ncp), df1, df2, ncp, TOLERANCE]
            yield d.region(f"df1 {span(*first)}, df2 {span(*second)}, "
                           f"ncp {span(*centres)}", 3 if centres == CENTRES[-1] else 9, draw)
    yield d.region("df1 0.1 to 100, df2 0.1 to 200, ncp 0", 15,
                   lambda s: [s.log(0.1, 10), s.log(0.1, 100), s.log(0.1, 200), 0.0, TOLERANCE])


def noncentral_f(x, df1, df2, ncp, _):
    return MISSING if ncp >= TOO_FAR[0] else ref.noncentral_f(x, df1, df2, ncp)


T_DEGREES = ((0.01, 1), (1, 200), (200, 1e6), (1e6, 1e8))
T_CENTRES = ((1e-6, 1), (1, 37), (37, 300))


def t_value(s, df, ncp, opposite):
    if opposite:
        return -math.copysign(s.log(1e-3, 10), ncp)
    x = ncp + s.between(-5, 5) * (1 + abs(ncp) / math.sqrt(2 * df))
    return x if x * ncp > 0 else math.copysign(s.log(1e-3, 1), ncp)


def noncentral_t_points(d):
    for degrees in T_DEGREES:
        for centres in T_CENTRES:
            for opposite in (False, True):
                if opposite and centres == T_CENTRES[2]:
                    continue
                def draw(s, degrees=degrees, centres=centres, opposite=opposite):
                    df, ncp = s.log(*degrees), s.sign() * s.log(*centres)
                    return [t_value(s, df, ncp, opposite), df, ncp]
                yield d.region(f"df {span(*degrees)}, +-ncp {span(*centres)}, "
                               f"{'opposite' if opposite else 'equal'} signs", 9, draw)
    yield d.region("df 1 to 1e6, +-ncp 1e-6 to 37, x 0", 9, lambda s: [0.0, s.log(1, 1e6), s.sign() * s.log(1e-6, 37)])
    yield d.region("df 0.1 to 100, +-x 1e-3 to 100, ncp 0", 15, lambda s: [s.sign() * s.log(1e-3, 100), s.log(0.1, 100), 0.0])


T_DENSITY_CENTRES = ((1e-6, 1), (1, 5), (5, 20), (20, 37))


def noncentral_t_density_points(d):
    for degrees in ((0.1, 1), (1, 200), (200, 1e6)):
        for centres in T_DENSITY_CENTRES:
            for opposite in (False, True):
                if opposite and centres == T_DENSITY_CENTRES[3]:
                    continue
                def draw(s, degrees=degrees, centres=centres, opposite=opposite):
                    df, ncp = s.log(*degrees), s.sign() * s.log(*centres)
                    size = s.between(0.3, 2) * abs(ncp) if not opposite else s.log(0.1, 2)
                    return [math.copysign(size, -ncp if opposite else ncp), df, ncp]
                yield d.region(f"df {span(*degrees)}, +-ncp {span(*centres)}, "
                               f"{'opposite' if opposite else 'equal'} signs", 9, draw)
    yield d.region("df 0.1 to 100, +-x 1e-3 to 100, ncp 0", 15, lambda s: [s.sign() * s.log(1e-3, 100), s.log(0.1, 100), 0.0])


# ---- searches -----------------------------------------------------------------------------------------------------

def derivative(function, at):
    step = mpf(at) * mpf(10) ** -12
    return (function(mpf(at) + step) - function(mpf(at) - step)) / (2 * step)


FIND_TOLERANCE = 1e-11


def find_rows(cumulative, drawn):
    """Points with their non-centrality, asked for it back from the rounded probability."""
    rows = []
    for *arguments, ncp in drawn:
        exact = cumulative(ncp, *arguments)
        p = float(exact)
        root = mpf(ncp) + (mpf(p) - exact) / derivative(lambda c: cumulative(c, *arguments), ncp)
        rows.append((arguments + [p, FIND_TOLERANCE], root))
    return rows


def find_chi_rows(d):
    for degrees, centres in (((1e-3, 1), (0.5, 200)), ((1, 50), (0.01, 0.5)), ((1, 50), (0.5, 200)), ((50, 1e4), (0.5, 200)),
                             ((1, 50), (200, 2000))):
        def draw(s, degrees=degrees, centres=centres):
            df, ncp = s.log(*degrees), s.log(*centres)
            x = df + ncp + s.between(-1, 1) * math.sqrt(2 * (df + 2 * ncp))
            return [x, df, ncp] if x > 0.3 * (df + ncp) else None
        region, rows = d.region(f"df {span(*degrees)}, ncp {span(*centres)}", 42, draw)
        yield region, find_rows(lambda c, x, df: ref.noncentral_chi(x, df, c), rows)


def find_f_rows(d):
    for first, second, centres in (((1, 20), (5, 100), (0.01, 0.5)), ((1, 20), (5, 100), (0.5, 100)),
                                   ((20, 1e3), (5, 100), (0.5, 100)), ((1, 20), (100, 1e4), (0.5, 100)),
                                   ((1, 20), (100, 1e4), (100, 2000))):
        def draw(s, first=first, second=second, centres=centres):
            df1, df2, ncp = s.log(*first), s.log(*second), s.log(*centres)
            return [(1 + ncp / df1) * s.log(0.6, 1.6), df1, df2, ncp]
        region, rows = d.region(f"df1 {span(*first)}, df2 {span(*second)}, "
                                f"ncp {span(*centres)}", 42, draw)
        yield region, find_rows(lambda c, x, df1, df2: ref.noncentral_f(x, df1, df2, c), rows)


def find_t_rows(d):
    for degrees, centres in (((0.5, 2), (0.1, 10)), ((2, 100), (0.01, 0.1)), ((2, 100), (0.1, 10)), ((100, 1e4), (0.1, 10)),
                             ((2, 100), (10, 30))):
        def draw(s, degrees=degrees, centres=centres):
            df, ncp = s.log(*degrees), s.log(*centres)
            return [ncp + s.between(-1.5, 1.5), df, ncp]
        region, rows = d.region(f"df {span(*degrees)}, ncp {span(*centres)}", 42, draw)
        yield region, find_rows(lambda c, x, df: ref.noncentral_t(x, df, c), rows)
